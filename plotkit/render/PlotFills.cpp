#include "plotkit/render/PlotFills.h"

#include "plotkit/layout/AxisMapping.h"

#include <algorithm>
#include <cmath>

namespace plotkit {

bool PlotFills::isLine(const CPTScatterPlot& plot)
{
    return !plot.isHidden() && plot.interpolation() != CPTScatterPlotInterpolation::PointsOnly && plot.series();
}

const FilledArea* PlotFills::areaOf(const CPTXYGraph& graph, const PlotAt& which, const EnvelopingOf& envelopingOf,
                                    const ViewOf& viewOf)
{
    const std::vector<CPTScatterPlotPtr>& plots = which.plots;
    const CPTScatterPlot& plot = *plots[which.index];
    const CPTAreaFill& fill = plot.areaFill();
    if (!fill.isVisible() || !isLine(plot))
        return nullptr;
    const PlotView view = viewOf(plot);
    const auto envelopeOf = [&](PlotEnvelope& envelope, std::size_t number) {
        const std::size_t slot = which.firstSlot + number;
        return envelopingOf(slot).envelopeInto(envelope, *plots[number]->series(), viewOf(*plots[number]), slot,
                                               PlotEnveloping::kAnyPoints);
    };
    if (!fill.isToPlot) {
        if (!envelopeOf(m_line, which.index))
            return nullptr;
        // A logarithmic space has no zero: everything beneath the line leads to it.
        const double zero = graph.plotSpaceOf(plot).yOfValue(0);
        const double level =
            std::isfinite(zero) ? coordinateForValue(yMapping(view.yRange, view.area), zero) : view.area.bottom();
        fillToLevel(m_area, m_line, level, view.area);
        return &m_area;
    }
    const auto other = std::find(plots.begin(), plots.end(), fill.plot.lock());
    if (other == plots.end() || other->get() == &plot || !isLine(**other) ||
        &graph.plotSpaceOf(**other) != &graph.plotSpaceOf(plot))
        return nullptr;
    if (!envelopeOf(m_line, which.index) || !envelopeOf(m_other, static_cast<std::size_t>(other - plots.begin())))
        return nullptr;
    fillBetween(m_area, m_line, m_other, view.area);
    return &m_area;
}

}  // namespace plotkit
