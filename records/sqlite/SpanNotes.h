#pragma once

#include "records/sqlite/RunsInWork.h"
#include "records/store/RecordColumns.h"

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace plotix {

class ColumnPages;

/// What was found out of a span of records, for whoever asks for the same records later, or for some of them.
///
/// It refers to columns that others keep, and keeps none itself: once nobody shows them any more, nothing is answered
/// of them. What it answers stays true because the contents of a chunk id, and so what an outline says of its chunks,
/// never change. *Owned* by its span; any thread.
class SpanNotes {
public:
    SpanNotes() = default;
    SpanNotes(const SpanNotes&) = delete;
    SpanNotes& operator=(const SpanNotes&) = delete;
    ~SpanNotes();

    /// What was read of an outline, whose chunks these parts of the span are, of these properties.
    void keep(const Outline& outline, std::span<const ChunkPart> parts, std::span<const RowId> properties,
              const KnownRuns& known);
    /// The same for a span that has the same chunks as these parts of its own. Nothing where it is not noted of all
    /// these properties.
    std::optional<KnownRuns> of(const Outline& outline, std::span<const ChunkPart> parts,
                                std::span<const RowId> properties) const;

    /// What is answered of the whole span: pages, and what is known of them.
    struct Answer {
        struct Column {
            RowId property = 0;
            std::shared_ptr<const ColumnPages> pages;
            std::shared_ptr<const KeptRuns> runs;
            RecordColumns::Total total;
        };
        std::shared_ptr<const TimeRuns> runs;
        std::shared_ptr<const ColumnPages> times;
        std::vector<Column> columns;
    };
    /// The same answer with what is *shared* with those before: all of it where the same was answered before, else what
    /// is equal.
    Answer shared(Answer answer, const std::shared_ptr<PageCache>& cache);
    /// The answer to the same properties, in this order, in this cache, where somebody still has all of it.
    std::optional<Answer> of(std::span<const RowId> properties, const std::shared_ptr<PageCache>& cache) const;

private:
    struct Column {
        std::weak_ptr<const KeptRuns> runs;
        RecordColumns::Total total;
        bool isAllValid = true;
        std::vector<bool> absent;
    };
    struct Outlined {
        std::vector<qint64> chunks;
        outlinecodec::Cut cut;
        std::size_t target = 0;  // element that its first chunk begins with
        std::map<RowId, std::shared_ptr<const Column>> columns;
    };
    /// An answer that is not kept.
    struct Given {
        struct Column {
            RowId property = 0;
            std::weak_ptr<const ColumnPages> pages;
            std::weak_ptr<const KeptRuns> runs;
            RecordColumns::Total total;
        };
        std::weak_ptr<const TimeRuns> runs;
        std::weak_ptr<const ColumnPages> times;
        std::vector<Column> columns;

        bool isOf(std::span<const RowId> properties) const;
        std::optional<Answer> answer() const;
    };
    // With the mutex held.
    std::optional<Answer> answerTo(std::span<const RowId> properties, const std::shared_ptr<PageCache>& cache) const;
    bool takeTimes(const Outlined& noted, std::size_t target, TimeRuns& times) const;

    mutable std::mutex m_mutex;
    std::map<qint64, Outlined> m_outlined;  // by the outline's id
    std::vector<Given> m_given;
};

}  // namespace plotix
