#include "records/columns/ColumnIndex.h"

#include "records/columns/ColumnKernels.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace plotix {

namespace {

constexpr std::size_t kRun = ColumnKernels::kRun;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

__extension__ using Wide = __int128;

/// A run's values and which of them count, as the kernels take them.
struct Run {
    Run(const ColumnView& column, std::size_t first, std::size_t length)
        : values(column.values + first), count(length), mask(maskOfRun(column, first, length))
    {
        if (length == kRun)
            return;
        std::fill(std::copy_n(column.values + first, length, copy.begin()), copy.end(), 0);
        values = copy.data();
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    bool counts(std::size_t i) const { return bits::get(mask.data(), i, 1) != 0 && !std::isnan(values[i]); }

    const double* values;
    std::size_t count;
    RunMask mask;
    std::array<double, kRun> copy;  ///< of a run that is shorter, zeros behind it
};

void addSlowly(const Run& run, ExactTotal& total)
{
    for (std::size_t i = 0; i < run.count; ++i)
        if (run.counts(i) && std::isfinite(run.values[i]))
            total.add(run.values[i]);
}

/// The sums of successive runs, while they come.
class SumsInWork {
public:
    explicit SumsInWork(std::size_t runs) { m_sums.reserve(runs); }

    void add(const ExactTotal& total)
    {
        const ExactTotal::Written written = total.written();
        put(written.at, written.bytes());
    }

    /// A number that counts in units of the lowest bit of byte `at`.
    void add(std::size_t at, Wide number)
    {
        std::array<std::byte, sizeof number> bytes;
        std::memcpy(bytes.data(), &number, sizeof number);
        const auto sign = number < 0 ? std::byte{0xFF} : std::byte{0};
        std::size_t begin = 0;
        while (number != 0 && bytes[begin] == std::byte{0})
            ++begin;
        std::size_t end = number != 0 ? sizeof number : 0;
        while (end > begin + 1 && bytes[end - 1] == sign && ((bytes[end - 2] ^ sign) & std::byte{0x80}) == std::byte{0})
            --end;
        put(at + begin, std::span(bytes).subspan(begin, end - begin));
    }

    RunSums finished() const
    {
        if (m_end == 0)
            return {};
        RunSums sums{m_begin, m_end - m_begin, std::vector<std::byte>(m_sums.size() * (m_end - m_begin))};
        auto begin = sums.bytes.begin();
        for (const Place& place : m_sums) {
            const auto behind = begin + static_cast<std::ptrdiff_t>(sums.width);
            const std::span<const std::byte> bytes = std::span(m_bytes).subspan(place.begin, place.size);
            if (!bytes.empty()) {
                const bool isNegative = (bytes.back() & std::byte{0x80}) != std::byte{0};
                const auto from = begin + static_cast<std::ptrdiff_t>(place.at - sums.at);
                std::fill(std::copy(bytes.begin(), bytes.end(), from), behind,
                          isNegative ? std::byte{0xFF} : std::byte{0});
            }
            begin = behind;
        }
        return sums;
    }

private:
    struct Place {
        std::size_t at, size;  ///< bytes of the number
        std::size_t begin;     ///< in m_bytes
    };

    void put(std::size_t at, std::span<const std::byte> bytes)
    {
        m_sums.push_back({at, bytes.size(), m_bytes.size()});
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
        if (bytes.empty())
            return;
        m_begin = std::min(m_begin, at);
        m_end = std::max(m_end, at + bytes.size());
    }

    std::vector<Place> m_sums;
    std::vector<std::byte> m_bytes;
    std::size_t m_begin = ExactTotal::kBytes, m_end = 0;
};

/// A double as a whole number of units of 2^(bit − 1074), without the zero bits it ends with.
struct Whole {
    explicit Whole(double value)
    {
        const auto pattern = std::bit_cast<std::uint64_t>(value);
        const std::uint64_t exponent = (pattern >> 52) & 0x7FF;
        const std::uint64_t mantissa = (pattern & 0xFFFFFFFFFFFFF) | (exponent == 0 ? 0 : std::uint64_t{1} << 52);
        if (mantissa == 0)
            return;
        const auto zeros = static_cast<std::size_t>(std::countr_zero(mantissa));
        bit = (exponent == 0 ? 0 : exponent - 1) + zeros;
        number = static_cast<std::int64_t>(mantissa >> zeros);
        number = (pattern >> 63) != 0 ? -number : number;
    }

