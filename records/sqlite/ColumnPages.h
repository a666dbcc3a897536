#pragma once

#include "base/PagedMemory.h"
#include "records/sqlite/ReaderMark.h"
#include "records/sqlite/SegmentReader.h"
#include "records/sqlite/SpanNotes.h"
#include "records/store/RecordColumns.h"

#include <memory>
#include <vector>

/// Columns of a span of records that are unpacked from the file page by page.
namespace plotix {

/// Which records a span has, as they were when it was asked for. The contents of a chunk id never change, and while the
/// span is marked they stay in the file, so that they can be read at any time. *Shared* by the columns of the span; any
/// thread reads, nobody changes it.
struct PackedSpan {
    PackedSpan(std::shared_ptr<ReadConnections> from, std::vector<ChunkPart> chunks, Records behind,
               std::unique_ptr<ReaderMark> wanted)
        : lender(std::move(from)), parts(std::move(chunks)), tail(std::move(behind)), mark(std::move(wanted))
    {
    }
    std::size_t inChunks() const { return parts.empty() ? 0 : parts.back().target + parts.back().count; }
    std::size_t size() const { return inChunks() + tail.size(); }

    const std::shared_ptr<ReadConnections> lender;
    const std::vector<ChunkPart> parts;      ///< in time order, none of them empty
    const Records tail;                      ///< the records behind them
    const std::unique_ptr<ReaderMark> mark;  ///< null: chunks that are removed may be gone
    const std::shared_ptr<ColumnFailure> failure = std::make_shared<ColumnFailure>();
    const std::unique_ptr<SpanNotes> notes = std::make_unique<SpanNotes>();
};

/// The values of a property with their validity, or the times. See RecordColumns for what stands where something cannot
/// be read.
class ColumnPages final : public PagedMemory {
public:
    /// What is known of the column. `absent`: by part, whether the chunk has no such column; empty: all have.
    struct Kind {
        RowId property = kTimes;
        std::vector<bool> absent;
        bool isAllValid = true;
        friend bool operator==(const Kind&, const Kind&) = default;
    };
    ColumnPages(std::shared_ptr<PageCache> cache, std::shared_ptr<const PackedSpan> span, Kind kind);

    PagedArray<double> values() const { return {shared_from_this(), m_values, elements()}; }
    ValidityBitmap validity() const;
    /// Whether the other one would serve as well.
    bool isLike(const ColumnPages& other) const
    {
        return cache() == other.cache() && m_span == other.m_span && m_kind == other.m_kind;
    }

private:
    class Unpacking;
    bool fill(std::size_t first, std::size_t end) const noexcept override;
    std::optional<bool> readPast(std::size_t first, std::size_t end, const Show& show) const override;

    const std::shared_ptr<const PackedSpan> m_span;
    const Kind m_kind;
    double* const m_values;
    std::uint64_t* const m_words;  ///< null: every element is valid
};

}  // namespace plotix
