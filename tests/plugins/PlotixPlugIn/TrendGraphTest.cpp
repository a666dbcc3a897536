#include "TrendViewFixture.h"

namespace {

class TrendGraph : public TrendViewFixture {
protected:
    CPTXYAxis& xAxis() { return *trend().graph()->axisSet()->firstAxis(); }
    CPTXYAxis& yAxis() { return *trend().graph()->axisSet()->lastAxis(); }
};

class TrendAxisStyle : public TrendGraph, public testing::WithParamInterface<CPTCoordinate> {
protected:
    CPTXYAxis& axis() { return GetParam() == CPTCoordinate::X ? xAxis() : yAxis(); }
};

CPTLineStyle line(double width, const QColor& color, CPTLineCap cap = CPTLineCap::Butt)
{
    CPTLineStyle style;
    style.width = width;
    style.color = color;
    style.cap = cap;
    return style;
}

TEST_F(TrendGraph, IsNotBuiltBeforeTheFirstAnswer)
{
    openTrend();
    EXPECT_EQ(trend().graph(), nullptr);
    EXPECT_EQ(trend().hostView()->hostedGraph(), nullptr);
}

TEST_F(TrendGraph, IsHostedWithItsDelegateAndTakesGestures)
{
    openTrendWithData();
    EXPECT_EQ(trend().hostView()->hostedGraph(), trend().graph());
    EXPECT_EQ(trend().graph()->defaultPlotSpace()->delegate(), &trend());
    EXPECT_TRUE(trend().graph()->defaultPlotSpace()->allowsUserInteraction());
}

TEST_F(TrendGraph, FillIsTransparentAlthoughAGreyIsGiven)
{
    openTrendWithData();
    const CPTFill& fill = trend().graph()->fill();
    ASSERT_EQ(fill.stops.size(), 1U);
    EXPECT_EQ(fill.stops[0].color, QColor::fromRgbF(0.25F, 0.25F, 0.25F, 0.0F));
    EXPECT_EQ(fill.stops[0].color.alpha(), 0);
}

TEST_F(TrendGraph, PlotAreaLeavesRoomForTheLabels)
{
    openTrendWithData();
    const CPTPadding expected{.top = 20, .left = 60, .bottom = 50, .right = 20};
    EXPECT_EQ(trend().graph()->plotAreaFrame().padding, expected);
}

TEST_F(TrendGraph, TimeAxisIsTitledAndTicksAtFixedIntervals)
{
    openTrendWithData();
    EXPECT_EQ(xAxis().title(), "Time");
    EXPECT_EQ(xAxis().titleOffset(), -20.0);
    EXPECT_EQ(xAxis().labelingPolicy(), CPTAxisLabelingPolicy::FixedInterval);
    EXPECT_EQ(xAxis().orthogonalPosition(), 0.0);
}

// The constraint holds the axis to the edge, so the position, set once more after the styling, has no effect.
TEST_F(TrendGraph, ValueAxisIsTitledAutomaticAndPlacedADayFromTheOrigin)
{
    openTrendWithData();
    EXPECT_EQ(yAxis().title(), "Value");
    EXPECT_EQ(yAxis().titleOffset(), 10.0);
    EXPECT_EQ(yAxis().labelingPolicy(), CPTAxisLabelingPolicy::Automatic);
    EXPECT_EQ(yAxis().orthogonalPosition(), 86'400.0);
}

TEST_P(TrendAxisStyle, LinesAndTicks)
{
    openTrendWithData();
    EXPECT_EQ(axis().tickDirection(), CPTSign::None);
    EXPECT_EQ(axis().axisLineStyle(), line(3.0, QColor::fromRgbF(0.6F, 0.6F, 0.6F)));
    EXPECT_EQ(axis().majorTickLineStyle(), line(3.0, Qt::white, CPTLineCap::Round));
    EXPECT_EQ(axis().minorTickLineStyle(), line(2.0, Qt::white, CPTLineCap::Round));
    EXPECT_EQ(axis().majorTickLength(), 12.0);
    EXPECT_EQ(axis().minorTickLength(), 8.0);
}

TEST_P(TrendAxisStyle, GridLines)
{
    openTrendWithData();
    EXPECT_EQ(axis().majorGridLineStyle(), line(1.5, QColor::fromRgbF(1, 1, 1, 0.25F)));
    EXPECT_EQ(axis().minorGridLineStyle(), line(1.0, QColor::fromRgbF(0.5F, 0.5F, 0.5F, 0.125F)));
}

TEST_P(TrendAxisStyle, TitleAndConstraint)
{
    openTrendWithData();
    EXPECT_EQ(axis().titleTextStyle().fontName, "Helvetica-Bold");
    EXPECT_EQ(axis().titleTextStyle().color, QColor(Qt::white));
    EXPECT_EQ(axis().titleTextStyle().fontSize, 12.0);
    EXPECT_EQ(axis().axisConstraints(), CPTConstraints{0.0});
}

INSTANTIATE_TEST_SUITE_P(BothAxes, TrendAxisStyle, testing::Values(CPTCoordinate::X, CPTCoordinate::Y),
                         [](const auto& axis) { return axis.param == CPTCoordinate::X ? "Time" : "Value"; });

TEST_F(TrendGraph, AxesAreNotSetUpAgainOnLaterRebuilds)
{
    openTrendWithData();
    xAxis().setTitle(QStringLiteral("Changed"));
    yAxis().setOrthogonalPosition(5);
    answerRefresh(twoProperties());
    EXPECT_EQ(xAxis().title(), "Changed");
    EXPECT_EQ(yAxis().orthogonalPosition(), 5);
}

TEST_F(TrendGraph, SettingUpAxesWithoutAGraphDoesNothing)
{
    makeTrend();
    trend().setupXAxis();
    trend().setupYAxis();
    trend().adjustXAxis();
    trend().adjustYAxisWithRange({0, 10});
    EXPECT_EQ(trend().graph(), nullptr);
}

}  // namespace
