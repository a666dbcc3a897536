#include "records/store/EncodedChunk.h"

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

EncodedChunk::Segment encodedSegment(const RecordsView::Column& column, std::size_t count)
{
    EncodedChunk::Segment segment;
    segment.property = column.property;
    segment.values = codec::encodedValues({column.values, count}, column.valid, column.firstValid);
    segment.summary = summaryOf(column, count);
    if (!bits::allSet(column.valid, column.firstValid, count)) {
        segment.valid.assign(bits::wordsFor(count), 0);
        bits::copy(column.valid, column.firstValid, segment.valid.data(), 0, count);
    }
    return segment;
}

}  // namespace

EncodedChunk encodedChunk(const RecordsView& records)
{
    assert(records.size > 0 && records.size <= schema::kRecordsPerChunk);
    EncodedChunk chunk{records.times[0], records.times[records.size - 1], records.size, {}};
    std::vector<const RecordsView::Column*> columns;
    for (const RecordsView::Column& column : records.columns)
        if (!isAbsent(column, records.size))
            columns.push_back(&column);
    std::sort(columns.begin(), columns.end(), [](const auto* a, const auto* b) { return a->property < b->property; });
    chunk.segments.reserve(columns.size() + 1);
    chunk.segments.push_back({kTimes, codec::encodedTimes({records.times, records.size}), {}, {}});
    for (const RecordsView::Column* column : columns)
        chunk.segments.push_back(encodedSegment(*column, records.size));
    return chunk;
}

}  // namespace plotix
