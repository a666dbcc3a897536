#include "base/StopRequest.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>

using plotix::StopRequest;

namespace {

int handledBefore = 0;

/// Installs a handler of this test's own beneath the requests, so that a signal nobody takes does not end the test
/// program.
class StopRequestTest : public testing::Test {
protected:
    StopRequestTest()
    {
        handledBefore = 0;
        for (int signal : kSignals)
            m_before.push_back(std::signal(signal, [](int) { ++handledBefore; }));
    }
    ~StopRequestTest() override
    {
        for (std::size_t index = 0; index < m_before.size(); ++index)
            std::signal(kSignals[index], m_before[index]);
    }

    static constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

private:
    std::vector<void (*)(int)> m_before;
};

TEST_F(StopRequestTest, EverySignalIsAnEventOfTheLoop)
{
    for (const int signal : kSignals) {
        const StopRequest stop;
        int requests = 0;
        QObject::connect(&stop, &StopRequest::requested, [&requests] { ++requests; });
        std::raise(signal);
        EXPECT_EQ(requests, 0);  // not inside the handler
        QCoreApplication::processEvents();
        EXPECT_EQ(requests, 1) << signal;
    }
    EXPECT_EQ(handledBefore, 0);
}

TEST_F(StopRequestTest, WithoutALoopTheFlagIsThere)
{
    const StopRequest stop;
    EXPECT_FALSE(StopRequest::isRequested());
    std::raise(SIGINT);
    EXPECT_TRUE(StopRequest::isRequested());
}

TEST_F(StopRequestTest, ANewOneKnowsNothingOfRequestsBefore)
{
    {
        const StopRequest first;
        std::raise(SIGINT);
    }
    EXPECT_TRUE(StopRequest::isRequested());
    const StopRequest second;
    EXPECT_FALSE(StopRequest::isRequested());
}

TEST_F(StopRequestTest, FromTheKeyboardTheOthersAreHandledAsBefore)
{
    const StopRequest stop(StopRequest::From::Keyboard);
    std::raise(SIGTERM);
    std::raise(SIGHUP);
    EXPECT_EQ(handledBefore, 2);
    EXPECT_FALSE(StopRequest::isRequested());
}

TEST_F(StopRequestTest, AfterwardsTheHandlersAreThoseOfBefore)
{
    {
        const StopRequest stop;
    }
    for (const int signal : kSignals)
        std::raise(signal);
    EXPECT_EQ(handledBefore, 3);
}

TEST_F(StopRequestTest, TheInterruptedCallKeepsItsErrno)
{
    const StopRequest stop;
    // Until the pipe is full, and writing to it fails with an error of its own.
    for (int count = 0; count < 70'000; ++count)
        std::raise(SIGINT);
    errno = ENOENT;
    std::raise(SIGINT);
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(StopRequestTest, ARequestBeforeWaitingEndsTheWait)
{
    StopRequest stop;
    std::raise(SIGTERM);
    QCoreApplication::processEvents();  // the request was delivered, and is not delivered again
    stop.wait();
    EXPECT_TRUE(StopRequest::isRequested());
}

TEST_F(StopRequestTest, WaitingEndsWithTheRequest)
{
    StopRequest stop;
    QTimer::singleShot(0, [] { std::raise(SIGHUP); });
    stop.wait();
    EXPECT_TRUE(StopRequest::isRequested());
}

}  // namespace
