// From a stored site to the first frame on the user's screen: the document opened, a trend view of the five properties
// made through the real plug-in, its records fetched on the reader's thread, the graph painted.

#include "base/MainQueue.h"
#include "benchmarks/data/BenchmarkFiles.h"
#include "benchmarks/data/Elapsed.h"
#include "benchmarks/data/ResidentMemory.h"
#include "hostapp/app/Composition.h"
#include "hostapp/site/MakeTrend.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/WaitForRecords.h"

#include <QtWidgets/QApplication>
#include <benchmark/benchmark.h>

namespace {

constexpr QSize kScreen{1920, 1080};

plotix::TrendRequest trendOf(const std::shared_ptr<plotix::SiteDocument>& document, double seconds)
{
    plotix::TrendRequest trend{document, document->agents().front(), {}, {}, {}, {}};
    for (const auto& property : trend.agent->siteProperties())
        trend.properties.push_back(property);
    trend.from = plotix::Date{plotix_bench::kStart};
    trend.to = plotix::Date{plotix_bench::kStart + seconds};
    return trend;
}

struct Shown {
    plotix::TrendRequest trend;
    KTVPlugInPtr plugIn;
    QImage frame;
};

Shown show(KTVPlugInModule& module, const QString& path, double seconds)
{
    Shown shown;
    shown.trend = trendOf(plotix::SiteDocument::open(path), seconds);
    shown.plugIn = plotix::requireTrend(module, shown.trend);
    shown.plugIn->view()->resize(kScreen);  // loading the view starts the fetch
    plotix::waitForRecords(*shown.trend.agent);
    shown.frame = plotix::graphImage(shown.plugIn.get(), kScreen, 1.0, {});
    return shown;
}

void fetchToFrame(benchmark::State& state)
{
    const QString path = plotix_bench::fullSite().path;
    plotix::Composition composition(plotix::Composition::Audience::Nobody);
    KTVPlugInModule& module = *composition.module();
    show(module, path, 1000);  // the program runs already, with its fonts and its module
    const double before = plotix_bench::residentBytes();
    double held = 0;
    for (auto unused : state) {
        const plotix_bench::Elapsed elapsed;
        const Shown shown = show(module, path, static_cast<double>(plotix_bench::kStationRecords));
        state.SetIterationTime(elapsed.seconds());  // the user does not wait for the clean-up
        held = plotix_bench::residentBytes() - before;
        if (shown.frame.isNull())
            state.SkipWithError("nothing was drawn");
    }
    constexpr double kSamples = static_cast<double>(plotix_bench::kStationRecords * plotix_bench::kStationProperties);
    state.counters["bytes_per_sample"] = held / kSamples;
}

}  // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    plotix::MainQueue::main();  // made here, because it belongs to the first thread that asks for it
    benchmark::RegisterBenchmark("fetch-to-frame/10Mx5", fetchToFrame)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
