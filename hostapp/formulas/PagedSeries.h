#pragma once

#include "base/ColumnRuns.h"
#include "base/PagedArray.h"
#include "base/ValidityBitmap.h"

#include <array>
#include <limits>
#include <memory>

/// Values over time that may be paged, on their way into and out of formulas. Values; any thread.
namespace plotix {

/// Elements [first, first + count) of an array: seconds since 1970-01-01 UTC, strictly ascending.
struct PagedTimes {
    PagedArray<double> array;
    std::size_t first = 0, count = 0;
    std::shared_ptr<const TimeRuns> runs;  ///< of the whole array; null: nothing is known

    bool isWhole() const { return first == 0 && count == array.size(); }
};

struct PagedSeries {
    PagedTimes times;
    PagedArray<double> values;  ///< a NaN is no value
    ValidityBitmap validity;    ///< held by whoever holds the same values
    std::size_t first = 0;      ///< element of the first time; there are as many values behind it
};

/// Reads a series element by element where the next one is mostly near, in up to two places at once: holds what it
/// looked at last in each. *Shares* the series; one thread at a time.
class SeriesReader {
public:
    explicit SeriesReader(const PagedSeries& series);
    explicit SeriesReader(const PagedTimes& times) : SeriesReader(PagedSeries{times, {}, {}, 0}) {}

    std::size_t size() const { return m_series.times.count; }
    /// Requires: index < size().
    double time(std::size_t index) const
    {
        hold(index);
        return m_times[index];
    }
    /// NaN where there is none. Requires: index < size(); there are values.
    double value(std::size_t index) const
    {
        hold(index);
        return m_isAllValid || m_series.validity.isValid(m_series.first + index) ? m_values[index] : kNone;
    }
    /// Whether everything read so far is what is kept, and no stand-in.
    bool isRead() const { return m_isRead; }

private:
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    struct Place {
        std::size_t first = 0, count = 0;
        PagedMemory::Hold times, values;
    };
    void hold(std::size_t index) const
    {
        if (index - m_places[m_now].first >= m_places[m_now].count)
            moveTo(index);
    }
    void moveTo(std::size_t index) const;

    PagedSeries m_series;
    const double* m_times;
    const double* m_values;
    bool m_isAllValid;
    mutable std::array<Place, 2> m_places;
    mutable std::size_t m_now = 0;
    mutable bool m_isRead = true;
};

/// Whether these elements, which are held, are what is kept, and no stand-in.
bool isRead(const PagedArray<double>& array, std::size_t first, std::size_t end);

}  // namespace plotix
