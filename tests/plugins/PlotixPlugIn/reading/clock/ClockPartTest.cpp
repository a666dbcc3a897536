#include "plugins/PlotixPlugIn/reading/clock/ClockPart.h"

#include "plotkit/model/CPTTickFormatters.h"
#include "plugins/PlotixPlugIn/reading/clock/ZoneDialog.h"
#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

#include <QtGui/QClipboard>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>

namespace plotix {

namespace {

/// The trend's hour begins at 12:00 UTC, which is that of the process.
class ClockPartTest : public ReadTrendFixture {
protected:
    void choose(const QVariantMap& choices) { trend().setReading({{"clock", choices}}); }
    fakehost::FakeSiteClock& siteClock() { return *host().agent()->siteClock(); }
    void chooseZone(const char* zone) { choose({{"zone", QString::fromLatin1(zone)}}); }
    const CPTXYAxis& axis() { return *trend().graph()->axisSet()->firstAxis(); }
    QString label(double time, double step = 900) { return axis().labelFormatter()->stringForTick(time, step); }
    QDateTime shownFrom() { return panel().fromDate()->dateTime(); }
    std::size_t layers() { return trend().graph()->layers().size(); }
    /// The graph shows a day around the end of summer time in Berlin, 2012-10-28 01:00 UTC.
    void showEndOfSummer() { showDay(1'351'386'000 - 43'200); }
    void showDay(double from) { trend().graph()->defaultPlotSpace()->setXRange({from, 86'400}); }
    /// The uppermost row of a picture of 900 by 500 in which the drawn changes show.
    int topOfChanges()
    {
        const auto picture = [this](bool marksChanges) {
            choose({{"zone", "Europe/Berlin"}, {"changes", marksChanges}});
            return trend().graphImageWithSize({900, 500}, 1, {});
        };
        const QImage with = picture(true), without = picture(false);
        int row = 0;
        while (row < with.height() && with.copy(0, row, 900, 1) == without.copy(0, row, 900, 1))
            ++row;
        return row;
    }
    ZoneDialog& openDialog()
    {
        action("Other Time Zone…")->trigger();
        return *trend().view()->findChild<ZoneDialog*>();
    }
};

TEST_F(ClockPartTest, WithoutAChoiceNothingIsArchivedAndNothingLooksDifferent)
{
    const QImage before = graphView().grab().toImage();
    chooseZone("Europe/Berlin");
    EXPECT_NE(graphView().grab().toImage(), before);
    choose({});
    EXPECT_EQ(graphView().grab().toImage(), before);
    EXPECT_FALSE(trend().reading().contains("clock"));
}

TEST_F(ClockPartTest, TheAxisIsLabelledByTheZoneAndNamesIt)
{
    trend().setReading({{"readableLabels", true}});
    chooseZone("Asia/Kathmandu");
    EXPECT_EQ(label(kFrom), "5:45 PM\nJan 1");
    EXPECT_EQ(axis().titleRemark(), "Asia/Kathmandu, UTC+5:45");
    chooseZone("UTC");
    EXPECT_EQ(axis().titleRemark(), "UTC");
    choose({});
    EXPECT_EQ(axis().titleRemark(), QString());
    EXPECT_EQ(label(kFrom), "12:00 PM\nJan 1");
}

TEST_F(ClockPartTest, TheUsualLabelsGoByTheZoneToo)
{
    chooseZone("Asia/Kathmandu");
    EXPECT_EQ(label(kFrom), "5:45PM");
    EXPECT_EQ(std::fmod(axis().labelingOrigin(), 3'600), -2'700);
    choose({{"zone", "Asia/Kathmandu"}, {"form", "24-hour"}});
    EXPECT_EQ(label(kFrom), "17:45");
}

TEST_F(ClockPartTest, TheNameTellsBothDistancesAcrossAChange)
{
    chooseZone("Europe/Berlin");
    EXPECT_EQ(axis().titleRemark(), "Europe/Berlin, UTC+1");
    showEndOfSummer();
    EXPECT_EQ(axis().titleRemark(), "Europe/Berlin, UTC+2 / UTC+1");
}

TEST_F(ClockPartTest, TheNameOfAYearTellsOfSummerAndWinter)
{
    chooseZone("Europe/Berlin");
    trend().graph()->defaultPlotSpace()->setXRange({kFrom, 365 * 86'400.0});
    EXPECT_EQ(axis().titleRemark(), "Europe/Berlin, UTC+1 / UTC+2");
}

TEST_F(ClockPartTest, TheDatePanelShowsTheZonesClocksAndKeepsTheDates)
{
    const auto before = panel().fromDateValue();
    chooseZone("Asia/Kathmandu");
    EXPECT_EQ(shownFrom().time(), QTime(17, 45));
    EXPECT_EQ(panel().fromDateValue(), before);
    choose({});
    EXPECT_EQ(shownFrom().time(), QTime(12, 0));
}

TEST_F(ClockPartTest, WhatIsTypedIntoTheDatePanelIsMeantByTheZone)
{
    chooseZone("Asia/Kathmandu");
    auto& picker = *panel().fromDate();
    picker.setFocus();
    auto* line = picker.findChild<QLineEdit*>();
    line->selectAll();
    QTest::keyClicks(line, "17:00");
    EXPECT_EQ(picker.dateValue()->seconds, kFrom - 45 * 60);
}

TEST_F(ClockPartTest, AnHourThatComesTwiceIsSteppedThroughTwice)
{
    chooseZone("Europe/Berlin");
    auto& picker = *panel().fromDate();
    picker.setDisplayFormat("HH:mm dd.MM.yyyy");
    picker.setDateValue(Date{1'351'386'000 - 1'800});  // 02:30, still summer
    picker.findChild<QLineEdit*>()->setCursorPosition(0);
    picker.stepBy(1);
    EXPECT_EQ(picker.dateValue()->seconds, 1'351'386'000 + 1'800);
    EXPECT_EQ(picker.dateTime().time(), QTime(2, 30));
}

TEST_F(ClockPartTest, TheReadoutGoesByTheZone)
{
    trend().setReading({{"valueLine", QVariantMap{{"held", kFrom}}}});
    chooseZone("Asia/Kathmandu");
    EXPECT_TRUE(graphView().accessibleDescription().contains("5:45"))
        << graphView().accessibleDescription().toStdString();
}

TEST_F(ClockPartTest, TheMarkedRangeIsCopiedWithTheZonesOffset)
{
    chooseZone("Asia/Kathmandu");
    trend().setReading({{"marks", QVariantMap{{"a", kFrom}, {"b", kTo}}}});
    action("Copy Range")->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "2013-01-01T17:45:00+05:45/2013-01-01T18:45:00+05:45");
}

TEST_F(ClockPartTest, TheSitesZoneIsFollowed)
{
    EXPECT_FALSE(action("That of the Site (not set)")->isEnabled());
    siteClock().setZone(QTimeZone("Europe/Berlin"));
    action("That of the Site (Europe/Berlin)")->trigger();
    EXPECT_EQ(axis().titleRemark(), "Europe/Berlin, UTC+1");
    siteClock().setZone(QTimeZone("Asia/Kathmandu"));
    EXPECT_EQ(axis().titleRemark(), "Asia/Kathmandu, UTC+5:45");
    EXPECT_EQ(chosen("clock"), (QVariantMap{{"zone", "site"}}));
}

TEST_F(ClockPartTest, OnlyTheClockThatTheSiteHasNowIsHeard)
{
    siteClock().setZone(QTimeZone("Europe/Berlin"));
    chooseZone("site");
    const auto former = host().agent()->setSiteClock(nullptr);
    dynamic_cast<ClockPart&>(part("clock")).viewLoaded();
    EXPECT_FALSE(former->isHeard());
    EXPECT_EQ(axis().titleRemark(), QString());
    host().agent()->setSiteClock(std::make_unique<fakehost::FakeSiteClock>());
    dynamic_cast<ClockPart&>(part("clock")).viewLoaded();
    siteClock().setZone(QTimeZone("Asia/Kathmandu"));
    EXPECT_EQ(axis().titleRemark(), "Asia/Kathmandu, UTC+5:45");
}

TEST_F(ClockPartTest, MenuAndChoiceAgree)
{
    action("UTC")->trigger();
    EXPECT_EQ(chosen("clock"), (QVariantMap{{"zone", "UTC"}}));
    action("24 Hours")->trigger();
    EXPECT_EQ(chosen("clock"), (QVariantMap{{"zone", "UTC"}, {"form", "24-hour"}}));
    chooseZone("Pacific/Apia");
    EXPECT_TRUE(action("Pacific/Apia")->isChecked());
    EXPECT_TRUE(action("Pacific/Apia")->isVisible());
    EXPECT_TRUE(action("Usual Form of Times")->isChecked());
    action("My Time Zone (UTC)")->trigger();
    EXPECT_FALSE(trend().reading().contains("clock"));
}

TEST_F(ClockPartTest, UnknownZonesAndFormsArePassedOver)
{
    choose({{"zone", "Atlantis/Capital"}, {"form", "sundial"}, {"changes", "yes"}});
    EXPECT_TRUE(chosen("clock").isEmpty());
}

TEST_F(ClockPartTest, ChangesOfTheClocksAreDrawnWhereTheyAreSeen)
{
    const std::size_t before = layers();
    choose({{"zone", "Europe/Berlin"}, {"changes", true}});
    EXPECT_EQ(layers(), before);
    showEndOfSummer();
    EXPECT_EQ(layers(), before + 1);
    const QImage with = graphView().grab().toImage();
    choose({{"zone", "Europe/Berlin"}, {"changes", false}});
    EXPECT_EQ(layers(), before);
    EXPECT_NE(graphView().grab().toImage(), with);
    choose({{"zone", "Asia/Kathmandu"}, {"changes", true}});
    EXPECT_EQ(layers(), before);
}

TEST_F(ClockPartTest, AChangeIsDrawnThroughThePlotsAndNotThroughTitlesOfLanes)
{
    showEndOfSummer();
    const int onOneScale = topOfChanges();
    trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-property"}}}});
    EXPECT_GT(topOfChanges(), onOneScale + 15);
}

TEST_F(ClockPartTest, AZoneIsSearchedAndTakenByKeyboard)
{
    ZoneDialog& dialog = openDialog();
    QTest::keyClicks(dialog.findChild<QLineEdit*>(), "st johns");
    QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_EQ(chosen("clock"), (QVariantMap{{"zone", "America/St_Johns"}}));
}

TEST_F(ClockPartTest, AZoneIsSearchedByItsDistanceFromUtc)
{
    ZoneDialog& dialog = openDialog();
    QTest::keyClicks(dialog.findChild<QLineEdit*>(), "UTC-9:30");
    QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_EQ(chosen("clock"), (QVariantMap{{"zone", "Pacific/Marquesas"}}));
}

TEST_F(ClockPartTest, ASearchThatFindsNothingSaysWhatMayBeMeant)
{
    ZoneDialog& dialog = openDialog();
    QTest::keyClicks(dialog.findChild<QLineEdit*>(), "Berlim");
    QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Return);
    QStringList texts;
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        texts << label->text();
    EXPECT_TRUE(texts.join(u' ').contains("Did you mean Europe/Berlin?")) << texts.join(u' ').toStdString();
    EXPECT_TRUE(chosen("clock").isEmpty());
}

TEST_F(ClockPartTest, ArrowsMoveInTheListWhileTyping)
{
    ZoneDialog& dialog = openDialog();
    auto* list = dialog.findChild<QListWidget*>();
    QTest::keyClicks(dialog.findChild<QLineEdit*>(), "Germany");
    const QString first = list->currentItem()->text();
    QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Down);
    EXPECT_NE(list->currentItem()->text(), first);
    EXPECT_FALSE(list->currentItem()->isHidden());
}

}  // namespace

}  // namespace plotix
