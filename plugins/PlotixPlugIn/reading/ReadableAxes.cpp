#include "plugins/PlotixPlugIn/reading/ReadableAxes.h"

#include "plotkit/model/CPTTickFormatters.h"

namespace plotix {

void makeTimeAxisReadable(CPTXYAxis& axis)
{
    if (axis.labelingPolicy() != CPTAxisLabelingPolicy::Calendar)
        axis.setLabelingPolicy(CPTAxisLabelingPolicy::Calendar);
    if (!std::dynamic_pointer_cast<const CPTTickTimeFormatter>(axis.labelFormatter()))
        axis.setLabelFormatter(std::make_shared<const CPTTickTimeFormatter>());
}

void makeAxesReadable(CPTXYGraph& graph, const AxisTitles& titles)
{
    graph.setLabelRoom(CPTLabelRoom::Grows);
    CPTXYAxis& time = *graph.axisSet()->firstAxis();
    makeTimeAxisReadable(time);
    time.setTitle(titles.time);
    time.setTitleOffset(0);
    CPTXYAxis& value = *graph.axisSet()->lastAxis();
    value.setLabelingPolicy(CPTAxisLabelingPolicy::Automatic);
    value.setLabelFormatter(std::make_shared<const CPTTickNumberFormatter>());
    value.setTitle(titles.value);
    value.setTitleOffset(0);
}

}  // namespace plotix
