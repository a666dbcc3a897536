#include "records/columns/ColumnIndex.h"

#include "records/columns/ColumnKernels.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

namespace plotix {

namespace {

constexpr std::size_t kRun = ColumnKernels::kRun;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A run's values and which of them count, as the kernels take them.
struct Run {
    Run(const ColumnView& column, std::size_t first, std::size_t length)
        : values(column.values + first), count(length), mask(maskOfRun(column, first, length))
    {
        if (length == kRun)
            return;
        std::copy_n(column.values + first, length, copy.begin());
        values = copy.data();
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    bool counts(std::size_t i) const { return bits::get(mask.data(), i, 1) != 0 && !std::isnan(values[i]); }

    const double* values;
    std::size_t count;
    RunMask mask;
    std::array<double, kRun> copy{};
};

void addSlowly(const Run& run, ExactTotal& total)
{
    for (std::size_t i = 0; i < run.count; ++i)
        if (run.counts(i) && std::isfinite(run.values[i]))
            total.add(run.values[i]);
}

/// Adds the finite values to the total.
RunFigures figuresOf(const Run& run, const ColumnKernels::Sum& sum, ExactTotal& total)
{
    RunFigures figures;
    figures.valid = sum.count;
    if (sum.count == 0)
        return figures;
    const ColumnKernels::Details details = ColumnKernels::best().details(run.values, run.mask.data(), sum);
    std::size_t first = 0;
    while (!run.counts(first))
        ++first;
    std::size_t last = run.count - 1;
    while (!run.counts(last))
        --last;
    figures.first = {run.values[first], first};
    figures.last = {run.values[last], last};
    figures.least = {run.values[details.leastAt], details.leastAt};
    figures.greatest = {run.values[details.greatestAt], details.greatestAt};
    if (details.isExact) {
        total.add(details.high);
        total.add(details.low);
    } else {
        addSlowly(run, total);
    }
    return figures;
}

bool isSame(const RunFigures::Point& one, const RunFigures::Point& other)
{
    return one.at == other.at && std::bit_cast<std::uint64_t>(one.value) == std::bit_cast<std::uint64_t>(other.value);
}

void addInfinities(const RunFigures& figures, ExactTotal& total)
{
    if (figures.valid > 0 && figures.greatest.value == kInfinity)
        total.add(kInfinity);
    if (figures.valid > 0 && figures.least.value == -kInfinity)
        total.add(-kInfinity);
}

ExactTotal writtenTotal(const RunSums& sums, std::size_t run)
{
    ExactTotal total;
    total.add(sums.at, std::span(sums.bytes).subspan(run * sums.width, sums.width));
    return total;
}

}  // namespace

void RunFigures::append(const RunFigures& next, std::size_t begin)
{
    if (next.valid == 0)
        return;
    const auto moved = [&](const Point& point) { return Point{point.value, begin + point.at}; };
    if (valid == 0) {
        *this = {next.valid, moved(next.first), moved(next.last), moved(next.least), moved(next.greatest)};
        return;
    }
    last = moved(next.last);
    if (next.least.value < least.value)
        least = moved(next.least);
    if (next.greatest.value > greatest.value)
        greatest = moved(next.greatest);
    valid += next.valid;
}

bool isSame(const RunFigures& one, const RunFigures& other)
{
    return one.valid == other.valid && isSame(one.first, other.first) && isSame(one.last, other.last) &&
           isSame(one.least, other.least) && isSame(one.greatest, other.greatest);
}

RunSums RunSums::of(std::span<const ExactTotal> totals)
{
    RunSums sums;
    std::vector<ExactTotal::Written> written;
    written.reserve(totals.size());
    std::size_t end = 0;
    sums.at = ExactTotal::kBytes;
    for (const ExactTotal& total : totals) {
        const ExactTotal::Written& each = written.emplace_back(total.written());
        if (each.size == 0)
            continue;
        sums.at = std::min(sums.at, each.at);
        end = std::max(end, each.at + each.size);
    }
    if (end == 0)
        return {};
    sums.width = end - sums.at;
    sums.bytes.resize(totals.size() * sums.width);
    auto begin = sums.bytes.begin();
    for (const ExactTotal::Written& each : written) {
        const auto behind = begin + static_cast<std::ptrdiff_t>(sums.width);
        const std::span<const std::byte> bytes = each.bytes();
        if (!bytes.empty()) {
            const bool isNegative = (bytes.back() & std::byte{0x80}) != std::byte{0};
            const auto from = begin + static_cast<std::ptrdiff_t>(each.at - sums.at);
            std::fill(std::copy(bytes.begin(), bytes.end(), from), behind, isNegative ? std::byte{0xFF} : std::byte{0});
        }
        begin = behind;
    }
    return sums;
}

ExactTotal ColumnIndex::sumOf(std::size_t run) const
{
    ExactTotal total = writtenTotal(sums, run);
    addInfinities(runs[run], total);
    return total;
}

ColumnIndex ColumnIndex::ofNothing(std::size_t count)
{
    ColumnIndex index;
    index.count = count;
    return index;
}

ColumnIndex ColumnIndex::withoutRuns() &&
{
    runLength = 0;
    runs.clear();
    sums = {};
    return std::move(*this);
}

ColumnIndex ColumnIndex::coarser() const
{
    ColumnIndex made{count, whole, sum, runLength * 2, {}, {}};
    std::vector<ExactTotal> totals;
    for (std::size_t run = 0; run < runs.size(); run += 2) {
        RunFigures& figures = made.runs.emplace_back(runs[run]);
        ExactTotal& total = totals.emplace_back(writtenTotal(sums, run));
        if (run + 1 == runs.size())
            break;
        figures.append(runs[run + 1], runLength);
        total.add(writtenTotal(sums, run + 1));
    }
    made.sums = RunSums::of(totals);
    return made;
}

bool ColumnIndex::agreesWith(const ColumnIndex& other) const
{
    if (count != other.count || !isSame(whole, other.whole) || !(sum == other.sum))
        return false;
    if (runLength == 0 || other.runLength != runLength)
        return true;
    if (runs.size() != other.runs.size())
        return false;
    for (std::size_t run = 0; run < runs.size(); ++run)
        if (!isSame(runs[run], other.runs[run]) || !(sumOf(run) == other.sumOf(run)))
            return false;
    return true;
}

ColumnIndex indexOf(const ColumnView& column, std::size_t count, SummaryInWork* summary)
{
    ColumnIndex index;
    index.count = count;
    index.runLength = kRun;
    std::vector<ExactTotal> totals((count + kRun - 1) / kRun);
    index.runs.reserve(totals.size());
    for (std::size_t begin = 0; begin < count; begin += kRun) {
        const Run run(column, begin, std::min(kRun, count - begin));
        ExactTotal& total = totals[begin / kRun];
        const ColumnKernels::Sum sum = sumOfRun(column, begin, run.count);
        if (summary)
            summary->add(sum);
        const RunFigures& figures = index.runs.emplace_back(figuresOf(run, sum, total));
        index.whole.append(figures, begin);
        index.sum.add(total);
    }
    addInfinities(index.whole, index.sum);
    index.sums = RunSums::of(totals);
    return index;
}

RunTimes runTimesOf(std::span<const double> times)
{
    RunTimes runs{kRun, {}, {}};
    for (std::size_t begin = 0; begin < times.size(); begin += kRun) {
        runs.first.push_back(times[begin]);
        runs.last.push_back(times[std::min(begin + kRun, times.size()) - 1]);
    }
    return runs;
}

}  // namespace plotix