    std::int64_t number = 0;
    std::size_t bit = ExactTotal::kBytes * 8;
};

/// The sum of the two parts that ColumnKernels::details answers: they are near enough to each other for 128 bits.
void addParts(double high, double low, SumsInWork& sums)
{
    const Whole upper(high), lower(low);
    const std::size_t at = std::min(upper.bit, lower.bit) / 8;
    const auto shifted = [&](const Whole& part) {
        return part.number == 0 ? Wide{0} : Wide{part.number} * (Wide{1} << (part.bit - at * 8));
    };
    sums.add(at, shifted(upper) + shifted(lower));
}

/// Adds the sum of the finite values to the total, and to the sums of runs.
RunFigures figuresOf(const Run& run, const ColumnKernels::Sum& sum, ExactTotal& total, SumsInWork& sums)
{
    RunFigures figures;
    figures.valid = sum.count;
    if (sum.count == 0) {
        sums.add(0, 0);
        return figures;
    }
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
        addParts(details.high, details.low, sums);
    } else {
        ExactTotal ofRun;
        addSlowly(run, ofRun);
        total.add(ofRun);
        sums.add(ofRun);
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
    total.add(sums.at, sums.bytesOf(run));
    return total;
}

/// Requires: fewer bytes than a wide number has.
Wide shortTotal(const RunSums& sums, std::size_t run)
{
    const std::span<const std::byte> bytes = sums.bytesOf(run);
    const bool isNegative = !bytes.empty() && (bytes.back() & std::byte{0x80}) != std::byte{0};
    Wide number = isNegative ? -1 : 0;
    if (!bytes.empty())
        std::memcpy(&number, bytes.data(), bytes.size());
    return number;
}

/// Of runs twice as long.
RunSums joinedInPairs(const RunSums& sums, std::size_t runs)
{
    SumsInWork joined((runs + 1) / 2);
    for (std::size_t run = 0; run < runs; run += 2) {
        const bool hasNext = run + 1 < runs;
        if (sums.width < sizeof(Wide)) {
            joined.add(sums.at, shortTotal(sums, run) + (hasNext ? shortTotal(sums, run + 1) : 0));
            continue;
        }
        ExactTotal total = writtenTotal(sums, run);
        if (hasNext)
            total.add(writtenTotal(sums, run + 1));
        joined.add(total);
    }
    return joined.finished();
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
    SumsInWork sums(totals.size());
    for (const ExactTotal& total : totals)
        sums.add(total);
    return sums.finished();
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
    ColumnIndex made{count, whole, sum, runLength * 2, {}, joinedInPairs(sums, runs.size())};
    made.runs.reserve((runs.size() + 1) / 2);
    for (std::size_t run = 0; run < runs.size(); run += 2) {
        RunFigures& figures = made.runs.emplace_back(runs[run]);
        if (run + 1 < runs.size())
            figures.append(runs[run + 1], runLength);
    }
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
    const std::size_t runs = (count + kRun - 1) / kRun;
    SumsInWork sums(runs);
    index.runs.reserve(runs);
    for (std::size_t begin = 0; begin < count; begin += kRun) {
        const Run run(column, begin, std::min(kRun, count - begin));
        const ColumnKernels::Sum sum = sumOfRun(column, begin, run.count);
        if (summary)
            summary->add(sum);
        const RunFigures& figures = index.runs.emplace_back(figuresOf(run, sum, index.sum, sums));
        index.whole.append(figures, begin);
    }
    addInfinities(index.whole, index.sum);
    index.sums = sums.finished();
    return index;
}

RunTimes runTimesOf(std::span<const double> times)
{
    RunTimes runs{kRun, {}, {}};
    runs.first.reserve((times.size() + kRun - 1) / kRun);
    runs.last.reserve(runs.first.capacity());
    for (std::size_t begin = 0; begin < times.size(); begin += kRun) {
        runs.first.push_back(times[begin]);
        runs.last.push_back(times[std::min(begin + kRun, times.size()) - 1]);
    }
    return runs;
}

}  // namespace plotix
