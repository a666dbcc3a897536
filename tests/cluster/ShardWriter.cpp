// Writes transactions of two agents on two shards without end, to be killed, and tells what the shards have of them.
//
//     shard_writer ADDRESS both AGENT LAST     stores records of both behind the time LAST, which was acknowledged
//                                              and must be there; prints the last acknowledged time after each
//     shard_writer ADDRESS alike AGENT LAST    writes to both, and tells whether both have all up to LAST, and the same
//     shard_writer ADDRESS lost AGENT LAST     whether the one whose shard answers is read and written, and the other
//                                              one refused with a line that says which shard it is
//
// Writing goes on after what cannot be stored just now: the same records again.

#include "tests/cluster/Writing.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <random>
#include <string_view>
#include <thread>

namespace {

using namespace plotix;

constexpr int kLongestBlock = 3000;

/// Whether all records up to this time are there, once and with their values; prints how many there are.
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

/// The agents of a transaction: the first two that are stored go to different shards.
std::array<WrittenAgent, 2> pairOf(int number)
{
    return {agentNumbered(number), agentNumbered(number + 1)};
}

void storeBoth(RecordStore& records, const std::array<WrittenAgent, 2>& agents, double first, int count)
{
    const auto writer = records.begin();
    for (const WrittenAgent& agent : agents)
        writer->store(agent.agent, writtenRecords(agent, writtenTimes(first, count)));
    writer->commit();
}

double behind(RecordStore& records, const WrittenAgent& agent)
{
    const auto extent = records.extent(agent.agent);
    return extent ? extent->last + 1 : 0;
}

/// Returns where what was acknowledged is not there.
void writeBothForEver(const std::shared_ptr<RecordStore>& records, const std::array<WrittenAgent, 2>& agents,
                      double last)
{
    double next = 0;
    atLast([&] { next = behind(*records, agents[0]); });
    if (next <= last) {
        std::fprintf(stderr, "up to %.0f were acknowledged, and the last one there is %.0f\n", last, next - 1);
        return;
    }
    std::minstd_rand random(std::random_device{}());
    for (;;) {
        const int count = random() % 4 == 0 ? kLongestBlock : 1 + static_cast<int>(random() % 50);
        atLast([&] { storeBoth(*records, agents, next, count); });
        next += count;
        std::printf("%.0f\n", next - 1);
        std::fflush(stdout);
    }
}

int requireAlike(RecordStore& records, const std::array<WrittenAgent, 2>& agents, double last)
{
    // Takes the turns, and stores nothing.
    atLast([&] { records.begin(); });
    std::array<double, 2> next{};
    for (std::size_t i = 0; i < agents.size(); ++i)
        atLast([&] { next[i] = behind(records, agents[i]); });
    if (next[0] != next[1]) {
        std::fprintf(stderr, "one has %.0f records and the other %.0f\n", next[0], next[1]);
        return 1;
    }
    if (next[0] == 0 && last < 0)
        return std::puts("0") < 0;
    const int first = check(records, agents[0], last);
    return first != 0 ? first : check(records, agents[1], last);
}

int requireOneOfTwo(RecordStore& records, const std::array<WrittenAgent, 2>& agents)
{
    int answered = 0;
    for (const WrittenAgent& agent : agents)
        try {
            const double next = behind(records, agent);
            records.appender()->append(agent.agent, writtenRecords(agent, writtenTimes(next, 5)));
            answered += behind(records, agent) == next + 5 ? 1 : 100;
        } catch (const ReportableError& error) {
            std::printf("agent %lld: %s\n", static_cast<long long>(agent.agent), error.what());
        }
    return answered == 1 ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments)
{
    if (count < 5)
        return 2;
    const WrittenAgent agent = agentNumbered(std::atoi(arguments[3]));
    try {
        const std::shared_ptr<RecordStore> records = recordsAt(arguments[1]);
        if (std::string_view(arguments[2]) == "both")
            writeBothForEver(records, pairOf(agent.agent), std::atof(arguments[4]));
        if (std::string_view(arguments[2]) == "alike")
            return requireAlike(*records, pairOf(agent.agent), std::atof(arguments[4]));
        if (std::string_view(arguments[2]) == "lost")
            return requireOneOfTwo(*records, pairOf(agent.agent));
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return 1;
}
