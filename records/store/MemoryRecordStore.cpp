#include "records/store/MemoryRecordStore.h"

#include "records/columns/ColumnFormat.h"
#include "records/columns/ColumnView.h"
#include "records/store/MemoryWriting.h"
#include "records/store/RecordsInMemory.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

using Element = RecordsInMemory::Element;
using Elements = RecordsInMemory::Elements;
using Timeline = RecordsInMemory::Timeline;
using Timelines = RecordsInMemory::Timelines;
using Contents = RecordsInMemory::Contents;

const Timeline& timelineOf(const Timelines& timelines, RowId agent)
{
    static const Timeline none;
    const auto found = timelines.find(agent);
    return found != timelines.end() ? found->second : none;
}

std::optional<RecordExtent> extentOf(const Timeline& timeline)
{
    if (timeline.empty())
        return std::nullopt;
    return RecordExtent{timeline.begin()->first, timeline.rbegin()->first};
}

/// Absent bounds are open.
struct Bounds {
    Bounds(std::optional<double> lower, std::optional<double> upper)
        : from(lower.value_or(-std::numeric_limits<double>::infinity())),
          to(upper.value_or(std::numeric_limits<double>::infinity()))
    {
    }
    double from, to;
};

/// Records with from ≤ time ≤ to; none when a bound is NaN or from > to.
struct Slice {
    Slice(const Timeline& timeline, const Bounds& bounds)
        : begin(bounds.from <= bounds.to ? timeline.lower_bound(bounds.from) : timeline.end()),
          end(bounds.from <= bounds.to ? timeline.upper_bound(bounds.to) : timeline.end())
    {
    }
    std::size_t size() const { return static_cast<std::size_t>(std::distance(begin, end)); }
    Timeline::const_iterator begin, end;
};

Element elementOf(const Elements& elements, RowId property)
{
    const auto found = elements.find(property);
    return found != elements.end() ? found->second : Element{absentValue(), false};
}

RecordBlock::Column columnOf(const Slice& slice, RowId property)
{
    std::vector<double> values;
    std::vector<std::uint64_t> valid((slice.size() + 63) / 64, 0);
    bool isAllValid = true;
    for (auto record = slice.begin; record != slice.end; ++record) {
        const Element element = elementOf(record->second, property);
        valid[values.size() / 64] |= std::uint64_t{element.valid} << (values.size() % 64);
        isAllValid = isAllValid && element.valid;
        values.push_back(element.value);
    }
    return {property, SharedArray<double>::fromVector(std::move(values)),
            isAllValid ? ValidityBitmap() : ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(valid)))};
}

RecordBlock blockOf(const Slice& slice, std::span<const RowId> properties)
{
    std::vector<double> times;
    for (auto record = slice.begin; record != slice.end; ++record)
        times.push_back(record->first);
    RecordBlock block{SharedArray<double>::fromVector(std::move(times)), {}};
    for (const RowId property : properties)
        block.columns.push_back(columnOf(slice, property));
    return block;
}

void count(double value, RecordOverview::Summary& into)
{
    into.minimum = into.valid == 0 ? value : std::min(into.minimum, value);
    into.maximum = into.valid == 0 ? value : std::max(into.maximum, value);
    into.sum += value;
    ++into.valid;
}

RecordOverview::Summary summaryIn(Timeline::const_iterator begin, Timeline::const_iterator end, RowId property)
{
    RecordOverview::Summary summary;
    for (auto record = begin; record != end; ++record)
        if (const Element element = elementOf(record->second, property); element.valid && !std::isnan(element.value))
            count(element.value, summary);
    return summary;
}

