#include "tests/plotkit/render/RenderedGraph.h"

namespace plotkit_test {

RenderedGraph::RenderedGraph()
{
    graph.setPadding({});
    graph.setPlotAreaFramePadding({10, 10, 10, 10});
    graph.defaultPlotSpace()->setXRange({0, 100});
    graph.defaultPlotSpace()->setYRange({0, 100});
    for (CPTXYAxis* axis : {graph.axisSet()->xAxis(), graph.axisSet()->yAxis()}) {
        axis->setAxisLineStyle(std::nullopt);
        axis->setMajorTickLineStyle(std::nullopt);
        axis->setMinorTickLineStyle(std::nullopt);
        axis->setLabelTextStyle({.color = CPTColor()});
        axis->setAxisConstraints(CPTConstraints{});
    }
}

CPTScatterPlotPtr RenderedGraph::addPlot(const QColor& color, std::vector<double> x, std::vector<float> y, double width)
{
    const std::size_t count = y.size();
    return addPlot(color,
                   std::make_shared<CPTPointSeries>(plotix::SharedArray<double>::fromVector(std::move(x)),
                                                    plotix::SharedArray<float>::fromVector(std::move(y)),
                                                    plotix::ValidityBitmap(), count),
                   width);
}

CPTScatterPlotPtr RenderedGraph::addPlot(const QColor& color, CPTPointSeriesPtr series, double width)
{
    m_controllers.push_back(std::make_shared<CPTSeriesController>(std::move(series)));
    auto plot = std::make_shared<CPTScatterPlot>();
    plot->setIdentifier(QString::number(m_controllers.size()));
    plot->setDataLineStyle({.width = width, .color = color});
    plot->bind(CPTScatterPlotBindingXValues, m_controllers.back(), QStringLiteral("arrangedObjects.x"));
    plot->bind(CPTScatterPlotBindingYValues, m_controllers.back(), QStringLiteral("arrangedObjects.y"));
    graph.addPlot(plot);
    return plot;
}

void RenderedGraph::useTicks(double xInterval, double yInterval)
{
    const auto use = [](CPTXYAxis& axis, double interval) {
        axis.setLabelingPolicy(CPTAxisLabelingPolicy::FixedInterval);
        axis.setMajorIntervalLength(interval);
        axis.setMinorTicksPerInterval(0);
    };
    use(*graph.axisSet()->xAxis(), xInterval);
    use(*graph.axisSet()->yAxis(), yInterval);
}

int countMarkedPixels(const QImage& image)
{
    int marked = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            marked += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
    return marked;
}

}  // namespace plotkit_test
