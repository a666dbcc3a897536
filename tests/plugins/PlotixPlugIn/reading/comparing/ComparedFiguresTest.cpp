#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "tests/plugins/PlotixPlugIn/reading/comparing/ComparingFixture.h"

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

namespace {

/// What the readout and the table of statistics say of lines and of what they are compared with.
class ComparedFiguresTest : public ComparingFixture {};

TEST_F(ComparedFiguresTest, TheReadoutSaysByHowMuchThePresentIsMore)
{
    compareWithADayEarlier();
    EXPECT_TRUE(valuesAt(30).contains("Air Temperature, a day earlier\t20 °C")) << valuesAt(30).toStdString();
    EXPECT_TRUE(valuesAt(30).contains("Air Temperature\t30 °C\t+10 K against a day earlier"))
        << valuesAt(30).toStdString();
}

TEST_F(ComparedFiguresTest, TheTableHasTheirAverageAndTheDifference)
{
    compareWithADayEarlier();
    EXPECT_EQ(columns(), QStringList({"average:1d", "difference:1d"}));
    EXPECT_EQ(cell("average:1d"), "20.0");
    EXPECT_EQ(cell("difference:1d"), "+10.0 K");
}

TEST_F(ComparedFiguresTest, TheirColumnsStandBehindTheTablesOwnAndMoveNoneOfThem)
{
    trend().setReading({{"statistics", QVariantMap{{"columns", QStringList{"median"}}}}});
    compareWithADayEarlier();
    columns();
    drain();
    const PropertyDetailsTableView& shown = *trend().infoTable();
    const auto placeOf = [&](const char* column) {
        return shown.horizontalHeader()->visualIndex(shown.infoTableModel()->columnNamed(QLatin1String(column)));
    };
    EXPECT_EQ(placeOf("median"), placeOf("unit") + 1) << "chosen figures stand before the table's";
    EXPECT_EQ(placeOf("average"), placeOf("minimum") + 2);
    EXPECT_EQ(placeOf("average:1d"), placeOf("points") + 1);
    EXPECT_EQ(placeOf("difference:1d"), placeOf("points") + 2);
    EXPECT_EQ(placeOf("median:1d"), placeOf("points") + 3);
    EXPECT_EQ(shown.horizontalScrollBar()->value(), 0);
}

TEST_F(ComparedFiguresTest, TheTableHasEveryFigureThatWasChosenForThemToo)
{
    trend().setReading({{"statistics", QVariantMap{{"columns", QStringList{"median"}}}}});
    compareWithADayEarlier();
    EXPECT_EQ(columns(), QStringList({"median", "average:1d", "difference:1d", "median:1d"}));
    EXPECT_EQ(cell("median:1d"), "20.0");
}

TEST_F(ComparedFiguresTest, ATimeInTheTableIsWhenItWasRecorded)
{
    trend().setReading({{"statistics", QVariantMap{{"columns", QStringList{"maximumTime"}}}}});
    compareWithADayEarlier();
    table().finish();
    EXPECT_DOUBLE_EQ(table().cell("airTemperature", "maximumTime").order, minute(60));
    EXPECT_DOUBLE_EQ(table().cell("airTemperature", "maximumTime:1d").order, minute(60) - kDay);
}

TEST_F(ComparedFiguresTest, AveragesOfUnequalSpansSayOfHowMuchTheyAre)
{
    compareWith({"1d"});
    answer(recordsAt({kFrom - kDay, kFrom - kDay + kMinute, kFrom - kDay + 2 * kMinute})
               .column("airTemperature", {1, 2, 3})
               .column("pressure", {1, 2, 3})
               .column("wind", {1, 2, 3}));
    EXPECT_EQ(cell("average:1d"), "2.0 (3 % recorded)");
    EXPECT_EQ(cell("difference:1d"), "+28.0 K (100 % against 3 %)");
    EXPECT_TRUE(table().cell("airTemperature", "average:1d").hint.contains("then: 3"));
}

}  // namespace
