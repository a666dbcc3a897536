#pragma once

#include "records/sqlite/ColumnPages.h"

#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <utility>
#include <vector>

/// Spans of records that somebody shows now, for whoever asks for them once more, or for records that are partly the
/// same: a second trend of ten years, a range that was moved, a trend that follows what is recorded.
namespace plotix {

/// Refers to spans and keeps none. *Owned* by a store; any thread.
class SharedSpans {
public:
    using Spans = std::vector<std::shared_ptr<const PackedSpan>>;

    /// The span of the very same records that somebody has already, else this one, which is known from now on. One of
    /// which something could not be read is as good as none: whoever asks again wants it tried again.
    std::shared_ptr<const PackedSpan> shared(RowId agent, std::shared_ptr<const PackedSpan> span);
    /// All of an agent, the latest one first.
    Spans ofAgent(RowId agent);

private:
    Spans spansOf(RowId agent);  // with the mutex held

    std::mutex m_mutex;
    std::vector<std::pair<RowId, std::weak_ptr<const PackedSpan>>> m_spans;
};

/// Notes of outlines: into a span, from it and from others. Keeps these as long as it lives; any thread.
class NotedOutlines {
public:
    NotedOutlines(std::shared_ptr<const PackedSpan> span, SharedSpans::Spans others)
        : m_span(std::move(span)), m_others(std::move(others))
    {
    }

    /// `parts` of the span. Nothing where it is not noted anywhere.
    std::optional<KnownRuns> of(const Outline& outline, std::span<const ChunkPart> parts,
                                std::span<const RowId> properties) const;
    void keep(const Outline& outline, std::span<const ChunkPart> parts, std::span<const RowId> properties,
              const KnownRuns& known) const
    {
        m_span->notes->keep(outline, parts, properties, known);
    }

private:
    const std::shared_ptr<const PackedSpan> m_span;
    const SharedSpans::Spans m_others;
};

}  // namespace plotix
