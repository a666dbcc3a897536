#pragma once

#include "benchmarks/data/Elapsed.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <vector>

/// Times of one-record commits, one after the other, into a file that begins empty. Main thread only.
namespace plotix_bench {

/// Enough records to fill a chunk and begin another, and for a thousandth to be twenty records.
inline constexpr std::size_t kCommits = 20'000;

class CommitTimes {
public:
    CommitTimes() { m_seconds.reserve(kCommits); }

    template <class Commit>
    void measure(Commit&& commit)
    {
        const Elapsed elapsed;
        commit();
        m_seconds.push_back(elapsed.seconds());
    }

    /// The median as the iteration's time, the tail as counters.
    void report(benchmark::State& state)
    {
        std::sort(m_seconds.begin(), m_seconds.end());
        state.SetIterationTime(m_seconds[m_seconds.size() / 2]);
        state.counters["p99.9_ms"] = 1e3 * m_seconds[m_seconds.size() * 999 / 1000];
        state.counters["worst_ms"] = 1e3 * m_seconds.back();
    }

private:
    std::vector<double> m_seconds;
};

inline void registerCommitCase(const char* name, void (*function)(benchmark::State&))
{
    benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);
}

}  // namespace plotix_bench
