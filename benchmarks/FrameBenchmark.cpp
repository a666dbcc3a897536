// Pan frames, the way from values in memory to a first frame, and pictures as PNG.
//
// A pan frame is what the hosting view paints after its range moved by a pixel: layout, grid, plots, axes and texts
// into an image of the size given. Names: what/plots x points/window/pixels.

#include "benchmarks/BenchmarkGraph.h"
#include "plotkit/render/GraphPainter.h"
#include "plotkit/render/GraphRendering.h"
#include "plugins/PlotixPlugIn/host/PngImage.h"
#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

using plotix_bench::BenchmarkGraph;

constexpr std::size_t kMillion = 1'000'000;

struct PanCase {
    const char* name;
    int plots;
    std::size_t points;
    double share;
    QSize size;
};

constexpr PanCase kPanCases[] = {
    {"pan/1x1M/full/1920x1080", 1, kMillion, 1, {1920, 1080}},
    {"pan/1x10M/full/1920x1080", 1, 10 * kMillion, 1, {1920, 1080}},
    {"pan/1x100M/full/1920x1080", 1, 100 * kMillion, 1, {1920, 1080}},
    {"pan/10x10M/full/1920x1080", 10, 10 * kMillion, 1, {1920, 1080}},
    {"pan/10x10M/full/1200x600", 10, 10 * kMillion, 1, {1200, 600}},
    {"pan/10x10M/1%/1920x1080", 10, 10 * kMillion, 0.01, {1920, 1080}},
};

void paintFrame(plotkit::GraphPainter& painter, QImage& image, const CPTXYGraph& graph)
{
    QPainter to(&image);
    painter.paint(to, graph, QRectF(QPointF(), image.size()));
}

void pan(benchmark::State& state, const PanCase& which)
{
    BenchmarkGraph shown(which.plots, which.points);
    plotkit::GraphPainter painter;
    QImage image(which.size, QImage::Format_RGB32);
    paintFrame(painter, image, shown.graph);
    int step = 0;
    for (auto unused : state) {
        shown.show(which.share, step++ % 200);
        paintFrame(painter, image, shown.graph);
    }
}

void load(benchmark::State& state)
{
    constexpr std::size_t kCount = 10 * kMillion;
    const std::vector<double>& values = plotix_bench::walkValues(kCount, 0);
    const plotix::SharedArray<double> times = plotix_bench::secondsTimes(kCount);
    QImage image(1920, 1080, QImage::Format_RGB32);
    for (auto unused : state) {
        SeriesBuilder builder(times, kCount);
        for (std::size_t first = 0; first < kCount; first += SeriesBuilder::kBlock)
            builder.setBlock(first, std::span(values).subspan(first, std::min(SeriesBuilder::kBlock, kCount - first)),
                             {});
        BenchmarkGraph shown(std::vector<CPTPointSeriesPtr>{builder.finish()});
        plotkit::GraphPainter painter;
        paintFrame(painter, image, shown.graph);
    }
}

/// A picture as the exports make it, drawn and encoded anew each time.
void png(benchmark::State& state, int plots)
{
    BenchmarkGraph shown(plots, kMillion);
    std::size_t bytes = 0;
    for (auto unused : state) {
        const QImage image = plotkit::imageOfGraph(shown.graph, QSizeF(1200, 600), 1, plotkit::DrawingReport::Silent);
        bytes = static_cast<std::size_t>(plotix::pngOfImage(image).size());
    }
    state.counters["bytes"] = static_cast<double>(bytes);
    state.counters["images/s"] = benchmark::Counter(1, benchmark::Counter::kIsIterationInvariantRate);
}

/// The encoding alone.
void pngEncode(benchmark::State& state, int plots)
{
    BenchmarkGraph shown(plots, kMillion);
    const QImage image = plotkit::imageOfGraph(shown.graph, QSizeF(1200, 600), 1, plotkit::DrawingReport::Silent);
    for (auto unused : state)
        benchmark::DoNotOptimize(plotix::pngOfImage(image));
}

void registerAll()
{
    for (const PanCase& which : kPanCases)
        benchmark::RegisterBenchmark(which.name, pan, which)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("load/10M", load)->Unit(benchmark::kMillisecond);
    for (const int plots : {1, 10}) {
        const std::string name = "png/1200x600/" + std::to_string(plots);
        benchmark::RegisterBenchmark(name.c_str(), png, plots)->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((name + "/encode").c_str(), pngEncode, plots)->Unit(benchmark::kMillisecond);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    registerAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
