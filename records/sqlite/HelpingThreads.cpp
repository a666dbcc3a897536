#include "records/sqlite/HelpingThreads.h"

#include "base/CoresAllowed.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr std::size_t kMostThreads = 4;
/// Starting a thread takes as long as decoding about a tenth of this.
constexpr std::size_t kValuesPerThread = std::size_t{1} << 20;

}  // namespace

std::size_t helpersFor(const ReadConnections& lender, std::size_t values, std::size_t pieces)
{
    const std::size_t cores = std::min(coresAllowed(), kMostThreads);
    const auto busy = static_cast<std::size_t>(lender.inUse());  // this read among them
    const std::size_t free = cores > busy ? cores - busy : 0;
    const std::size_t worth = std::min(values / kValuesPerThread, pieces);
    return std::min(free, worth > 0 ? worth - 1 : 0);
}

bool showsEveryPart(ReadConnection& connection, std::span<const ChunkPart> parts)
{
    std::vector<qint64> ids;
    ids.reserve(parts.size());
    for (const ChunkPart& part : parts)
        ids.push_back(part.chunk.id);
    return connection.chunks.hasAll(std::move(ids));
}

}  // namespace plotix
