#pragma once

#include "base/PagedMemory.h"
#include "records/store/RecordColumns.h"
#include "records/tables/GatheredRows.h"
#include "records/tables/TableStatements.h"

#include <deque>
#include <mutex>

/// Columns of a long table that are fetched where somebody looks.
namespace plotix {

/// Which records a span has, as the table told when it was asked. *Shared* by its columns; any thread.
class TableSpan {
public:
    std::shared_ptr<TableDatabase> database;
    std::shared_ptr<const TableStatements> statements;
    std::vector<RowId> properties;  ///< all that were asked for
    TimeRuns runs;
    std::shared_ptr<ColumnFailure> failure = std::make_shared<ColumnFailure>();

    /// Records of runs [first, end), with all properties: the times and each column are asked for the same ones, one
    /// after the other, so that those fetched last stay here. Throws where they are not those of that moment any more.
    std::shared_ptr<const GatheredRows> rows(std::size_t first, std::size_t end) const;
    [[noreturn]] void failAsChanged() const;

private:
    struct Fetched {
        std::size_t first, end;  // runs
        std::shared_ptr<const GatheredRows> rows;
    };
    mutable std::mutex m_mutex;
    mutable std::deque<Fetched> m_fetched;  // under the mutex; the latest first
};

/// The values of a property with their validity, or the times. See RecordColumns for what stands where something cannot
/// be had; rows that came into the span, or went, since it was asked for count as that.
class TablePages final : public PagedMemory {
public:
    TablePages(std::shared_ptr<PageCache> cache, std::shared_ptr<const TableSpan> span, RowId property,
               bool isAllValid);

    PagedArray<double> values() const { return {shared_from_this(), m_values, elements()}; }
    ValidityBitmap validity() const;

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override;
    void fetch(std::size_t first, std::size_t end) const;
    void standIn(std::size_t first, std::size_t end) const;

    const std::shared_ptr<const TableSpan> m_span;
    const RowId m_property;
    double* const m_values;
    std::uint64_t* const m_words;  ///< null: every element is valid
};

/// What the database says of stretches of the span, without reading it. Nothing: stopped.
std::optional<RecordColumns> pagedColumns(const std::shared_ptr<TableDatabase>& database,
                                          const std::shared_ptr<const TableStatements>& statements,
                                          std::span<const RowId> properties, const TableStatements::Range& range,
                                          const RecordExtent& extent, const std::shared_ptr<PageCache>& cache,
                                          const ArchiveProgress& progress);

}  // namespace plotix
