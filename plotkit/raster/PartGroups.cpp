#include "plotkit/raster/PartGroups.h"

#include <algorithm>

namespace plotkit {

namespace {

/// How far a part stands from the one before it, along the direction in which they follow each other.
double distance(const PartExtent& before, const PartExtent& part)
{
    return std::max(part.from - before.to, before.from - part.to);
}

bool followEachOther(std::span<const PartExtent> parts)
{
    const auto turnsLeft = [](const PartExtent& a, const PartExtent& b) { return b.from < a.to; };
    const auto turnsRight = [](const PartExtent& a, const PartExtent& b) { return b.to > a.from; };
    return std::adjacent_find(parts.begin(), parts.end(), turnsLeft) == parts.end() ||
           std::adjacent_find(parts.begin(), parts.end(), turnsRight) == parts.end();
}

}  // namespace

std::vector<std::size_t> groupsOfParts(std::span<const PartExtent> parts, double apart, std::size_t mostGroups)
{
    std::vector<std::size_t> groups;
    if (!followEachOther(parts))
        return groups;
    std::vector<PartExtent> lastOf;  // by group
    for (const PartExtent& part : parts) {
        const auto free = std::find_if(lastOf.begin(), lastOf.end(),
                                       [&](const PartExtent& last) { return distance(last, part) >= apart; });
        groups.push_back(static_cast<std::size_t>(free - lastOf.begin()));
        if (free != lastOf.end())
            *free = part;
        else if (lastOf.size() < mostGroups)
            lastOf.push_back(part);
        else
            return {};
    }
    return groups;
}

}  // namespace plotkit
