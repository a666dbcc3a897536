#include "records/sqlite/ColumnPages.h"

#include "base/ReportableError.h"
#include "records/columns/ValidityBits.h"
#include "records/sqlite/HelpingThreads.h"

#include <algorithm>
#include <atomic>
#include <optional>

namespace plotix {

namespace {

/// Elements of pages taken at once: chunks seldom end where pages do, and the one that pages share is read by each of
/// those who take them.
constexpr std::size_t kTaken = 8 * PagedMemory::kPage;

/// Elements of a result: [first, end).
struct Stretch {
    std::size_t first = 0, end = 0;
};

/// What of the part lies in the stretch.
ChunkPart cut(const ChunkPart& part, const Stretch& to)
{
    const std::size_t begin = std::max(part.target, to.first);
    const std::size_t end = std::min(part.target + part.count, to.end);
    return {part.chunk, part.first + (begin - part.target), end - begin, begin};
}

}  // namespace

/// One call of `fill`. Threads take pages one after the other; pages share no word of the bitmap.
class ColumnPages::Filling {
public:
    Filling(const ColumnPages& pages, const Stretch& all)
        : m_pages(pages), m_span(*pages.m_span), m_all(all), m_next(all.first)
    {
    }

    /// Whether everything could be read.
    bool run()
    {
        try {
            const ReadConnections::Lease connection = m_span.lender->lease();
            const std::size_t values = m_all.end - m_all.first;
            const HelpingThreads helpers(helpersFor(*m_span.lender, values, values / kTaken), [this] { help(); });
            takePages(&*connection);
        } catch (const std::exception& error) {
            fail(error);
        }
        takePages(nullptr);
        return m_isRead;
    }

private:
    void help() noexcept
    {
        try {
            const ReadConnections::Lease connection = m_span.lender->lease();
            takePages(&*connection);
        } catch (const std::exception&) {  // no connection available: the others do the work
        }
    }

    /// Without a connection, their stand-ins.
    void takePages(ReadConnection* connection)
    {
        std::optional<ReadTransaction> transaction;
        if (connection)
            transaction.emplace(connection->database);
        std::optional<SegmentReader> segments;
        for (std::size_t first = m_next.fetch_add(kTaken); first < m_all.end; first = m_next.fetch_add(kTaken)) {
            const Stretch pages{first, std::min(first + kTaken, m_all.end)};
            if (std::uint64_t* words = m_pages.m_words)
                std::fill(words + pages.first / 64, words + bits::wordsFor(pages.end), ~std::uint64_t{0});
            for (std::size_t part = firstPartIn(pages); part < m_span.parts.size(); ++part) {
                if (m_span.parts[part].target >= pages.end)
                    break;
                if (connection && !segments)
                    segments.emplace(*connection);
                if (!fillPart(segments ? &*segments : nullptr, part, cut(m_span.parts[part], pages)))
                    segments.reset();  // what failed may go on failing
            }
            fillTail(pages);
        }
    }

    std::size_t firstPartIn(const Stretch& pages) const
    {
        const auto behind = [](const ChunkPart& part, std::size_t at) { return part.target + part.count <= at; };
        return static_cast<std::size_t>(
            std::lower_bound(m_span.parts.begin(), m_span.parts.end(), pages.first, behind) - m_span.parts.begin());
    }

    bool fillPart(SegmentReader* segments, std::size_t index, const ChunkPart& part)
    {
        double* values = m_pages.m_values + part.target;
        const std::vector<bool>& absent = m_pages.m_kind.absent;
        if (!absent.empty() && absent[index]) {
            fillAbsent(part);
            return true;
        }
        try {
            const RowId property = m_pages.m_kind.property;
            if (segments) {
                if (property == kTimes ? !segments->findTimes(part, values) : !segments->read(part, property, values))
                    throw ReportableError(
                        QStringLiteral("Some of the records shown were deleted by another program: show them again."));
                enterValidity(*segments, part);
                return true;
            }
        } catch (const std::exception& error) {
            fail(error);
        }
        m_isRead = false;
        if (m_pages.m_kind.property == kTimes)
            spreadTimes(part);
        else
            fillAbsent(part);
        return false;
    }

    void enterValidity(const SegmentReader& segments, const ChunkPart& part) const
    {
        if (bits::allSet(segments.valid(), part.first, part.count))
            return;
        if (!m_pages.m_words)
            throw ReportableError(
                QStringLiteral("An index says that values are valid which are not: compact the site to make it anew."));
        bits::copy(segments.valid(), part.first, m_pages.m_words, part.target, part.count);
    }

    void fillAbsent(const ChunkPart& part) const
    {
        std::fill_n(m_pages.m_values + part.target, part.count, absentValue());
        if (m_pages.m_words)
            bits::clear(m_pages.m_words, part.target, part.count);
    }

    void spreadTimes(const ChunkPart& part) const
    {
        const Chunk& chunk = part.chunk;
        const double step = chunk.n > 1 ? (chunk.t1 - chunk.t0) / static_cast<double>(chunk.n - 1) : 0;
        for (std::size_t i = 0; i < part.count; ++i)
            m_pages.m_values[part.target + i] =
                std::min(chunk.t0 + step * static_cast<double>(part.first + i), chunk.t1);
    }

    void fillTail(const Stretch& pages) const
    {
        const std::size_t begin = std::max(pages.first, m_span.inChunks());
        if (begin >= pages.end)
            return;
        const std::size_t first = begin - m_span.inChunks(), count = pages.end - begin;
        const RecordsView tail = m_span.tail.view();
        if (m_pages.m_kind.property == kTimes) {
            std::copy_n(tail.times + first, count, m_pages.m_values + begin);
            return;
        }
        const auto column = std::find_if(tail.columns.begin(), tail.columns.end(),
                                         [&](const auto& each) { return each.property == m_pages.m_kind.property; });
        if (column == tail.columns.end()) {
            fillAbsent({{}, 0, count, begin});
            return;
        }
        std::copy_n(column->values + first, count, m_pages.m_values + begin);
        if (m_pages.m_words)
            bits::copy(column->valid, column->firstValid + first, m_pages.m_words, begin, count);
    }

    void fail(const std::exception& error)
    {
        m_isRead = false;
        m_span.failure->report(QString::fromUtf8(error.what()));
    }

    const ColumnPages& m_pages;
    const PackedSpan& m_span;
    const Stretch m_all;
    std::atomic<std::size_t> m_next;  // first element that nobody has taken
    std::atomic<bool> m_isRead = true;
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
    return Filling(*this, {first, end}).run();
}

}  // namespace plotix
