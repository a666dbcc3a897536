#include "tests/plugins/PlotixPlugIn/TrendStatisticsFixture.h"

#include <QtWidgets/QComboBox>

// Columns that count by a limit, and the dialog that asks for one.

namespace {

class TrendStatisticsLimits : public TrendStatisticsFixture {};

TEST_F(TrendStatisticsLimits, TimesAboveALimitAreCountedInTheUnitItWasChosenIn)
{
    openAnHour();
    choose({{"columns", QStringList{"aboveLimit", "crossings"}},
            {"limits", QVariantMap{{"airTemperature", QVariantMap{{"high", 303.15}, {"highUnit", "K"}}}}}});
    EXPECT_EQ(cellOf("aboveLimit"), "above 30\u00A0°C: 30 min");
    EXPECT_EQ(cellOf("crossings"), "1");
}

TEST_F(TrendStatisticsLimits, ALimitIsAskedForInTheLinesUnit)
{
    openAnHour();
    show();
    action("Time Above a Limit…")->trigger();
    ASSERT_TRUE(limitDialog());
    EXPECT_EQ(limitDialog()->findChild<QComboBox*>()->currentText(), "Air Temperature");
    EXPECT_TRUE(hasLabel(*limitDialog(), "°C"));
    giveLimit("45");
    EXPECT_EQ(cellOf("aboveLimit"), "above 45\u00A0°C: 15 min");
    EXPECT_TRUE(isSeenWhole("aboveLimit"));
}

TEST_F(TrendStatisticsLimits, ALimitIsAskedForOfTheLineThatIsChosen)
{
    openTwoLines();
    action("Time Above a Limit…")->trigger();
    limitDialog()->findChild<QComboBox*>()->setCurrentIndex(1);
    EXPECT_TRUE(hasLabel(*limitDialog(), "hPa"));
    giveLimit("1.5 hPa");
    EXPECT_EQ(cellOf("aboveLimit", 0), "–");
    EXPECT_EQ(cellOf("aboveLimit", 1), "above 1.5\u00A0hPa: 30 s");
    EXPECT_EQ(table().selectedRowIndexes(), std::vector<std::size_t>{1});
}

TEST_F(TrendStatisticsLimits, WhatIsNoNumberIsNoLimit)
{
    openAnHour();
    show();
    action("Time Above a Limit…")->trigger();
    giveLimit("warm");
    EXPECT_TRUE(limitDialog());
    EXPECT_EQ(model().columnCount(), InfoTableModel::kColumnCount);
}

TEST_F(TrendStatisticsLimits, AColumnThatCountsByALimitAsksForOneWhereThereIsNone)
{
    openAnHour();
    show();
    action("Time Below Limit")->trigger();
    ASSERT_TRUE(limitDialog());
    limitDialog()->reject();
    EXPECT_FALSE(action("Time Below Limit")->isChecked());
    EXPECT_EQ(model().columnCount(), InfoTableModel::kColumnCount);
}

}  // namespace