/// The runs whose time overlaps the bounds, each with its summaries.
RecordOverview overviewOf(const Timeline& timeline, std::span<const RowId> properties, const Bounds& bounds)
{
    RecordOverview overview;
    for (const RowId property : properties)
        overview.columns.push_back({property, {}});
    for (auto begin = timeline.begin(); begin != timeline.end();) {
        auto end = begin;
        std::size_t records = 0;
        for (; end != timeline.end() && records < schema::kRecordsPerChunk; ++end)
            ++records;
        const RecordOverview::Run run{begin->first, std::prev(end)->first, records};
        if (run.t1 >= bounds.from && run.t0 <= bounds.to) {
            overview.runs.push_back(run);
            for (RecordOverview::Column& column : overview.columns)
                column.summaries.push_back(summaryIn(begin, end, column.property));
        }
        begin = end;
    }
    return overview;
}

/// In the simplest way: one value after the other.
ColumnIndex plainIndex(const RecordBlock::Column& column, std::size_t count, RecordIndex::Detail detail)
{
    constexpr std::size_t kRun = 512;
    ColumnIndex index;
    index.count = count;
    index.runLength = detail == RecordIndex::Detail::Runs ? kRun : 0;
    std::vector<ExactTotal> totals;
    for (std::size_t i = 0; i < count; ++i) {
        if (i % kRun == 0) {
            index.runs.emplace_back();
            totals.emplace_back();
        }
        const double value = column.values[i];
        if (!column.validity.isValid(i) || std::isnan(value))
            continue;
        const RunFigures one{1, {value, 0}, {value, 0}, {value, 0}, {value, 0}};
        index.whole.append(one, i);
        index.runs.back().append(one, i % kRun);
        index.sum.add(value);
        if (std::isfinite(value))
            totals.back().add(value);
    }
    if (index.runLength == 0)
        index.runs.clear();
    else
        index.sums = RunSums::of(totals);
    return index;
}

RecordIndex indexIn(const Timeline& timeline, std::span<const RowId> properties, const Bounds& bounds,
                    RecordIndex::Detail detail)
{
    RecordIndex found;
    for (const RecordOverview::Run& run : overviewOf(timeline, {}, bounds).runs) {
        const RecordBlock block = blockOf(Slice(timeline, Bounds(run.t0, run.t1)), properties);
        RecordIndex::Piece& piece = found.pieces.emplace_back(RecordIndex::Piece{run.t0, run.t1, run.records, {}, {}});
        if (detail == RecordIndex::Detail::Runs)
            piece.times = runTimesOf(block.times.span());
        for (const RecordBlock::Column& column : block.columns)
            piece.columns.push_back(
                {column.property, RecordIndex::Source::Records, plainIndex(column, run.records, detail)});
    }
    return found;
}

std::shared_ptr<RecordStore> storeOf(std::shared_ptr<RecordsInMemory> records)
{
    return std::make_shared<MemoryRecordStore>(std::move(records));
}

}  // namespace

MemoryRecordStore::MemoryRecordStore() : m_records(std::make_shared<RecordsInMemory>()) {}
MemoryRecordStore::MemoryRecordStore(std::shared_ptr<RecordsInMemory> records) : m_records(std::move(records)) {}
MemoryRecordStore::~MemoryRecordStore() = default;

void MemoryRecordStore::addProperty(RowId agent, RowId property)
{
    m_records->addProperty(agent, property);
}

std::optional<RecordExtent> MemoryRecordStore::extent(RowId agent)
{
    return m_records->seen([&](const Timelines& timelines) { return extentOf(timelineOf(timelines, agent)); });
}

std::optional<RecordExtent> MemoryRecordStore::extent()
{
    return m_records->seen([](const Timelines& timelines) {
        std::optional<RecordExtent> extent;
        for (const auto& [agent, timeline] : timelines)
            extent = united(extent, extentOf(timeline));
        return extent;
    });
}

RecordOverview MemoryRecordStore::overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                           std::optional<double> to)
{
    return m_records->seen([&](const Timelines& timelines) {
        return overviewOf(timelineOf(timelines, agent), properties, Bounds(from, to));
    });
}

