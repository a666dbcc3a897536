// Pictures of 1200 × 600 as PNG files: the encoding alone, ours and the toolkit's own, and drawing with encoding as the
// exports do it.

#include "benchmarks/frames/BenchmarkGraph.h"
#include "benchmarks/frames/FrameCases.h"
#include "plotkit/render/GraphRendering.h"
#include "plugins/PlotixPlugIn/host/PngImage.h"

#include <QtCore/QBuffer>
#include <benchmark/benchmark.h>

namespace plotix_bench {

namespace {

constexpr std::size_t kPoints = 1'000'000;

QImage drawn(const BenchmarkGraph& shown)
{
    return plotkit::imageOfGraph(shown.graph, QSizeF(1200, 600), 1, plotkit::DrawingReport::Silent);
}

QByteArray savedByToolkit(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

using Encoder = QByteArray (*)(const QImage&);

void encode(benchmark::State& state, int plots, Encoder encoder)
{
    const BenchmarkGraph shown(plots, kPoints);
    const QImage image = drawn(shown);
    qsizetype bytes = 0;
    for (auto unused : state)
        bytes = encoder(image).size();
    state.counters["bytes"] = static_cast<double>(bytes);
}

void drawAndEncode(benchmark::State& state, int plots)
{
    const BenchmarkGraph shown(plots, kPoints);
    for (auto unused : state)
        benchmark::DoNotOptimize(pngOfImage(drawn(shown)));
}

}  // namespace

void registerPictures()
{
    for (const int plots : {1, 10}) {
        const std::string name = "png/1200x600/" + std::to_string(plots);
        benchmark::RegisterBenchmark(name.c_str(), encode, plots, pngOfImage)->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("qimage/" + name).c_str(), encode, plots, savedByToolkit)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((name + "/drawn").c_str(), drawAndEncode, plots)->Unit(benchmark::kMillisecond);
    }
}

}  // namespace plotix_bench
