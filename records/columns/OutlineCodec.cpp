#include "records/columns/OutlineCodec.h"

#include "records/columns/Checksum.h"
#include "records/columns/ColumnCodec.h"
#include "records/columns/ColumnKernels.h"
#include "records/columns/ColumnView.h"
#include "records/columns/IndexBytes.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace plotix::outlinecodec {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kUsualBytes = 16384;
static_assert(kMostChunks << kMostDoublings <= schema::kRecordsPerChunk, "runs are packed as the elements of a chunk");

enum Flag : std::uint8_t {
    kHasAbsentChunks = 1,
    kHasEmptyRuns = 2,
    kHasUnknownFirsts = 4,
    kHasPlusInfinity = 8,
    kHasMinusInfinity = 16,
};
constexpr std::uint8_t kAllFlags = 31;

std::uint64_t checksumBefore(const Owner& owner)
{
    const std::uint64_t numbers[] = {owner.property, owner.firstChunk};
    return checksum::of(std::span<const std::uint64_t>(numbers));
}

bool isEmpty(const ValueRuns& runs, std::size_t run)
{
    return !(runs.least[run] <= runs.greatest[run]);
}

template <class Is>
void putBits(std::size_t count, const Is& is, BytesWriter& to)
{
    for (std::size_t i = 0; i < count; ++i)
        to.putBits(is(i) ? 1 : 0, 1);
    to.finishBits();
}

/// Nothing where none are there.
std::vector<bool> takeBits(std::size_t count, bool areThere, BytesReader& from)
{
    std::vector<bool> taken;
    if (!areThere)
        return taken;
    taken.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        taken[i] = from.takeBits(1) != 0;
    from.finishBits();
    return taken;
}

void putColumn(const codec::Encoded& column, BytesWriter& to)
{
    to.put(static_cast<std::uint8_t>(column.codec));
    to.put(static_cast<std::uint32_t>(column.bytes.size()));
    to.putBytes(column.bytes);
}

/// A number for what has none: it costs nothing, being the one before.
template <class Is>
std::vector<double> filledUp(std::vector<double> values, const Is& isThere)
{
    double before = 0;
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = before = isThere(i) ? values[i] : before;
    return values;
}

bool takeColumn(BytesReader& from, std::span<double> values)
{
    const int stored = from.take<std::uint8_t>();
    const auto size = from.take<std::uint32_t>();
    const std::span<const std::byte> bytes = from.takeBytes(size);
    return from.isWhole() && codec::decode(stored, bytes, values.size(), nullptr, 0, values);
}

struct Head {
    Totals totals;
    std::vector<bool> empty, unknownFirst;  // by run; nothing where no run is such
};

/// Leaves `from` where the packed columns begin; nothing where something does not fit.
std::optional<Head> takeHead(BytesReader& from, const Cut& cut)
{
    Head head;
    const auto flags = from.take<std::uint8_t>();
    head.totals.valid = from.take<std::uint64_t>();
    const std::size_t sumAt = from.take<std::uint16_t>();
    const std::size_t sumSize = from.take<std::uint16_t>();
    const std::span<const std::byte> sum = from.takeBytes(sumSize);
    if (!from.isWhole() || (flags & ~kAllFlags) != 0 || sumAt + sumSize >= ExactTotal::kBytes)
        return std::nullopt;
    head.totals.sum.add(sumAt, sum);
    if ((flags & kHasPlusInfinity) != 0)
        head.totals.sum.add(kInfinity);
    if ((flags & kHasMinusInfinity) != 0)
        head.totals.sum.add(-kInfinity);
    const std::size_t runs = cut.runs();
    head.totals.absent = takeBits(cut.records.size(), (flags & kHasAbsentChunks) != 0, from);
    head.totals.absent.resize(cut.records.size());
    head.empty = takeBits(runs, (flags & kHasEmptyRuns) != 0, from);
    head.unknownFirst = takeBits(runs, (flags & kHasUnknownFirsts) != 0, from);
    return from.isWhole() ? std::optional(std::move(head)) : std::nullopt;
}

