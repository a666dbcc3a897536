#include "TrendViewFixture.h"

namespace {

class TrendSeries : public TrendViewFixture {
protected:
    CPTPointSeriesPtr series(const QString& key) { return trend().binders()->at(key)->arrangedObjects(); }
    QStringList binderKeys()
    {
        QStringList keys;
        for (const auto& [key, binder] : *trend().binders())
            keys << key;
        return keys;
    }
};

TEST_F(TrendSeries, AbsentRecordsChangeNothing)
{
    openTrendWithData();
    const KTVRecordDictionaryPtr before = trend().plotData();
    trend().updatePlotData(nullptr);
    EXPECT_EQ(trend().plotData(), before);
    EXPECT_EQ(binderKeys(), QStringList({"airTemperature", "pressure"}));
}

TEST_F(TrendSeries, AbsentRecordsBuildNoGraph)
{
    openTrend();
    trend().updatePlotData(nullptr);
    EXPECT_EQ(trend().graph(), nullptr);
    EXPECT_FALSE(trend().binders().has_value());
}

TEST_F(TrendSeries, RecordsAreKeptAsReceived)
{
    openTrend();
    const KTVRecordDictionaryPtr records = twoProperties();
    answer(records);
    EXPECT_EQ(trend().plotData(), records);
}

TEST_F(TrendSeries, EqualRecordsInAnotherObjectReplaceTheOld)
{
    openTrendWithData();
    const KTVRecordDictionaryPtr records = twoProperties();
    trend().updatePlotData(records);
    EXPECT_EQ(trend().plotData(), records);
}

TEST_F(TrendSeries, OnePlotAndOneBinderPerKey)
{
    openTrendWithData();
    EXPECT_EQ(plotIdentifiers(), QStringList({"airTemperature", "pressure"}));
    EXPECT_EQ(binderKeys(), QStringList({"airTemperature", "pressure"}));
}

TEST_F(TrendSeries, PlotsAreBoundThroughTheArrayControllers)
{
    openTrendWithData();
    const CPTScatterPlotPtr plot = trend().graph()->plotWithIdentifier("airTemperature");
    EXPECT_EQ(plot->boundKeyPath(CPTScatterPlotBindingXValues), "arrangedObjects.x");
    EXPECT_EQ(plot->boundKeyPath(CPTScatterPlotBindingYValues), "arrangedObjects.y");
    EXPECT_EQ(plot->boundController(), trend().binders()->at("airTemperature"));
}

TEST_F(TrendSeries, XStaysDoubleAndYIsNarrowed)
{
    openTrend();
    answer(recordsAt({kFrom + 0.125, kFrom + 60}).column("airTemperature", {20.123456789, 1}).build());
    EXPECT_EQ(series("airTemperature")->pointAt(0).x, kFrom + 0.125);
    EXPECT_EQ(series("airTemperature")->pointAt(0).y, static_cast<double>(20.123456789F));
}

TEST_F(TrendSeries, TimesAreSharedWithTheRecords)
{
    openTrendWithData();
    EXPECT_EQ(series("pressure")->x().data(), trend().plotData()->time()->data());
}

TEST_F(TrendSeries, PlotsFollowTheRecordsKeysAndNotTheProperties)
{
    openTrend({"airTemperature", "pressure"});
    answer(recordsAt({kFrom, kTo}).column("wind", {1, 2}).column("airTemperature", {20, 21}).build());
    EXPECT_EQ(plotIdentifiers(), QStringList({"wind", "airTemperature"}));
}

TEST_F(TrendSeries, WithoutPropertiesThereIsNoSeriesWhateverTheRecordsHold)
{
    openTrend({});
    answer(twoProperties());
    EXPECT_TRUE(plotIdentifiers().isEmpty());
    EXPECT_TRUE(trend().binders()->empty());
    EXPECT_TRUE(isBusy());
}

TEST_F(TrendSeries, InvalidSnapshotsAreNotPlotted)
{
    openTrend();
    answer(recordsAt({kFrom, kFrom + 60, kTo}).column("airTemperature", {20, kInvalid, 22}).build());
    EXPECT_EQ(series("airTemperature")->count(), 2U);
}

TEST_F(TrendSeries, OnlyInvalidSnapshotsMakeNoPlotAndStayBusy)
{
    openTrendWithData();
    const CPTPlotRange yRange = trend().graph()->defaultPlotSpace()->yRange();
    const std::optional<CPTPlotRange> stored = trend().plotRangeForY();
    trend().refreshPlot();
    answer(recordsAt({kFrom, kTo}).column("airTemperature", {kInvalid, kInvalid}).build());
    EXPECT_TRUE(plotIdentifiers().isEmpty());
    EXPECT_EQ(trend().graph()->defaultPlotSpace()->yRange(), yRange);
    EXPECT_EQ(trend().plotRangeForY(), stored);
    EXPECT_EQ(overlayText(), QString());
    EXPECT_TRUE(isBusy());
}

TEST_F(TrendSeries, KindThatIsNeverPlottedIsDroppedEvenWhenValid)
{
    openTrend();
    answer(recordsAt({kFrom, kTo})
               .column("airTemperature", {20, 21})
               .kind("airTemperature", kPropertyTypeNeverPlotted)
               .column("pressure", {1013, 1014})
               .build());
    EXPECT_EQ(plotIdentifiers(), QStringList({"pressure"}));
}

TEST_F(TrendSeries, SingleSnapshotsOfThatKindAreDropped)
{
    openTrend();
    answer(records()
               .at(kFrom)
               .value("airTemperature", 20)
               .at(kFrom + 60)
               .neverPlotted("airTemperature", 99)
               .at(kTo)
               .value("airTemperature", 22));
    EXPECT_EQ(series("airTemperature")->count(), 2U);
}

TEST_F(TrendSeries, ElementsThatAreNoPropertiesAreDropped)
{
    openTrend();
    answer(records().at(kFrom).notAProperty("airTemperature").at(kTo).value("airTemperature", 21));
    EXPECT_EQ(series("airTemperature")->pointAt(0).y, 21);
}

TEST_F(TrendSeries, SnapshotsThatDifferBringTheirOwnValue)
{
    openTrend();
    answer(records().at(kFrom).value("airTemperature", 20).at(kTo).coloured("airTemperature", 50, Qt::cyan));
    EXPECT_EQ(series("airTemperature")->pointAt(1).y, 50);
}

TEST_F(TrendSeries, ArrayShorterThanTimeEndsTheSeries)
{
    openTrend();
    answer(recordsAt({kFrom, kFrom + 60, kTo}).column("airTemperature", {20, 21, 22}).shortened("airTemperature", 2));
    EXPECT_EQ(series("airTemperature")->count(), 2U);
}

TEST_F(TrendSeries, SeriesOfManyBlocksKeepsEveryPoint)
{
    std::vector<double> times(10'000);
    for (std::size_t i = 0; i < times.size(); ++i)
        times[i] = kFrom + static_cast<double>(i);
    openTrend();
    answer(recordsAt(times).column("airTemperature", std::vector<double>(times.size(), 3)).build());
    EXPECT_EQ(series("airTemperature")->count(), 10'000U);
}

TEST_F(TrendSeries, LineColourIsThatOfTheFirstSnapshot)
{
    openTrend();
    answer(records().at(kFrom).coloured("airTemperature", 20, Qt::cyan).at(kTo).value("airTemperature", 21));
    EXPECT_EQ(trend().graph()->plotWithIdentifier("airTemperature")->dataLineStyle().color, QColor(Qt::cyan));
}

TEST_F(TrendSeries, LineIsThreePointsWideAndReportsToThePlugIn)
{
    openTrendWithData();
    const CPTScatterPlotPtr plot = trend().graph()->plotWithIdentifier("pressure");
    EXPECT_EQ(plot->dataLineStyle().width, 3.0);
    EXPECT_EQ(plot->delegate(), &trend());
}

TEST_F(TrendSeries, SecondRebuildReplacesPlotsAndBinders)
{
    openTrendWithData();
    const CPTXYGraphPtr graph = trend().graph();
    answerRefresh(recordsAt({kFrom, kTo}).column("pressure", {1013, 1014}).build());
    EXPECT_EQ(trend().graph(), graph);
    EXPECT_EQ(plotIdentifiers(), QStringList({"pressure"}));
    EXPECT_EQ(binderKeys(), QStringList({"pressure"}));
}

TEST_F(TrendSeries, OneTimeSaysThatThereIsNoDataAndEndsTheRefresh)
{
    openTrend();
    answer(recordsAt({kFrom}).column("airTemperature", {20}).build());
    EXPECT_EQ(overlayText(), "No Data Available for Date Range");
    EXPECT_FALSE(isBusy());
}

TEST_F(TrendSeries, EmptyTimeSaysThatThereIsNoData)
{
    openTrend();
    answer(recordsAt({}).build());
    EXPECT_EQ(overlayText(), "No Data Available for Date Range");
    EXPECT_FALSE(isBusy());
}

TEST_F(TrendSeries, AbsentTimeSaysThatThereAreNoProperties)
{
    openTrend();
    answer(records().withoutTime().build());
    EXPECT_EQ(overlayText(), "No Properties Available to Plot");
    EXPECT_FALSE(isBusy());
}

// With fewer than two times every listed property has the one point (0, 0), drawn where the records have its key.
TEST_F(TrendSeries, TooFewTimesPlotTheOriginForKeysOfTheRecords)
{
    openTrend();
    answer(recordsAt({kFrom}).column("airTemperature", {20}));
    EXPECT_EQ(plotIdentifiers(), QStringList({"airTemperature"}));
    EXPECT_EQ(series("airTemperature")->pointAt(0), (CPTPoint{0, 0}));
    EXPECT_EQ(trend().graph()->allPlots()[0]->dataLineStyle().color, QColor(Qt::red));
}

TEST_F(TrendSeries, EmptyColumnGivesThatPlotNoColour)
{
    openTrend();
    answer(recordsAt({}).column("airTemperature", {}).build());
    EXPECT_FALSE(trend().graph()->allPlots().at(0)->dataLineStyle().color.isValid());
}

TEST_F(TrendSeries, EmptyRangeNeverSendsThePickersToTheEpoch)
{
    openTrend();
    answer(recordsAt({kFrom}).column("airTemperature", {20}).build());
    EXPECT_EQ(panel().fromDateValue(), plotix::Date{kFrom});
    EXPECT_EQ(panel().toDateValue(), plotix::Date{kTo});
}

TEST_F(TrendSeries, OverlayGoesWhenDataCome)
{
    openTrend();
    answer(records().withoutTime().build());
    ASSERT_FALSE(overlayText().isEmpty());
    answerRefresh(twoProperties());
    EXPECT_EQ(overlayText(), QString());
}

// Accepting happens before the fit moves the pickers, so what is accepted is the range asked for.
TEST_F(TrendSeries, AcceptedDatesAreTheOnesAskedAndNotTheExtent)
{
    openTrend();
    answer(recordsAt({kFrom + 600, kTo - 600}).column("airTemperature", {20, 21}).build());
    EXPECT_EQ(panel().previousFromDate(), plotix::Date{kFrom});
    EXPECT_EQ(panel().previousToDate(), plotix::Date{kTo});
}

TEST_F(TrendSeries, TooFewTimesAcceptNoDates)
{
    openTrend();
    answer(recordsAt({kFrom}).column("airTemperature", {20}).build());
    EXPECT_FALSE(panel().previousFromDate().has_value());
}

TEST_F(TrendSeries, WithoutPropertiesNoDatesAreAccepted)
{
    openTrend({});
    answer(twoProperties());
    EXPECT_FALSE(panel().previousFromDate().has_value());
}

TEST_F(TrendSeries, ColourNamesAreEmptiedAndNeverFilled)
{
    openTrend();
    EXPECT_FALSE(trend().colorNameDictionary().has_value());
    answer(twoProperties());
    ASSERT_TRUE(trend().colorNameDictionary().has_value());
    EXPECT_TRUE(trend().colorNameDictionary()->empty());
}

}  // namespace
