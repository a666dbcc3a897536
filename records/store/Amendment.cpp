#include "records/store/Amendment.h"

#include <limits>

namespace plotix {

Amendment within(const Amendment& amendment, double from, double to)
{
    Amendment part = amendment;
    part.from = std::max(amendment.from, from);
    part.to = std::min(amendment.to, to);
    part.first = cameAt(amendment, part.from);
    part.last = cameAt(amendment, part.to);
    if (amendment.from == amendment.to)
        part.first = amendment.first;
    return part;
}

std::vector<Amendment> without(const Amendment& amendment, double from, double to)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    std::vector<Amendment> left;
    if (amendment.from < from)
        left.push_back(within(amendment, amendment.from, std::nextafter(from, -kInfinity)));
    if (amendment.to > to)
        left.push_back(within(amendment, std::nextafter(to, kInfinity), amendment.to));
    return left;
}

}  // namespace plotix
