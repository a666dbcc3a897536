#include "hostapp/window/moments/MomentEdit.h"

#include "base/WholeDay.h"

#include <QtWidgets/QCalendarWidget>

#include <gtest/gtest.h>

#include <cmath>

namespace plotix {

namespace {

const QTimeZone kNewYork("America/New_York");
constexpr double kJuly = 1'372'694'400.25;     // 2013-07-01 16:00 UTC, and a fraction
constexpr double kSecondPass = 1'383'460'200;  // 2013-11-03 06:30 UTC: half past one for the second time
const QDateTime kNoonThere(QDate(2013, 7, 1), QTime(12, 0), Qt::UTC);

TEST(MomentEditTest, ShowsWhatClocksThereShow)
{
    MomentEdit edit(kJuly, MomentEdit::Day::SameTime);
    edit.sayBy(kNewYork);
    EXPECT_EQ(edit.dateTime(), kNoonThere);
}

TEST(MomentEditTest, AMomentThatNobodyChangesStaysWhole)
{
    MomentEdit edit(kJuly, MomentEdit::Day::SameTime);
    edit.sayBy(kNewYork);
    EXPECT_EQ(edit.moment(), kJuly);
    edit.setMoment(kSecondPass);
    EXPECT_EQ(edit.moment(), kSecondPass);
}

TEST(MomentEditTest, WhatIsTypedIsMeantByThoseClocks)
{
    MomentEdit edit(0, MomentEdit::Day::SameTime);
    edit.sayBy(kNewYork);
    edit.setDateTime(kNoonThere);
    EXPECT_EQ(edit.moment(), std::floor(kJuly));
    edit.sayBy(QTimeZone::utc());
    EXPECT_EQ(edit.dateTime(), kNoonThere.addSecs(4 * 3600));
}

TEST(MomentEditTest, ADayPickedIsMeantFromItsBeginningToItsEndThere)
{
    MomentEdit from(kJuly, MomentEdit::Day::Beginning), to(kJuly, MomentEdit::Day::End);
    for (MomentEdit* edit : {&from, &to}) {
        edit->sayBy(kNewYork);
        emit edit->calendarWidget()->clicked(QDate(2013, 11, 3));  // has 25 hours
    }
    EXPECT_EQ(from.moment(), 1'383'451'200);
    EXPECT_EQ(to.moment(), lastMomentOf(QDate(2013, 11, 3), kNewYork)->seconds);
    EXPECT_NEAR(to.moment() - from.moment(), 25 * 3600, 1e-3);
}

TEST(MomentEditTest, WhereADayIsNotSaidForItsEndTheTimeOfDayStays)
{
    MomentEdit edit(kJuly, MomentEdit::Day::SameTime);
    edit.sayBy(kNewYork);
    edit.setDate(QDate(2013, 7, 2));
    EXPECT_EQ(edit.moment(), std::floor(kJuly) + 86'400);
}

}  // namespace
}  // namespace plotix
