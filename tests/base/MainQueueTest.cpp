#include "base/MainQueue.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using plotix::MainQueue;

namespace {

class MainQueueTest : public testing::Test {
protected:
    void post(const std::string& name)
    {
        MainQueue::main().async([this, name] { m_ran.push_back(name); });
    }

    /// Runs what has been posted so far.
    void drain()
    {
        bool reached = false;
        MainQueue::main().async([&reached] { reached = true; });
        while (!reached)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    /// A task that runs a nested event loop, as a modal alert does, until `turns` turns of it are over.
    void postTaskWithNestedLoop(int turns = 20)
    {
        MainQueue::main().async([this, turns] {
            m_ran.push_back("nested begins");
            if (m_insideNested)
                m_insideNested();
            for (int turn = 0; turn < turns; ++turn)
                QCoreApplication::processEvents();
            m_ran.push_back("nested ends");
        });
    }

    using Names = std::vector<std::string>;
    Names m_ran;
    std::function<void()> m_insideNested;
};

TEST_F(MainQueueTest, RunsTasksInTheOrderOfPosting)
{
    post("first");
    post("second");
    post("third");
    drain();
    EXPECT_EQ(m_ran, (Names{"first", "second", "third"}));
}

TEST_F(MainQueueTest, NeverRunsATaskInsideTheCallThatPostsIt)
{
    post("task");
    EXPECT_TRUE(m_ran.empty());
    drain();
    EXPECT_EQ(m_ran, Names{"task"});
}

TEST_F(MainQueueTest, ATaskPostedByATaskRunsAfterIt)
{
    MainQueue::main().async([this] {
        post("inner");
        m_ran.push_back("outer");
    });
    drain();
    drain();
    EXPECT_EQ(m_ran, (Names{"outer", "inner"}));
}

TEST_F(MainQueueTest, TasksPostedBeforeWaitWhileANestedLoopRuns)
{
    postTaskWithNestedLoop();
    post("next");
    drain();
    EXPECT_EQ(m_ran, (Names{"nested begins", "nested ends", "next"}));
}

TEST_F(MainQueueTest, TasksPostedMeanwhileWaitWhileANestedLoopRuns)
{
    m_insideNested = [this] { post("next"); };
    postTaskWithNestedLoop();
    drain();
    drain();
    EXPECT_EQ(m_ran, (Names{"nested begins", "nested ends", "next"}));
}

TEST_F(MainQueueTest, OtherEventsGoOnDuringANestedLoop)
{
    bool fired = false;
    QTimer::singleShot(0, [&fired] { fired = true; });
    m_insideNested = [&fired] {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
        loop.exec();
        EXPECT_TRUE(fired);
    };
    postTaskWithNestedLoop(0);
    drain();
    EXPECT_EQ(m_ran.size(), 2U);
}

TEST_F(MainQueueTest, TasksFromAnotherThreadDuringANestedLoopWaitAndAreNotLost)
{
    constexpr std::size_t kTasks = 200;
    m_insideNested = [this] {
        std::thread([this] {
            for (std::size_t number = 0; number < kTasks; ++number)
                post(std::to_string(number));
        }).join();
    };
    postTaskWithNestedLoop();
    drain();
    drain();
    ASSERT_EQ(m_ran.size(), kTasks + 2);
    EXPECT_EQ(m_ran[1], "nested ends");
    for (std::size_t number = 0; number < kTasks; ++number)
        EXPECT_EQ(m_ran[number + 2], std::to_string(number));
}

TEST_F(MainQueueTest, SyncFromAWorkerReturnsAfterTheTaskHasRunOnTheMainThread)
{
    std::atomic<bool> finished = false;
    bool ranOnMain = false, ranBeforeReturn = false;
    std::thread worker([&] {
        MainQueue::main().sync([&] { ranOnMain = MainQueue::isMainThread(); });
        ranBeforeReturn = ranOnMain;
        finished = true;
    });
    while (!finished)
        QCoreApplication::processEvents();
    worker.join();
    EXPECT_TRUE(ranOnMain);
    EXPECT_TRUE(ranBeforeReturn);
}

TEST_F(MainQueueTest, SyncHandsTheTasksExceptionToItsCaller)
{
    std::atomic<bool> finished = false;
    std::string message;
    std::thread worker([&] {
        try {
            MainQueue::main().sync([] { throw std::runtime_error("torn"); });
        } catch (const std::runtime_error& error) {
            message = error.what();
        }
        finished = true;
    });
    while (!finished)
        QCoreApplication::processEvents();
    worker.join();
    EXPECT_EQ(message, "torn");
    post("still alive");
    drain();
    EXPECT_EQ(m_ran, Names{"still alive"});
}

TEST_F(MainQueueTest, TasksOfManyThreadsAllRunEachThreadsInItsOrder)
{
    constexpr int kThreads = 4, kTasks = 500;
    std::vector<int> last(kThreads, -1);
    int total = 0;
    std::vector<std::thread> workers;
    for (int thread = 0; thread < kThreads; ++thread)
        workers.emplace_back([&, thread] {
            for (int number = 0; number < kTasks; ++number)
                MainQueue::main().async([&, thread, number] {
                    EXPECT_EQ(last[thread] + 1, number);
                    last[thread] = number;
                    ++total;
                });
        });
    for (std::thread& worker : workers)
        worker.join();
    drain();
    EXPECT_EQ(total, kThreads * kTasks);
}

TEST_F(MainQueueTest, RunUntilServesAnotherThreadWithoutTheEventLoop)
{
    bool ended = false;
    std::thread worker([&] {
        MainQueue::main().sync([this] { m_ran.push_back("asked for"); });
        MainQueue::main().async([&ended] { ended = true; });
    });
    MainQueue::main().runUntil([&ended] { return ended; });
    worker.join();
    EXPECT_EQ(m_ran, Names{"asked for"});
}

TEST_F(MainQueueTest, RunUntilInsideATaskLetsTheNextOnesIn)
{
    bool reached = false;
    MainQueue::main().async([&] {
        m_ran.push_back("outer begins");
        MainQueue::main().runUntil([&reached] { return reached; });
        m_ran.push_back("outer ends");
    });
    post("inner");
    MainQueue::main().async([&reached] { reached = true; });
    post("later");
    drain();
    EXPECT_EQ(m_ran, (Names{"outer begins", "inner", "outer ends", "later"}));
}

TEST_F(MainQueueTest, WhatIsLeftAfterRunUntilIsRunByTheEventLoop)
{
    bool reached = false;
    MainQueue::main().async([&reached] { reached = true; });
    post("left over");
    MainQueue::main().runUntil([&reached] { return reached; });
    EXPECT_EQ(m_ran, Names{});
    drain();
    EXPECT_EQ(m_ran, Names{"left over"});
}

TEST_F(MainQueueTest, KnowsItsThread)
{
    bool workerIsMain = true;
    std::thread([&] { workerIsMain = MainQueue::isMainThread(); }).join();
    EXPECT_TRUE(MainQueue::isMainThread());
    EXPECT_FALSE(workerIsMain);
}

#ifndef NDEBUG
TEST_F(MainQueueTest, SyncFromTheMainThreadIsRefused)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(MainQueue::main().sync([] {}), "wait for itself");
}
#endif

}  // namespace
