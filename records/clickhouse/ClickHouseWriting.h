#pragma once

#include "records/clickhouse/SiteOnServer.h"
#include "records/store/RecordStore.h"

#include <map>

/// How records come onto a server, and how they are kept in little space. See RecordStore for what holds of it.
namespace plotix {

/// Waits for whoever writes.
std::unique_ptr<RecordTransaction> transactionOn(const std::shared_ptr<SiteOnServer>& site);
std::unique_ptr<RecordAppender> appenderTo(const std::shared_ptr<SiteOnServer>& site);

CompactionResult compacted(const std::shared_ptr<SiteOnServer>& site, const CompactionRequest& request,
                           const ArchiveProgress& progress);

/// By property, in the order they were made; `own`: a batch that counts already.
std::map<RowId, std::vector<Amendment>> amendmentsOf(ServerConnection& server, const SiteTables& tables,
                                                     std::span<const RowId> properties, std::uint64_t own);

}  // namespace plotix
