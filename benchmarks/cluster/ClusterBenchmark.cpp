// Records on a server of this program's own: beside the server's own columns over the same connection, over a network
// with a round trip of 20 ms, and second after second from many sensors.

#include "benchmarks/cluster/OwnColumns.h"
#include "benchmarks/data/Elapsed.h"
#include "records/clickhouse/ClickHouseRecordStore.h"
#include "records/clickhouse/ClickHouseServer.h"
#include "tests/records/clickhouse/ServerForTests.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <numeric>
#include <thread>

namespace plotix_bench {

namespace {

using plotix::RowId;

constexpr RowId kAgent = 1;
constexpr std::size_t kRecordsAnAppend = 1'000'000;
constexpr int kSeconds = 20;  // of live recording
constexpr int kSensors = 100'000;
constexpr double kPerMillion = 1e-6;

std::vector<RowId> properties(std::size_t count)
{
    std::vector<RowId> all(count);
    std::iota(all.begin(), all.end(), RowId{1});
    return all;
}

const StationColumns& station()
{
    static const StationColumns columns = stationColumns(kStationRecords);
    return columns;
}

std::shared_ptr<plotix::RecordStore> recordsAt(const plotix::ServerAddress& address)
{
    return std::make_shared<plotix::ClickHouseRecordStore>(std::make_shared<plotix::SiteOnServer>(
        address, plotix::ServerCredentials(), [](RowId, RowId) { return true; }));
}

plotix::ServerAddress newSite()
{
    const plotix::ServerAddress address = ServerForTests::running().newSite();
    plotix::ClickHouseServer(address, {}).create();
    return address;
}

void store(plotix::RecordStore& records)
{
    const auto transaction = records.begin();
    for (std::size_t first = 0; first < kStationRecords; first += kRecordsAnAppend) {
        const auto part = [&](const std::vector<double>& column) {
            const auto begin = column.begin() + static_cast<std::ptrdiff_t>(first);
            return plotix::SharedArray<double>::fromVector(
                std::vector<double>(begin, begin + static_cast<std::ptrdiff_t>(kRecordsAnAppend)));
        };
        plotix::RecordBlock block{part(station().times), {}};
        for (std::size_t property = 0; property < kStationProperties; ++property)
            block.columns.push_back({static_cast<RowId>(property + 1), part(station().values[property]), {}});
        transaction->store(kAgent, block);
    }
    transaction->commit();
}

struct FullSite {
    plotix::ServerAddress address;
    double bytes = 0;
};

const FullSite& fullSite()
{
    static const FullSite site = [] {
        FullSite made{newSite()};
        store(*recordsAt(made.address));
        made.bytes = static_cast<double>(plotix::ClickHouseServer(made.address, {}).description().shards.at(0).bytes);
        return made;
    }();
    return site;
}

OwnColumns& fullTable()
{
    static OwnColumns table(ServerForTests::running().newSite());
    static const bool isStored = [] {
        table.create();
        table.store(station());
        return true;
    }();
    benchmark::DoNotOptimize(isStored);
    return table;
}

void read(benchmark::State& state, std::size_t count)
{
    const auto records = recordsAt(fullSite().address);
    const std::vector<RowId> wanted = properties(count);
    for (auto unused : state)
        if (records->read(kAgent, wanted, {}, {}).value_or(plotix::RecordBlock()).times.size() != kStationRecords)
            state.SkipWithError("records are missing");
    state.counters["MB_on_disk"] = fullSite().bytes * kPerMillion;
}

void readOwn(benchmark::State& state, std::size_t count)
{
    OwnColumns& table = fullTable();
    for (auto unused : state)
        if (table.read(count).back().size() != kStationRecords)
            state.SkipWithError("rows are missing");
    state.counters["MB_on_disk"] = table.bytes() * kPerMillion;
}

void ingest(benchmark::State& state)
{
    station();
    double seconds = 0;
    for (auto unused : state) {
        const auto records = recordsAt(newSite());
        const Elapsed elapsed;
        store(*records);
        seconds = elapsed.seconds();
        state.SetIterationTime(seconds);
    }
    state.counters["million_values_a_second"] = kStationProperties * kStationRecords / seconds * kPerMillion;
}

void ingestOwn(benchmark::State& state)
{
    station();
    for (auto unused : state) {
        OwnColumns table(ServerForTests::running().newSite());
        table.create();
        const Elapsed elapsed;
        table.store(station());
        state.SetIterationTime(elapsed.seconds());
    }
}

/// So many agents with the sensors among them, a record of each every second, one agent after the other through one
/// appender: how long after its second the last of them was acknowledged.
void live(benchmark::State& state, int agents)
{
    const auto appender = recordsAt(newSite())->appender();
    const int each = kSensors / agents;
    std::vector<double> waits;
    for (auto unused : state) {
        const Elapsed elapsed;
        for (int second = 0; second < kSeconds; ++second) {
            if (const double early = second - elapsed.seconds(); early > 0)
                std::this_thread::sleep_for(std::chrono::duration<double>(early));
            for (int agent = 0; agent < agents; ++agent) {
                plotix::RecordBlock block{plotix::SharedArray<double>::fromVector({kStart + second}), {}};
                block.columns.reserve(static_cast<std::size_t>(each));
                for (int property = 0; property < each; ++property)
                    block.columns.push_back(
                        {RowId{agent} * each + property + 1,
                         plotix::SharedArray<double>::fromVector({20 + 0.1 * ((second + property) % 50)}),
                         {}});
                appender->append(agent + 1, block);
                waits.push_back(elapsed.seconds() - second);
            }
        }
        state.SetIterationTime(elapsed.seconds());
    }
    std::sort(waits.begin(), waits.end());
    state.counters["p50_ms"] = waits[waits.size() / 2] * 1000;
    state.counters["p99_ms"] = waits[waits.size() * 99 / 100] * 1000;
}

/// The same site through a network with a round trip of so long.
class Far {
public:
    explicit Far(int milliseconds) : m_address(fullSite().address)
    {
        const quint16 server = m_address.hosts[0].port;
        const int listen = 20'000 + QCoreApplication::applicationPid() % 10'000, control = listen + 10'000;
        m_network.start(QStringLiteral("python3"), {QStringLiteral(PLOTIX_NETWORK), QString::number(control),
                                                    QStringLiteral("%1:%2").arg(listen).arg(server)});
        m_network.waitForReadyRead();
        QProcess told;
        told.start(QStringLiteral("bash"),
                   {QStringLiteral("-c"), QStringLiteral("exec 3<>/dev/tcp/127.0.0.1/%1; echo 'all delay %2' >&3; "
                                                         "read -r answer <&3; [ \"$answer\" = ok ]")
                                              .arg(control)
                                              .arg(milliseconds)});
        told.waitForFinished();
        m_isThere = told.exitStatus() == QProcess::NormalExit && told.exitCode() == 0;
        m_address.hosts[0].port = static_cast<quint16>(listen);
    }
    ~Far()
    {
        m_network.kill();
        m_network.waitForFinished();
    }
    bool isThere() const { return m_isThere; }
    const plotix::ServerAddress& address() const { return m_address; }

private:
    plotix::ServerAddress m_address;
    QProcess m_network;
    bool m_isThere = false;
};

/// What a first frame of everything waits for: columns with their runs, nothing unpacked. Then what a step of a zoom
/// may: pages of a thousandth of the records, of all properties, at another place each time.
void far(benchmark::State& state, bool isZoom)
{
    const Far network(20);
    if (!network.isThere())
        state.SkipWithError("there is no network");
    std::vector<double> steps;
    for (auto unused : state) {
        const auto records = recordsAt(network.address());
        const Elapsed elapsed;
        const auto columns =
            records->columns(kAgent, properties(kStationProperties), {}, {}, std::make_shared<plotix::PageCache>());
        if (!isZoom) {
            state.SetIterationTime(elapsed.seconds());
            continue;
        }
        for (std::size_t step = 1; step <= 10; ++step) {
            const std::size_t first = step * kStationRecords / 11;
            const Elapsed one;
            for (const auto& column : columns->columns)
                const auto held = column.values.hold(first, first + kStationRecords / 1000);
            steps.push_back(one.seconds());
        }
        std::sort(steps.begin(), steps.end());
        state.SetIterationTime(steps[steps.size() / 2]);
        state.counters["worst_ms"] = steps.back() * 1000;
    }
}

benchmark::internal::Benchmark* add(const std::string& name, const std::function<void(benchmark::State&)>& measured)
{
    return benchmark::RegisterBenchmark(name.c_str(), measured)->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerCluster()
{
    using benchmark::State;
    for (const auto& [name, count] : {std::pair{"5", kStationProperties}, std::pair{"1", std::size_t{1}}}) {
        const std::string full = std::string("cluster/read/10Mx5/") + name;
        add(full, [count = count](State& state) { read(state, count); })->UseRealTime();
        add("own-columns/" + full, [count = count](State& state) { readOwn(state, count); })->UseRealTime();
    }
    add("cluster/ingest/10Mx5", ingest)->UseManualTime()->Iterations(1);
    add("own-columns/cluster/ingest/10Mx5", ingestOwn)->UseManualTime()->Iterations(1);
    for (const int agents : {10, 100, 1000})
        add("cluster/live/100000/" + std::to_string(agents), [agents](State& state) { live(state, agents); })
            ->UseManualTime()
            ->Iterations(1);
    add("cluster/far/columns/10Mx5", [](State& state) { far(state, false); })->UseManualTime()->Iterations(3);
    add("cluster/far/pages/10Mx5", [](State& state) { far(state, true); })->UseManualTime()->Iterations(1);
}

}  // namespace plotix_bench

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    plotix_bench::registerCluster();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
