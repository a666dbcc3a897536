#pragma once

#include "hostapp/core/SiteProperty.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/exchange/Export.h"

#include <optional>
#include <vector>

/// Records of one agent on their way from a site into a file: what the window and the command line both do.
///
/// `exportOf` on the main thread; what it answers is a value, and `exportRecords` runs on any one thread.
namespace plotix {

struct RecordExport {
    RowId agent = 0;
    std::vector<RowId> properties;
    std::vector<ExportedRecords::Column> columns;  ///< one for each property
    std::optional<double> from, to;                ///< seconds since 1970-01-01 UTC; absent: open
    ExportForm form = {};
};

/// Of all records of these properties, as they are archived.
RecordExport exportOf(const SiteAgent& agent, const std::vector<std::shared_ptr<SiteProperty>>& properties);

/// Reads and writes, page by page. The file's name tells the format. Throws ReportableError when the records cannot be
/// read, or do not fit into memory where the store reads all of them at once, OutputFailure, ExportFailure and
/// ExportCancelled; the file is then as it was.
void exportRecords(RecordStore& store, const RecordExport& what, const QString& file,
                   const ExportProgress& progress = {});

/// Before long work. Throws OutputFailure when the name is of no format or taken by a file of another kind.
void requireExportable(const QString& file);

}  // namespace plotix
