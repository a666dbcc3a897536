#include "records/store/RecordStore.h"

namespace plotix {

std::optional<RecordColumns> RecordStore::columns(RowId agent, std::span<const RowId> properties,
                                                  std::optional<double> from, std::optional<double> to,
                                                  const std::shared_ptr<PageCache>&, const ArchiveProgress& progress)
{
    const std::optional<RecordBlock> block = read(agent, properties, from, to, progress);
    return block ? std::optional(RecordColumns::resident(*block)) : std::nullopt;
}

}  // namespace plotix
