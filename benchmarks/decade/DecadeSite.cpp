#include "benchmarks/decade/DecadeSite.h"

#include "base/LargeMemory.h"
#include "benchmarks/data/BenchmarkFiles.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace plotix_bench {

namespace {

constexpr std::size_t kBlock = 1 << 20;  // records handed over at a time
constexpr int kBlocksInTransaction = 16;

struct Columns {
    std::shared_ptr<double> times;
    std::array<std::shared_ptr<double>, kDecadeProperties> values;
};

Columns nextColumns(std::array<Station, 2>& stations, std::size_t count)
{
    Columns columns{plotix::unsetArray<double>(count), {}};
    for (auto& values : columns.values)
        values = plotix::unsetArray<double>(count);
    for (std::size_t row = 0; row < count; ++row)
        for (std::size_t station = 0; station < stations.size(); ++station) {
            const Station::Record record = stations[station].next();
            columns.times.get()[row] = record.time;
            for (std::size_t property = 0; property < kStationProperties; ++property)
                columns.values[station * kStationProperties + property].get()[row] = record.values[property];
        }
    return columns;
}

}  // namespace

void makeDecade(const QString& path, std::size_t records)
{
    removeDatabase(path);
    const auto document = plotix::SiteDocument::create(path, QStringLiteral("Decade"));
    const auto agent = document->addAgent(QStringLiteral("Two Stations"));
    std::array<plotix::RowId, kDecadeProperties> properties{};
    for (std::size_t property = 0; property < kDecadeProperties; ++property)
        properties[property] = agent
                                   ->addProperty(QStringLiteral("%1 %2")
                                                     .arg(QLatin1String(kStationKeys[property % kStationProperties]))
                                                     .arg(property / kStationProperties + 1),
                                                 QString())
                                   ->description()
                                   .id;
    std::array<Station, 2> stations{Station(4711), Station(815)};
    std::unique_ptr<plotix::RecordTransaction> writer;
    int blocks = 0;
    for (std::size_t first = 0; first < records; first += kBlock) {
        const std::size_t count = std::min(kBlock, records - first);
        const Columns columns = nextColumns(stations, count);
        plotix::RecordBlock block{{columns.times, count}, {}};
        for (std::size_t property = 0; property < kDecadeProperties; ++property)
            block.columns.push_back({properties[property], {columns.values[property], count}, {}});
        if (!writer)
            writer = document->records()->begin();
        writer->store(agent->id(), block);
        if (++blocks % kBlocksInTransaction == 0 || first + count == records) {
            writer->commit();
            writer.reset();
            std::fprintf(stderr, "\r%3.0f %%",
                         100.0 * static_cast<double>(first + count) / static_cast<double>(records));
        }
    }
    std::fprintf(stderr, "\n");
}

}  // namespace plotix_bench
