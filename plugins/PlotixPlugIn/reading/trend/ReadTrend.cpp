#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"

#include "plotkit/widget/CPTGraphHostingView.h"

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

std::optional<ReadLine> lineWithKey(const ReadTrend& trend, const QString& key)
{
    for (ReadLine& line : trend.lines())
        if (line.key == key)
            return std::move(line);
    return std::nullopt;
}

}  // namespace plotix
