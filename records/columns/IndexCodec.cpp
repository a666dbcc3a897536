#include "records/columns/IndexCodec.h"

#include "records/columns/Checksum.h"
#include "records/columns/ColumnCodec.h"
#include "records/columns/IndexBytes.h"
#include "records/columns/IndexLayout.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>

namespace plotix::indexcodec {

namespace {

using Point = RunFigures::Point;

constexpr std::size_t kUsualBytes = 2048;  // that an index takes

enum WholeFlag : std::uint16_t { kLeastIsMinusZero = 1, kGreatestIsMinusZero = 2, kHasRuns = 4 };
struct WholeHead {
    std::uint16_t flags = 0;
    std::uint16_t sumAt = 0;
    std::uint16_t firstAt = 0, lastAt = 0, leastAt = 0, greatestAt = 0;
    double first = 0, last = 0;
};

constexpr std::size_t kWholeHead = 28;  // bytes
constexpr std::size_t kMostOfWhole = kWholeHead + ExactTotal::kBytes;

bool isMinusZero(double value)
{
    return value == 0 && std::signbit(value);
}

std::uint64_t bitsOf(double value)
{
    return std::bit_cast<std::uint64_t>(value);
}

/// The checksum of what is said of a whole column: of the summary's numbers with it, as a table gives them back, which
/// is −0.0 as 0.0, and a sum that is none as one and the same NaN.
std::uint64_t checksumOf(std::span<const std::byte> body, const Summary& summary, const Owner& owner)
{
    const std::uint64_t numbers[] = {owner.property,
                                     owner.count,
                                     summary.valid,
                                     bitsOf(summary.minimum + 0.0),
                                     bitsOf(summary.maximum + 0.0),
                                     bitsOf(std::isnan(summary.sum) ? absentValue() : summary.sum + 0.0)};
    // In one piece: the checksum of few bytes costs little more than its call.
    std::array<std::byte, sizeof numbers + kMostOfWhole> bytes;
    std::memcpy(bytes.data(), numbers, sizeof numbers);
    std::memcpy(bytes.data() + sizeof numbers, body.data(), body.size());
    return checksum::of(std::span<const std::byte>(bytes.data(), sizeof numbers + body.size()));
}

std::size_t lengthOf(const ColumnIndex& index, std::size_t run)
{
    return std::min(index.runLength, index.count - run * index.runLength);
}

bool countsEveryElement(const ColumnIndex& index)
{
    for (std::size_t run = 0; run < index.runs.size(); ++run)
        if (index.runs[run].valid != lengthOf(index, run))
            return false;
    return true;
}

/// A value for a run that has none: it costs nothing, being the one before.
codec::Encoded packedPoints(const ColumnIndex& index, schema::Codec packed)
{
    std::vector<double> values;
    values.reserve(index.runs.size() * 4);
    for (const auto point : {&RunFigures::first, &RunFigures::last, &RunFigures::least, &RunFigures::greatest})
        for (const RunFigures& run : index.runs)
            values.push_back(run.valid > 0 || values.empty() ? (run.*point).value : values.back());
    // Few values without a decimal pattern hardly get shorter.
    return packed == schema::Codec::Raw || packed == schema::Codec::Pattern ? codec::plainValues(values)
                                                                            : codec::encodedValues(values);
}

void putPlaces(const ColumnIndex& index, const RunHead& head, BytesWriter& to)
{
    const unsigned bits = kRunBits + head.doublings;
    const bool everyElement = (head.flags & kEveryElementCounts) != 0;
    for (const RunFigures& run : index.runs) {
        if (!everyElement) {
            to.putBits(run.valid, bits + 1);
            to.putBits(run.first.at, bits);
            to.putBits(run.last.at, bits);
        }
        to.putBits(run.least.at, bits);
        to.putBits(run.greatest.at, bits);
    }
    to.finishBits();
}

void takePlaces(BytesReader& from, const RunHead& head, ColumnIndex& index)
{
    const unsigned bits = kRunBits + head.doublings;
    const bool everyElement = (head.flags & kEveryElementCounts) != 0;
    for (std::size_t run = 0; run < index.runs.size(); ++run) {
        RunFigures& figures = index.runs[run];
        figures.valid = lengthOf(index, run);
        figures.last.at = figures.valid - 1;
        if (!everyElement) {
            figures.valid = from.takeBits(bits + 1);
            figures.first.at = from.takeBits(bits);
            figures.last.at = from.takeBits(bits);
        }
        figures.least.at = from.takeBits(bits);
        figures.greatest.at = from.takeBits(bits);
    }
    from.finishBits();
}

void setPoints(const std::vector<double>& values, ColumnIndex& index)
{
    auto value = values.begin();
    for (const auto point : {&RunFigures::first, &RunFigures::last, &RunFigures::least, &RunFigures::greatest})
        for (RunFigures& run : index.runs)
            (run.*point).value = *value++;
    for (RunFigures& run : index.runs)
        if (run.valid == 0)
            run = {};
}

/// What the runs take at least: everything but the values of their points.
std::size_t leastBytesOf(const ColumnIndex& index)
{
    const unsigned bits = kRunBits + static_cast<unsigned>(std::countr_zero(index.runLength / kRun));
    const std::size_t places = index.runs.size() * (countsEveryElement(index) ? 2 * bits : 5 * bits + 1);
    return sizeof(RunHead) + (places + 7) / 8 + index.sums.bytes.size() + checksum::kBytes;
}

std::vector<std::byte> written(const ColumnIndex& index, schema::Codec packed, const Owner& owner)
{
    const codec::Encoded points = packedPoints(index, packed);
    RunHead head;
    head.doublings = static_cast<std::uint8_t>(std::countr_zero(index.runLength / kRun));
    head.flags = countsEveryElement(index) ? kEveryElementCounts : 0;
    head.codec = static_cast<std::uint8_t>(points.codec);
    head.bytes = static_cast<std::uint16_t>(points.bytes.size());
    head.sumAt = static_cast<std::uint16_t>(index.sums.at);
    head.sumWidth = static_cast<std::uint16_t>(index.sums.width);
    BytesWriter to(kUsualBytes);
    to.put(head);
    to.putBytes(points.bytes);
    putPlaces(index, head, to);
    to.putBytes(index.sums.bytes);
    checksum::seal(to.bytes, checksumBefore(owner));
    return std::move(to.bytes);
}

}  // namespace

std::vector<std::byte> writtenWhole(const ColumnIndex& index, const Summary& summary, bool hasRuns, const Owner& owner)
{
    // Its infinities are in the summary's extremes.
    const ExactTotal::Written sum = index.sum.written();
    const auto at = [](const Point& point) { return static_cast<std::uint16_t>(point.at); };
    const RunFigures& whole = index.whole;
    WholeHead head{0,
                   static_cast<std::uint16_t>(sum.at),
                   at(whole.first),
                   at(whole.last),
                   at(whole.least),
                   at(whole.greatest),
                   whole.first.value,
                   whole.last.value};
    head.flags = static_cast<std::uint16_t>((isMinusZero(whole.least.value) ? kLeastIsMinusZero : 0) |
                                            (isMinusZero(whole.greatest.value) ? kGreatestIsMinusZero : 0) |
                                            (hasRuns ? kHasRuns : 0));
    BytesWriter to(kUsualBytes);
    to.put(head.flags);
    to.put(head.sumAt);
    for (const std::uint16_t place : {head.firstAt, head.lastAt, head.leastAt, head.greatestAt})
        to.put(place);
    to.put(head.first);
    to.put(head.last);
    to.putBytes(sum.bytes());
    checksum::append(to.bytes, checksumOf(to.bytes, summary, owner));
    return std::move(to.bytes);
}

bool isIntact(std::span<const std::byte> bytes, const Summary& summary, const Owner& owner)
{
    if (bytes.size() < checksum::kBytes || bytes.size() > kMostOfWhole + checksum::kBytes)
        return false;
    const std::span<const std::byte> body = checksum::withoutSeal(bytes);
    const std::uint64_t sum = checksumOf(body, summary, owner);
    return std::memcmp(&sum, body.data() + body.size(), sizeof sum) == 0;
}

std::optional<WholeFigures> readFigures(std::span<const std::byte> bytes, const Summary& summary, const Owner& owner)
{
    if (!isIntact(bytes, summary, owner))
        return std::nullopt;
    BytesReader from(checksum::withoutSeal(bytes));
    WholeHead head;
    head.flags = from.take<std::uint16_t>();
    head.sumAt = from.take<std::uint16_t>();
    for (std::uint16_t* place : {&head.firstAt, &head.lastAt, &head.leastAt, &head.greatestAt})
        *place = from.take<std::uint16_t>();
    head.first = from.take<double>();
    head.last = from.take<double>();
    WholeFigures read;
    read.sumAt = head.sumAt;
    read.sum = from.takeBytes(from.left());
    read.hasRuns = (head.flags & kHasRuns) != 0;
    const auto signedZero = [&](double value, WholeFlag flag) {
        return value != 0 ? value : (head.flags & flag) != 0 ? -0.0 : 0.0;
    };
    if (summary.valid > 0)
        read.figures = {summary.valid,
                        {head.first, head.firstAt},
                        {head.last, head.lastAt},
                        {signedZero(summary.minimum, kLeastIsMinusZero), head.leastAt},
                        {signedZero(summary.maximum, kGreatestIsMinusZero), head.greatestAt}};
    const bool isRead =
        from.isWhole() && read.sumAt + read.sum.size() < ExactTotal::kBytes && isPossible(read.figures, owner.count);
    return isRead ? std::optional(read) : std::nullopt;
}

void WholeFigures::addSumTo(ExactTotal& total) const
{
    total.add(sumAt, sum);
    if (figures.valid > 0 && figures.greatest.value == kInfinity)
        total.add(kInfinity);
    if (figures.valid > 0 && figures.least.value == -kInfinity)
        total.add(-kInfinity);
}

std::optional<Whole> readWhole(std::span<const std::byte> bytes, const Summary& summary, const Owner& owner)
{
    const std::optional<WholeFigures> figures = readFigures(bytes, summary, owner);
    if (!figures)
        return std::nullopt;
    Whole read;
    read.hasRuns = figures->hasRuns;
    read.index.count = owner.count;
    read.index.whole = figures->figures;
    figures->addSumTo(read.index.sum);
    return read;
}

std::vector<std::byte> writtenRuns(const ColumnIndex& index, schema::Codec packed, std::size_t limit,
                                   const Owner& owner)
{
    ColumnIndex coarser;
    for (const ColumnIndex* each = &index; each->runs.size() > 1; each = &coarser) {
        if (leastBytesOf(*each) <= limit) {
            std::vector<std::byte> bytes = written(*each, packed, owner);
            if (bytes.size() <= limit)
                return bytes;
        }
        coarser = each->coarser();
    }
    return {};
}

bool readRuns(std::span<const std::byte> bytes, const Owner& owner, ColumnIndex& index)
{
    if (!checksum::isIntact(bytes, checksumBefore(owner)))
        return false;
    BytesReader from(checksum::withoutSeal(bytes));
    const auto head = from.take<RunHead>();
    if (head.doublings > kMostDoublings || (head.flags & ~kEveryElementCounts) != 0)
        return false;
    ColumnIndex read;
    read.count = owner.count;
    read.runLength = kRun << head.doublings;
    read.runs.resize(runsOf(owner.count, read.runLength));
    std::vector<double> values(read.runs.size() * 4);
    if (!codec::decode(head.codec, from.takeBytes(head.bytes), values.size(), nullptr, 0, values))
        return false;
    takePlaces(from, head, read);
    const std::span<const std::byte> sums = from.takeBytes(read.runs.size() * head.sumWidth);
    if (!from.isWhole() || from.left() > 0 || head.sumAt + std::size_t{head.sumWidth} >= ExactTotal::kBytes)
        return false;
    for (std::size_t run = 0; run < read.runs.size(); ++run)
        if (!isPossible(read.runs[run], lengthOf(read, run)))
            return false;
    setPoints(values, read);
    index.runLength = read.runLength;
    index.runs = std::move(read.runs);
    index.sums = {head.sumAt, head.sumWidth, {sums.begin(), sums.end()}};
    return true;
}

std::vector<std::byte> writtenTimes(const RunTimes& times, const Owner& owner)
{
    if (times.first.size() < 2)
        return {};
    const codec::Encoded first = codec::encodedTimes(times.first);
    const codec::Encoded last = codec::encodedTimes(times.last);
    RunHead head;
    head.flags = kTimesOfRuns;
    head.codec = static_cast<std::uint8_t>(first.codec);
    head.codecBehind = static_cast<std::uint8_t>(last.codec);
    head.bytes = static_cast<std::uint16_t>(first.bytes.size());
    head.bytesBehind = static_cast<std::uint16_t>(last.bytes.size());
    BytesWriter to(kUsualBytes);
    to.put(head);
    to.putBytes(first.bytes);
    to.putBytes(last.bytes);
    checksum::seal(to.bytes, checksumBefore(owner));
    return std::move(to.bytes);
}

std::optional<RunTimes> readTimes(std::span<const std::byte> bytes, const Owner& owner)
{
    if (!checksum::isIntact(bytes, checksumBefore(owner)))
        return std::nullopt;
    BytesReader from(checksum::withoutSeal(bytes));
    const auto head = from.take<RunHead>();
    if (head.doublings != 0 || head.flags != kTimesOfRuns)
        return std::nullopt;
    RunTimes times{kRun, {}, {}};
    times.first.resize(runsOf(owner.count, kRun));
    times.last.resize(times.first.size());
    const std::span<const std::byte> first = from.takeBytes(head.bytes);
    const std::span<const std::byte> last = from.takeBytes(head.bytesBehind);
    const bool isRead = from.isWhole() && from.left() == 0 &&
                        codec::decode(head.codec, first, times.first.size(), nullptr, 0, times.first) &&
                        codec::decode(head.codecBehind, last, times.last.size(), nullptr, 0, times.last);
    return isRead ? std::optional(std::move(times)) : std::nullopt;
}

}  // namespace plotix::indexcodec
