// From a stored site to the first frame on the user's screen: the document opened, a trend view of the five properties
// made through the real plug-in, its records fetched on the reader's thread, the graph painted. And what it costs to
// compare a line with its past.

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

/// What of the stored site a trend shows.
struct Wanted {
    double from, to;  ///< seconds after its first record
    std::size_t properties = plotix_bench::kStationProperties;
    QVariantMap reading = {};
    std::size_t compared = 0;  ///< lines beside those of the properties
};

plotix::TrendRequest trendOf(const std::shared_ptr<plotix::SiteDocument>& document, const Wanted& wanted)
{
    plotix::TrendRequest trend{document, document->agents().front(), {}, {}, {}, {}};
    const auto& all = trend.agent->siteProperties();
    trend.properties.assign(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(wanted.properties));
    trend.from = plotix::Date{plotix_bench::kStart + wanted.from};
    trend.to = plotix::Date{plotix_bench::kStart + wanted.to};
    return trend;
}

struct Shown {
    plotix::TrendRequest trend;
    KTVPlugInPtr plugIn;
    QImage frame;
};

Shown show(KTVPlugInModule& module, const QString& path, const Wanted& wanted)
{
    Shown shown;
    shown.trend = trendOf(plotix::SiteDocument::open(path), wanted);
    shown.plugIn = plotix::requireTrend(module, shown.trend);
    plotix::setReading(shown.plugIn.get(), wanted.reading);
    shown.plugIn->view()->resize(kScreen);  // loading the view starts the fetch
    plotix::waitForRecords(*shown.trend.agent);
    shown.frame = plotix::graphImage(shown.plugIn.get(), kScreen, 1.0, {});
    return shown;
}

void fetchToFrame(benchmark::State& state, const Wanted& wanted)
{
    const QString path = plotix_bench::fullSite().path;
    plotix::Composition composition(plotix::Composition::Audience::Nobody);
    KTVPlugInModule& module = *composition.module();
    show(module, path, {0, 1000});  // the program runs already, with its fonts and its module
    const double before = plotix_bench::residentBytes();
    double held = 0;
    for (auto unused : state) {
        const plotix_bench::Elapsed elapsed;
        const Shown shown = show(module, path, wanted);
        state.SetIterationTime(elapsed.seconds());  // the user does not wait for the clean-up
        held = plotix_bench::residentBytes() - before;
        if (shown.frame.isNull())
            state.SkipWithError("nothing was drawn");
    }
    state.counters["bytes_per_sample"] =
        held / ((wanted.to - wanted.from) * static_cast<double>(wanted.properties + wanted.compared));
}

/// One line of four million records with one of as many beside it: its own of fifty days before, or another property.
void registerComparing()
{
    constexpr double kFrom = 5e6, kTo = 9e6;  // fifty days are 4.32 million seconds
    const QVariantMap earlier{{QStringLiteral("with"), QStringList{QStringLiteral("50d")}}};
    const auto add = [](const char* name, const Wanted& wanted) {
        benchmark::RegisterBenchmark(name, fetchToFrame, wanted)
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime()
            ->Iterations(1);
    };
    add("compare/4M", {kFrom, kTo, 1, {{QStringLiteral("comparing"), earlier}}, 1});
    add("another-line/compare/4M", {kFrom, kTo, 2});
    add("one-line/compare/4M", {kFrom, kTo, 1});
}

}  // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    plotix::MainQueue::main();  // made here, because it belongs to the first thread that asks for it
    benchmark::RegisterBenchmark("fetch-to-frame/10Mx5", fetchToFrame,
                                 Wanted{0, static_cast<double>(plotix_bench::kStationRecords)})
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1);
    registerComparing();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
