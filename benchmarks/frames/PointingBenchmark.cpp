// A move of the pointer over a graph with a value line: looking up the records of every line at the pointer's time, and
// the frame that shows them. `line` is what the value line itself takes; a whole frame also copies the kept picture.

#include "benchmarks/frames/BenchmarkGraph.h"
#include "benchmarks/frames/FrameCases.h"
#include "plotkit/render/GraphFrames.h"
#include "plotkit/render/GraphText.h"
#include "plugins/PlotixPlugIn/reading/line/LineSteps.h"
#include "plugins/PlotixPlugIn/reading/line/ValueLine.h"

#include <QtGui/QPainter>
#include <benchmark/benchmark.h>

namespace plotix_bench {

namespace {

constexpr std::size_t kRecords = 10'000'000;
constexpr int kLines = 10;
constexpr QSize kScreen{1920, 1080};

enum class What { Line, Frame };

/// The lines of a graph as a trend hands them to its value line. The columns hold the values in double precision.
std::vector<plotix::TrendLine> linesOf(const CPTXYGraph& graph)
{
    const std::vector<double>& values = walkValues(kRecords, 0);
    const std::shared_ptr<const double> borrowed(std::shared_ptr<const void>(), values.data());
    std::vector<plotix::TrendLine> lines;
    for (const CPTScatterPlotPtr& plot : graph.allPlots()) {
        KTVRecordColumn::Descriptor descriptor;
        descriptor.unit = descriptor.archivedUnit = QStringLiteral("kW");
        const auto column = std::make_shared<KTVRecordColumn>(
            descriptor, plotix::SharedArray<double>(borrowed, values.size()), plotix::ValidityBitmap(), nullptr);
        plotix::ReadLine line;
        line.key = plot->identifier();
        line.name = QStringLiteral("Power of Line %1").arg(line.key);
        line.unitSymbol = descriptor.unit;
        line.color = plot->dataLineStyle().color;
        lines.push_back({line, plot, plotix::lineRecords(plot->series(), column, 60)});
    }
    return lines;
}

void point(benchmark::State& state, What what)
{
    BenchmarkGraph shown(kLines, kRecords);
    const std::vector<plotix::TrendLine> lines = linesOf(shown.graph);
    const plotix::ValueTexts texts;
    const auto layer = std::make_shared<plotix::ValueLine>([&](double time, const plotkit::GraphGeometry& geometry) {
        return plotix::readAt(lines, time, geometry, texts, {});
    });
    shown.graph.addLayer(layer);
    const QRectF rect(QPointF(), kScreen);
    const auto geometry = plotkit::geometryOfGraph(shown.graph, rect, plotkit::sizeOfText);
    QImage image(kScreen, QImage::Format_RGB32);
    plotkit::GraphFrames frames;
    int step = 0;
    for (auto unused : state) {
        const double x = geometry.plotArea.left() + (step++ * 37) % 1800;
        const double time = plotix::timeNear(lines, x, geometry);
        layer->show(plotix::ValueLine::Place{time, true, QPointF(x, 500)});
        QPainter painter(&image);
        if (what == What::Frame)
            frames.paint(painter, shown.graph, rect, plotkit::GraphChange::LayersOnly);
        else
            layer->drawInGraph(painter, geometry);
    }
}

/// What a key does: the next maximum, or the next gap, of all lines from a time in the middle on.
void step(benchmark::State& state, plotix::Step which, double share)
{
    BenchmarkGraph shown(kLines, kRecords);
    shown.show(share, 0, kScreen.width());
    const std::vector<plotix::TrendLine> lines = linesOf(shown.graph);
    const auto geometry = plotkit::geometryOfGraph(shown.graph, QRectF(QPointF(), kScreen), plotkit::sizeOfText);
    const double middle = shown.graph.plotSpace().xRange().location;
    for (auto unused : state)
        benchmark::DoNotOptimize(plotix::timeOfStep(lines, {middle, {}, {}}, which, plotix::Towards::Later, geometry));
}

}  // namespace

void registerPointing()
{
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("point/10x10M/line", point, What::Line)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("point/10x10M/1920x1080", point, What::Frame)->Unit(benchmark::kMillisecond);
    using plotix::Step;
    RegisterBenchmark("point/10x10M/maximum/full", step, Step::Maximum, 1.0)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("point/10x10M/maximum/1%", step, Step::Maximum, 0.01)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("point/10x10M/gap", step, Step::Gap, 1.0)->Unit(benchmark::kMillisecond);
}

}  // namespace plotix_bench
