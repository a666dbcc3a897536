#include "base/WholeDay.h"
#include "tests/plugins/PlotixPlugIn/DateRangeControllerFixture.h"

#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolTip>

// What is typed into a date picker by hand.

namespace {

class TypedDatesInPanel : public DateRangeControllerTest {
protected:
    TypedDatesInPanel()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        makeController();
        showPanel();
        from().setDisplayFormat(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
        controller->setFromDateValue(plotix::Date{1'000'000'000});  // 9 September 2001, 01:46:40
    }
    ~TypedDatesInPanel() override { QLocale::setDefault(QLocale::c()); }
    KTVDataClusterDatePicker& from() { return *controller->fromDate(); }
    QLineEdit& line(KTVDataClusterDatePicker& picker) { return *picker.findChild<QLineEdit*>(); }
    void enterByTab(KTVDataClusterDatePicker& picker)
    {
        controller->refreshButton()->setFocus();
        picker.setFocus(Qt::TabFocusReason);
    }
    void type(KTVDataClusterDatePicker& picker, const QString& text)
    {
        picker.setFocus(Qt::TabFocusReason);
        line(picker).selectAll();
        QTest::keyClicks(&line(picker), text);
    }
    QString shown() { return from().dateTime().toString(Qt::ISODate); }
};

TEST_F(TypedDatesInPanel, AShortDateReplacesTheWhole)
{
    type(from(), QStringLiteral("1.2."));
    EXPECT_EQ(shown(), "2001-02-01T00:00:00");
    EXPECT_EQ(line(from()).text(), "1.2.");  // not rewritten under the user's hands
    EXPECT_NE(controller->dateChangeDelayTimer(), nullptr);
}

TEST_F(TypedDatesInPanel, ATimeAloneKeepsTheDay)
{
    type(from(), QStringLiteral("14:30"));
    EXPECT_EQ(shown(), "2001-09-09T14:30:00");
}

TEST_F(TypedDatesInPanel, WhatWasTypedIsShownInFullWhenTheFocusLeaves)
{
    type(from(), QStringLiteral("1.2.2003"));
    controller->toDate()->setFocus();
    EXPECT_EQ(line(from()).text(), "01.02.2003 00:00:00");
}

TEST_F(TypedDatesInPanel, ADatePastedIsTaken)
{
    QApplication::clipboard()->setText(QStringLiteral("2024-05-06T07:08:09"));
    enterByTab(from());
    QTest::keyClick(&line(from()), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown(), "2024-05-06T07:08:09");
}

TEST_F(TypedDatesInPanel, WhatIsNotUnderstoodIsMarkedAndChangesNothing)
{
    type(from(), QStringLiteral("soon"));
    EXPECT_FALSE(from().isUnderstood());
    EXPECT_EQ(controller->fromDateValue(), plotix::Date{1'000'000'000});
    EXPECT_EQ(line(from()).text(), "soon");
    EXPECT_NE(line(from()).palette().color(QPalette::Text), from().palette().color(QPalette::Text));
    EXPECT_FALSE(line(from()).toolTip().isEmpty());
}

TEST_F(TypedDatesInPanel, ADateThatDoesNotExistIsSaidAndChangesNothing)
{
    type(from(), QStringLiteral("31 Feb"));
    EXPECT_EQ(controller->fromDateValue(), plotix::Date{1'000'000'000}) << "not the 31st of the month before";
    EXPECT_EQ(line(from()).toolTip(), "There is no such date.");
    EXPECT_EQ(QToolTip::text(), "There is no such date.");
    controller->toDate()->setFocus();
    EXPECT_EQ(line(from()).text(), "31 Feb") << "to be mended";
    EXPECT_FALSE(from().isUnderstood());
}

TEST_F(TypedDatesInPanel, ReturnOnWhatIsNotUnderstoodFetchesNothing)
{
    type(from(), QStringLiteral("soon"));
    QTest::keyClick(&from(), Qt::Key_Return);
    EXPECT_EQ(delegate.calls, QStringList());
    type(from(), QStringLiteral("1.2.2003"));
    QTest::keyClick(&from(), Qt::Key_Return);
    EXPECT_EQ(delegate.calls, QStringList("refresh"));
    EXPECT_TRUE(from().isUnderstood());
}

TEST_F(TypedDatesInPanel, EscapeShowsTheDateAgain)
{
    type(from(), QStringLiteral("soon"));
    QTest::keyClick(&from(), Qt::Key_Escape);
    EXPECT_TRUE(from().isUnderstood());
    EXPECT_EQ(line(from()).text(), "09.09.2001 01:46:40");
}

TEST_F(TypedDatesInPanel, ADayAsTheEndIncludesThatDay)
{
    type(*controller->toDate(), QStringLiteral("1.2.2003"));
    EXPECT_EQ(controller->toDate()->dateTime().toString(Qt::ISODate), "2003-02-01T23:59:59");
    EXPECT_EQ(controller->toDate()->dateValue()->seconds, plotix::lastMomentOf(QDate(2003, 2, 1))->seconds);
    type(*controller->toDate(), QStringLiteral("1.2.2003 00:00"));
    EXPECT_EQ(controller->toDate()->dateTime().toString(Qt::ISODate), "2003-02-01T00:00:00");
}

TEST_F(TypedDatesInPanel, ADayChosenInTheCalendarIsTheWholeDay)
{
    for (KTVDataClusterDatePicker* picker : {&from(), controller->toDate()}) {
        picker->setFocus();
        QTest::keyClick(picker, Qt::Key_F4);
        ASSERT_TRUE(picker->calendarWidget()->isVisible());
        picker->calendarWidget()->setSelectedDate(QDate(2003, 2, 1));
        emit picker->calendarWidget()->clicked(QDate(2003, 2, 1));
    }
    EXPECT_EQ(shown(), "2003-02-01T00:00:00");
    EXPECT_EQ(controller->toDate()->dateTime().toString(Qt::ISODate), "2003-02-01T23:59:59");
    EXPECT_EQ(controller->toDateValue()->seconds, plotix::lastMomentOf(QDate(2003, 2, 1))->seconds);
}

TEST_F(TypedDatesInPanel, ADateIsOneStopOfTheTabKey)
{
    enterByTab(from());
    EXPECT_EQ(line(from()).selectedText(), line(from()).text());
    QTest::keyClick(&from(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), controller->toDate());
}

TEST_F(TypedDatesInPanel, ArrowKeysChangeThePartAtTheCaret)
{
    from().setFocus();
    line(from()).setCursorPosition(4);  // in the month
    QTest::keyClick(&from(), Qt::Key_Up);
    QTest::keyClick(&from(), Qt::Key_Up);
    EXPECT_EQ(shown(), "2001-11-09T01:46:40");
}

TEST_F(TypedDatesInPanel, ACopiedRangeGivesEachFieldItsEnd)
{
    const QString range = QStringLiteral("2013-01-01T12:10:00Z/2013-01-01T12:50:00Z");
    type(from(), range);
    type(*controller->toDate(), range);
    EXPECT_EQ(from().dateValue(), plotix::Date{1'357'042'200});
    EXPECT_EQ(controller->toDate()->dateValue(), plotix::Date{1'357'044'600});
}

}  // namespace
