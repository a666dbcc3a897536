#pragma once

#include "hostapp/exchange/Export.h"

/// Writes the .xlsx files of spreadsheet programs: a zip archive of XML parts, packed while the rows are made.
///
/// A frozen row of names, then a row a record; as many sheets as it takes. Times are dates, by the clock chosen, which
/// the first cell names; a spreadsheet keeps them to the microsecond. Moments that its calendar does not have are text.
/// Values keep every digit; invalid ones and NaN are empty cells, infinities text. Any one thread.
namespace plotix {

inline constexpr std::size_t kMostSheetRows = 1'048'576;  ///< the row of names included
inline constexpr std::size_t kMostSheetColumns = 16'384;  ///< that of the times included

/// Throws ExportFailure, also for more columns than a sheet has, and ExportCancelled.
void writeSpreadsheet(QIODevice& device, const ExportedRecords& records, const ExportProgress& progress);

}  // namespace plotix
