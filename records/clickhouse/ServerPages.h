#pragma once

#include "base/PagedMemory.h"
#include "records/clickhouse/ColumnFetch.h"
#include "records/clickhouse/ReadingAhead.h"
#include "records/clickhouse/SiteOnServer.h"
#include "records/store/RecordColumns.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

/// Columns of a span of records that are fetched from the server page by page.
namespace plotix {

/// Which records a span has, as they were when it was asked for. Chunks never change, and stay for days, so that
/// they can be fetched at any time. *Shared* by the columns of the span; any thread reads, nobody changes it.
struct ServerSpan {
    std::shared_ptr<SiteOnServer> site;
    RowId agent = 0;
    std::shared_ptr<const AgentReading::Rows> rows;  ///< that the pieces are of
    std::vector<AgentReading::Piece> pieces;         ///< in time order, none of them empty, all of them in the span
    std::vector<std::size_t> begin;                  ///< element that each begins with; one more than there are pieces
    std::shared_ptr<ColumnFailure> failure = std::make_shared<ColumnFailure>();

    std::size_t size() const { return begin.back(); }
};

/// The values of a property with their validity, or the times. See RecordColumns for what stands where something cannot
/// be had.
class ServerPages final : public PagedMemory {
public:
    /// `present`: by piece, whether it has such a column.
    ServerPages(std::shared_ptr<PageCache> cache, std::shared_ptr<const ServerSpan> span, RowId property,
                std::vector<bool> present, bool isAllValid);

    PagedArray<double> values() const { return {shared_from_this(), m_values, elements()}; }
    ValidityBitmap validity() const;

private:
    void expect(std::size_t first, std::size_t end) const override;
    bool fill(std::size_t first, std::size_t end) const noexcept override;
    void fillOrThrow(std::size_t first, std::size_t end) const;
    std::size_t pieceAt(std::size_t element) const;
    bool isAbsent(std::size_t piece) const;
    PackedColumns columnsOf(std::size_t first, std::size_t end) const;
    void unpack(std::size_t piece, const PackedCache::Column& column, std::size_t first, std::size_t end) const;
    void copy(std::size_t piece, std::size_t first, std::size_t end) const;
    void standIn(std::size_t piece, std::size_t first, std::size_t end) const;

    const std::shared_ptr<const ServerSpan> m_span;
    const RowId m_property;
    const std::vector<bool> m_present;
    double* const m_values;
    std::uint64_t* const m_words;  ///< null: every element is valid

    mutable std::mutex m_mutex;  // guards what follows
    mutable ReadingAhead m_ahead;
    mutable std::set<std::size_t> m_onTheWay;  // pieces
    mutable std::condition_variable m_arrived;
};

/// What is known of the pieces' columns without their values, put together for the whole span.
RecordColumns pagedColumns(const std::shared_ptr<const ServerSpan>& span, const std::vector<RowId>& properties,
                           const std::shared_ptr<PageCache>& cache);

}  // namespace plotix
