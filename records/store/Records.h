#pragma once

#include "records/columns/ColumnView.h"
#include "records/store/RecordBlock.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// Records in memory on their way into a store: a borrowed view of columns, and columns that are owned.
///
/// Pure values; any thread. "Ordered" means times strictly ascending.
namespace plotix {

/// Strictly, without a NaN.
bool ascend(std::span<const double> times);

/// Columns someone else owns; must outlive the view.
struct RecordsView {
    struct Column : ColumnView {
        RowId property = 0;
    };
    const double* times = nullptr;
    std::size_t size = 0;
    std::vector<Column> columns;

    static RecordsView of(const RecordBlock& block);
    RecordsView slice(std::size_t first, std::size_t count) const;
    /// Those with from ≤ time ≤ to. Requires: they are ordered.
    RecordsView between(double from, double to) const;
    const Column* find(RowId property) const;  ///< null: there is none
    bool isOrdered() const { return ascend({times, size}); }
};

class Records {
public:
    struct Column {
        RowId property = 0;
        std::vector<double> values;
        std::vector<std::uint64_t> valid;
    };

    Records() = default;
    /// Requires: every column has an element and a bit for each time; bits behind the last are 0.
    Records(std::vector<double> times, std::vector<Column> columns)
        : m_times(std::move(times)), m_columns(std::move(columns))
    {
    }

    std::size_t size() const { return m_times.size(); }
    bool isEmpty() const { return m_times.empty(); }
    RecordsView view() const;

    /// A property that has no column yet gets one, filled with absent elements.
    void append(const RecordsView& records);
    void dropFirst(std::size_t count);

    /// Without these properties' elements in records with from ≤ time ≤ to; a record there that is left without any
    /// element goes. Nothing: there is nothing to take out.
    static std::optional<Records> without(const RecordsView& records, std::span<const RowId> properties, double from,
                                          double to);

    /// Ascending and unique; of equal times the last one stays.
    static Records ordered(const RecordsView& records);

    /// Both must be ordered; at equal times the values in `fresh` replace those of `old`, other values stay.
    static Records merged(const RecordsView& old, const RecordsView& fresh);

private:
    Column& column(RowId property);

    std::vector<double> m_times;
    std::vector<Column> m_columns;
};

}  // namespace plotix