/// Calls `join(run, end)` for what becomes a run: one run of `cut`, or two of the same chunk.
template <class Join>
void inPairs(const Cut& cut, const Join& join)
{
    std::size_t begin = 0;
    for (std::size_t chunk = 0; chunk < cut.records.size(); ++chunk) {
        const std::size_t end = begin + cut.runsOf(chunk);
        for (; begin < end; begin = std::min(begin + 2, end))
            join(begin, std::min(begin + 2, end));
    }
}

}  // namespace

std::size_t Cut::runs() const
{
    std::size_t count = 0;
    for (std::size_t chunk = 0; chunk < records.size(); ++chunk)
        count += runsOf(chunk);
    return count;
}

Cut Cut::coarser() const
{
    return {doublings + 1, records};
}

ValueRuns coarser(const ValueRuns& fine, const Cut& cut)
{
    ValueRuns joined;
    inPairs(cut, [&](std::size_t run, std::size_t end) {
        double least = kInfinity, greatest = -kInfinity;
        for (std::size_t each = run; each < end; ++each) {
            if (isEmpty(fine, each))
                continue;
            least = fine.least[each] < least ? fine.least[each] : least;
            greatest = fine.greatest[each] > greatest ? fine.greatest[each] : greatest;
        }
        joined.least.push_back(least);
        joined.greatest.push_back(greatest);
        joined.first.push_back(fine.first[run]);
    });
    return joined;
}

std::vector<std::byte> written(const ValueRuns& runs, const Totals& totals, const Cut& cut, const Owner& owner)
{
    const std::size_t count = cut.runs();
    const auto isFilled = [&](std::size_t run) { return !isEmpty(runs, run); };
    const auto isFirstKnown = [&](std::size_t run) { return isFilled(run) && !std::isnan(runs.first[run]); };
    std::uint8_t flags = 0;
    const auto chunkIsAbsent = [&](std::size_t chunk) { return totals.absent[chunk]; };
    if (std::find(totals.absent.begin(), totals.absent.end(), true) != totals.absent.end())
        flags |= kHasAbsentChunks;
    for (std::size_t run = 0; run < count; ++run) {
        flags |= isFilled(run) ? 0 : kHasEmptyRuns;
        flags |= isFilled(run) && !isFirstKnown(run) ? kHasUnknownFirsts : 0;
        if (isFilled(run))
            flags |= (runs.greatest[run] == kInfinity ? kHasPlusInfinity : 0) |
                     (runs.least[run] == -kInfinity ? kHasMinusInfinity : 0);
    }
    const ExactTotal::Written sum = totals.sum.written();
    BytesWriter to(kUsualBytes);
    to.put(flags);
    to.put(static_cast<std::uint64_t>(totals.valid));
    to.put(static_cast<std::uint16_t>(sum.at));
    to.put(static_cast<std::uint16_t>(sum.size));
    to.putBytes(sum.bytes());
    if ((flags & kHasAbsentChunks) != 0)
        putBits(totals.absent.size(), chunkIsAbsent, to);
    if ((flags & kHasEmptyRuns) != 0)
        putBits(
            count, [&](std::size_t run) { return !isFilled(run); }, to);
    if ((flags & kHasUnknownFirsts) != 0)
        putBits(
            count, [&](std::size_t run) { return isFilled(run) && !isFirstKnown(run); }, to);
    putColumn(codec::encodedValues(filledUp(runs.least, isFilled)), to);
    putColumn(codec::encodedValues(filledUp(runs.greatest, isFilled)), to);
    putColumn(codec::encodedValues(filledUp(runs.first, isFirstKnown)), to);
    checksum::seal(to.bytes, checksumBefore(owner));
    return std::move(to.bytes);
}

std::optional<Totals> readTotals(std::span<const std::byte> bytes, const Cut& cut, const Owner& owner)
{
    if (!checksum::isIntact(bytes, checksumBefore(owner)))
        return std::nullopt;
    BytesReader from(checksum::withoutSeal(bytes));
    std::optional<Head> head = takeHead(from, cut);
    return head ? std::optional(std::move(head->totals)) : std::nullopt;
}

