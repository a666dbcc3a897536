#include "records/store/RecordStore.h"

namespace plotix {

bool RecordStore::hasMoreThan(std::size_t records, RowId agent, std::optional<double> from, std::optional<double> to)
{
    std::size_t counted = 0;
    for (const RecordOverview::Run& run : overview(agent, {}, from, to).runs)
        counted += run.records;
    return counted > records;
}

std::optional<RecordColumns> RecordStore::columns(RowId agent, std::span<const RowId> properties,
                                                  std::optional<double> from, std::optional<double> to,
                                                  const std::shared_ptr<PageCache>&, const ArchiveProgress& progress)
{
    const std::optional<RecordBlock> block = read(agent, properties, from, to, progress);
    return block ? std::optional(RecordColumns::resident(*block)) : std::nullopt;
}

}  // namespace plotix
