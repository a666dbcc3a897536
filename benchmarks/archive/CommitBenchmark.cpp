// One record after the other, each safe in the file before the next one comes.

#include "benchmarks/archive/ArchiveCases.h"
#include "benchmarks/archive/CommitTimes.h"
#include "benchmarks/data/BenchmarkFiles.h"

namespace plotix_bench {

namespace {

plotix::SharedArray<double> one(double value)
{
    return plotix::SharedArray<double>::fromVector({value});
}

plotix::RecordBlock blockOf(const SiteFile& site, const Station::Record& record)
{
    plotix::RecordBlock block{one(record.time), {}};
    for (std::size_t property = 0; property < kStationProperties; ++property)
        block.columns.push_back({site.properties[property], one(record.values[property]), {}});
    return block;
}

void commit(benchmark::State& state)
{
    const QString path = dataFile(QStringLiteral("commit.plotix"));
    for (auto unused : state) {
        const SiteFile site = emptySite(path);
        const auto appender = site.records()->appender();
        appender->noteAmendments([] { return 0.0; });  // as recording does
        Station records;
        CommitTimes times;
        for (std::size_t done = 0; done < kCommits; ++done) {
            const plotix::RecordBlock block = blockOf(site, records.next());
            times.measure([&] { appender->append(site.agent, block); });
        }
        times.report(state);
    }
    removeDatabase(path);
}

}  // namespace

void registerCommits()
{
    registerCommitCase("archive/commit1", commit);
}

}  // namespace plotix_bench
