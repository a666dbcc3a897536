#pragma once

#include "records/store/RecordStore.h"
#include "storage/DatabaseSchema.h"

#include <QtCore/QString>

/// Checks a site document from end to end without changing it: the database's own structure, the position of every
/// chunk, that every column can be read, and that its summary agrees with its values.
namespace plotix {

/// Reads everything once, in one snapshot, while others may write; any thread. `progress` rises from 0 to 1 and answers
/// false to stop; `memory` as RecordStore has it. Throws ReportableError when the document cannot be opened at all.
VerificationResult verifyArchive(const QString& file, const DatabaseSchema& schema, const ArchiveProgress& progress,
                                 std::uint64_t memory);

}  // namespace plotix
