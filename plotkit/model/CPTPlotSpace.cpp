#include "plotkit/model/CPTPlotSpace.h"

#include "plotkit/model/CPTScatterPlot.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

CPTPlotRange rangeScaledAbout(const CPTPlotRange& range, double factor, double fixedPoint)
{
    return {fixedPoint - (fixedPoint - range.location) / factor, range.length / factor};
}

bool isFinite(const CPTPlotRange& range)
{
    return std::isfinite(range.location) && std::isfinite(range.length);
}

}  // namespace

CPTPlotSpaceDelegate::~CPTPlotSpaceDelegate() = default;

const CPTPlotRange& CPTXYPlotSpace::xRange() const
{
    const std::shared_ptr<const CPTXYPlotSpace> leader = m_xLeader.lock();
    return leader ? leader->m_xRange : m_xRange;
}

void CPTXYPlotSpace::followXOf(const std::shared_ptr<const CPTXYPlotSpace>& leader)
{
    m_xLeader = leader;
    if (m_changeHandler)
        m_changeHandler();
}

void CPTXYPlotSpace::setXRange(const CPTPlotRange& range)
{
    if (m_xLeader.expired())
        setRange(m_xRange, range, CPTCoordinate::X);
}

void CPTXYPlotSpace::setYRange(const CPTPlotRange& range)
{
    setRange(m_yRange, range, CPTCoordinate::Y);
}

void CPTXYPlotSpace::setRange(CPTPlotRange& stored, const CPTPlotRange& proposed, CPTCoordinate coordinate)
{
    const CPTPlotRange bounded = m_bounder ? m_bounder(proposed, coordinate) : proposed;
    const CPTPlotRange accepted =
        m_delegate ? m_delegate->plotSpaceWillChangePlotRangeTo(this, bounded, coordinate) : bounded;
    const bool changed = !(stored == accepted);
    stored = accepted;
    if (m_delegate)
        m_delegate->plotSpaceDidChangePlotRangeForCoordinate(this, coordinate);
    if (changed && m_changeHandler)
        m_changeHandler();
}

double CPTXYPlotSpace::yOfValue(double value) const
{
    if (m_yScaleType == CPTScaleType::Linear)
        return value;
    return value > 0 ? std::log10(value) : std::numeric_limits<double>::quiet_NaN();
}

void CPTXYPlotSpace::setStrip(const CPTStrip& strip)
{
    if (m_strip == strip)
        return;
    m_strip = strip;
    if (m_changeHandler)
        m_changeHandler();
}

void CPTXYPlotSpace::scaleToFitPlots(const std::vector<std::shared_ptr<CPTScatterPlot>>& plots)
{
    std::optional<CPTPointSeries::Extent> all;
    for (const CPTScatterPlotPtr& plot : plots) {
        const CPTPointSeriesPtr series = plot ? plot->series() : nullptr;
        const std::optional<CPTPointSeries::Extent> extent = series ? series->extent() : std::nullopt;
        if (!extent)
            continue;
        if (!all) {
            all = extent;
            continue;
        }
        all->minX = std::min(all->minX, extent->minX);
        all->maxX = std::max(all->maxX, extent->maxX);
        all->minY = std::min(all->minY, extent->minY);
        all->maxY = std::max(all->maxY, extent->maxY);
    }
    if (!all)
        return;
    setXRange({all->minX, all->maxX - all->minX});
    if (m_fitter) {
        if (const std::optional<CPTPlotRange> needed = m_fitter(plots))
            setYRange(*needed);
        return;
    }
    const double minY = static_cast<double>(all->minY);
    setYRange({minY, static_cast<double>(all->maxY) - minY});
}

void CPTXYPlotSpace::scaleBy(double factor, QPointF aboutPoint)
{
    if (!std::isfinite(factor) || factor <= 0)
        return;
    if (m_delegate && !m_delegate->plotSpaceShouldScaleBy(this, factor, aboutPoint))
        return;
    const CPTPlotRange x = rangeScaledAbout(xRange(), factor, aboutPoint.x());
    const CPTPlotRange y = rangeScaledAbout(m_yRange, factor, aboutPoint.y());
    if (isFinite(x) && m_movableRanges != CPTMovableRanges::OnlyY)
        setXRange(x);
    if (isFinite(y) && m_movableRanges != CPTMovableRanges::OnlyX)
        setYRange(y);
}
