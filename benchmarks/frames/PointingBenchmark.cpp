// A move of the pointer over a graph with a value line: looking up the records of every line at the pointer's time, and
// the frame that shows them. `line` is what the value line itself takes; a whole frame also copies the kept picture.

#include "benchmarks/frames/BenchmarkGraph.h"
#include "benchmarks/frames/FrameCases.h"
#include "plotkit/render/GraphFrames.h"
#include "plotkit/render/GraphText.h"
#include "plugins/PlotixPlugIn/reading/line/LineSteps.h"
#include "plugins/PlotixPlugIn/reading/line/ValueLine.h"
#include "plugins/PlotixPlugIn/reading/missing/AmendedLook.h"

#include <QtGui/QPainter>
#include <benchmark/benchmark.h>

namespace plotix_bench {

namespace {

constexpr std::size_t kRecords = 10'000'000;
constexpr int kLines = 10;
constexpr QSize kScreen{1920, 1080};

enum class What { Line, Frame };

/// Stretches of records that came late, evenly over all times, half of which they cover; none of 0.
plotix::AmendedRecords amended(int stretches)
{
    constexpr double kSpan = kRecords, kDelay = 3'600;  // seconds
    std::vector<KTVAmendment> amendments;
    for (int stretch = 0; stretch < stretches; ++stretch) {
        const double from = secondsTimes(1)[0] + stretch * kSpan / stretches;
        const double to = from + kSpan / stretches / 2;
        amendments.push_back({KTVAmendment::Kind::Late, from, to, from + kDelay, to + kDelay});
    }
    return plotix::AmendedRecords(amendments);
}

/// The lines of a graph as a trend hands them to its value line. The columns hold the values in double precision.
std::vector<plotix::TrendLine> linesOf(const CPTXYGraph& graph, int stretches = 0)
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
        lines.push_back({line, plot, plotix::lineRecords(plot->series(), column, 60), {}, amended(stretches)});
    }
    return lines;
}

void point(benchmark::State& state, What what, int stretches)
{
    BenchmarkGraph shown(kLines, kRecords);
    const std::vector<plotix::TrendLine> lines = linesOf(shown.graph, stretches);
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

/// What amendments add to a frame of all records: their rows over the lane that the lines share.
void drawAmendments(benchmark::State& state, int stretches)
{
    BenchmarkGraph shown(kLines, kRecords);
    const std::vector<plotix::TrendLine> lines = linesOf(shown.graph, stretches);
    plotix::AmendedLines amendments;
    for (const plotix::TrendLine& line : lines)
        amendments.push_back(&line.amendments);
    const auto geometry = plotkit::geometryOfGraph(shown.graph, QRectF(QPointF(), kScreen), plotkit::sizeOfText);
    QImage image(kScreen, QImage::Format_RGB32);
    for (auto unused : state) {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);  // as their layer does
        plotix::drawAmended(painter, geometry, geometry.plotArea, amendments);
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
    constexpr int kFew = 200, kYear = 52'000;  // stretches a line; the latter are as many as tens of minutes in a year
    RegisterBenchmark("point/10x10M/line", point, What::Line, 0)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("point/10x10M/line/amended200", point, What::Line, kFew)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("point/10x10M/line/amended52k", point, What::Line, kYear)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("point/10x10M/1920x1080", point, What::Frame, 0)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("amended/10x200", drawAmendments, kFew)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("amended/10x52k", drawAmendments, kYear)->Unit(benchmark::kMillisecond);
    using plotix::Step;
    RegisterBenchmark("point/10x10M/maximum/full", step, Step::Maximum, 1.0)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("point/10x10M/maximum/1%", step, Step::Maximum, 0.01)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("point/10x10M/gap", step, Step::Gap, 1.0)->Unit(benchmark::kMillisecond);
}

}  // namespace plotix_bench
