// The figures of ten lines of ten million records over a span that moves: from the sums that are kept, and beside it by
// going through the records of the span, as whoever keeps none has to. Making the sums, and medians, by themselves.

#include "benchmarks/data/Signal.h"
#include "plugins/PlotixPlugIn/reading/figures/LineSummary.h"
#include "plugins/PlotixPlugIn/reading/figures/Percentiles.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <limits>

namespace plotix_bench {

namespace {

constexpr std::size_t kRecords = 10'000'000;
constexpr unsigned kLines = 10;
constexpr double kLongestJoin = 5;

plotix::SharedArray<double> times()
{
    static const auto made = [] {
        std::vector<double> each(kRecords);
        for (std::size_t i = 0; i < kRecords; ++i)
            each[i] = kStart + static_cast<double>(i);
        return plotix::SharedArray<double>::fromVector(std::move(each));
    }();
    return made;
}

plotix::SharedArray<double> values(unsigned line)
{
    static std::vector<plotix::SharedArray<double>> made(kLines);
    if (made[line].isEmpty()) {
        std::vector<double> each(kRecords);
        Signal signal(SignalKind::Walk, line);
        std::generate(each.begin(), each.end(), [&signal] { return signal.next(); });
        made[line] = plotix::SharedArray<double>::fromVector(std::move(each));
    }
    return made[line];
}

std::vector<std::shared_ptr<const plotix::LineSummary>> lines()
{
    std::vector<std::shared_ptr<const plotix::LineSummary>> made;
    for (unsigned line = 0; line < kLines; ++line)
        made.push_back(plotix::LineSummary::make({times(), values(line)}, kLongestJoin));
    return made;
}

void visible(benchmark::State& state, double share)
{
    const auto shown = lines();
    int step = 0;
    for (auto unused : state) {
        const TimeRange range = pannedRange(kRecords, share, ++step % 100, 1920);
        for (const auto& line : shown)
            benchmark::DoNotOptimize(line->figures(range.start, range.start + range.length));
    }
}

/// Minimum, maximum, sums of values and squares, and the mean weighted by time, record by record.
double goThrough(const double* time, const double* value, std::size_t count)
{
    double minimum = std::numeric_limits<double>::max();
    double maximum = -minimum;
    double sum = 0, squares = 0, covered = 0, straight = 0;
    for (std::size_t i = 0; i < count; ++i) {
        minimum = std::min(minimum, value[i]);
        maximum = std::max(maximum, value[i]);
        sum += value[i];
        squares += value[i] * value[i];
        const double apart = i + 1 < count ? time[i + 1] - time[i] : 0;
        if (apart > 0 && apart <= kLongestJoin) {
            covered += apart;
            straight += (value[i] + value[i + 1]) / 2 * apart;
        }
    }
    return minimum + maximum + sum + squares + straight / covered;
}

void visibleRecordByRecord(benchmark::State& state, double share)
{
    int step = 0;
    for (unsigned line = 0; line < kLines; ++line)
        values(line);
    for (auto unused : state) {
        const TimeRange range = pannedRange(kRecords, share, ++step % 100, 1920);
        const auto all = times().span();
        const auto first = std::lower_bound(all.begin(), all.end(), range.start);
        const auto last = std::upper_bound(first, all.end(), range.start + range.length);
        const auto at = static_cast<std::size_t>(first - all.begin());
        for (unsigned line = 0; line < kLines; ++line)
            benchmark::DoNotOptimize(
                goThrough(all.data() + at, values(line).data() + at, static_cast<std::size_t>(last - first)));
    }
}

void makeSums(benchmark::State& state)
{
    for (unsigned line = 0; line < kLines; ++line)
        values(line);
    for (auto unused : state)
        benchmark::DoNotOptimize(lines());
}

void medians(benchmark::State& state)
{
    const auto shown = lines();
    const std::vector<double> shares{0.05, 0.5, 0.95};
    for (auto unused : state)
        for (const auto& line : shown)
            benchmark::DoNotOptimize(plotix::percentiles(*line, kStart, kStart + kRecords, shares));
}

void mediansBySelection(benchmark::State& state)
{
    for (auto unused : state)
        for (unsigned line = 0; line < kLines; ++line) {
            std::vector<double> copy(values(line).span().begin(), values(line).span().end());
            for (const std::size_t part : {kRecords / 20, kRecords / 2, kRecords / 20 * 19})
                std::nth_element(copy.begin(), copy.begin() + static_cast<std::ptrdiff_t>(part), copy.end());
            benchmark::DoNotOptimize(copy.data());
        }
}

}  // namespace

void registerStatistics()
{
    using benchmark::RegisterBenchmark;
    for (const auto& [window, share] : {std::pair("full", 1.0), std::pair("30%", 0.3)}) {
        const std::string name = std::string("statistics/10x10M/") + window;
        RegisterBenchmark(name.c_str(), visible, share)->Unit(benchmark::kMillisecond);
        RegisterBenchmark(("records/" + name).c_str(), visibleRecordByRecord, share)->Unit(benchmark::kMillisecond);
    }
    RegisterBenchmark("statistics/10x10M/sums", makeSums)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("statistics/10x10M/median", medians)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("records/statistics/10x10M/median", mediansBySelection)->Unit(benchmark::kMillisecond);
}

}  // namespace plotix_bench

int main(int argc, char** argv)
{
    plotix_bench::registerStatistics();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
