#include "plugins/PlotixPlugIn/reading/trend/TimeDialog.h"

#include "tests/support/PinnedZone.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

// What the dialog that asks for a time says about what is typed.

namespace {

class TimeDialogTest : public testing::Test {
protected:
    static constexpr double kFirst = 1'360'000'000, kLast = 1'360'864'800;  // 4 Feb 2013 17:46:40, 14 Feb 2013 18:00

    void SetUp() override
    {
        m_zone.use("UTC");
        dialog = new plotix::TimeDialog("Go to Time", kLast, {}, nullptr);
        dialog->setRecorded({kFirst, kLast});
        dialog->show();
    }
    void TearDown() override { delete dialog; }
    QString said() const
    {
        QStringList texts;
        for (const QLabel* label : dialog->findChildren<QLabel*>())
            texts << label->text();
        return texts.join(u'\n');
    }
    QLineEdit& field() const { return *dialog->findChild<QLineEdit*>(); }
    QPushButton* defaultButton() const
    {
        for (QPushButton* button : dialog->findChildren<QPushButton*>())
            if (button->isDefault() && button->isVisible())
                return button;
        return nullptr;
    }
    double given()
    {
        QSignalSpy spy(dialog, &plotix::TimeDialog::timeGiven);
        QPointer<plotix::TimeDialog> asked = dialog;
        QTest::keyClick(&field(), Qt::Key_Return);
        dialog = asked.data();
        return spy.isEmpty() ? -1 : spy.at(0).at(0).toDouble();
    }

    plotix::TimeDialog* dialog = nullptr;

private:
    plotix::PinnedZone m_zone;
};

TEST_F(TimeDialogTest, SaysWhatTheTextIsTakenFor)
{
    field().setText("10 Feb 2013 14:35");
    EXPECT_TRUE(said().contains("= Sun, Feb 10, 2013, 2:35")) << said().toStdString();
    EXPECT_EQ(given(), 1'360'506'900);
}

TEST_F(TimeDialogTest, BehindTheLastRecordItSaysWhenThatIsAndOffersIt)
{
    field().setText("last Tuesday 14:35");
    EXPECT_TRUE(said().contains("The records end at Thu, Feb 14, 2013")) << said().toStdString();
    ASSERT_TRUE(defaultButton());
    EXPECT_EQ(defaultButton()->text(), "Go to the &Last Record");
    EXPECT_EQ(given(), kLast);
}

TEST_F(TimeDialogTest, BeforeTheFirstRecordItOffersThat)
{
    field().setText("3 Feb 1999");
    EXPECT_TRUE(said().contains("Nothing is recorded before Mon, Feb 4, 2013")) << said().toStdString();
    EXPECT_EQ(given(), kFirst);
}

TEST_F(TimeDialogTest, WhatIsNotUnderstoodIsNotGiven)
{
    field().setText("soon");
    EXPECT_FALSE(defaultButton() && defaultButton()->isEnabled());
    EXPECT_EQ(given(), -1);
}

}  // namespace
