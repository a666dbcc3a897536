#include "benchmarks/frames/BenchmarkGraph.h"

#include "benchmarks/data/ResidentMemory.h"
#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

namespace plotix_bench {

namespace {

using Key = std::pair<std::size_t, unsigned>;  // points, seed

struct Footprint {
    double bytes = 0;
    double samples = 0;
};

Footprint& seriesFootprint()
{
    static Footprint made;
    return made;
}

CPTPointSeriesPtr makeSeries(SignalKind kind, std::size_t count, unsigned plot)
{
    const plotix::SharedArray<double> times = secondsTimes(count);
    plotix::SeriesBuilder builder(times, count);
    Signal signal(kind, plot);
    std::vector<double> block(plotix::SeriesBuilder::kBlock);
    for (std::size_t first = 0; first < count; first += block.size()) {
        const std::size_t length = std::min(block.size(), count - first);
        std::generate_n(block.begin(), length, [&signal] { return signal.next(); });
        builder.setBlock(first, std::span(block).first(length), {});
    }
    return builder.finish();
}

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
    static std::map<Key, std::vector<double>> made;
    std::vector<double>& values = made[{count, plot}];
    if (values.empty()) {
        values.resize(count);
        Signal walk(SignalKind::Walk, plot);
        std::generate(values.begin(), values.end(), [&walk] { return walk.next(); });
    }
    return values;
}

CPTPointSeriesPtr signalSeries(SignalKind kind, std::size_t count, unsigned plot)
{
    static std::map<SignalKind, std::map<Key, CPTPointSeriesPtr>> made;
    CPTPointSeriesPtr& series = made[kind][{count, plot}];
    if (!series) {
        const double before = residentBytes();
        series = makeSeries(kind, count, plot);
        seriesFootprint().bytes += residentBytes() - before;
        seriesFootprint().samples += static_cast<double>(count);
    }
    return series;
}

double seriesBytesPerSample()
{
    const Footprint& made = seriesFootprint();
    return made.samples > 0 ? made.bytes / made.samples : 0;
}

BenchmarkGraph::BenchmarkGraph(int plots, std::size_t count, SignalKind kind)
    : BenchmarkGraph([plots, count, kind] {
          std::vector<CPTPointSeriesPtr> series;
          for (int plot = 0; plot < plots; ++plot)
              series.push_back(signalSeries(kind, count, static_cast<unsigned>(plot)));
          return series;
      }())
{
}

BenchmarkGraph::BenchmarkGraph(const std::vector<CPTPointSeriesPtr>& series)
{
    graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    graph.setPlotAreaFramePadding({kMarginTop, kMarginLeft, kMarginBottom, kMarginRight});
    for (CPTXYAxis* axis : {graph.axisSet()->xAxis(), graph.axisSet()->yAxis()})
        axis->setMajorGridLineStyle(CPTLineStyle{.width = 0.75, .color = CPTColor(255, 255, 255, 60)});
    for (std::size_t plot = 0; plot < series.size(); ++plot) {
        m_controllers.push_back(std::make_shared<CPTSeriesController>(series[plot]));
        auto shown = std::make_shared<CPTScatterPlot>();
        shown->setIdentifier(QString::number(plot));
        const int hue = hueOf(static_cast<int>(plot), static_cast<int>(series.size()));
        shown->setDataLineStyle({.width = kPenWidth, .color = CPTColor::fromHsv(hue, 200, 230)});
        shown->bind(CPTScatterPlotBindingXValues, m_controllers.back(), QStringLiteral("arrangedObjects.x"));
        shown->bind(CPTScatterPlotBindingYValues, m_controllers.back(), QStringLiteral("arrangedObjects.y"));
        graph.addPlot(shown);
        m_plots.push_back(shown);
    }
    m_points = series.front()->elementCount();
    float lowest = 0;
    float highest = 0;
    for (const CPTPointSeriesPtr& each : series) {
        lowest = std::min(lowest, each->extent()->minY);
        highest = std::max(highest, each->extent()->maxY);
    }
    graph.defaultPlotSpace()->setYRange({lowest, static_cast<double>(highest) - static_cast<double>(lowest)});
    show(1, 0, 1920);
}

void BenchmarkGraph::show(double share, int step, int pictureWidth)
{
    const TimeRange range = pannedRange(m_points, share, step, pictureWidth);
    graph.defaultPlotSpace()->setXRange({range.start, range.length});
}

void BenchmarkGraph::setColors(int turn)
{
    const int plots = static_cast<int>(m_plots.size());
    for (int plot = 0; plot < plots; ++plot) {
        CPTScatterPlot& shown = *m_plots[static_cast<std::size_t>(plot)];
        CPTLineStyle style = shown.dataLineStyle();
        style.color = CPTColor::fromHsv((hueOf(plot, plots) + turn) % 360, 200, 230);
        shown.setDataLineStyle(style);
    }
}

}  // namespace plotix_bench
