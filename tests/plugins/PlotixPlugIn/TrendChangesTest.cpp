#include "ImageReceiver.h"
#include "TrendViewFixture.h"

// What a change of unit, of rows or of records does elsewhere in the trend view.

namespace {

class TrendChanges : public TrendViewFixture {
protected:
    CPTScatterPlotPtr plot(const QString& key) { return trend().graph()->plotWithIdentifier(key); }
    QColor lineColour(const QString& key) { return plot(key)->dataLineStyle().color; }
    CPTXYPlotSpace& space() { return *trend().graph()->defaultPlotSpace(); }
    InfoTableArrayController& rows() { return *trend().infoTableArrayController(); }
    InfoTableRowPtr rowNamed(const QString& name)
    {
        for (const InfoTableRowPtr& row : rows().arrangedObjects())
            if (row->tableName == name)
                return row;
        return nullptr;
    }
};

TEST_F(TrendChanges, UnitChangeFitsAgainAndThePanelFollows)
{
    openTrendWithData();
    space().setXRange({kFrom + 60, 600});
    space().setYRange({0, 1});
    property("airTemperature")->setUnit("degF");
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom, kTo - kFrom}));
    EXPECT_FLOAT_EQ(space().yRange().location, 30);
    EXPECT_FLOAT_EQ(space().yRange().end(), 71.6F);
    EXPECT_EQ(panel().fromDateValue(), plotix::Date{kFrom});
    EXPECT_EQ(fetchCount(), 1);
}

// The dates of the rebuild become those a refused range goes back to, even though nothing was fetched for them.
TEST_F(TrendChanges, UnitChangeAcceptsThePanelsDates)
{
    openTrendWithData();
    space().setXRange({kFrom + 60, 600});
    property("airTemperature")->setUnit("degF");
    panel().setFromDateValue(plotix::Date{0});
    panel().restorePreviousDate();
    EXPECT_EQ(panel().fromDateValue(), plotix::Date{kFrom + 60});
    EXPECT_EQ(panel().toDateValue(), plotix::Date{kFrom + 660});
}

TEST_F(TrendChanges, UnitChangeWithOptionHeldLeavesTheValuesShown)
{
    openTrendWithData();
    const CPTPlotRange shown = space().yRange();
    desktop().holdDown(Qt::AltModifier);
    property("airTemperature")->setUnit("degF");
    EXPECT_EQ(space().yRange(), shown);
}

TEST_F(TrendChanges, UnitChangeOfAnEmptyRangeShowsItsMessageAgain)
{
    openTrend({"airTemperature"});
    answer(recordsAt({kFrom}).column("airTemperature", {20}));
    const auto messages = host().log().count("message.center");
    property("airTemperature")->setUnit("degF");
    EXPECT_GT(host().log().count("message.center"), messages);
    EXPECT_FALSE(overlayText().isEmpty());
}

TEST_F(TrendChanges, UnitChangeOffScreenReportsAgain)
{
    ImageReceiver receiver;
    makeTrend();
    trend().setCompletionTarget(&receiver);
    trend().setCompletionSelector("receiveImage");
    trend().setImageSize("{200, 100}");
    refreshFor(kFrom, kTo);
    answer(twoProperties());
    const auto reported = receiver.images.size();
    trend().setUnit("degF", "airTemperature");
    EXPECT_EQ(receiver.images.size(), reported + 1);
}

TEST_F(TrendChanges, LineColourIsTheFirstSnapshotsAlsoWhenItIsNotPlotted)
{
    openTrend();
    answer(records()
               .at(kFrom)
               .invalid("airTemperature")
               .neverPlotted("pressure", 30)
               .at(kFrom + 60)
               .coloured("airTemperature", 20, Qt::cyan)
               .coloured("pressure", 31, Qt::cyan)
               .at(kTo)
               .coloured("airTemperature", 21, Qt::cyan)
               .coloured("pressure", 32, Qt::cyan));
    const auto pressures = trend().plotData()->columnForKey("pressure");
    EXPECT_EQ(lineColour("airTemperature"), QColor(Qt::red));
    EXPECT_EQ(lineColour("pressure"), pressures->snapshotAt(0)->color());
    EXPECT_NE(lineColour("pressure"), QColor(Qt::cyan));
}

TEST_F(TrendChanges, ANewRowLeavesItsPlotHiddenAsItIs)
{
    openTrendWithData();
    trend().setPlotForPropertyName("pressure", true);
    rows().removeObject(rowNamed("Pressure"));
    trend().updateInfoTable();
    ASSERT_TRUE(rowNamed("Pressure"));
    EXPECT_TRUE(rowNamed("Pressure")->show);
    EXPECT_TRUE(plot("pressure")->isHidden());
}

TEST_F(TrendChanges, AHiddenPlotStillCountsInTheFit)
{
    openTrendWithData();
    const CPTPlotRange shown = space().yRange();
    trend().setPlotForPropertyName("airTemperature", true);
    trend().fitAll(nullptr);
    EXPECT_EQ(space().yRange(), shown);
}

TEST_F(TrendChanges, DeletionLeavesTheRangesAndTheOtherPlots)
{
    openTrendWithData();
    space().setYRange({0, 40});
    const auto kept = plot("pressure");
    EXPECT_TRUE(trend().removePropertiesAndRefresh({"Air Temperature"}));
    EXPECT_EQ(plot("pressure"), kept);
    EXPECT_EQ(space().yRange(), (CPTPlotRange{0, 40}));
    EXPECT_EQ(fetchCount(), 1);
}

// Rows are told apart by their display name alone, so two properties of one name have the same rows.
TEST_F(TrendChanges, TwoPropertiesOfOneNameReplaceEachOthersRows)
{
    host().agent()->addProperty({.name = "Wind", .unit = "m/s", .propertyName = "windAloft"});
    openTrend({"wind", "windAloft"});
    const auto values = recordsAt({kFrom, kTo}).column("wind", {1, 2}).column("windAloft", {11, 12}).build();
    answer(values);
    ASSERT_EQ(rows().arrangedObjects().size(), 1U);
    EXPECT_EQ(rowNamed("Wind")->propertyName, "windAloft");
    answerRefresh(values);
    ASSERT_EQ(rows().arrangedObjects().size(), 1U);
    EXPECT_EQ(rowNamed("Wind")->maximum, 12.0F);
}

}  // namespace