RecordIndex MemoryRecordStore::index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                     std::optional<double> to, RecordIndex::Detail detail)
{
    return m_records->seen([&](const Timelines& timelines) {
        return indexIn(timelineOf(timelines, agent), properties, Bounds(from, to), detail);
    });
}

std::optional<RecordBlock> MemoryRecordStore::read(RowId agent, std::span<const RowId> properties,
                                                   std::optional<double> from, std::optional<double> to,
                                                   const ArchiveProgress& progress)
{
    if (progress && !progress(0))
        return std::nullopt;
    RecordBlock block = m_records->seen([&](const Timelines& timelines) {
        return blockOf(Slice(timelineOf(timelines, agent), Bounds(from, to)), properties);
    });
    if (progress && !progress(1))
        return std::nullopt;
    return block;
}

ColumnStatistics MemoryRecordStore::statistics(RowId agent, RowId property, std::optional<double> from,
                                               std::optional<double> to, StatisticsFrom)
{
    return m_records->seen([&](const Timelines& timelines) -> ColumnStatistics {
        const Slice slice(timelineOf(timelines, agent), Bounds(from, to));
        const RecordOverview::Summary summary = summaryIn(slice.begin, slice.end, property);
        if (summary.valid == 0)
            return {};
        return {summary.valid, summary.minimum, summary.maximum, summary.sum / static_cast<double>(summary.valid)};
    });
}

std::vector<Amendment> MemoryRecordStore::amendments(RowId, std::span<const RowId> properties,
                                                     std::optional<double> from, std::optional<double> to)
{
    const Bounds bounds(from, to);
    std::vector<Amendment> found;
    for (const RowId property : properties) {
        std::vector<Amendment> all = m_records->amendmentsOf(property);
        std::erase_if(all, [&](const Amendment& each) { return each.from > bounds.to || each.to < bounds.from; });
        std::stable_sort(all.begin(), all.end(), [](const Amendment& one, const Amendment& other) {
            return std::pair(one.from, one.to) < std::pair(other.from, other.to);
        });
        found.insert(found.end(), all.begin(), all.end());
    }
    return found;
}

std::unique_ptr<RecordTransaction> MemoryRecordStore::begin()
{
    return transactionOn(m_records, &storeOf);
}

std::unique_ptr<RecordAppender> MemoryRecordStore::appender()
{
    return appenderTo(m_records, &storeOf);
}

CompactionResult MemoryRecordStore::compact(const CompactionRequest& request, const ArchiveProgress& progress)
{
    CompactionResult result;
    const RecordsInMemory::Turn turn = m_records->turn(kWritersPatience);
    result.stopped = progress && !progress(0);
    m_records->changed([&](Contents& contents) {
        if (request.dropBefore && !result.stopped)
            for (auto& [property, amendments] : contents.amendments)
                remove(-HUGE_VAL, std::nextafter(*request.dropBefore, -HUGE_VAL), amendments);
        for (auto& [agent, timeline] : contents.timelines) {
            const std::size_t before = timeline.size();
            if (request.dropBefore && !result.stopped)
                timeline.erase(timeline.begin(), timeline.lower_bound(*request.dropBefore));
            result.dropped += before - timeline.size();
            result.records += timeline.size();
        }
    });
    if (!result.stopped && progress)
        progress(1);
    return result;
}

VerificationResult MemoryRecordStore::verify(const ArchiveProgress& progress, std::uint64_t)
{
    VerificationResult result;
    result.stopped = progress && !progress(0);
    if (result.stopped)
        return result;
    m_records->seen([&](const Timelines& timelines) {
        for (const auto& [agent, timeline] : timelines)
            for (const auto& [time, elements] : timeline) {
                ++result.records;
                result.values += static_cast<std::size_t>(std::count_if(
                    elements.begin(), elements.end(), [](const auto& each) { return each.second.valid; }));
            }
    });
    if (progress)
        progress(1);
    return result;
}

}  // namespace plotix
