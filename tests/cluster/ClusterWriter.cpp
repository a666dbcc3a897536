// Writes to a site on replicas without end, to be killed, and tells what each replica has of it.
//
//     cluster_writer ADDRESS write AGENT LAST    appends records at the times behind LAST, which was acknowledged and
//     must
//                                                be there; prints the last acknowledged time after each
//     cluster_writer ADDRESS check AGENT LAST    whether all records up to this time are there, once and with their
//                                                values; prints how many there are
//
// Writing goes on after what cannot be stored just now: the same records again.

#include "base/ReportableError.h"
#include "records/clickhouse/ClickHouseRecordStore.h"
#include "tests/e2e/writer/WrittenValues.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <random>
#include <string_view>
#include <thread>

namespace {

using namespace plotix;

constexpr int kLongestBlock = 3000;
constexpr auto kPause = std::chrono::milliseconds(200);

std::shared_ptr<RecordStore> recordsAt(const char* address)
{
    return std::make_shared<ClickHouseRecordStore>(
        std::make_shared<SiteOnServer>(ServerAddress::parsed(QString::fromLocal8Bit(address)), ServerCredentials(),
                                       [](RowId, RowId) { return true; }));
}

WrittenAgent agentNumbered(int number)
{
    return {number, 2 * number - 1};
}

/// Tries until it can be done.
template <class Work>
void atLast(const Work& work)
{
    for (;;)
        try {
            return work();
        } catch (const ReportableError& error) {
            std::fprintf(stderr, "%s\n", error.what());
            std::this_thread::sleep_for(kPause);
        }
}

/// Returns where what was acknowledged is not there.
void writeForEver(const std::shared_ptr<RecordStore>& records, const WrittenAgent& agent, double last)
{
    double next = 0;
    atLast([&] {
        const auto extent = records->extent(agent.agent);
        next = extent ? extent->last + 1 : 0;
    });
    if (next <= last) {
        std::fprintf(stderr, "up to %.0f were acknowledged, and the last one there is %.0f\n", last, next - 1);
        return;
    }
    std::minstd_rand random(std::random_device{}());
    std::unique_ptr<RecordAppender> appender;
    for (;;) {
        const int count = random() % 8 == 0 ? kLongestBlock : 1 + static_cast<int>(random() % 50);
        atLast([&] {
            if (!appender)
                appender = records->appender();
            appender->append(agent.agent, writtenRecords(agent, writtenTimes(next, count)));
        });
        next += count;
        std::printf("%.0f\n", next - 1);
        std::fflush(stdout);
    }
}

int check(RecordStore& records, const WrittenAgent& agent, double last)
{
    const RecordBlock read =
        records.read(agent.agent, agent.properties(), {}, {}).value_or(RecordBlock());  // nothing: it was cancelled
    const std::span<const double> times = read.times.span();
    for (std::size_t i = 0; i < times.size(); ++i) {
        const double even = read.columns[0].values[i], odd = read.columns[1].values[i];
        const double evenWanted = evenValue(times[i]), oddWanted = oddValue(times[i]);
        if (times[i] != static_cast<double>(i) || even != evenWanted ||
            std::memcmp(&odd, &oddWanted, sizeof odd) != 0) {
            std::fprintf(stderr, "record %zu is at %.17g with %.17g and %.17g\n", i, times[i], even, odd);
            return 1;
        }
    }
    if (static_cast<double>(times.size()) <= last) {
        std::fprintf(stderr, "%zu records, up to %.0f were acknowledged\n", times.size(), last);
        return 1;
    }
    std::printf("%zu\n", times.size());
    return 0;
}

}  // namespace

int main(int count, char** arguments)
{
    if (count < 5)
        return 2;
    const WrittenAgent agent = agentNumbered(std::atoi(arguments[3]));
    try {
        const std::shared_ptr<RecordStore> records = recordsAt(arguments[1]);
        if (std::string_view(arguments[2]) == "check")
            return check(*records, agent, std::atof(arguments[4]));
        writeForEver(records, agent, std::atof(arguments[4]));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return 1;
}
