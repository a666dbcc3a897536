#include "base/MainQueue.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteTransaction.h"
#include "storage/LogCheckpointer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

// Nothing here touches widgets, so that what a race detector reports is ours.

namespace {

using plotix::MainQueue;

constexpr int kThreads = 4;

/// Runs the main thread's event loop until `done` says so; false after ten seconds.
bool runLoopUntil(const std::function<bool()>& done)
{
    QElapsedTimer watch;
    watch.start();
    while (!done() && watch.elapsed() < 10'000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
}

std::vector<std::thread> startThreads(const std::function<void(int)>& work)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number)
        threads.emplace_back(work, number);
    return threads;
}

void join(std::vector<std::thread>& threads)
{
    for (std::thread& thread : threads)
        thread.join();
}

plotix::RecordBlock recordsFrom(double first, std::size_t count, plotix::RowId property)
{
    std::vector<double> times(count), values(count);
    for (std::size_t i = 0; i < count; ++i) {
        times[i] = first + static_cast<double>(i);
        values[i] = times[i] * 0.5;
    }
    plotix::RecordBlock block;
    block.times = plotix::SharedArray<double>::fromVector(std::move(times));
    block.columns = {{property, plotix::SharedArray<double>::fromVector(std::move(values)), {}}};
    return block;
}

class ArchiveThreadsTest : public testing::Test {
protected:
    ArchiveThreadsTest()
    {
        plotix::SiteTransaction transaction(file());
        agent = transaction.findOrCreateAgent("Agent");
        property = transaction.findOrCreateProperty(agent, "Value", "").id;
        transaction.records().store(agent, recordsFrom(0, 1000, property));
        transaction.commit();
    }

    QString file() const { return folder.filePath("site.plotix"); }

    void append(double first, std::size_t count)
    {
        const auto writer = plotix::recordsOfSite(file())->begin();
        writer->store(agent, recordsFrom(first, count, property));
        writer->commit();
    }

    /// Records one by one, each committed on its own, until told to stop.
    void record(double first, const std::atomic<bool>& goesOn)
    {
        const auto appender = plotix::recordsOfSite(file())->appender();
        while (goesOn) {
            appender->append(agent, recordsFrom(first, 1, property));
            first += 1;
        }
    }

    /// Reads everything; the number of records when each value fits its time, else -1.
    long readConsistently()
    {
        const auto block = plotix::recordsOfSite(file())->read(agent, std::span(&property, 1), {}, {});
        for (std::size_t i = 0; i < block->times.size(); ++i)
            if (block->columns[0].values[i] != block->times[i] * 0.5)
                return -1;
        return static_cast<long>(block->times.size());
    }

    QTemporaryDir folder;
    plotix::RowId agent = 0;
    plotix::RowId property = 0;
};

}  // namespace

TEST(MainQueueThreadsTest, TasksOfEveryThreadRunOnTheMainThreadOneAtATime)
{
    int ran = 0;  // only tasks touch it: a race would show here
    auto threads = startThreads([&ran](int) {
        for (int i = 0; i < 250; ++i)
            MainQueue::main().async([&ran] { ran += MainQueue::isMainThread() ? 1 : 1000; });
    });
    join(threads);
    EXPECT_TRUE(runLoopUntil([&ran] { return ran == kThreads * 250; })) << ran;
}

