#pragma once

#include "plotkit/model/CPTPointSeries.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

/// Reads the elements of a series one by one, where the next one is mostly near, and holds the page of the last one.
///
/// *Borrows* the series; a series in memory is read at the speed of arrays. One thread at a time.
namespace plotix {

class SeriesReader {
public:
    explicit SeriesReader(const CPTPointSeries& series)
        : m_series(series), m_end(series.runs() ? 0 : series.elementCount())
    {
    }

    // Requires: element < elements of the series.
    double x(std::size_t element) { return look(element).x()[element]; }
    float y(std::size_t element) { return look(element).y()[element]; }
    bool isDrawn(std::size_t element) { return look(element).isPoint(element); }  ///< a point, of any value
    bool isPoint(std::size_t element) { return isDrawn(element) && std::isfinite(m_series.y()[element]); }

private:
    const CPTPointSeries& look(std::size_t element)
    {
        constexpr std::size_t kPage = PagedMemory::kPage;
        if (element < m_first || element >= m_end) {
            m_first = element / kPage * kPage;
            m_end = std::min(m_series.elementCount(), m_first + kPage);
            m_held = m_series.hold(m_first, m_end);
        }
        return m_series;
    }

    const CPTPointSeries& m_series;
    std::size_t m_first = 0, m_end = 0;  // what is held
    CPTPointSeries::Hold m_held;
};

}  // namespace plotix
