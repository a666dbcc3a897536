#pragma once

#include "hostapp/exchange/Export.h"

/// Writes delimited UTF-8, by default comma-separated, that `DelimitedReader` reads back to the same bits.
///
/// A row a record under the header `time,Name (unit),…`. Times are ISO 8601, in UTC or by the local clock; if one lies
/// outside the years 0000–9999, all of them are seconds since 1970, and the header says so. Invalid values and NaN are
/// empty; with columns of quality, NaN alone. Any one thread.
namespace plotix {

/// Throws ExportFailure and ExportCancelled.
void writeDelimited(QIODevice& device, const ExportedRecords& records, const ExportProgress& progress);

}  // namespace plotix
