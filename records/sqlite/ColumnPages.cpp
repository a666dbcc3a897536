#include "records/sqlite/ColumnPages.h"

#include "base/ReportableError.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <array>
#include <optional>

namespace plotix {

namespace {

/// What of the part lies in elements [first, end) of the result.
ChunkPart cut(const ChunkPart& part, std::size_t first, std::size_t end)
{
    const std::size_t begin = std::max(part.target, first);
    const std::size_t partEnd = std::min(part.target + part.count, end);
    return {part.chunk, part.first + (begin - part.target), partEnd - begin, begin};
}

/// Where elements go: element `first` to the beginning of each. The bits are set before.
struct Into {
    double* values;
    std::uint64_t* words;  // null: every element is valid
    std::size_t first;     // a multiple of 64

    double* at(std::size_t element) const { return values + (element - first); }
};

}  // namespace

/// Goes once through a column, from an element on.
class ColumnPages::Unpacking {
public:
    Unpacking(const ColumnPages& pages, std::size_t first)
        : m_pages(pages), m_span(*pages.m_span), m_part(firstPartFrom(first))
    {
        try {
            m_connection.emplace(m_span.lender->lease());
            m_transaction.emplace((*m_connection)->database);
        } catch (const std::exception& error) {
            fail(error);
        }
    }

    /// Whether everything so far could be read.
    bool isRead() const { return m_isRead; }

    /// Writes elements from `at` on, those of one chunk at most, and answers how many. Requires: at < end, and that
    /// the ones before are written.
    std::size_t write(std::size_t at, std::size_t end, const Into& into)
    {
        if (at >= m_span.inChunks()) {
            const std::size_t count = std::min(end - at, schema::kRecordsPerChunk);
            writeTail(at, count, into);
            return count;
        }
        while (m_span.parts[m_part].target + m_span.parts[m_part].count <= at)
            ++m_part;
        const ChunkPart part = cut(m_span.parts[m_part], at, end);
        writePart(part, into);
        return part.count;
    }

private:
    std::size_t firstPartFrom(std::size_t element) const
    {
        const auto behind = [](const ChunkPart& part, std::size_t at) { return part.target + part.count <= at; };
        return static_cast<std::size_t>(std::lower_bound(m_span.parts.begin(), m_span.parts.end(), element, behind) -
                                        m_span.parts.begin());
    }

    void writePart(const ChunkPart& part, const Into& into)
    {
        const std::vector<bool>& absent = m_pages.m_kind.absent;
        if (!absent.empty() && absent[m_part])
            return writeAbsent(part, into);
        const RowId property = m_pages.m_kind.property;
        try {
            if (m_transaction) {
                if (!m_segments)
                    m_segments.emplace(**m_connection);
                double* values = into.at(part.target);
                if (property == kTimes ? !m_segments->findTimes(part, values)
                                       : !m_segments->read(part, property, values))
                    throw ReportableError(
                        QStringLiteral("Some of the records shown were deleted by another program: show them again."));
                return enterValidity(part, into);
            }
        } catch (const std::exception& error) {
            m_segments.reset();  // what failed may go on failing
            fail(error);
        }
        if (property == kTimes)
            spreadTimes(part, into);
        else
            writeAbsent(part, into);
    }

    void enterValidity(const ChunkPart& part, const Into& into) const
    {
        if (bits::allSet(m_segments->valid(), part.first, part.count))
            return;
        if (!into.words)
            throw ReportableError(
                QStringLiteral("An index says that values are valid which are not: compact the site to make it anew."));
        bits::copy(m_segments->valid(), part.first, into.words, part.target - into.first, part.count);
    }

    void writeAbsent(const ChunkPart& part, const Into& into) const
    {
        std::fill_n(into.at(part.target), part.count, absentValue());
        if (into.words)
            bits::clear(into.words, part.target - into.first, part.count);
    }

    void spreadTimes(const ChunkPart& part, const Into& into) const
    {
        const Chunk& chunk = part.chunk;
        const double step = chunk.n > 1 ? (chunk.t1 - chunk.t0) / static_cast<double>(chunk.n - 1) : 0;
        for (std::size_t i = 0; i < part.count; ++i)
            into.at(part.target)[i] = std::min(chunk.t0 + step * static_cast<double>(part.first + i), chunk.t1);
    }

    void writeTail(std::size_t at, std::size_t count, const Into& into) const
    {
        const std::size_t first = at - m_span.inChunks();
        const RecordsView tail = m_span.tail.view();
        if (m_pages.m_kind.property == kTimes) {
            std::copy_n(tail.times + first, count, into.at(at));
            return;
        }
        const RecordsView::Column* column = tail.find(m_pages.m_kind.property);
        if (!column) {
            writeAbsent({{}, 0, count, at}, into);
            return;
        }
        std::copy_n(column->values + first, count, into.at(at));
        if (into.words)
            bits::copy(column->valid, column->firstValid + first, into.words, at - into.first, count);
    }

    void fail(const std::exception& error)
    {
        m_isRead = false;
        m_span.failure->report(QString::fromUtf8(error.what()));
    }

    const ColumnPages& m_pages;
    const PackedSpan& m_span;
    std::size_t m_part;
    bool m_isRead = true;
    std::optional<ReadConnections::Lease> m_connection;  // nothing: stand-ins are all there is
    std::optional<ReadTransaction> m_transaction;
    std::optional<SegmentReader> m_segments;
};

ColumnPages::ColumnPages(std::shared_ptr<PageCache> cache, std::shared_ptr<const PackedSpan> span, Kind kind)
    : PagedMemory(std::move(cache), span->size()),
      m_span(std::move(span)),
      m_kind(std::move(kind)),
      m_values(reserve<double>()),
      m_words(m_kind.isAllValid ? nullptr : reserve<std::uint64_t>(64))
{
}

ValidityBitmap ColumnPages::validity() const
{
    if (!m_words)
        return {};
    return ValidityBitmap(PagedArray<std::uint64_t>(shared_from_this(), m_words, bits::wordsFor(elements()), 64));
}

bool ColumnPages::fill(std::size_t first, std::size_t end) const noexcept
{
    if (m_words)
        std::fill(m_words + first / 64, m_words + bits::wordsFor(end), ~std::uint64_t{0});
    Unpacking unpacking(*this, first);
    for (std::size_t at = first; at < end;)
        at += unpacking.write(at, end, {m_values, m_words, 0});
    return unpacking.isRead();
}

std::optional<bool> ColumnPages::readPast(std::size_t first, std::size_t end, const Show& show) const
{
    // What a chunk has beyond whole words waits for the next one.
    constexpr std::size_t kRoom = schema::kRecordsPerChunk + 64;
    std::array<double, kRoom> values;
    std::array<std::uint64_t, kRoom / 64> words;
    words.fill(~std::uint64_t{0});
    Unpacking unpacking(*this, first);
    for (std::size_t at = first; at < end;) {
        at += unpacking.write(at, end, {values.data(), m_words ? words.data() : nullptr, first});
        const std::size_t shown = at == end ? end : at / 64 * 64;
        if (shown > first)
            show({first, std::span(values).first(shown - first), m_words ? words.data() : nullptr});
        std::copy_n(values.data() + (shown - first), at - shown, values.data());
        if (m_words && at < end) {
            words[0] = words[(shown - first) / 64];
            std::fill(words.begin() + 1, words.end(), ~std::uint64_t{0});
        }
        first = shown;
    }
    return unpacking.isRead();
}

}  // namespace plotix
