#pragma once

#include "records/clickhouse/SiteOnServer.h"
#include "records/store/RecordStore.h"

/// How records come onto a server, and how they are kept in little space. See RecordStore for what holds of it.
namespace plotix {

/// A site, and a store of the same records, which tells what was there before.
struct WrittenSite {
    std::shared_ptr<SiteOnServer> site;
    std::shared_ptr<RecordStore> before;
};

/// Waits for whoever writes.
std::unique_ptr<RecordTransaction> transactionOn(const WrittenSite& site);
std::unique_ptr<RecordAppender> appenderTo(const WrittenSite& site);

CompactionResult compacted(const WrittenSite& site, const CompactionRequest& request, const ArchiveProgress& progress);

}  // namespace plotix
