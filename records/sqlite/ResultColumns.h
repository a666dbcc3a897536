#pragma once

#include "records/sqlite/SegmentReader.h"
#include "records/store/RecordBlock.h"

#include <memory>
#include <span>
#include <vector>

namespace plotix {

/// The columns of a read while they are filled. They lie in one piece of uninitialised memory, so that the thread which
/// decodes a part is the first to touch its pages.
///
/// *Owned* by the read. Several threads may fill parts that do not overlap; everything else is for one thread.
class ResultColumns {
public:
    /// Throws std::bad_alloc.
    ResultColumns(std::span<const RowId> properties, std::size_t records);

    /// Validity found while decoding. Neighbouring parts share words of the bitmap, so it is set afterwards, by one
    /// thread.
    struct Gap {
        std::size_t column = 0;
        std::size_t first = 0, count = 0;  ///< bits in `words`
        std::size_t target = 0;            ///< in the result
        std::vector<std::uint64_t> words;  ///< empty: none is valid
    };

    std::size_t records() const { return m_records; }
    std::size_t values() const { return m_records * (m_properties.size() + 1); }

    /// Decodes times and all columns of a part; adds to `gaps` where not every element is valid.
    void fill(SegmentReader& segments, const ChunkPart& part, std::vector<Gap>& gaps);
    /// Copies records from memory after the others; columns they lack are absent there.
    void fill(const RecordsView& records, std::size_t target, std::vector<Gap>& gaps);

    void enter(const std::vector<Gap>& gaps);

    /// Everything as one block; the columns *share* the memory.
    RecordBlock block() const;

private:
    double* column(std::size_t index) const { return m_memory.get() + index * m_stride; }  // 0: times
    void fillAbsent(std::size_t column, std::size_t target, std::size_t count, std::vector<Gap>& gaps);

    std::vector<RowId> m_properties;
    std::size_t m_records;
    std::size_t m_stride;  // from column to column
    std::shared_ptr<double> m_memory;
    std::vector<std::shared_ptr<std::uint64_t>> m_words;  // by property; null: all valid so far
};

}  // namespace plotix
