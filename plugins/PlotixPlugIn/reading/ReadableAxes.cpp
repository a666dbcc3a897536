#include "plugins/PlotixPlugIn/reading/ReadableAxes.h"

#include "plotkit/model/CPTTickFormatters.h"

namespace plotix {

void makeTimeAxisReadable(CPTXYAxis& axis, const CPTClock& clock)
{
    if (axis.labelingPolicy() != CPTAxisLabelingPolicy::Calendar)
        axis.setLabelingPolicy(CPTAxisLabelingPolicy::Calendar);
    if (axis.timeZone() != clock.zone)
        axis.setTimeZone(clock.zone);
    const auto formatter = std::dynamic_pointer_cast<const CPTTickTimeFormatter>(axis.labelFormatter());
    if (!formatter || formatter->clock() != clock)
        axis.setLabelFormatter(std::make_shared<const CPTTickTimeFormatter>(clock));
}

void makeAxesReadable(CPTXYGraph& graph, const AxisTexts& texts)
{
    graph.setLabelRoom(CPTLabelRoom::Grows);
    CPTXYAxis& time = *graph.axisSet()->firstAxis();
    makeTimeAxisReadable(time, texts.clock);
    time.setTitle(texts.time);
    time.setTitleOffset(0);
    CPTXYAxis& value = *graph.axisSet()->lastAxis();
    value.setLabelingPolicy(CPTAxisLabelingPolicy::Automatic);
    value.setLabelFormatter(std::make_shared<const CPTTickNumberFormatter>());
    value.setTitle(texts.value);
    value.setTitleOffset(0);
}

}  // namespace plotix
