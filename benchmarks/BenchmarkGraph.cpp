#include "benchmarks/BenchmarkGraph.h"

#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

namespace plotix_bench {

namespace {

constexpr double kStart = 1.4e9;
constexpr double kPictureWidth = 1920;

/// A small generator: a hundred million values are made in a second.
class Noise {
public:
    explicit Noise(unsigned seed) : m_state(0x9e3779b97f4a7c15U * (seed + 1U)) {}
    /// Within −1…1.
    double next()
    {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return static_cast<double>(m_state >> 11) * 0x1p-52 - 1.0;
    }

private:
    std::uint64_t m_state;
};

}  // namespace

plotix::SharedArray<double> secondsTimes(std::size_t count)
{
    static plotix::SharedArray<double> times;
    if (times.size() < count) {
        std::vector<double> longer(count);
        for (std::size_t index = 0; index < count; ++index)
            longer[index] = kStart + static_cast<double>(index);
        times = plotix::SharedArray<double>::fromVector(std::move(longer));
    }
    return {std::shared_ptr<const double>(std::make_shared<plotix::SharedArray<double>>(times), times.data()), count};
}

const std::vector<double>& walkValues(std::size_t count, unsigned plot)
{
    static std::map<std::pair<std::size_t, unsigned>, std::vector<double>> made;
    std::vector<double>& values = made[{count, plot}];
    if (values.empty()) {
        values.resize(count);
        Noise noise(plot);
        double value = 0;
        for (double& each : values)
            each = value = value * 0.99999 + noise.next();
    }
    return values;
}

CPTPointSeriesPtr walkSeries(std::size_t count, unsigned plot)
{
    static std::map<std::pair<std::size_t, unsigned>, CPTPointSeriesPtr> made;
    CPTPointSeriesPtr& series = made[{count, plot}];
    if (!series) {
        const plotix::SharedArray<double> times = secondsTimes(count);
        SeriesBuilder builder(times, count);
        Noise noise(plot);
        double value = 0;
        std::vector<double> block(SeriesBuilder::kBlock);
        for (std::size_t first = 0; first < count; first += block.size()) {
            const std::size_t length = std::min(block.size(), count - first);
            for (std::size_t index = 0; index < length; ++index)
                block[index] = value = value * 0.99999 + noise.next();
            builder.setBlock(first, std::span(block).first(length), {});
        }
        series = builder.finish();
    }
    return series;
}

BenchmarkGraph::BenchmarkGraph(int plots, std::size_t count)
    : BenchmarkGraph([plots, count] {
          std::vector<CPTPointSeriesPtr> series;
          for (int plot = 0; plot < plots; ++plot)
              series.push_back(walkSeries(count, static_cast<unsigned>(plot)));
          return series;
      }())
{
}

BenchmarkGraph::BenchmarkGraph(const std::vector<CPTPointSeriesPtr>& series)
{
    graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    graph.setPlotAreaFramePadding({20, 60, 60, 20});
    for (CPTXYAxis* axis : {graph.axisSet()->xAxis(), graph.axisSet()->yAxis()})
        axis->setMajorGridLineStyle(CPTLineStyle{.width = 0.75, .color = CPTColor(255, 255, 255, 60)});
    for (std::size_t plot = 0; plot < series.size(); ++plot) {
        m_controllers.push_back(std::make_shared<CPTSeriesController>(series[plot]));
        auto shown = std::make_shared<CPTScatterPlot>();
        shown->setIdentifier(QString::number(plot));
        const int hue = static_cast<int>(plot * 360 / series.size());
        shown->setDataLineStyle({.width = 3, .color = CPTColor::fromHsv(hue, 200, 230)});
        shown->bind(CPTScatterPlotBindingXValues, m_controllers.back(), QStringLiteral("arrangedObjects.x"));
        shown->bind(CPTScatterPlotBindingYValues, m_controllers.back(), QStringLiteral("arrangedObjects.y"));
        graph.addPlot(shown);
    }
    m_seconds = static_cast<double>(series.front()->elementCount());
    float lowest = 0;
    float highest = 0;
    for (const CPTPointSeriesPtr& each : series) {
        lowest = std::min(lowest, each->extent()->minY);
        highest = std::max(highest, each->extent()->maxY);
    }
    graph.defaultPlotSpace()->setYRange({lowest, static_cast<double>(highest) - static_cast<double>(lowest)});
    show(1, 0);
}

void BenchmarkGraph::show(double share, int step)
{
    const double length = m_seconds * share;
    const double start = share < 1 ? kStart + m_seconds * 0.4 : kStart;
    graph.defaultPlotSpace()->setXRange({start + step * length / kPictureWidth, length});
}

}  // namespace plotix_bench
