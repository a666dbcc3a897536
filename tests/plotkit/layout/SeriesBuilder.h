#pragma once

#include "plotkit/model/CPTPointSeries.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

/// Builds series element by element, dropped ones included, for the tests of index, series and reduction.
class SeriesBuilder {
public:
    void add(double x, float y, bool isPoint = true)
    {
        if (m_x.size() % 64 == 0)
            m_words.push_back(0);
        if (isPoint) {
            m_words.back() |= std::uint64_t{1} << (m_x.size() % 64);
            ++m_count;
        }
        m_x.push_back(x);
        m_y.push_back(y);
        m_isPoint.push_back(isPoint);
    }

    const std::vector<double>& x() const { return m_x; }
    const std::vector<float>& y() const { return m_y; }
    bool isPoint(std::size_t element) const { return m_isPoint[element]; }

    plotix::ValidityBitmap bitmap() const
    {
        if (m_count == m_x.size())
            return {};
        return plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(m_words));
    }

    CPTPointSeriesPtr series() const
    {
        return std::make_shared<const CPTPointSeries>(plotix::SharedArray<double>::fromVector(m_x),
                                                      plotix::SharedArray<float>::fromVector(m_y), bitmap(), m_count);
    }

private:
    std::vector<double> m_x;
    std::vector<float> m_y;
    std::vector<bool> m_isPoint;
    std::vector<std::uint64_t> m_words;
    std::size_t m_count = 0;
};
