#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"

#include "plotkit/widget/CPTGraphHostingView.h"

#include <cmath>

namespace plotix {

ReadTrend::~ReadTrend() = default;

std::optional<plotkit::GraphGeometry> shownGeometry(const ReadTrend& trend)
{
    const CPTXYGraphPtr graph = trend.graph();
    const CPTGraphHostingView* view = trend.graphView();
    if (!graph || !view)
        return std::nullopt;
    return view->geometryShown(*graph);
}

void bringIntoView(ReadTrend& trend, double time)
{
    const CPTXYGraphPtr graph = trend.graph();
    if (!graph)
        return;
    const CPTPlotRange range = graph->plotSpace().xRange();
    if (time >= range.minLimit() && time <= range.maxLimit())
        return;
    const double half = std::abs(range.length) / 2;
    trend.showTimes({time - half, time + half});
}

std::optional<ReadLine> lineWithKey(const ReadTrend& trend, const QString& key)
{
    for (ReadLine& line : trend.lines())
        if (line.key == key)
            return std::move(line);
    return std::nullopt;
}

}  // namespace plotix
