// Frames of a view that is panned, zoomed, recoloured and resized, and the way from values in memory to a first frame.
//
// A frame is what the hosting view paints after something changed: layout, background, grid, plots, axes and texts into
// an image of the size given. Names: what/plots x points/window/pixels.

#include "benchmarks/frames/BenchmarkGraph.h"
#include "benchmarks/frames/FrameCases.h"
#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/render/GraphFrames.h"
#include "plotkit/render/GraphPainter.h"
#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"

#include <QtGui/QPainter>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <limits>
#include <string>

namespace plotix_bench {

namespace {

constexpr std::size_t kMillion = 1'000'000;
constexpr QSize kScreen{1920, 1080};

struct PanCase {
    const char* name;
    int plots;
    std::size_t points;
    double share;
    QSize size;
    SignalKind kind = SignalKind::Walk;
};

constexpr PanCase kPanCases[] = {
    {"pan/1x1M/full/1920x1080", 1, kMillion, 1, kScreen},
    {"pan/1x10M/full/1920x1080", 1, 10 * kMillion, 1, kScreen},
    {"pan/1x100M/full/1920x1080", 1, 100 * kMillion, 1, kScreen},
    {"pan/10x10M/full/1920x1080", 10, 10 * kMillion, 1, kScreen},
    {"pan/10x10M/full/1200x600", 10, 10 * kMillion, 1, {1200, 600}},
    {"pan/10x10M/1%/1920x1080", 10, 10 * kMillion, 0.01, kScreen},
    {"pan/10x10M/full/1920x1080/noisy", 10, 10 * kMillion, 1, kScreen, SignalKind::Noisy},
    {"pan/10x10M/1%/1920x1080/noisy", 10, 10 * kMillion, 0.01, kScreen, SignalKind::Noisy},
};

void paintFrame(plotkit::GraphPainter& painter, QImage& image, const CPTXYGraph& graph)
{
    QPainter to(&image);
    painter.paint(to, graph, QRectF(QPointF(), image.size()));
}

void panOver(benchmark::State& state, BenchmarkGraph& shown, double share, const QSize& size)
{
    plotkit::GraphPainter painter;
    QImage image(size, QImage::Format_RGB32);
    paintFrame(painter, image, shown.graph);
    int step = 0;
    for (auto unused : state) {
        shown.show(share, step++ % 200, size.width());
        paintFrame(painter, image, shown.graph);
    }
}

void pan(benchmark::State& state, const PanCase& which)
{
    BenchmarkGraph shown(which.plots, which.points, which.kind);
    panOver(state, shown, which.share, which.size);
    state.counters["bytes_per_sample"] = seriesBytesPerSample();
}

/// The same lines in lanes one below the other, each with a scale of its own.
void panLanes(benchmark::State& state, int lanes)
{
    BenchmarkGraph shown(10, 10 * kMillion);
    std::vector<CPTXYPlotSpacePtr> spaces;
    for (int lane = 0; lane < lanes; ++lane) {
        spaces.push_back(std::make_shared<CPTXYPlotSpace>());
        spaces.back()->followXOf(shown.graph.allPlotSpaces().front());
        spaces.back()->setYRange(shown.graph.plotSpace().yRange());
        spaces.back()->setStrip({.top = double(lane) / lanes, .bottom = double(lane + 1) / lanes, .headRoom = 22});
        shown.graph.addPlotSpace(spaces.back());
        const auto axis = std::make_shared<CPTXYAxis>(*shown.graph.axisSet()->yAxis());
        axis->setPlotSpace(spaces.back());
        shown.graph.axisSet()->addAxis(axis);
    }
    shown.graph.axisSet()->yAxis()->setHidden(true);
    std::size_t next = 0;
    for (const CPTScatterPlotPtr& plot : shown.graph.allPlots())
        plot->setPlotSpace(spaces[next++ % spaces.size()]);
    panOver(state, shown, 1, kScreen);
}

/// Walks of which forty pauses interrupt the recording; the times are shared.
std::vector<CPTPointSeriesPtr> pausedSeries(int plots, std::size_t count)
{
    constexpr double kPause = 1e5;  // seconds
    const std::size_t stretch = count / 40;
    std::vector<double> times(count);
    for (std::size_t index = 0; index < count; ++index)
        times[index] = kStart + static_cast<double>(index) + static_cast<double>(index / stretch) * kPause;
    const auto shared = plotix::SharedArray<double>::fromVector(std::move(times));
    std::vector<CPTPointSeriesPtr> series;
    for (int plot = 0; plot < plots; ++plot) {
        plotix::SeriesBuilder builder(shared, count);
        const std::vector<double>& values = walkValues(count, static_cast<unsigned>(plot));
        for (std::size_t first = 0; first < count; first += plotix::SeriesBuilder::kBlock)
            builder.setBlock(
                first, std::span(values).subspan(first, std::min(plotix::SeriesBuilder::kBlock, count - first)), {});
        series.push_back(builder.finish());
    }
    return series;
}

/// A pan over lines with gaps, which break there, or are joined.
void panPaused(benchmark::State& state, double gapThreshold)
{
    BenchmarkGraph shown(pausedSeries(10, 10 * kMillion));
    for (const CPTScatterPlotPtr& plot : shown.graph.allPlots())
        plot->setGapThreshold(gapThreshold);
    panOver(state, shown, 1, kScreen);
}

/// How each plot of a graph looks.
enum class PlotLook { Straight, Held, Points, Filled, Dashed };

void setLook(CPTScatterPlot& plot, PlotLook look)
{
    CPTLineStyle style = plot.dataLineStyle();
    switch (look) {
    case PlotLook::Straight: break;
    case PlotLook::Held: plot.setInterpolation(CPTScatterPlotInterpolation::HoldLast); break;
    case PlotLook::Points: plot.setInterpolation(CPTScatterPlotInterpolation::PointsOnly); break;
    case PlotLook::Filled:
        style.color.setAlpha(60);
        plot.setAreaFill(CPTAreaFill::toZero(style.color));
        break;
    case PlotLook::Dashed:
        style.dashPattern = {18, 9};
        plot.setDataLineStyle(style);
        break;
    }
}

/// A pan over lines that look otherwise than straight and solid.
void panLooks(benchmark::State& state, PlotLook look, SignalKind kind)
{
    BenchmarkGraph shown(10, 10 * kMillion, kind);
    for (const CPTScatterPlotPtr& plot : shown.graph.allPlots())
        setLook(*plot, look);
    panOver(state, shown, 1, kScreen);
}

/// A pan whose margins follow the labels.
void panRoomForLabels(benchmark::State& state)
{
    BenchmarkGraph shown(10, 10 * kMillion);
    shown.graph.setLabelRoom(CPTLabelRoom::Grows);
    panOver(state, shown, 1, kScreen);
}

/// In by a twentieth a frame, forty frames, and from the beginning.
void zoom(benchmark::State& state)
{
    BenchmarkGraph shown(10, 10 * kMillion);
    plotkit::GraphPainter painter;
    QImage image(kScreen, QImage::Format_RGB32);
    double share = 1;
    for (auto unused : state) {
        share = share < 0.13 ? 1 : share * 0.95;
        shown.show(share, 0, image.width());
        paintFrame(painter, image, shown.graph);
    }
}

/// Nothing moves, every plot gets another colour.
void recolor(benchmark::State& state)
{
    BenchmarkGraph shown(10, 10 * kMillion);
    plotkit::GraphPainter painter;
    QImage image(kScreen, QImage::Format_RGB32);
    int turn = 0;
    for (auto unused : state) {
        shown.setColors(turn = (turn + 7) % 360);
        paintFrame(painter, image, shown.graph);
    }
}

/// A window whose corner is dragged: a pixel narrower and lower each frame.
void resize(benchmark::State& state)
{
    BenchmarkGraph shown(10, 10 * kMillion);
    plotkit::GraphPainter painter;
    int step = 0;
    for (auto unused : state) {
        step = (step + 1) % 100;
        QImage image(kScreen - QSize(step, step), QImage::Format_RGB32);
        paintFrame(painter, image, shown.graph);
    }
}

/// A crosshair: two lines, each a pixel wide.
class Crosshair : public CPTGraphLayer {
public:
    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override
    {
        const QRectF& area = geometry.plotArea;
        painter.fillRect(QRectF(area.left() + at, area.top(), 1, area.height()), Qt::white);
        painter.fillRect(QRectF(area.left(), area.center().y(), area.width(), 1), Qt::white);
    }
    double at = 0;  ///< points from the plot area's left
};

/// A crosshair follows the pointer over plots that stay, or over plots that change each time.
void moveLayer(benchmark::State& state, plotkit::GraphChange change)
{
    BenchmarkGraph shown(10, 10 * kMillion);
    const auto crosshair = std::make_shared<Crosshair>();
    shown.graph.addLayer(crosshair);
    plotkit::GraphFrames frames;
    QImage image(kScreen, QImage::Format_RGB32);
    int step = 0;
    for (auto unused : state) {
        crosshair->at = step++ % 1000;
        QPainter to(&image);
        frames.paint(to, shown.graph, QRectF(QPointF(), image.size()), change);
    }
}

void load(benchmark::State& state)
{
    constexpr std::size_t kCount = 10 * kMillion;
    const std::vector<double>& values = walkValues(kCount, 0);
    const plotix::SharedArray<double> times = secondsTimes(kCount);
    QImage image(kScreen, QImage::Format_RGB32);
    for (auto unused : state) {
        plotix::SeriesBuilder builder(times, kCount);
        for (std::size_t first = 0; first < kCount; first += plotix::SeriesBuilder::kBlock)
            builder.setBlock(
                first, std::span(values).subspan(first, std::min(plotix::SeriesBuilder::kBlock, kCount - first)), {});
        BenchmarkGraph shown(std::vector<CPTPointSeriesPtr>{builder.finish()});
        plotkit::GraphPainter painter;
        paintFrame(painter, image, shown.graph);
    }
}

}  // namespace

void registerFrames()
{
    for (const PanCase& which : kPanCases)
        benchmark::RegisterBenchmark(which.name, pan, which)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("pan/10x10M/full/1920x1080/joined", panPaused, std::numeric_limits<double>::infinity())
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("pan/10x10M/full/1920x1080/broken", panPaused, 5.0)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("pan/10x10M/full/1920x1080/labels", panRoomForLabels)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("pan/10x10M/full/1920x1080/lanes", panLanes, 4)->Unit(benchmark::kMillisecond);
    const auto registerLook = [](const std::string& name, PlotLook look) {
        const std::string pan = "pan/10x10M/full/1920x1080/";
        benchmark::RegisterBenchmark((pan + name).c_str(), panLooks, look, SignalKind::Walk)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((pan + "noisy/" + name).c_str(), panLooks, look, SignalKind::Noisy)
            ->Unit(benchmark::kMillisecond);
    };
    registerLook("straight", PlotLook::Straight);
    registerLook("held", PlotLook::Held);
    registerLook("points", PlotLook::Points);
    registerLook("filled", PlotLook::Filled);
    registerLook("dashed", PlotLook::Dashed);
    benchmark::RegisterBenchmark("zoom/10x10M/1920x1080", zoom)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("recolor/10x10M/1920x1080", recolor)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("resize/10x10M/1920x1080", resize)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("layer/10x10M/1920x1080", moveLayer, plotkit::GraphChange::LayersOnly)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("layer/10x10M/1920x1080/all", moveLayer, plotkit::GraphChange::Anything)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("load/10M", load)->Unit(benchmark::kMillisecond);
}

}  // namespace plotix_bench
