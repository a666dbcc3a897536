// Writes to a site document without end, to be killed: KilledArchiveTest says what it looks for afterwards.
//
//     archive_writer SITE ACKNOWLEDGED [compact | merge]
//
// Records of the agent 1 with the properties 1 and 2 at the times 0, 1, 2, …, each block committed on its own; the last
// time stored goes to the file ACKNOWLEDGED as a double. Blocks are large until the tail is about to fill a chunk, then
// single records follow until it is sealed. Now and then a record is stored again at its own time. With `compact` the
// document is compacted beside that, with `merge` its log is merged, over and over.

#include "base/ReportableError.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteSchema.h"
#include "storage/Database.h"
#include "tests/e2e/writer/WrittenValues.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
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

RecordBlock blockOf(double first, int count)
{
    std::vector<double> times, even, odd;
    for (int i = 0; i < count; ++i) {
        times.push_back(first + i);
        even.push_back(evenValue(first + i));
        odd.push_back(oddValue(first + i));
    }
    return {SharedArray<double>::fromVector(std::move(times)),
            {{1, SharedArray<double>::fromVector(std::move(even)), {}},
             {2, SharedArray<double>::fromVector(std::move(odd)), {}}}};
}

/// Memory that outlives the process: what it holds was reported.
std::atomic<double>* sharedNumber(const char* file)
{
    const int descriptor = ::open(file, O_RDWR);
    void* memory = ::mmap(nullptr, sizeof(double), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    return descriptor < 0 || memory == MAP_FAILED ? nullptr : static_cast<std::atomic<double>*>(memory);
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

void writeForEver(const QString& site, std::atomic<double>& acknowledged)
{
    const auto records = recordsOfSite(site);
    const auto appender = records->appender();
    const std::optional<RecordExtent> before = records->extent(1);
    double next = before ? before->last + 1 : 0;
    for (int phase = 0;; phase = (phase + 1) % kChunk) {
        const int toSeal = kChunk - static_cast<int>(next) % kChunk;
        const int count = toSeal > kSingles + kBlock && toSeal < kChunk - kSingles ? kBlock : 1;
        appender->append(1, blockOf(next, count));
        next += count;
        acknowledged = next - 1;
        if (phase % kBetweenRepeats == 0 && next > kRepeatedBack)
            appender->append(1, blockOf(next - kRepeatedBack, 1));
    }
}

}  // namespace

int main(int count, char** arguments)
{
    std::atomic<double>* acknowledged = count > 2 ? sharedNumber(arguments[2]) : nullptr;
    if (!acknowledged)
        return 2;
    const QString site = QString::fromLocal8Bit(arguments[1]);
    const std::string_view beside = count > 3 ? arguments[3] : "";
    if (beside == "compact")
        std::thread([site] { compactForEver(site); }).detach();
    if (beside == "merge")
        std::thread([site] { mergeForEver(site); }).detach();
    try {
        writeForEver(site, *acknowledged);
    } catch (const ReportableError& error) {
        std::fprintf(stderr, "writing: %s\n", error.what());
    }
    return 1;
}
