#include "plotkit/layout/LegendLayout.h"
#include "plotkit/render/GraphRendering.h"
#include "plotkit/render/GraphText.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <gtest/gtest.h>

namespace {

using namespace plotkit;

/// A red line, a dashed blue one and green points, hidden from the plot area but for their samples.
class LegendPixelsTest : public testing::Test {
protected:
    LegendPixelsTest()
    {
        for (const QColor color : {Qt::red, Qt::blue, Qt::darkGreen})
            plots.push_back(rendered.addPlot(color, {0, 100}, {-900, -900}));
        CPTLineStyle dashed = plots[1]->dataLineStyle();
        dashed.dashPattern = {4, 4};
        plots[1]->setDataLineStyle(dashed);
        plots[2]->setInterpolation(CPTScatterPlotInterpolation::PointsOnly);
        plots[2]->setPointSize(4);
        CPTLegend legend{.place = CPTLegendPlace::Below, .textStyle = {.color = CPTColor(Qt::black)}};
        for (const CPTScatterPlotPtr& plot : plots)
            legend.entries.push_back({plot, QStringLiteral("x")});
        rendered.graph.setLegend(legend);
    }
    /// How many pixels along the middle of a plot's sample have its colour.
    int colored(std::size_t number)
    {
        const QImage image = imageOfGraph(rendered.graph, {300, 200}, 1, DrawingReport::Silent);
        const LegendLayout legend = layOutLegend(rendered.graph, {0, 0, 300, 200}, sizeOfText);
        const QRectF sample = legend.entries.at(number).sample;
        int count = 0;
        for (int x = int(std::ceil(sample.left())); x < int(sample.right()); ++x) {
            const QColor pixel = image.pixelColor(x, int(sample.center().y()));
            count += pixel == plots[number]->dataLineStyle().color ? 1 : 0;
        }
        return count;
    }

    plotkit_test::RenderedGraph rendered;
    std::vector<CPTScatterPlotPtr> plots;
};

TEST_F(LegendPixelsTest, EachSampleShowsHowItsLineIsDrawn)
{
    const int solid = colored(0), dashed = colored(1), points = colored(2);
    EXPECT_GE(solid, 26);
    EXPECT_GE(dashed, solid / 3);
    EXPECT_LT(dashed, solid * 3 / 4);
    EXPECT_GE(points, 2);
    EXPECT_LT(points, dashed);
}

}  // namespace
