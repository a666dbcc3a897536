#include "hostapp/window/moments/MomentEdit.h"

#include "base/WholeDay.h"

#include <QtTest/QTest>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QLineEdit>

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

/// One in a form of its own, with hands that type.
class TypedMomentTest : public testing::Test {
protected:
    TypedMomentTest()
    {
        edit.sayBy(QTimeZone::utc());
        edit.setDisplayFormat("yyyy-MM-dd HH:mm:ss");
        edit.setDateTime(QDateTime(QDate(2013, 2, 5), QTime(10, 0), Qt::UTC));
    }
    void type(const char* text)
    {
        line().selectAll();
        QTest::keyClicks(&line(), text);
    }
    QLineEdit& line() { return *edit.findChild<QLineEdit*>(); }
    QString shown() { return edit.dateTime().toString("yyyy-MM-dd HH:mm:ss"); }

    MomentEdit edit{0, MomentEdit::Day::End};
};

TEST_F(TypedMomentTest, ADateIsReadAsAWhole)
{
    type("2013-07-31 14:30:15");
    EXPECT_EQ(shown(), "2013-07-31 14:30:15");
    type("2013-07-30 14:20");
    EXPECT_EQ(shown(), "2013-07-30 14:20:00");
    type("2013-07-29");
    EXPECT_EQ(edit.moment(), lastMomentOf(QDate(2013, 7, 29), QTimeZone::utc())->seconds);
}

TEST_F(TypedMomentTest, ADateThatDoesNotExistIsSaidAndChangesNothing)
{
    for (const char* text : {"2013-02-31 10:00:00", "2013-02-30", "2013-13-05 10:00"}) {
        type(text);
        EXPECT_EQ(edit.problem(), "There is no such date.") << text;
        QTest::keyClick(&edit, Qt::Key_Return);
        EXPECT_EQ(line().text(), text) << "to be mended";
        EXPECT_EQ(shown(), "2013-02-05 10:00:00");
    }
}

TEST_F(TypedMomentTest, WhatIsNoDateIsSaid)
{
    type("soon");
    EXPECT_EQ(edit.problem(), "This is not understood as a date. Write it such as 2013-02-05 10:00:00.");
    QTest::keyClick(&edit, Qt::Key_Escape);
    EXPECT_EQ(edit.problem(), QString());
    EXPECT_EQ(line().text(), "2013-02-05 10:00:00");
}

TEST_F(TypedMomentTest, TheKeysUpAndDownChangeThePartAtTheCaret)
{
    line().setCursorPosition(9);  // of the day
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ(shown(), "2013-02-06 10:00:00");
    line().setCursorPosition(12);
    QTest::keyClick(&edit, Qt::Key_Down);
    EXPECT_EQ(shown(), "2013-02-06 09:00:00");
}

TEST_F(TypedMomentTest, FormsOfManyCountriesAreRead)
{
    const struct {
        const char *language, *form, *text, *none;
    } rows[] = {{"de_DE", "dd.MM.yyyy HH:mm:ss", "31.07.2013 14:30:00", "31.02.2013 14:30:00"},
                {"en_US", "M/d/yyyy h:mm:ss AP", "7/31/2013 2:30:00 PM", "2/31/2013 2:30:00 PM"},
                {"en_GB", "dd/MM/yyyy HH:mm:ss", "31/07/2013 14:30", "31/02/2013"}};
    for (const auto& row : rows) {
        edit.setLocale(QLocale(row.language));
        edit.setDisplayFormat(row.form);
        type(row.text);
        EXPECT_EQ(shown(), "2013-07-31 14:30:00") << row.text;
        type(row.none);
        EXPECT_EQ(edit.problem(), "There is no such date.") << row.none;
    }
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
