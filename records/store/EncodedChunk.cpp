#include "records/store/EncodedChunk.h"

#include "records/columns/IndexCodec.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <cassert>

namespace plotix {

namespace {

bool isAbsent(const RecordsView::Column& column, std::size_t count)
{
    const double absent = absentValue();
    for (std::size_t i = 0; i < count; ++i)
        if (bits::get(column.valid, column.firstValid + i, 1) != 0 ||
            std::memcmp(&column.values[i], &absent, sizeof absent) != 0)
            return false;
    return true;
}

sealed::Owner ownerOf(const EncodedChunk::Segment& segment, std::size_t count)
{
    const auto valid = std::as_bytes(std::span(segment.valid));
    return {static_cast<std::uint64_t>(segment.property), count, valid.empty() ? valid : valid.first((count + 7) / 8)};
}

/// Answers what an outline needs of it.
ChunkFigures::Column addIndex(EncodedChunk::Segment& segment, const RecordsView::Column& column, std::size_t count)
{
    const indexcodec::Owner owner{static_cast<std::uint64_t>(segment.property), count};
    SummaryInWork summary;
    const ColumnIndex index = indexOf(column, count, &summary);
    segment.summary = summary.finished();
    const std::size_t packed = segment.values.bytes.size() + (segment.valid.empty() ? 0 : (count + 7) / 8);
    const std::size_t limit = packed / kIndexShare;
    if (limit > indexcodec::kUsualWhole)
        segment.runs = indexcodec::writtenRuns(index, segment.values.codec, limit - indexcodec::kUsualWhole, owner);
    segment.whole = indexcodec::writtenWhole(index, segment.summary, !segment.runs.empty(), owner);
    return ChunkFigures::Column::of(segment.property, index);
}

EncodedChunk::Segment encodedTimes(const RecordsView& records, const RunTimes& runs)
{
    EncodedChunk::Segment segment;
    segment.values = codec::encodedTimes({records.times, records.size});
    segment.runs = indexcodec::writtenTimes(runs, {kTimes, records.size});
    sealed::seal(segment.values, ownerOf(segment, records.size));
    return segment;
}

EncodedChunk::Segment encodedSegment(const RecordsView::Column& column, std::size_t count, ChunkFigures& figures)
{
    EncodedChunk::Segment segment;
    segment.property = column.property;
    segment.values = codec::encodedValues({column.values, count}, column.valid, column.firstValid);
    if (!bits::allSet(column.valid, column.firstValid, count)) {
        segment.valid.assign(bits::wordsFor(count), 0);
        bits::copy(column.valid, column.firstValid, segment.valid.data(), 0, count);
    }
    figures.columns.push_back(addIndex(segment, column, count));
    sealed::seal(segment.values, ownerOf(segment, count));
    return segment;
}

}  // namespace

EncodedChunk encodedChunk(const RecordsView& records)
{
    assert(records.size > 0 && records.size <= schema::kRecordsPerChunk);
    EncodedChunk chunk{records.times[0], records.times[records.size - 1], records.size, {}, {}};
    std::vector<const RecordsView::Column*> columns;
    for (const RecordsView::Column& column : records.columns)
        if (!isAbsent(column, records.size))
            columns.push_back(&column);
    std::sort(columns.begin(), columns.end(), [](const auto* a, const auto* b) { return a->property < b->property; });
    chunk.segments.reserve(columns.size() + 1);
    chunk.figures.times = runTimesOf({records.times, records.size});
    chunk.segments.push_back(encodedTimes(records, chunk.figures.times));
    for (const RecordsView::Column* column : columns)
        chunk.segments.push_back(encodedSegment(*column, records.size, chunk.figures));
    return chunk;
}

}  // namespace plotix
