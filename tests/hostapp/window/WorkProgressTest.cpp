#include "hostapp/window/WorkProgress.h"

#include "base/ReportableError.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressDialog>

#include <gtest/gtest.h>

#include <atomic>

namespace plotix {

namespace {

/// Work of a window, looked at while it runs.
class WorkProgressTest : public testing::Test {
protected:
    WorkProgressTest()
    {
        QObject::connect(&m_look, &QTimer::timeout, &m_look, [this] {
            auto* dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible())
                return;
            m_wasShown = true;
            m_isPlain = dialog->findChild<QLabel*>()->textFormat() == Qt::PlainText;
            m_highest = std::max(m_highest, dialog->value());
            if (m_cancels)
                QTest::keyClick(dialog, Qt::Key_Escape);
        });
        m_look.start(10);
    }

    /// Goes on until it is told to stop, or for some steps of 10 ms.
    static void work(const WorkProgress& progress, int steps)
    {
        for (int step = 0; step < steps; ++step) {
            QThread::msleep(10);
            if (!progress(double(step) / steps))
                throw ReportableError(QStringLiteral("stopped"));
        }
    }

    QTimer m_look;
    bool m_wasShown = false, m_isPlain = false, m_cancels = false;
    int m_highest = 0;
};

TEST_F(WorkProgressTest, ShortWorkIsDoneWithoutAWord)
{
    bool done = false;
    workWithProgress("Counting", nullptr, [&](const WorkProgress&) { done = true; });
    EXPECT_TRUE(done);
    EXPECT_FALSE(m_wasShown);
}

TEST_F(WorkProgressTest, LongWorkShowsHowFarItHasCome)
{
    workWithProgress("Counting", nullptr, [](const WorkProgress& progress) { work(progress, 80); });
    EXPECT_TRUE(m_wasShown);
    EXPECT_GT(m_highest, 500);
    EXPECT_TRUE(m_isPlain);
}

TEST_F(WorkProgressTest, EscapeStopsTheWork)
{
    m_cancels = true;
    QElapsedTimer clock;
    clock.start();
    EXPECT_THROW(workWithProgress("Counting", nullptr, [](const WorkProgress& progress) { work(progress, 2000); }),
                 ReportableError);
    EXPECT_LT(clock.elapsed(), 10'000);
}

TEST_F(WorkProgressTest, WhatTheWorkThrowsIsThrownHere)
{
    EXPECT_THROW(
        workWithProgress("Counting", nullptr, [](const WorkProgress&) { throw ReportableError(QStringLiteral("no")); }),
        ReportableError);
}

}  // namespace

}  // namespace plotix