namespace {

/// So many of the columns least, greatest and first, in this order.
ValueRuns readColumns(std::span<const std::byte> bytes, const Cut& cut, std::size_t columns)
{
    BytesReader from(checksum::withoutSeal(bytes));
    const std::optional<Head> head = takeHead(from, cut);
    ValueRuns runs;
    const std::array<std::vector<double>*, 3> all{&runs.least, &runs.greatest, &runs.first};
    const std::size_t count = cut.runs();
    bool isRead = head.has_value();
    for (std::vector<double>* column : std::span(all).first(columns)) {
        column->resize(count);
        isRead = isRead && takeColumn(from, *column);
    }
    const auto forget = [&](std::size_t run, double least, double greatest) {
        runs.least[run] = least;
        runs.greatest[run] = greatest;
        if (!runs.first.empty())
            runs.first[run] = absentValue();
    };
    for (std::size_t run = 0; !isRead && run < count; ++run)
        forget(run, absentValue(), absentValue());
    if (!isRead)
        return runs;
    for (std::size_t run = 0; run < head->unknownFirst.size() && !runs.first.empty(); ++run)
        if (head->unknownFirst[run])
            runs.first[run] = absentValue();
    for (std::size_t run = 0; run < head->empty.size(); ++run)
        if (head->empty[run])
            forget(run, kInfinity, -kInfinity);
    return runs;
}

}  // namespace

ValueRuns readRuns(std::span<const std::byte> bytes, const Cut& cut)
{
    return readColumns(bytes, cut, 3);
}

ValueRuns longRunOf(const ValueRuns& runs)
{
    // Lane by lane, which becomes vector instructions.
    constexpr std::size_t kLanes = 8;
    std::array<double, kLanes> least, greatest;
    std::array<std::uint64_t, kLanes> areUnknown{};
    least.fill(kInfinity);
    greatest.fill(-kInfinity);
    const auto take = [&](std::size_t run, std::size_t lanes) {
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            const double low = runs.least[run + lane], high = runs.greatest[run + lane];
            least[lane] = low < least[lane] ? low : least[lane];
            greatest[lane] = high > greatest[lane] ? high : greatest[lane];
            areUnknown[lane] |= static_cast<std::uint64_t>(low != low);
        }
    };
    const std::size_t count = runs.count();
    std::size_t run = 0;
    for (; run + kLanes <= count; run += kLanes)
        take(run, kLanes);
    take(run, count - run);
    if (std::find_if(areUnknown.begin(), areUnknown.end(), [](std::uint64_t is) { return is != 0; }) !=
        areUnknown.end())
        return {{absentValue()}, {absentValue()}, {absentValue()}};
    // Of zeros the first one, which may be negative.
    const auto asFirstMet = [](double value, const std::vector<double>& all) {
        return value == 0 ? *std::find(all.begin(), all.end(), value) : value;
    };
    return {{asFirstMet(*std::min_element(least.begin(), least.end()), runs.least)},
            {asFirstMet(*std::max_element(greatest.begin(), greatest.end()), runs.greatest)},
            {absentValue()}};
}

ValueRuns readLongRun(std::span<const std::byte> bytes, const Cut& cut)
{
    return longRunOf(readColumns(bytes, cut, 2));
}

Times coarser(const Times& fine, const Cut& cut)
{
    Times joined;
    inPairs(cut, [&](std::size_t run, std::size_t end) {
        joined.first.push_back(fine.first[run]);
        joined.last.push_back(fine.last[end - 1]);
    });
    return joined;
}

std::vector<std::byte> written(const Times& times, const Owner& owner)
{
    BytesWriter to(kUsualBytes);
    putColumn(codec::encodedTimes(times.first), to);
    putColumn(codec::encodedTimes(times.last), to);
    checksum::seal(to.bytes, checksumBefore(owner));
    return std::move(to.bytes);
}

std::optional<Times> readTimes(std::span<const std::byte> bytes, const Cut& cut, const Owner& owner)
{
    if (!checksum::isIntact(bytes, checksumBefore(owner)))
        return std::nullopt;
    BytesReader from(checksum::withoutSeal(bytes));
    Times times;
    for (std::vector<double>* column : {&times.first, &times.last}) {
        column->resize(cut.runs());
        if (!takeColumn(from, *column))
            return std::nullopt;
    }
    return from.left() == 0 ? std::optional(std::move(times)) : std::nullopt;
}

}  // namespace plotix::outlinecodec
