// The archive of a site document: ten million records of five properties read, looked into, summed up and stored.

#include "benchmarks/archive/ArchiveCases.h"
#include "benchmarks/data/BenchmarkFiles.h"
#include "benchmarks/data/Elapsed.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace plotix_bench {

namespace {

void readBetween(benchmark::State& state, std::optional<double> from, std::optional<double> to, std::size_t expected)
{
    const SiteFile site = fullSite();
    const auto reader = site.records();
    reader->read(site.agent, site.properties, from, to);  // the file and the result's memory are warm from here on
    for (auto unused : state) {
        const auto records = reader->read(site.agent, site.properties, from, to);
        if (!records || records->times.size() != expected)
            state.SkipWithError("not all records were read");
    }
}

void readAll(benchmark::State& state)
{
    readBetween(state, {}, {}, kStationRecords);
}

/// A hundredth of the time, away from the chunks' edges.
void readWindow(benchmark::State& state)
{
    readBetween(state, kWindowFrom, kWindowTo, kWindowRecords);
}

/// From opening the file, nothing of it in memory, to the last value.
void readCold(benchmark::State& state)
{
    const SiteFile site = fullSite();
    double stayed = 0;
    for (auto unused : state) {
        stayed = std::max(stayed, forgetPages(site.path));
        const Elapsed elapsed;
        const auto reader = site.records();
        const auto records = reader->read(site.agent, site.properties, {}, {});
        if (!records || records->times.size() != kStationRecords)
            state.SkipWithError("not all records were read");
        state.SetIterationTime(elapsed.seconds());
    }
    state.counters["stayed"] = stayed;
}

/// What the archive knows of every chunk: enough for a picture of the whole.
void overview(benchmark::State& state)
{
    const SiteFile site = fullSite();
    const auto reader = site.records();
    for (auto unused : state) {
        const plotix::RecordOverview known = reader->overview(site.agent, site.properties);
        if (known.runs.empty() || known.columns.size() != kStationProperties)
            state.SkipWithError("there is no overview");
    }
}

/// Minimum, maximum and average of every property from all its values, none of it from stored summaries.
void statistics(benchmark::State& state)
{
    const SiteFile site = fullSite();
    const auto reader = site.records();
    for (auto unused : state)
        for (const plotix::RowId property : site.properties) {
            const auto found = reader->statistics(site.agent, property, {}, {}, plotix::StatisticsFrom::Values);
            if (found.valid != kStationRecords)
                state.SkipWithError("not all values were counted");
        }
    constexpr double kValues = static_cast<double>(kStationRecords * kStationProperties);
    state.counters["values_per_second"] = benchmark::Counter(kValues, benchmark::Counter::kIsIterationInvariantRate);
}

void ingest(benchmark::State& state)
{
    station();
    const QString path = dataFile(QStringLiteral("ingest.plotix"));
    for (auto unused : state) {
        const SiteFile site = emptySite(path);
        const Elapsed elapsed;
        storeStation(site);
        state.SetIterationTime(elapsed.seconds());
    }
    removeDatabase(path);
}

}  // namespace

void registerArchive()
{
    benchmark::RegisterBenchmark("archive/read/10Mx5", readAll)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("archive/window1%/10Mx5", readWindow)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("archive/overview/10Mx5", overview)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("archive/statistics/10Mx5", statistics)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("archive/cold/10Mx5", readCold)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1);
    benchmark::RegisterBenchmark("archive/ingest/10Mx5", ingest)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1);
}

}  // namespace plotix_bench