TEST(MainQueueThreadsTest, TasksOfOneThreadKeepTheirOrder)
{
    std::vector<int> order;
    std::thread thread([&order] {
        for (int i = 0; i < 500; ++i)
            MainQueue::main().async([&order, i] { order.push_back(i); });
    });
    thread.join();
    ASSERT_TRUE(runLoopUntil([&order] { return order.size() == 500; }));
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(MainQueueThreadsTest, SyncReturnsAfterItsTaskHasRun)
{
    std::atomic<int> late = 0, done = 0;
    auto threads = startThreads([&](int) {
        for (int i = 0; i < 50; ++i) {
            bool ran = false;
            MainQueue::main().sync([&ran] { ran = true; });
            late += ran ? 0 : 1;
        }
        ++done;
    });
    EXPECT_TRUE(runLoopUntil([&done] { return done == kThreads; }));
    join(threads);
    EXPECT_EQ(late, 0);
}

TEST_F(ArchiveThreadsTest, ReadersBesideAWriterSeeWholeTransactions)
{
    std::atomic<bool> writing = true;
    std::atomic<int> wrong = 0;
    auto readers = startThreads([&](int) {
        do {
            const long records = readConsistently();
            wrong += records >= 1000 && records % 1000 == 0 ? 0 : 1;
        } while (writing);
    });
    for (int block = 1; block <= 20; ++block)
        append(block * 1000.0, 1000);
    writing = false;
    join(readers);
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(readConsistently(), 21'000);
}

TEST_F(ArchiveThreadsTest, OneReaderAThreadReadsTheSameRecords)
{
    append(1000, 40'000);
    std::atomic<int> whole = 0;
    auto readers = startThreads([&](int) { whole += readConsistently() == 41'000 ? 1 : 0; });
    join(readers);
    EXPECT_EQ(whole, kThreads);
}

TEST_F(ArchiveThreadsTest, ALongReadWithHelpersBesideAnAppenderSeesWholeRecords)
{
    constexpr long kLong = 1'600'000;  // worth a second thread
    append(1000, kLong - 1000);
    std::atomic<bool> goesOn = true;
    std::thread recorder([&] { record(kLong, goesOn); });
    std::vector<long> seen;
    for (int round = 0; round < 5; ++round)
        seen.push_back(readConsistently());
    goesOn = false;
    recorder.join();
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_GE(seen.front(), kLong);
    EXPECT_GE(readConsistently(), seen.back());
}

TEST_F(ArchiveThreadsTest, ALongReadWithHelpersBesideRewrittenChunksSeesOneMoment)
{
    constexpr long kLong = 1'600'000;
    append(1000, kLong - 1000);
    std::atomic<bool> goesOn = true;
    std::thread writer([&] {  // between the records there are: chunks go and others come
        for (int late = 0; goesOn; ++late)
            append(late * 20'000 + 0.5, 1);
    });
    std::vector<long> seen;
    for (int round = 0; round < 5; ++round)
        seen.push_back(readConsistently());
    goesOn = false;
    writer.join();
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_GE(seen.front(), kLong);
}

TEST_F(ArchiveThreadsTest, ReadersBesideAnAppenderWhoseLogIsMergedSeeEveryRecord)
{
    constexpr int kCommits = 3 * plotix::LogCheckpointer::kPages;  // the log begins anew in between
    std::atomic<long> stored = 1000;
    std::atomic<bool> writing = true;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> readers;
    for (int number = 0; number < 2; ++number)
        readers.emplace_back([&] {
            while (writing) {
                const long before = stored;
                const long records = readConsistently();
                wrong += records >= before && records <= stored + 1 ? 0 : 1;
            }
        });
    {
        const auto appender = plotix::recordsOfSite(file())->appender();
        for (int commit = 0; commit < kCommits; ++commit) {
            appender->append(agent, recordsFrom(1000.0 + commit, 1, property));
            ++stored;
        }
    }
    writing = false;
    join(readers);
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(readConsistently(), 1000 + kCommits);
}

TEST_F(ArchiveThreadsTest, TheLastTimeIsKnownBesideAnAppenderWhoseTailBecomesChunks)
{
    std::atomic<double> stored = 999;
    std::atomic<bool> writing = true;
    std::thread writer([&] {
        const auto appender = plotix::recordsOfSite(file())->appender();
        for (double first = 1000; first < 100'000; first = stored + 1) {
            for (const std::size_t count : {std::size_t{1}, std::size_t{1500}}) {
                appender->append(agent, recordsFrom(stored + 1, count, property));
                stored = stored + static_cast<double>(count);
            }
        }
        writing = false;
    });
    const auto other = plotix::recordsOfSite(file());
    int wrong = 0;
    while (writing) {
        const double before = stored;
        wrong += other->extent(agent)->last >= before ? 0 : 1;
    }
    writer.join();
    EXPECT_EQ(wrong, 0);
}

TEST_F(ArchiveThreadsTest, ManyChunksAreEncodedOnSeveralThreadsInOrder)
{
    append(1000, 400'000);
    EXPECT_EQ(readConsistently(), 401'000);
}
