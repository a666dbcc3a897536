#pragma once

#include "plotkit/layout/GraphLayout.h"
#include "plotkit/model/CPTXYGraph.h"

#include <QtGui/QImage>

#include <vector>

/// A small graph of known geometry for pixel tests: no padding outside the frame, 10 points inside it, ranges 0 to 100.
namespace plotkit_test {

class RenderedGraph {
public:
    RenderedGraph();

    /// A line through points of constant or given y; the fixture keeps its controller.
    CPTScatterPlotPtr addPlot(const QColor& color, std::vector<double> x, std::vector<float> y, double width = 3);

    CPTScatterPlotPtr addPlot(const QColor& color, CPTPointSeriesPtr series, double width = 3);

    /// Fixed ticks without labels on both axes.
    void useTicks(double xInterval, double yInterval);

    CPTXYGraph graph;

private:
    std::vector<CPTSeriesControllerPtr> m_controllers;
};

/// Counts what the plots report.
class CountingDelegate : public CPTPlotDelegate {
public:
    void didFinishDrawing(CPTScatterPlot* plot) override { drawn.push_back(plot->identifier()); }
    QStringList drawn;
};

/// Pixels of the image that are not fully transparent.
int countMarkedPixels(const QImage& image);

}  // namespace plotkit_test
