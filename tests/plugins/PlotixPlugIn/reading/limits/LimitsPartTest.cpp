#include "plugins/PlotixPlugIn/reading/limits/LimitsPart.h"

#include "plugins/PlotixPlugIn/reading/marks/MarksPart.h"

#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

// The limits of a trend's lines: drawn, hidden, read at the value line, counted in the table.

namespace {

using plotix::PlacedLimit;

class LimitsPartTest : public ReadTrendFixture {
protected:
    void SetUp() override
    {
        host().agent()->annotate();
        ReadTrendFixture::SetUp();
        trend().setReading({{"valueLine", QVariantMap{{"shown", true}}}});
    }
    fakehost::FakeAnnotations& annotations() { return host().agent()->annotate(); }
    plotix::LimitsPart& limits() { return dynamic_cast<plotix::LimitsPart&>(part("limits")); }
    void setHigh(double value = 30)
    {
        annotations().setLimits("airTemperature", {{"high", value, KTVLimit::Side::Above, KTVLimit::Severity::Alarm}});
    }
    void setLow(double value)
    {
        annotations().setLimits("wind", {{"calm", value, KTVLimit::Side::Below, KTVLimit::Severity::Notice}});
    }
    void choose(const char* arrangement) { trend().setReading({{"arrangement", QVariantMap{{"kind", arrangement}}}}); }
    QImage picture() { return trend().graphImageWithSize({800, 500}, 1, QString()); }
    std::size_t layers() { return trend().graph()->layers().size(); }
    std::vector<PlacedLimit> placed()
    {
        plotix::TrendLines lines(access());
        return plotix::placedLimits(lines.shown(), geometry(), plotix::ValueTexts());
    }
    /// In minutes since the beginning; −1: the line stands nowhere.
    double standing()
    {
        const QVariant time = part("valueLine").property("time");
        return time.isValid() ? (time.toDouble() - kFrom) / kMinute : -1;
    }
    QString spoken() { return graphView().accessibleDescription(); }
    plotix::ReadTrend& access() { return dynamic_cast<plotix::MarksPart&>(part("marks")).readTrend(); }
};

TEST_F(LimitsPartTest, WithoutLimitsTheGraphIsAsItWas)
{
    const QImage before = picture();
    const std::size_t layersBefore = layers();
    setHigh();
    EXPECT_NE(picture(), before);
    EXPECT_EQ(layers(), layersBefore + 1);
    annotations().setLimits("airTemperature", {});
    EXPECT_EQ(picture(), before);
    EXPECT_EQ(layers(), layersBefore);
}

TEST_F(LimitsPartTest, ALimitStandsAtItsValue)
{
    setHigh(30);
    setLow(10);
    ASSERT_EQ(placed().size(), 2U);
    EXPECT_DOUBLE_EQ(placed()[0].y, geometry().pointForValue(trend().graph()->plotSpace(), {0, 30}).y());
    EXPECT_TRUE(placed()[0].text.startsWith("Air Temperature: high 30"));
    EXPECT_FALSE(placed()[0].hasBand()) << "which would lie over the other lines";
}

TEST_F(LimitsPartTest, WhatLiesBeyondItIsABandUpToTheNextOne)
{
    annotations().setLimits("airTemperature", {{"hot", 40}, {"warm", 30}, {"cold", 10, KTVLimit::Side::Below}});
    choose("lane-per-property");
    const std::vector<PlacedLimit> all = placed();
    ASSERT_EQ(all.size(), 3U);
    const QRectF hot = plotix::bandOf(all[0], all), warm = plotix::bandOf(all[1], all),
                 cold = plotix::bandOf(all[2], all);
    EXPECT_EQ(hot.top(), all[0].area.top());
    EXPECT_DOUBLE_EQ(hot.bottom(), all[0].y);
    EXPECT_DOUBLE_EQ(warm.top(), all[0].y);
    EXPECT_DOUBLE_EQ(warm.bottom(), all[1].y);
    EXPECT_DOUBLE_EQ(cold.top(), all[2].y);
    EXPECT_DOUBLE_EQ(cold.bottom(), all[2].area.bottom());
}

TEST_F(LimitsPartTest, ALimitThatLinesShareIsDrawnOnce)
{
    for (const char* key : {"airTemperature", "pressure", "wind"})
        annotations().setLimits(key, {{"high", 30}});
    ASSERT_EQ(placed().size(), 1U);
    EXPECT_TRUE(placed()[0].text.startsWith("high 30"));
    EXPECT_TRUE(placed()[0].hasBand());
}

TEST_F(LimitsPartTest, InALaneItStandsInThatLane)
{
    setLow(2);
    choose("lane-per-property");
    ASSERT_EQ(placed().size(), 1U);
    EXPECT_LT(placed()[0].area.height(), geometry().plotArea.height() / 2);
    EXPECT_TRUE(placed()[0].text.startsWith("calm 2"));
    EXPECT_FALSE(placed()[0].isInside()) << "5 m/s throughout: the fit does not reach for it";
    EXPECT_EQ(plotix::bandOf(placed()[0], placed()).height(), 0);
    setLow(8);
    EXPECT_EQ(plotix::bandOf(placed()[0], placed()), placed()[0].area) << "all that is shown lies beyond it";
}

TEST_F(LimitsPartTest, OnALogarithmicScaleItStandsAtItsPowerOfTen)
{
    trend().setReading(
        {{"arrangement",
          QVariantMap{{"kind", "lane-per-property"},
                      {"lanes", QVariantMap{{"line:airTemperature", QVariantMap{{"scale", "logarithmic"}}}}}}}});
    setHigh(10);
    ASSERT_EQ(placed().size(), 1U);
    const auto space = trend().graph()->plotWithIdentifier("airTemperature")->plotSpace();
    EXPECT_DOUBLE_EQ(placed()[0].y, geometry().pointForValue(*space, {0, 1}).y());
    press(Qt::Key_Space);
    press(Qt::Key_C, Qt::ShiftModifier);
    EXPECT_DOUBLE_EQ(standing(), 11);
    setHigh(-1);
    EXPECT_TRUE(placed().empty());
}

TEST_F(LimitsPartTest, OnlyLinesThatAreShownHaveTheirs)
{
    setHigh();
    const QImage with = picture();
    trend().setPlotForPropertyName("airTemperature", true);
    EXPECT_TRUE(placed().empty());
    trend().setPlotForPropertyName("airTemperature", false);
    EXPECT_EQ(picture(), with);
}

TEST_F(LimitsPartTest, TheyAreHiddenByChoice)
{
    const QImage without = picture();
    setHigh();
    action("Show Limits")->trigger();
    EXPECT_EQ(chosen("limits"), (QVariantMap{{"shown", false}}));
    EXPECT_EQ(picture(), without);
    action("Show Limits")->trigger();
    EXPECT_TRUE(chosen("limits").isEmpty());
    EXPECT_NE(picture(), without);
}

TEST_F(LimitsPartTest, AFarLimitMovesNoFitUntilTheValuesAreWidenedToIt)
{
    const CPTPlotRange before = trend().graph()->plotSpace().yRange();
    setHigh(4000);
    trend().fitAll(nullptr);
    EXPECT_EQ(trend().graph()->plotSpace().yRange(), before);
    action("Widen Values to the Limits")->trigger();
    EXPECT_GT(trend().graph()->plotSpace().yRange().maxLimit(), 4000);
    trend().fitAll(nullptr);
    EXPECT_EQ(trend().graph()->plotSpace().yRange(), before);
}

TEST_F(LimitsPartTest, KeysLeadFromOneCrossingToTheNext)
{
    setHigh(40.5);
    annotations().setLimits("pressure", {{"high", 1001}});
    trend().setReading({{"valueLine", QVariantMap{{"shown", true}, {"held", minute(19)}}}});
    press(Qt::Key_C);
    EXPECT_DOUBLE_EQ(standing(), 20);
    press(Qt::Key_C);
    EXPECT_DOUBLE_EQ(standing(), 41) << "both cross there";
    press(Qt::Key_C, Qt::ShiftModifier);
    EXPECT_DOUBLE_EQ(standing(), 20);
    EXPECT_TRUE(action("Next Limit Crossing")->isEnabled());
}

TEST_F(LimitsPartTest, TheReadoutSaysThatAValueIsBeyondALimit)
{
    annotations().setLimits("airTemperature", {{"warm", 20, KTVLimit::Side::Above, KTVLimit::Severity::Warning},
                                               {"hot", 30, KTVLimit::Side::Above, KTVLimit::Severity::Alarm},
                                               {"too hot", 35, KTVLimit::Side::Above, KTVLimit::Severity::Alarm}});
    trend().setReading({{"valueLine", QVariantMap{{"shown", true}, {"held", minute(19)}}}});
    press(Qt::Key_Period);
    EXPECT_FALSE(spoken().contains("above")) << "on the limit is not beyond it: " << spoken().toStdString();
    press(Qt::Key_Period);
    EXPECT_TRUE(spoken().contains("above warm 20")) << spoken().toStdString();
    trend().setReading({{"valueLine", QVariantMap{{"shown", true}, {"held", minute(39)}}}});
    press(Qt::Key_Period);
    EXPECT_TRUE(spoken().contains("above too hot 35")) << spoken().toStdString();
}

TEST_F(LimitsPartTest, TheTableCountsTimeBeyondTheFirstLimit)
{
    annotations().setLimits("airTemperature", {{"hot", 50, KTVLimit::Side::Above, KTVLimit::Severity::Alarm},
                                               {"warm", 45, KTVLimit::Side::Above, KTVLimit::Severity::Warning}});
    trend().setReading({{"statistics", QVariantMap{{"columns", QStringList{"aboveLimit"}}}}});
    const auto rows = trend().reportContents().value("rows").toList();
    ASSERT_FALSE(rows.isEmpty());
    EXPECT_EQ(rows[0].toMap().value("figures").toStringList(), QStringList("above warm 45\u00A0°C: 15 min"));
}

TEST_F(LimitsPartTest, AskTheHostForLimits)
{
    QMenu menu;
    limits().addRowItems(menu, {"airTemperature"});
    ASSERT_EQ(menu.actions().size(), 1);
    menu.actions().front()->trigger();
    QMenu* lines = action("Set Limits of")->menu();
    emit lines->aboutToShow();
    lines->actions().at(2)->trigger();
    EXPECT_EQ(annotations().asked, (QStringList{"limits of airTemperature", "limits of wind"}));
}

}  // namespace
