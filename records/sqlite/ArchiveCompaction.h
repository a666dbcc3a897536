#pragma once

#include "records/store/RecordStore.h"
#include "storage/DatabaseSchema.h"

#include <QtCore/QString>

/// Makes a site document as small as it can be: joins short chunks and the tail into full chunks, writes every column
/// in the most compact way, drops records that are older than wanted, and gives the space back to the disk.
///
/// Works agent by agent, each in transactions of its own. Giving the space back is one step that happens wholly or not
/// at all. So a process that ends at any instant leaves a document with the same records, only larger. Readers may read
/// meanwhile; other writers wait for one transaction at a time, and while the space is given back.
namespace plotix {

/// Blocks until it is done; any thread. `progress` rises from 0 to 1 and answers false to stop; giving the space back
/// cannot be stopped. Throws ReportableError: the document is read-only, being written for more than three seconds,
/// damaged (what cannot be read is left as it is), or the disk lacks the space, which leaves the document whole and
/// tells how much is needed.
CompactionResult compactArchive(const QString& file, const DatabaseSchema& schema, const CompactionRequest& request,
                                const ArchiveProgress& progress);

}  // namespace plotix
