#include "plotkit/model/TimeCourse.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace plotkit {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// More than the sum of all rounding errors between a line and a distance, as a fraction of the greatest number.
constexpr double kRounding = 16 * std::numeric_limits<double>::epsilon();
/// How many lines the guess may be wrong by: a bin holds less than a line, or skips the gap in one.
constexpr int kMostLinesOff = 4;

/// By how much the beginnings of blocks are off the line at most.
double farthestOff(std::span<const double> x, double step)
{
    double off = 0;
    for (std::size_t block = 0; block * TimeCourse::kBlock < x.size(); ++block) {
        const double onLine = x.front() + static_cast<double>(block) * step;
        off = std::max(off, std::abs(onLine - x[block * TimeCourse::kBlock]));
    }
    return off;
}

}  // namespace

void TimeCourse::extend(std::span<const double> x)
{
    assert(x.size() >= m_elements);
    std::size_t first = m_elements / kLineElements * kLineElements;
    m_lines.resize(first / kLineElements);  // the last one may have been short
    for (; first < x.size(); first += kLineElements) {
        const std::span<const double> part = x.subspan(first, std::min(kLineElements, x.size() - first));
        const std::size_t blocks = (part.size() - 1) / kBlock;
        const double length = part[blocks * kBlock] - part.front();
        const double step = blocks == 0 ? 0 : length / static_cast<double>(blocks);
        m_lines.push_back({part.front(), step, std::isfinite(step) ? farthestOff(part, step) : kInfinity});
    }
    m_elements = x.size();
}

std::optional<std::size_t> TimeCourse::lineOf(double value, std::size_t guess) const
{
    if (m_lines.empty())
        return std::nullopt;
    std::size_t line = std::min(guess / kLineElements, m_lines.size() - 1);
    for (int step = 0; step <= kMostLinesOff; ++step) {
        if (!(m_lines[line].start < value)) {
            if (line == 0)
                return std::nullopt;
            --line;
        } else if (line + 1 < m_lines.size() && m_lines[line + 1].start < value) {
            ++line;
        } else {
            return line;
        }
    }
    return std::nullopt;
}

std::optional<TimeCourse::Neighbours> TimeCourse::around(double value, std::size_t guess) const
{
    const std::optional<std::size_t> found = lineOf(value, guess);
    if (!found)
        return std::nullopt;
    const Line& line = m_lines[*found];
    const bool isLast = *found + 1 == m_lines.size();
    const std::size_t first = *found * kLineElements;
    const double most = isLast ? static_cast<double>((m_elements - 1 - first) / kBlock) : kLineElements / kBlock;
    if (most < 1)
        return std::nullopt;
    const double wanted = std::ceil((value - line.start) / line.step);
    const double block = wanted >= 1 ? std::min(wanted, most) : 1;  // a step of 0 gives NaN or infinity
    const auto timeOf = [&](double which) {
        return !isLast && which == most ? m_lines[*found + 1].start : line.start + which * line.step;
    };
    const double after = timeOf(block);
    const double before = timeOf(block - 1);
    const double greatest = std::max({std::abs(value), std::abs(before), std::abs(after)});
    const double off = line.off + kRounding * greatest;
    return Neighbours{first + static_cast<std::size_t>(block) * kBlock, after - value, value - before,
                      std::isfinite(off) ? off : kInfinity};
}

}  // namespace plotkit
