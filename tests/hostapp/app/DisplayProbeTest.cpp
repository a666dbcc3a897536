#include "hostapp/app/DisplayProbe.h"

#include <QtCore/QByteArray>

#include <gtest/gtest.h>

#include <map>

using plotix::isDisplayReachable;

namespace {

/// Pins the variables the probe reads, and restores them afterwards.
class DisplayProbeTest : public testing::Test {
protected:
    DisplayProbeTest()
    {
        for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"}) {
            m_before[name] = qgetenv(name);
            qunsetenv(name);
        }
    }
    ~DisplayProbeTest() override
    {
        for (const auto& [name, value] : m_before)
            value.isNull() ? qunsetenv(name) : qputenv(name, value);
    }

private:
    std::map<const char*, QByteArray> m_before;
};

TEST_F(DisplayProbeTest, NothingSetIsNoDisplay)
{
    EXPECT_FALSE(isDisplayReachable());
}

TEST_F(DisplayProbeTest, PlatformsThatShowNothingAreNoDisplay)
{
    for (const char* platform : {"offscreen", "minimal", "offscreen:size=10x10"}) {
        qputenv("QT_QPA_PLATFORM", platform);
        EXPECT_FALSE(isDisplayReachable()) << platform;
    }
}

TEST_F(DisplayProbeTest, AnotherPlatformAskedForByNameIsTrusted)
{
    qputenv("QT_QPA_PLATFORM", "linuxfb");
    EXPECT_TRUE(isDisplayReachable());
}

TEST_F(DisplayProbeTest, ServerThatDoesNotAnswerIsNoDisplay)
{
    qputenv("DISPLAY", ":4711");
    EXPECT_FALSE(isDisplayReachable());
    qputenv("QT_QPA_PLATFORM", "xcb");
    EXPECT_FALSE(isDisplayReachable());
}

TEST_F(DisplayProbeTest, SocketThatIsNotThereIsNoDisplay)
{
    qputenv("WAYLAND_DISPLAY", "wayland-9");
    qputenv("XDG_RUNTIME_DIR", "/nowhere");
    EXPECT_FALSE(isDisplayReachable());
}

}  // namespace
