#include "records/store/RecordBlock.h"

#include <algorithm>

namespace plotix {

std::optional<RecordExtent> united(const std::optional<RecordExtent>& one, const std::optional<RecordExtent>& other)
{
    if (!one || !other)
        return one ? one : other;
    return RecordExtent{std::min(one->first, other->first), std::max(one->last, other->last)};
}

std::size_t RecordOverview::records() const
{
    std::size_t sum = 0;
    for (const Run& run : runs)
        sum += run.records;
    return sum;
}

}  // namespace plotix
