// What a zoom into long records waits for: lines of millions of elements unpacked from the file into the points of
// their series. "pages" holds a page after the other, "lines" what is seen of a line at once, "frame" that of all
// lines.

#include "base/PageCache.h"
#include "benchmarks/archive/ArchiveCases.h"
#include "benchmarks/data/BenchmarkFiles.h"
#include "plugins/PlotixPlugIn/reading/values/PagedRecordPoints.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <sys/resource.h>
#include <vector>

namespace plotix_bench {

namespace {

constexpr std::size_t kShown = 4'000'000;  // elements of each line
constexpr std::size_t kPage = plotix::PagedMemory::kPage;
constexpr std::size_t kBudget = std::size_t{88} << 20;  // what a round needs, and hardly more

using Lines = std::vector<std::shared_ptr<const plotix::PagedRecordPoints>>;

/// What the process has used so far.
struct Used {
    double userMs = 0, systemMs = 0, faults = 0;

    static Used now()
    {
        rusage used{};
        getrusage(RUSAGE_SELF, &used);
        const auto ms = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
        };
        return {ms(used.ru_utime), ms(used.ru_stime), static_cast<double>(used.ru_minflt)};
    }
};

Lines linesOf(const SiteFile& site, plotix::RecordStore& records)
{
    const auto columns =
        records.columns(site.agent, site.properties, {}, {}, std::make_shared<plotix::PageCache>(kBudget));
    Lines lines;
    for (const plotix::RecordColumns::Column& column : columns->columns)
        lines.push_back(std::make_shared<const plotix::PagedRecordPoints>(
            KTVRecordColumn({}, column.values, column.validity, nullptr), plotix::PagedRecordPoints::Exceptions()));
    return lines;
}

/// Other elements in each round, so that the ones before make room for them.
void fill(benchmark::State& state, std::size_t held)
{
    const SiteFile site = fullSite();
    const auto records = site.records();
    const Lines lines = linesOf(site, *records);
    std::size_t round = 0;
    const auto fillNext = [&] {
        const std::size_t first = round++ % 2 * kShown;
        for (const auto& line : lines)
            for (std::size_t at = first; at < first + kShown; at += held)
                benchmark::DoNotOptimize(line->hold(at, std::min(at + held, first + kShown)));
    };
    fillNext();
    const Used before = Used::now();
    for (auto unused : state)
        fillNext();
    const Used after = Used::now();
    const auto aRound = [&state](double value) { return value / static_cast<double>(state.iterations()); };
    state.counters["user_ms"] = aRound(after.userMs - before.userMs);
    state.counters["system_ms"] = aRound(after.systemMs - before.systemMs);
    state.counters["faults"] = aRound(after.faults - before.faults);
}

}  // namespace

void registerFilling()
{
    const auto add = [](const char* name, std::size_t held) {
        benchmark::RegisterBenchmark(name, fill, held)->Unit(benchmark::kMillisecond)->UseRealTime();
    };
    add("archive/fill/5x4M/pages", kPage);
    add("archive/fill/5x4M/lines", kShown);
}

}  // namespace plotix_bench
