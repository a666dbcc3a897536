#include "TrendViewFixture.h"

namespace {

class TrendArchive : public TrendViewFixture {};

TEST_F(TrendArchive, KeysAreWrittenInOrderAfterTheBases)
{
    openTrendWithData();
    EXPECT_EQ(archived().keys(),
              QStringList({"uniqueIdentifier", "title", "agent", "tables", "dataClusterViewController",
                           "propertyDetailsShowing", "plotRangeForY", "infoTableArray", "tableColumns"}));
}

TEST_F(TrendArchive, RoundTripKeepsWhatIsArchived)
{
    openTrendWithData();
    const KTVPlotixPlugIn::Ptr copy = encodedAndDecoded();
    EXPECT_EQ(copy->properties(), trend().properties());
    EXPECT_EQ(copy->propertyDetailsShowing(), trend().propertyDetailsShowing());
    EXPECT_EQ(copy->plotRangeForY(), trend().plotRangeForY());
    EXPECT_EQ(copy->tableColumns(), trend().infoTable()->dictionaryForAutosavingLayout());
    EXPECT_EQ(copy->uniqueIdentifier(), trend().uniqueIdentifier());
    ASSERT_EQ(copy->infoTableArray()->size(), trend().infoTableArray()->size());
    for (std::size_t row = 0; row < copy->infoTableArray()->size(); ++row)
        EXPECT_EQ(*copy->infoTableArray()->at(row), *trend().infoTableArray()->at(row));
}

TEST_F(TrendArchive, PropertiesResolveToTheAgentsOwnObjects)
{
    makeTrend({"pressure"});
    EXPECT_EQ(encodedAndDecoded()->properties()->at(0), property("pressure"));
}

TEST_F(TrendArchive, DatesComeFromThePanelAndNotFromTheConstruction)
{
    openTrend();
    panel().setFromDateValue(plotix::Date{kFrom + 0.25});
    const KTVPlotixPlugIn::Ptr copy = encodedAndDecoded();
    EXPECT_FALSE(copy->fromDate().has_value());
    EXPECT_FALSE(copy->toDate().has_value());
    EXPECT_EQ(copy->dataClusterViewController()->fromDateValue(), plotix::Date{kFrom + 0.25});
    EXPECT_EQ(copy->dataClusterViewController()->toDateValue(), plotix::Date{kTo});
}

TEST_F(TrendArchive, EmptyArchiveDecodesWithFallbacks)
{
    adopt(decoded({}));
    ASSERT_TRUE(trend().properties().has_value());
    EXPECT_TRUE(trend().properties()->empty());
    EXPECT_FALSE(trend().propertyDetailsShowing());
    EXPECT_EQ(trend().plotRangeForY(), CPTPlotRange());
    EXPECT_TRUE(trend().infoTableArray()->empty());
    EXPECT_TRUE(trend().deletionArray().isEmpty());
    EXPECT_FALSE(trend().tableColumns().has_value());
    EXPECT_TRUE(panel().fromDateValue().has_value());
}

TEST_F(TrendArchive, DecodedPlugInIsTheDatePanelsDelegate)
{
    adopt(decoded({}));
    EXPECT_EQ(panel().delegate(), static_cast<KTVDataClusterViewControllerDelegate*>(&trend()));
}

TEST_F(TrendArchive, MissingDetailsFlagOpensClosedAndSetsTheButton)
{
    adopt(decoded({}));
    open();
    EXPECT_FALSE(trend().propertyDetailsDisclosureButton()->isChecked());
}

TEST_F(TrendArchive, LayoutIsTakenFromTheLiveTable)
{
    openTrend();
    trend().infoTable()->setColumnWidth(2, 77);
    EXPECT_EQ(encodedAndDecoded()->tableColumns(), trend().infoTable()->dictionaryForAutosavingLayout());
    EXPECT_FALSE(trend().tableColumns().has_value());
}

TEST_F(TrendArchive, LayoutOfAViewNeverOpenedIsWrittenBack)
{
    const QVariantMap stored{{"anything", 7}};
    adopt(decoded({{"tableColumns", stored}}));
    EXPECT_EQ(encodedAndDecoded()->tableColumns(), stored);
}

TEST_F(TrendArchive, ViewNeverOpenedWithoutALayoutWritesNone)
{
    makeTrend();
    EXPECT_FALSE(archived().keys().contains("tableColumns"));
}

// A stored range is only carried along: the plot space starts at 0…1 and the first fit overwrites the field.
TEST_F(TrendArchive, StoredValueRangeIsNeverPutBackOnThePlotSpace)
{
    openTrendWithData();
    const KTVPlotixPlugIn::Ptr copy = encodedAndDecoded();
    adopt(copy);
    open();
    answer(recordsAt({kFrom, kTo}).column("airTemperature", {500, 600}).build());
    EXPECT_EQ(trend().graph()->defaultPlotSpace()->yRange(), (CPTPlotRange{500, 100}));
    EXPECT_EQ(trend().plotRangeForY(), (CPTPlotRange{500, 100}));
}

TEST_F(TrendArchive, AgentThatIsUnknownYieldsNoPlugIn)
{
    EXPECT_EQ(decoded({{"agent", QStringLiteral("nobody")}}), nullptr);
}

}  // namespace
