// Columns that are unpacked where somebody looks: the span and what is known of it are read at once, values later.

#include "records/sqlite/ColumnPages.h"
#include "records/sqlite/RunsReading.h"
#include "records/sqlite/SharedSpans.h"
#include "records/sqlite/SqliteReader.h"

#include <algorithm>

namespace plotix {

namespace {

/// The same records in pages, those of the span's answers before where there are such.
SpanNotes::Answer paged(const std::shared_ptr<const PackedSpan>& span, std::span<const RowId> properties,
                        KnownRuns&& known, const std::shared_ptr<PageCache>& cache)
{
    SpanNotes::Answer answer;
    answer.runs = std::make_shared<const TimeRuns>(std::move(known.times));
    answer.times = std::make_shared<const ColumnPages>(cache, span, ColumnPages::Kind());
    for (std::size_t i = 0; i < properties.size(); ++i) {
        KnownRuns::Column& column = known.columns[i];
        answer.columns.push_back(
            {properties[i],
             std::make_shared<const ColumnPages>(
                 cache, span, ColumnPages::Kind{properties[i], std::move(column.absent), column.isAllValid}),
             KeptRuns::joined(std::move(column.runs)), column.total});
    }
    return span->notes->shared(std::move(answer), cache);
}

RecordColumns columnsOf(const PackedSpan& span, const SpanNotes::Answer& answer)
{
    RecordColumns columns;
    columns.failure = span.failure;
    columns.runs = answer.runs;
    columns.times = answer.times->values();
    for (const SpanNotes::Answer::Column& column : answer.columns)
        columns.columns.push_back(
            {column.property, column.pages->values(), column.pages->validity(), column.runs, column.total});
    return columns;
}

}  // namespace

std::optional<RecordColumns> SqliteReader::columns(RowId agent, std::span<const RowId> properties,
                                                   std::optional<double> from, std::optional<double> to,
                                                   const std::shared_ptr<PageCache>& cache,
                                                   const ArchiveProgress& progress, SharedSpans& spans)
{
    const Range range(from, to);
    if (!cache || !hasMoreThan(PagedMemory::kPage, agent, range)) {
        const auto block = read(agent, properties, from, to, progress);
        return block ? std::optional(RecordColumns::resident(*block)) : std::nullopt;
    }
    std::unique_ptr<ReaderMark> mark = ReaderMark::on(m_connection->database.file());
    const ReadTransaction transaction(m_connection->database);
    if (mark)
        mark->settle(m_connection->chunks.highestNumber());
    SegmentReader segments(*m_connection);
    SharedSpans::Spans others = spans.ofAgent(agent);
    const auto span = spans.shared(agent, std::make_shared<const PackedSpan>(
                                              m_lender, partsIn(segments, agent, range),
                                              m_connection->chunks.tail(agent, range.from, range.to), std::move(mark)));
    std::optional<SpanNotes::Answer> answer = span->notes->of(properties, cache);
    if (!answer) {
        const NotedOutlines noted(span, std::move(others));
        RunsReading reading(*m_lender, span->parts, properties, propertiesOf(agent),
                            m_connection->outlines.between(agent, range.from, range.to), noted);
        KnownRuns known(properties.size(), span->size(), span->parts.size() + 1);
        if (!reading.run(*m_connection, progress, known))
            return std::nullopt;
        if (!span->tail.isEmpty())
            known.append(reading.ofTail(*m_connection, span->tail.view(), span->inChunks()));
        known.finish(span->size());
        answer = paged(span, properties, std::move(known), cache);
    }
    if (progress && !progress(1))
        return std::nullopt;
    return columnsOf(*span, *answer);
}

}  // namespace plotix
