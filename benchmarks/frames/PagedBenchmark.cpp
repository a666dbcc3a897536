// Frames of paged series: ten years of seconds, made up where somebody looks, of which the runs alone are in memory.
//
// The same pan and zoom as over series in memory. "full" shows everything, from the runs; "4M" a stretch whose pages
// are in memory, beside the same stretch of series that are in memory for good ("resident").

#include "base/PageCache.h"
#include "benchmarks/frames/BenchmarkGraph.h"
#include "benchmarks/frames/FrameCases.h"
#include "plotkit/model/PagedSeries.h"
#include "plotkit/render/GraphPainter.h"

#include <QtGui/QPainter>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace plotix_bench {

namespace {

constexpr std::size_t kMillion = 1'000'000;
constexpr std::size_t kDecade = 300 * kMillion;
constexpr std::size_t kRun = 512;
constexpr QSize kScreen{1920, 1080};
constexpr std::size_t kRoom = std::size_t{1} << 30;  // for the pages in view

class Seconds : public plotix::PagedMemory {
public:
    Seconds(std::shared_ptr<plotix::PageCache> cache, std::size_t count)
        : PagedMemory(std::move(cache), count), m_times(reserve<double>())
    {
    }
    plotix::PagedArray<double> array() const { return {shared_from_this(), m_times, elements()}; }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        for (std::size_t element = first; element < end; ++element)
            m_times[element] = kStart + static_cast<double>(element);
        return true;
    }
    double* m_times;
};

/// A slow swing under noise that repeats with every run, so that its extremes are known without making it up.
class Swings : public CPTPagedPoints {
public:
    Swings(std::shared_ptr<plotix::PageCache> cache, std::size_t count, unsigned plot)
        : CPTPagedPoints(std::move(cache), count), m_plot(plot)
    {
        Noise noise(plot);
        std::generate(m_noise.begin(), m_noise.end(), [&noise] { return 0.25 * noise.next(); });
    }
    plotix::ValueRuns runs() const
    {
        const auto [least, greatest] = std::minmax_element(m_noise.begin(), m_noise.end());
        plotix::ValueRuns known;
        for (std::size_t run = 0; run * kRun < elements(); ++run) {
            known.least.push_back(levelOf(run) + *least);
            known.greatest.push_back(levelOf(run) + *greatest);
            known.first.push_back(levelOf(run) + m_noise[0]);
        }
        return known;
    }

private:
    double levelOf(std::size_t run) const
    {
        return std::sin(static_cast<double>(run) * 1e-3 * (m_plot + 1)) + 0.3 * std::sin(static_cast<double>(run));
    }
    bool writePoints(CPTPointWriter& into) const noexcept override
    {
        std::array<double, kRun> values;
        for (std::size_t first = into.first(); first < into.end(); first += kRun) {
            const std::size_t count = std::min(kRun, into.end() - first);
            const double level = levelOf(first / kRun);
            for (std::size_t at = 0; at < count; ++at)
                values[at] = level + m_noise[at];
            into.setBlock(first, std::span(values).first(count), {});
        }
        return true;
    }
    std::array<double, kRun> m_noise;
    unsigned m_plot;
};

std::vector<CPTPointSeriesPtr> pagedSeries(int plots, std::size_t count, std::size_t budget)
{
    const auto cache = std::make_shared<plotix::PageCache>(budget);
    const auto times = std::make_shared<Seconds>(cache, count);
    const auto runs = std::make_shared<plotix::TimeRuns>();
    for (std::size_t first = 0; first < count; first += kRun) {
        runs->begin.push_back(first);
        runs->first.push_back(kStart + static_cast<double>(first));
        runs->last.push_back(kStart + static_cast<double>(std::min(first + kRun, count) - 1));
    }
    runs->begin.push_back(count);
    std::vector<CPTPointSeriesPtr> series;
    for (int plot = 0; plot < plots; ++plot) {
        const auto points = std::make_shared<const Swings>(cache, count, static_cast<unsigned>(plot));
        series.push_back(
            plotkit::pagedSeries(times->array(), {runs, plotix::KeptRuns::of(points->runs())}, points, count));
    }
    return series;
}

struct PagedCase {
    const char* name;
    int plots;
    std::size_t points;
    std::size_t shown;
    bool zooms;
    bool isResident = false;
};

constexpr PagedCase kCases[] = {
    {"paged/pan/1x300M/full", 1, kDecade, kDecade, false},
    {"paged/pan/10x300M/full", 10, kDecade, kDecade, false},
    {"paged/zoom/10x300M/full", 10, kDecade, kDecade, true},
    {"paged/pan/10x300M/10%", 10, kDecade, kDecade / 10, false},
    {"paged/zoom/10x300M/10%", 10, kDecade, kDecade / 10, true},
    {"paged/pan/1x300M/4M", 1, kDecade, 4 * kMillion, false},
    {"paged/zoom/1x300M/4M", 1, kDecade, 4 * kMillion, true},
    {"paged/pan/10x300M/4M", 10, kDecade, 4 * kMillion, false},
    {"paged/zoom/10x300M/4M", 10, kDecade, 4 * kMillion, true},
    {"resident/pan/10x10M/4M", 10, 10 * kMillion, 4 * kMillion, false, true},
    {"resident/zoom/10x10M/4M", 10, 10 * kMillion, 4 * kMillion, true, true},
};

void frames(benchmark::State& state, const PagedCase& which)
{
    BenchmarkGraph shown = which.isResident ? BenchmarkGraph(which.plots, which.points, SignalKind::Noisy)
                                            : BenchmarkGraph(pagedSeries(which.plots, which.points, kRoom));
    const double share = static_cast<double>(which.shown) / static_cast<double>(which.points);
    plotkit::GraphPainter painter;
    QImage image(kScreen, QImage::Format_RGB32);
    int step = 0;
    const auto paint = [&] {
        const double now = which.zooms ? share * (1 - 0.001 * (step % 20)) : share;
        shown.show(now, which.zooms ? 0 : step % 200, image.width());
        ++step;
        QPainter to(&image);
        painter.paint(to, shown.graph, QRectF(QPointF(), image.size()));
    };
    paint();
    for (auto unused : state)
        paint();
}

/// From values nobody looked at to a picture: pages of all that is in view are filled.
void firstFrame(benchmark::State& state, std::size_t visible)
{
    for (auto unused : state) {
        state.PauseTiming();
        BenchmarkGraph shown(pagedSeries(10, kDecade / 10, kRoom));
        plotkit::GraphPainter painter;
        QImage image(kScreen, QImage::Format_RGB32);
        shown.show(static_cast<double>(visible) / static_cast<double>(kDecade / 10), 0, image.width());
        state.ResumeTiming();
        QPainter to(&image);
        painter.paint(to, shown.graph, QRectF(QPointF(), image.size()));
    }
}

}  // namespace

void registerPaged()
{
    for (const PagedCase& which : kCases)
        benchmark::RegisterBenchmark(which.name, frames, which)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("paged/first/10x30M/4M", firstFrame, 4 * kMillion)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("paged/first/10x30M/full", firstFrame, kDecade / 10)->Unit(benchmark::kMillisecond);
}

}  // namespace plotix_bench
