#pragma once

#include "plotkit/model/CPTScatterPlot.h"

#include <vector>

/// Builds plots from literal points for the tests of this folder; the caller keeps the controller alive.
namespace plotkit_test {

struct BoundPlot {
    CPTScatterPlotPtr plot;
    CPTSeriesControllerPtr controller;
};

inline CPTPointSeriesPtr seriesOf(std::vector<double> x, std::vector<float> y)
{
    const std::size_t count = y.size();
    return std::make_shared<CPTPointSeries>(plotix::SharedArray<double>::fromVector(std::move(x)),
                                            plotix::SharedArray<float>::fromVector(std::move(y)),
                                            plotix::ValidityBitmap(), count);
}

inline void bindBoth(CPTScatterPlot& plot, const CPTSeriesControllerPtr& controller)
{
    plot.bind(CPTScatterPlotBindingXValues, controller, QStringLiteral("arrangedObjects.x"));
    plot.bind(CPTScatterPlotBindingYValues, controller, QStringLiteral("arrangedObjects.y"));
}

inline BoundPlot plotOf(std::vector<double> x, std::vector<float> y)
{
    BoundPlot bound{std::make_shared<CPTScatterPlot>(),
                    std::make_shared<CPTSeriesController>(seriesOf(std::move(x), std::move(y)))};
    bindBoth(*bound.plot, bound.controller);
    return bound;
}

}  // namespace plotkit_test
