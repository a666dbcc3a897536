#pragma once

#include "hostapp/exchange/Export.h"
#include "hostapp/exchange/ImportPreview.h"
#include "hostapp/exchange/Importer.h"

/// Imports and exports a file of measurements, whatever its format. Free functions; any thread.
namespace plotix {

/// Reads a file into an agent of a site document; see `importRows`. The file's name and its beginning tell the format.
ImportSummary importFile(const QString& file, const QString& site, const ImportOptions& options,
                         const ImportProgress& progress = {});

/// What that import would take, with nothing stored; errors stand in it. See ImportPreview. Throws ImportCancelled.
ImportPreview previewOf(const QString& file, const ImportOptions& options, const ImportProgress& progress = {});

/// Writes a file, whole or not at all; its name tells the format. Throws OutputFailure when the
/// name is wrong or taken by a file of another kind or the file cannot be written; ExportFailure, ExportCancelled.
void exportFile(const QString& file, const ExportedRecords& records, const ExportProgress& progress = {});

}  // namespace plotix
