// What the archive benchmarks do, done with one database row a record.

#include "base/LargeMemory.h"
#include "benchmarks/archive/ArchiveCases.h"
#include "benchmarks/archive/CommitTimes.h"
#include "benchmarks/archive/RowStore.h"
#include "benchmarks/data/BenchmarkFiles.h"

namespace plotix_bench {

namespace {

constexpr double kChunkSeconds = 16'384;  // as many records as one of our chunks holds

/// Fresh result columns, from the same memory that ours come from.
class ResultColumns {
public:
    explicit ResultColumns(std::size_t count)
    {
        for (std::size_t column = 0; column <= kStationProperties; ++column) {
            m_owners[column] = plotix::unsetArray<double>(count);
            columns[column] = m_owners[column].get();
        }
    }
    double* columns[kStationProperties + 1];

private:
    std::shared_ptr<double> m_owners[kStationProperties + 1];
};

void expectCount(benchmark::State& state, std::size_t count, std::size_t expected)
{
    if (count != expected)
        state.SkipWithError("not all rows were read");
}

void readBetween(benchmark::State& state, double from, double to, std::size_t expected)
{
    RowStore store(fullRows(), RowStore::Mode::Open);
    store.read(from, to, ResultColumns(expected).columns);  // warm, as ours is
    for (auto unused : state) {
        const ResultColumns result(expected);
        expectCount(state, store.read(from, to, result.columns), expected);
    }
}

constexpr double kEnd = kStart + static_cast<double>(kStationRecords);

void readAll(benchmark::State& state)
{
    readBetween(state, kStart, kEnd, kStationRecords);
}

void readWindow(benchmark::State& state)
{
    readBetween(state, kWindowFrom, kWindowTo, kWindowRecords);
}

void readCold(benchmark::State& state)
{
    const QString path = fullRows();
    double stayed = 0;
    for (auto unused : state) {
        stayed = std::max(stayed, forgetPages(path));
        const Elapsed elapsed;
        RowStore store(path, RowStore::Mode::Open);
        const ResultColumns result(kStationRecords);
        expectCount(state, store.read(kStart, kEnd, result.columns), kStationRecords);
        state.SetIterationTime(elapsed.seconds());
    }
    state.counters["stayed"] = stayed;
}

/// A summary for every chunk's worth of time, as a picture of the whole needs it.
void overview(benchmark::State& state)
{
    RowStore store(fullRows(), RowStore::Mode::Open);
    for (auto unused : state)
        if (store.summaries(kChunkSeconds) < kStationRecords / std::size_t(kChunkSeconds))
            state.SkipWithError("not all summaries were read");
}

/// One summary of everything.
void statistics(benchmark::State& state)
{
    RowStore store(fullRows(), RowStore::Mode::Open);
    for (auto unused : state)
        expectCount(state, store.summaries(1e10), 1);
}

void ingest(benchmark::State& state)
{
    const StationColumns& columns = station();
    const QString path = dataFile(QStringLiteral("ingest.sqlite"));
    for (auto unused : state) {
        removeDatabase(path);
        const Elapsed elapsed;
        {
            RowStore store(path, RowStore::Mode::Create);
            store.begin();
            Station::Record record{};
            for (std::size_t row = 0; row < kStationRecords; ++row) {
                record.time = columns.times[row];
                for (std::size_t property = 0; property < kStationProperties; ++property)
                    record.values[property] = columns.values[property][row];
                store.insert(record);
            }
            store.commit();
        }
        state.SetIterationTime(elapsed.seconds());
    }
    removeDatabase(path);
}

void commitOn(benchmark::State& state, int pageSize)
{
    const QString path = dataFile(QStringLiteral("commit.sqlite"));
    for (auto unused : state) {
        RowStore store(path, RowStore::Mode::Create, pageSize);
        Station records;
        CommitTimes times;
        for (std::size_t done = 0; done < kCommits; ++done) {
            const Station::Record record = records.next();
            times.measure([&] {
                store.begin();
                store.insert(record);
                store.commit();
            });
        }
        times.report(state);
    }
    removeDatabase(path);
}

void commit(benchmark::State& state)
{
    commitOn(state, 4096);
}

/// On pages as large as a site document's: a commit writes one whole page.
void commitOnLargePages(benchmark::State& state)
{
    commitOn(state, 16384);
}

void registerOnce(const char* name, void (*function)(benchmark::State&))
{
    benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);
}

}  // namespace

void registerRows()
{
    benchmark::RegisterBenchmark("sqlite-rows/archive/read/10Mx5", readAll)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("sqlite-rows/archive/window1%/10Mx5", readWindow)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("sqlite-rows/archive/overview/10Mx5", overview)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("sqlite-rows/archive/statistics/10Mx5", statistics)->Unit(benchmark::kMillisecond);
    registerOnce("sqlite-rows/archive/cold/10Mx5", readCold);
    registerOnce("sqlite-rows/archive/ingest/10Mx5", ingest);
    registerCommitCase("sqlite-rows/archive/commit1", commit);
    registerCommitCase("sqlite-rows-16k/archive/commit1", commitOnLargePages);
}

}  // namespace plotix_bench
