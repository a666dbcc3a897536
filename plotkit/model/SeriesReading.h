#pragma once

#include "plotkit/model/CPTPointSeries.h"

#include <algorithm>
#include <cstddef>

/// Holds the pages of a series that are being read, so that reading on costs a comparison until the next page. Of a
/// series in memory it holds nothing. *Borrows* the series; one thread at a time.
namespace plotkit {

class SeriesReading {
public:
    explicit SeriesReading(const CPTPointSeries& series) : m_series(series), m_isPaged(series.runs() != nullptr) {}

    /// Elements [first, end) can be read until the next call; their whole pages can.
    void hold(std::size_t first, std::size_t end)
    {
        if (m_isPaged && (first < m_first || end > m_end))
            holdPages(first, end);
    }

private:
    void holdPages(std::size_t first, std::size_t end)
    {
        constexpr std::size_t kPage = plotix::PagedMemory::kPage;
        m_first = first / kPage * kPage;
        m_end = std::min((end + kPage - 1) / kPage * kPage, m_series.elementCount());
        m_held = m_series.hold(m_first, m_end);
    }

    const CPTPointSeries& m_series;
    bool m_isPaged;
    CPTPointSeries::Hold m_held;
    std::size_t m_first = 0, m_end = 0;
};

}  // namespace plotkit
