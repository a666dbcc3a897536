// Writes to a site document without end, to be killed: KilledArchiveTest says what it looks for afterwards.
//
//     archive_writer SITE ACKNOWLEDGED [compact] [merge] [late]
//
// Records of one agent at the times 0, 1, 2, …, each block committed on its own; what was stored is told in the file
// ACKNOWLEDGED. Blocks are large until the tail is about to fill a chunk, then single records follow until it is
// sealed. Now and then a record is stored again at its own time. With `late`, records of the other agent come in turns
// with these, behind their time. With `compact` the document is compacted beside that, with `merge` its log is merged,
// over and over.

#include "base/ReportableError.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteSchema.h"
#include "storage/Database.h"
#include "tests/e2e/writer/WrittenValues.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <set>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace plotix;

constexpr int kChunk = 16384;
constexpr int kBlock = 1000;
constexpr int kSingles = 100;  // before and behind a seal
constexpr int kBetweenRepeats = 97;
constexpr int kRepeatedBack = 20'000;
constexpr int kLateBlock = 50;
constexpr int kBetweenLateBlocks = 20;

/// Memory that outlives the process: what it holds was reported.
Acknowledged* sharedNumbers(const char* file)
{
    const int descriptor = ::open(file, O_RDWR);
    void* memory = ::mmap(nullptr, sizeof(Acknowledged), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    return descriptor < 0 || memory == MAP_FAILED ? nullptr : static_cast<Acknowledged*>(memory);
}

void compactForEver(const QString& site)
{
    for (;;)
        try {
            recordsOfSite(site)->compact({});
        } catch (const ReportableError& error) {
            std::fprintf(stderr, "compaction: %s\n", error.what());
        }
}

void mergeForEver(const QString& site)
{
    Database database(site, siteSchema(), Database::Access::ReadWrite);
    for (const char* way = "PASSIVE";; way = *way == 'P' ? "RESTART" : "PASSIVE")
        try {
            database.execute((std::string("PRAGMA wal_checkpoint(") + way + ")").c_str());
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        } catch (const ReportableError& error) {
            std::fprintf(stderr, "merging: %s\n", error.what());
        }
}

/// The next late records; their number so far.
int storeLate(RecordAppender& appender, int stored)
{
    const int count = std::min(stored % kBetweenLateBlocks == 0 ? kLateBlock : 1, kPlacesOfLate - stored);
    std::vector<double> times;
    for (int i = 0; i < count; ++i)
        times.push_back(lateTime(stored + i));
    std::sort(times.begin(), times.end());
    appender.append(kLate.agent, writtenRecords(kLate, std::move(times)));
    return stored + count;
}

void writeForEver(const QString& site, bool withLate, Acknowledged& acknowledged)
{
    const auto records = recordsOfSite(site);
    const auto appender = records->appender();
    double next = records->extent(kInOrder.agent)->last + 1;
    int late = static_cast<int>(records->overview(kLate.agent, {}).records()) - kPlacesOfLate;
    const auto append = [&](double first, int count) {
        appender->append(kInOrder.agent, writtenRecords(kInOrder, writtenTimes(first, count)));
    };
    for (int phase = 0;; phase = (phase + 1) % kChunk) {
        const int toSeal = kChunk - static_cast<int>(next) % kChunk;
        const int count = toSeal > kSingles + kBlock && toSeal < kChunk - kSingles ? kBlock : 1;
        append(next, count);
        next += count;
        std::atomic_ref(acknowledged.inOrder) = next - 1;
        if (phase % kBetweenRepeats == 0)
            append(next - kRepeatedBack, 1);
        if (withLate && late < kPlacesOfLate) {
            late = storeLate(*appender, late);
            std::atomic_ref(acknowledged.late) = late;
        }
    }
}

}  // namespace

int main(int count, char** arguments)
{
    Acknowledged* acknowledged = count > 2 ? sharedNumbers(arguments[2]) : nullptr;
    if (!acknowledged)
        return 2;
    const QString site = QString::fromLocal8Bit(arguments[1]);
    const std::set<std::string_view> beside(arguments + 3, arguments + count);
    if (beside.count("compact") != 0)
        std::thread([site] { compactForEver(site); }).detach();
    if (beside.count("merge") != 0)
        std::thread([site] { mergeForEver(site); }).detach();
    try {
        writeForEver(site, beside.count("late") != 0, *acknowledged);
    } catch (const ReportableError& error) {
        std::fprintf(stderr, "writing: %s\n", error.what());
    }
    return 1;
}
