#include "tests/hostapp/cli/SiteOnServerFixture.h"

#include <QtCore/QRegularExpression>

namespace plotix {

namespace {

/// The server is away while something is recorded.
class ForwardingOnServerTest : public SiteOnServerTest {
protected:
    void SetUp() override
    {
        if (!ServerForTests::running().isOwn())
            GTEST_SKIP() << "the server is somebody else's";
        create();
        ASSERT_EQ(run({"record", address, "--interval", "0.1", "--for", "0.3"}), 0) << m_error.toStdString();
        ServerForTests::running().kill();
        m_status = run({"record", address, "--interval", "0.1", "--for", "0.5"});
        m_said = m_error;
    }
    void TearDown() override
    {
        if (m_isAway)
            bringServerBack();
    }
    void bringServerBack()
    {
        ServerForTests::running().restart();
        m_isAway = false;
    }
    int m_status = 0;
    bool m_isAway = true;
    QString m_said;
};

TEST_F(ForwardingOnServerTest, WhatWaitsIsSaidInTheEndAndByInfo)
{
    EXPECT_EQ(m_status, 1);
    EXPECT_TRUE(m_said.contains("records are not on the server yet, and safe in ")) << m_said.toStdString();
    EXPECT_EQ(run({"store", "info", address}), 1);
    EXPECT_TRUE(m_output.contains(QRegularExpression("^Waiting here     \\d+ records of This Computer from ")))
        << m_output.toStdString();
}

TEST_F(ForwardingOnServerTest, ForwardStoresIt)
{
    EXPECT_EQ(run({"store", "forward", address}), 1);
    EXPECT_TRUE(m_error.contains("cannot be reached")) << m_error.toStdString();
    bringServerBack();
    ASSERT_EQ(run({"store", "forward", address}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("records that waited here are on the server now")) << m_output.toStdString();
    ASSERT_EQ(run({"store", "info", address}), 0);
    EXPECT_FALSE(m_output.contains("Waiting here")) << m_output.toStdString();
}

TEST_F(ForwardingOnServerTest, TheNextRecordingStoresItToo)
{
    bringServerBack();
    ASSERT_EQ(run({"record", address, "--interval", "0.2", "--for", "1"}), 0) << m_error.toStdString();
    ASSERT_EQ(run({"store", "info", address}), 0);
    EXPECT_FALSE(m_output.contains("Waiting here")) << m_output.toStdString();
}

}  // namespace

}  // namespace plotix
