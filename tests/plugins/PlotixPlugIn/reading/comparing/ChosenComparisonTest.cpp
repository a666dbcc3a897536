#include "tests/plugins/PlotixPlugIn/reading/comparing/ComparingFixture.h"

#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>

namespace {

/// What lines are compared with is chosen: in menus, by keyboard, between marks, and taken back.
class ChosenComparisonTest : public ComparingFixture {};

TEST_F(ChosenComparisonTest, NothingIsLeftWhenTheyAreTakenBack)
{
    compareWithADayEarlier();
    action("Compare with Nothing")->trigger();
    EXPECT_EQ(trend().graph()->allPlots().size(), 3U);
    EXPECT_TRUE(columns().isEmpty());
    EXPECT_FALSE(trend().reading().contains("comparing"));
}

TEST_F(ChosenComparisonTest, TakenBackAndChosenAgainTheyAreReadAgain)
{
    compareWithADayEarlier();
    compareWith({});
    compareWith({"1d"});
    EXPECT_FALSE(lastFetch().isAnswered);
}

TEST_F(ChosenComparisonTest, AreArchivedAsTheyWereChosen)
{
    compareWith({"2w", "no distance"});
    EXPECT_EQ(chosen("comparing"), (QVariantMap{{"with", QStringList{"14d"}}}));
    EXPECT_EQ(encodedAndDecoded()->reading().value("comparing"), QVariant(chosen("comparing")));
}

TEST_F(ChosenComparisonTest, ALineIsComparedAlone)
{
    QMenu menu;
    comparing().addLineItems(menu, {"wind"});
    menu.actions().front()->menu()->actions().front()->trigger();
    EXPECT_EQ(lastFetch().properties->size(), 1U);
    answer(dayEarlier());
    EXPECT_EQ(names(), QStringList({"Air Temperature", "Pressure", "Wind", "Wind, a day earlier"}));
}

TEST_F(ChosenComparisonTest, WhatAllHaveIsTakenFromOneLineAndLeftToTheOthers)
{
    compareWithADayEarlier();
    QMenu menu;
    comparing().addLineItems(menu, {"wind"});
    menu.actions().front()->menu()->actions().front()->trigger();
    EXPECT_EQ(names().filter("earlier"), QStringList({"Air Temperature, a day earlier", "Pressure, a day earlier"}));
}

TEST_F(ChosenComparisonTest, DistancesAreTypedByKeyboard)
{
    press(Qt::Key_E);
    auto* dialog = trend().view()->findChild<QDialog*>();
    ASSERT_NE(dialog, nullptr);
    QTest::keyClicks(dialog->findChild<QLineEdit*>(), "7d, 36h");
    QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_EQ(chosen("comparing"), (QVariantMap{{"with", QStringList{"7d", "36h"}}}));
}

TEST_F(ChosenComparisonTest, WhatIsNoDistanceIsSaidWhileItIsTyped)
{
    press(Qt::Key_E);
    auto* dialog = trend().view()->findChild<QDialog*>();
    QTest::keyClicks(dialog->findChild<QLineEdit*>(), "7d, soon");
    bool isSaid = false;
    for (const QLabel* label : dialog->findChildren<QLabel*>())
        isSaid = isSaid || label->text().contains("soon");
    EXPECT_TRUE(isSaid);
    QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_TRUE(chosen("comparing").isEmpty());
}

TEST_F(ChosenComparisonTest, ASpanIsLaidOverAnother)
{
    compareWith({"2012-12-31T12:00:00Z/2012-12-31T12:10:00Z@2013-01-01T12:20:00Z"});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{kFrom - kDay + 600});
    answer(dayEarlier());
    const auto key = plotix::comparedKey("wind", chosen("comparing").value("with").toStringList().front());
    EXPECT_EQ(plot(key)->series()->count(), 11U);
    EXPECT_EQ(plot(key)->series()->pointAt(0), (CPTPoint{minute(20), -5}));
}

TEST_F(ChosenComparisonTest, TheSpanBetweenTheMarksIsLaidOverTheValueLine)
{
    EXPECT_FALSE(action("Lay A–B Over the Value Line")->isEnabled()) << "there are no marks";
    trend().setReading({{"marks", QVariantMap{{"a", minute(0)}, {"b", minute(20)}}},
                        {"valueLine", QVariantMap{{"held", minute(30)}}}});
    press(Qt::Key_E, Qt::ShiftModifier);
    EXPECT_EQ(chosen("comparing").value("with").toStringList(),
              QStringList{"2013-01-01T12:00:00Z/2013-01-01T12:20:00Z@2013-01-01T12:30:00Z"});
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{minute(0)});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{minute(20)});
}

TEST_F(ChosenComparisonTest, TheSpanBetweenTheMarksIsLaidOverATypedTime)
{
    trend().setReading({{"marks", QVariantMap{{"a", minute(0)}, {"b", minute(20)}}}});
    action("Lay A–B Over a Time…")->trigger();
    auto* dialog = trend().view()->findChild<QDialog*>();
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QLineEdit*>()->setText("12:40");
    QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
    answer(minutes());
    ASSERT_EQ(lines().size(), 6U);
    EXPECT_EQ(lines()[1].comparisonName, "from Tue, Jan 1, 2013, 12:00 PM");
    EXPECT_EQ(plot(lines()[1].key)->series()->pointAt(3), (CPTPoint{minute(43), 3}));
}

}  // namespace
