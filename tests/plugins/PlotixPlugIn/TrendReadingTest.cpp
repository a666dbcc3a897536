#include "TrendViewFixture.h"

#include "plotkit/model/CPTTickFormatters.h"
#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/RangeNotice.h"
#include "plugins/PlotixPlugIn/host/PlainToolTip.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>

namespace {

class TrendReading : public TrendViewFixture {
protected:
    CPTXYAxis& xAxis() { return *trend().graph()->axisSet()->firstAxis(); }
    CPTXYAxis& yAxis() { return *trend().graph()->axisSet()->lastAxis(); }
    void choose(const char* option, bool on) { trend().setReading({{QLatin1String(option), on}}); }
    bool areAxesReadable()
    {
        return trend().graph()->labelRoom() == CPTLabelRoom::Grows &&
               xAxis().labelingPolicy() == CPTAxisLabelingPolicy::Calendar &&
               dynamic_cast<const CPTTickTimeFormatter*>(xAxis().labelFormatter().get()) &&
               dynamic_cast<const CPTTickNumberFormatter*>(yAxis().labelFormatter().get());
    }
    QString shownMaximum()
    {
        const InfoTableModel* model = trend().infoTable()->infoTableModel();
        return model->data(model->index(0, InfoTableModel::Maximum)).toString();
    }
    void openWith(const std::vector<double>& air, const std::vector<double>& pressure)
    {
        makeTrend();
        choose("tellsOutside", true);
        open();
        answer(recordsAt({kFrom, kTo}).column("airTemperature", air).column("pressure", pressure).build());
    }
    QString notice() { return trend().rangeNotice() ? trend().rangeNotice()->text() : QString(); }
    const CPTPlotRange& values() { return trend().graph()->plotSpace().yRange(); }
    KTVRecordDictionaryPtr largeValues() const
    {
        return recordsAt({kFrom, kTo}).column("airTemperature", {1'234'500, 1'234'600.25}).build();
    }
};

TEST_F(TrendReading, WithoutAChoiceNothingIsDifferent)
{
    openTrendWithData();
    EXPECT_FALSE(areAxesReadable());
    EXPECT_EQ(trend().graph()->labelRoom(), CPTLabelRoom::Fixed);
    EXPECT_TRUE(trend().reading().isEmpty());
    EXPECT_FALSE(archived().contains("reading"));
}

TEST_F(TrendReading, ReadableLabelsStayThroughRefreshZoomAndDates)
{
    makeTrend();
    choose("readableLabels", true);
    open();
    answer(twoProperties());
    EXPECT_TRUE(areAxesReadable());
    answerRefresh(twoProperties());
    trend().graph()->defaultPlotSpace()->setXRange({kFrom, 60});
    trend().adjustXAxis();
    EXPECT_TRUE(areAxesReadable());
}

TEST_F(TrendReading, AGraphThatIsShownBecomesReadableAndPlainAgain)
{
    openTrendWithData();
    choose("readableLabels", true);
    EXPECT_TRUE(areAxesReadable());
    choose("readableLabels", false);
    EXPECT_EQ(trend().graph()->labelRoom(), CPTLabelRoom::Fixed);
    EXPECT_EQ(xAxis().labelingPolicy(), CPTAxisLabelingPolicy::FixedInterval);
    EXPECT_EQ(xAxis().titleOffset(), -20.0);
    EXPECT_EQ(yAxis().labelFormatter()->pattern(), "#.#");
}

TEST_F(TrendReading, TheTablesNumbersBecomeReadable)
{
    makeTrend({"airTemperature"});
    open();
    answer(largeValues());
    EXPECT_EQ(shownMaximum(), "1234600.2");
    choose("readableLabels", true);
    EXPECT_EQ(shownMaximum(), "1,234,600.2");
}

TEST_F(TrendReading, ALineWithoutValuesHasNoExtremes)
{
    makeTrend({"airTemperature"});
    open();
    answer(recordsAt({}));
    EXPECT_EQ(shownMaximum(), "0");
    choose("readableLabels", true);
    EXPECT_EQ(shownMaximum(), "–");
}

TEST_F(TrendReading, TheChoiceIsArchivedWithTheTrend)
{
    openTrendWithData();
    choose("readableLabels", true);
    adopt(encodedAndDecoded());
    EXPECT_EQ(trend().reading(), (QVariantMap{{"readableLabels", true}}));
}

TEST_F(TrendReading, AHostReachesItByName)
{
    openTrendWithData();
    QMetaObject::invokeMethod(&trend(), "setReading", Q_ARG(QVariantMap, QVariantMap({{"readableLabels", true}})));
    EXPECT_TRUE(areAxesReadable());
}

TEST_F(TrendReading, LinesOutsideThePermittedValuesAreNamed)
{
    openWith({-9'000, 9'000}, {-8'000, -7'000});
    EXPECT_EQ(notice(), "Outside the values shown: Air Temperature");
    trend().setPlotForPropertyName("airTemperature", true);
    EXPECT_EQ(notice(), "");
}

TEST_F(TrendReading, LinesOutsideAreNamedAsTheyAreInTheToolTipToo)
{
    openWith({0, 1}, {0, 1});
    RangeNotice told(trend().hostView());
    told.tell({plotix::OutsideLines::Kind::Outside, {"<b>x</b> & y"}});
    EXPECT_EQ(told.findChild<QLabel*>()->toolTip(), plainToolTip("<b>x</b> & y"));
    EXPECT_TRUE(told.text().contains("<b>x</b> & y"));
}

TEST_F(TrendReading, LinesTooSmallToBeSeenAreNamed)
{
    openWith({1.8, 1.801}, {1.8, 1.8});
    EXPECT_EQ(notice(), "Too small to be seen: Air Temperature");
}

TEST_F(TrendReading, OneClickShowsThemScaled)
{
    openWith({-9'000, 9'000}, {0, 6});
    const CPTPlotRange times = trend().graph()->plotSpace().xRange();
    trend().rangeNotice()->button()->click();
    EXPECT_EQ(values(), (CPTPlotRange{-9'000, 18'000}));
    EXPECT_EQ(trend().graph()->plotSpace().xRange(), times);
    EXPECT_EQ(notice(), "");
    answerRefresh(recordsAt({kFrom, kTo}).column("airTemperature", {0, 7'000}).build());
    EXPECT_EQ(values(), (CPTPlotRange{0, 7'000}));
}

TEST_F(TrendReading, WithoutTheOptionNothingIsToldAndTheRangeIsCut)
{
    openTrend();
    answer(recordsAt({kFrom, kTo}).column("airTemperature", {-9'000, 9'000}).build());
    EXPECT_EQ(trend().rangeNotice(), nullptr);
    EXPECT_EQ(values(), (CPTPlotRange{-9'000, 5'000}));
}

}  // namespace
