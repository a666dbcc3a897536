#include "benchmarks/decade/FillCases.h"

#include "base/PageCache.h"
#include "hostapp/document/SiteDocument.h"
#include "plugins/PlotixPlugIn/reading/values/PagedRecordPoints.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <sys/resource.h>
#include <vector>

namespace plotix_bench {

namespace {

constexpr std::size_t kShown = 2'000'000;  // elements of each line
constexpr std::size_t kPage = plotix::PagedMemory::kPage;

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

/// The points of all properties of a site.
std::vector<std::shared_ptr<const plotix::PagedRecordPoints>> linesOf(plotix::SiteDocument& document)
{
    const auto agent = document.agents().front();
    std::vector<plotix::RowId> properties;
    for (const auto& property : agent->siteProperties())
        properties.push_back(property->description().id);
    const auto columns =
        document.records()->columns(agent->id(), properties, {}, {}, std::make_shared<plotix::PageCache>());
    std::vector<std::shared_ptr<const plotix::PagedRecordPoints>> lines;
    for (const plotix::RecordColumns::Column& column : columns->columns)
        lines.push_back(std::make_shared<const plotix::PagedRecordPoints>(
            KTVRecordColumn({}, column.values, column.validity, nullptr), plotix::PagedRecordPoints::Exceptions()));
    return lines;
}

/// Other elements in each round, so that the ones before make room for them.
void fill(benchmark::State& state, const std::function<QString()>& site, std::size_t held)
{
    const auto document = plotix::SiteDocument::open(site());  // keeps its connections while it is open
    const auto lines = linesOf(*document);
    const std::size_t places = lines.front()->elements() / kShown;
    std::size_t round = 0;
    const auto fillNext = [&] {
        const std::size_t first = round++ % places * kShown;
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

void registerFilling(std::function<QString()> site)
{
    const auto add = [&site](const char* name, std::size_t held) {
        benchmark::RegisterBenchmark(name, [site, held](benchmark::State& state) { fill(state, site, held); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    add("fill/10x2M/pages", kPage);
    add("fill/10x2M/lines", kShown);
}

}  // namespace plotix_bench
