#include "plugins/PlotixPlugIn/reading/missing/LaneStretches.h"

#include <algorithm>

namespace plotix {

namespace {

std::vector<MissingStretch> missingInBoth(const std::vector<MissingStretch>& one,
                                          const std::vector<MissingStretch>& other)
{
    std::vector<MissingStretch> both;
    auto first = one.begin();
    auto second = other.begin();
    while (first != one.end() && second != other.end()) {
        const double from = std::max(first->from, second->from);
        const double to = std::min(first->to, second->to);
        const bool isNotValid = first->kind == Missing::NotValid || second->kind == Missing::NotValid;
        if (from < to)
            both.push_back({from, to, isNotValid ? Missing::NotValid : Missing::NotRecorded});
        ++(first->to < second->to ? first : second);
    }
    return both;
}

}  // namespace

std::vector<MissingStretch> missingInAll(const std::vector<std::vector<MissingStretch>>& lines)
{
    if (lines.empty())
        return {};
    std::vector<MissingStretch> all = lines.front();
    for (auto line = lines.begin() + 1; line != lines.end(); ++line)
        all = missingInBoth(all, *line);
    return all;
}

}  // namespace plotix
