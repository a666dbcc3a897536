#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "plugins/PlotixPlugIn/reading/lanes/Arrangement.h"
#include "plugins/PlotixPlugIn/reading/lanes/LaneDialog.h"
#include "tests/plugins/PlotixPlugIn/TrendViewFixture.h"

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

#include <cmath>

namespace {

using namespace plotix;

/// A trend of temperature and pressure, which lanes set apart.
class TrendLanesTest : public TrendViewFixture {
protected:
    Arrangement& arrangement()
    {
        return *static_cast<Arrangement*>(
            static_cast<TrendReader*>(trend().trendReader())->part(QStringLiteral("arrangement")));
    }
    void arrange(const QString& kind, const QVariantMap& lanes = {})
    {
        QVariantMap chosen{{QStringLiteral("kind"), kind}};
        if (!lanes.isEmpty())
            chosen.insert(QStringLiteral("lanes"), lanes);
        trend().setReading({{QStringLiteral("arrangement"), chosen}});
    }
    Lane& lane(std::size_t index) { return *arrangement().lanes().at(index); }
    std::size_t laneCount() { return arrangement().lanes().size(); }
    CPTXYGraph& graph() { return *trend().graph(); }
    QImage picture() { return trend().hostView()->imageOfLayer(); }
    void showAt(int width, int height)
    {
        trend().view()->resize(width, height);
        trend().view()->show();
        QCoreApplication::processEvents();
    }
    /// Where the upper edge of a lane stands in the view.
    QPoint edgeOf(std::size_t index)
    {
        const QRectF area = trend().hostView()->geometryShown(graph()).plotArea;
        return QPointF(area.center().x(), area.top() + lane(index).space()->strip().top * area.height()).toPoint();
    }
};

TEST_F(TrendLanesTest, WithoutAChoiceThereIsOneScaleAndNoKeyOfItsOwn)
{
    openTrendWithData();
    EXPECT_EQ(laneCount(), 0U);
    EXPECT_EQ(graph().allPlotSpaces().size(), 1U);
    EXPECT_FALSE(archived().contains(QStringLiteral("reading")));
}

TEST_F(TrendLanesTest, LanesStandBelowEachOtherWithNameAndUnit)
{
    openTrendWithData();
    arrange("lane-per-unit");
    ASSERT_EQ(laneCount(), 2U);
    EXPECT_EQ(lane(0).title(), QStringLiteral("Air Temperature (°C)"));
    EXPECT_EQ(lane(0).space()->strip().bottom, 0.5);
    EXPECT_EQ(lane(1).space()->strip().top, 0.5);
    EXPECT_TRUE(graph().axisSet()->yAxis()->isHidden());
}

TEST_F(TrendLanesTest, EachLaneIsFittedToItsOwnLines)
{
    openTrendWithData();
    arrange("lane-per-unit");
    const auto extent = graph().plotWithIdentifier("pressure")->series()->extent();
    EXPECT_LT(lane(1).space()->yRange().minLimit(), static_cast<double>(extent->minY));
    EXPECT_GT(lane(1).space()->yRange().maxLimit(), static_cast<double>(extent->maxY));
    EXPECT_LT(lane(0).space()->yRange().maxLimit(), 100);
}

TEST_F(TrendLanesTest, TheDefaultSpaceGoesOnAsEver)
{
    openTrendWithData();
    const CPTPlotRange y = graph().plotSpace().yRange();
    arrange("lane-per-property");
    EXPECT_EQ(graph().plotSpace().yRange(), y);
    trend().refreshPlot();
    answerRefresh(twoProperties());
    EXPECT_EQ(graph().plotSpace().yRange(), y);
    EXPECT_EQ(trend().plotRangeForY(), y);
}

TEST_F(TrendLanesTest, GoingBackToOneScaleLooksAsBefore)
{
    openTrendWithData();
    showAt(700, 600);
    const QImage before = picture();
    arrange("lane-per-unit");
    EXPECT_NE(picture(), before);
    arrange("one-scale");
    EXPECT_EQ(picture(), before);
    EXPECT_EQ(graph().axisSet()->axes().size(), 2U);
}

TEST_F(TrendLanesTest, TheChoiceIsArchivedWithTheTrend)
{
    openTrendWithData();
    arrange("lane-per-unit", {{"unit:°C", QVariantMap{{"fit", "robust"}, {"height", 2.0}}}});
    const KTVPlotixPlugIn::Ptr again = encodedAndDecoded();
    EXPECT_EQ(again->reading().value("arrangement").toMap(), trend().reading().value("arrangement").toMap());
    EXPECT_EQ(lane(0).space()->strip().bottom, 2.0 / 3);
}

TEST_F(TrendLanesTest, AChoiceIsTakenBack)
{
    openTrendWithData();
    const QVariantMap before = trend().changeable();
    arrange("lane-per-unit");
    trend().changeTo(before);
    EXPECT_EQ(laneCount(), 0U);
    EXPECT_EQ(trend().changeable(), before);
}

TEST_F(TrendLanesTest, AMovedLaneIsPutBackWithTheTrendsRanges)
{
    openTrendWithData();
    arrange("lane-per-unit");
    const QVariantMap before = trend().changeable();
    lane(1).space()->setYRange({5, 7});
    trend().changeTo(before);
    EXPECT_EQ(trend().changeable(), before);
}

TEST_F(TrendLanesTest, RecordsReadBeneathLeaveTheLanesWhereTheyStand)
{
    openTrendWithData();
    arrange("lane-per-unit");
    lane(1).space()->setYRange({5, 7});
    trend().readRange(kFrom - 600, kTo + 600);
    completeLastFetch({twoProperties(), {}});
    drain();
    EXPECT_EQ(lane(1).space()->yRange(), (CPTPlotRange{5, 7}));
}

TEST_F(TrendLanesTest, NoLineIsToldToBeOutsideInLanes)
{
    openTrendWithData();
    trend().setReading({{"tellsOutside", true}});
    arrange("lane-per-property");
    answerRefresh(records().times({kFrom, kTo}).column("airTemperature", {0, 90'000}).column("pressure", {1, 2}));
    EXPECT_GT(lane(0).space()->yRange().maxLimit(), 90'000);
    EXPECT_EQ(trend().rangeNotice(), nullptr);
}

TEST_F(TrendLanesTest, ALogarithmicLaneDrawsPowersAndGoesBack)
{
    openTrendWithData();
    arrange("lane-per-unit", {{"unit:hPa", QVariantMap{{"scale", "logarithmic"}}}});
    const auto powers = graph().plotWithIdentifier("pressure")->series()->extent();
    EXPECT_NEAR(static_cast<double>(powers->maxY), std::log10(32.0), 1e-6);
    arrange("one-scale");
    EXPECT_GT(graph().plotWithIdentifier("pressure")->series()->extent()->maxY, 31.0F);
}

TEST_F(TrendLanesTest, AValueIsReadFromTheRecordsOfALogarithmicLane)
{
    openTrend({"pressure"});
    answer(records().times({kFrom, kFrom + 60, kTo}).column("pressure", {1, 0, 100}));
    arrange("lane-per-unit", {{"unit:hPa", QVariantMap{{"scale", "logarithmic"}}}});
    const CPTScatterPlotPtr plot = graph().plotWithIdentifier("pressure");
    EXPECT_EQ(plot->series()->count(), 2U);  // what has no power is not drawn
    EXPECT_EQ(plot->valueSeries()->count(), 3U);
    EXPECT_EQ(lane(0).space()->yOfValue(100), 2);
    EXPECT_TRUE(std::isnan(lane(0).space()->yOfValue(0)));
    arrange("one-scale");
    EXPECT_EQ(plot->valueSeries(), plot->series());
}

TEST_F(TrendLanesTest, ALineThatGoesFromOneLogarithmicLaneToAnotherIsScaledOnce)
{
    const QVariantMap logarithmic{{"scale", "logarithmic"}};
    openTrendWithData();
    arrange("lane-per-unit", {{"unit:hPa", logarithmic}, {"line:pressure", logarithmic}});
    arrange("lane-per-property", {{"unit:hPa", logarithmic}, {"line:pressure", logarithmic}});
    const CPTScatterPlotPtr plot = graph().plotWithIdentifier("pressure");
    EXPECT_NEAR(static_cast<double>(plot->series()->extent()->maxY), std::log10(32.0), 1e-6);
    EXPECT_EQ(plot->plotSpace(), lane(1).space());
}

TEST_F(TrendLanesTest, TheEdgeBetweenLanesIsDragged)
{
    openTrendWithData();
    arrange("lane-per-unit");
    showAt(700, 700);
    const QPoint edge = edgeOf(1);
    QTest::mousePress(trend().hostView(), Qt::LeftButton, {}, edge);
    QTest::mouseMove(trend().hostView(), edge + QPoint(0, 40));
    QTest::mouseRelease(trend().hostView(), Qt::LeftButton, {}, edge + QPoint(0, 40));
    EXPECT_NEAR(edgeOf(1).y(), edge.y() + 40, 1);
    EXPECT_TRUE(trend().reading().value("arrangement").toMap().contains("lanes"));
}

TEST_F(TrendLanesTest, LanesAreTypedInADialogThatCanBeCancelled)
{
    openTrendWithData();
    arrange("lane-per-unit");
    LaneDialog dialog(arrangement(), nullptr);
    dialog.findChildren<QComboBox*>()[1]->setCurrentIndex(3);  // fixed
    dialog.findChildren<QLineEdit*>()[1]->setText("40");
    dialog.findChildren<QLineEdit*>()[0]->setText("-20");
    EXPECT_EQ(lane(0).space()->yRange(), (CPTPlotRange{-20, 60}));
    dialog.reject();
    EXPECT_EQ(lane(0).settings(), LaneSettings());
}

TEST_F(TrendLanesTest, ATypedRangeThatIsNoneIsRefusedWithASentence)
{
    openTrendWithData();
    arrange("lane-per-unit");
    LaneDialog dialog(arrangement(), nullptr);
    dialog.findChildren<QComboBox*>()[1]->setCurrentIndex(3);
    dialog.findChildren<QLineEdit*>()[0]->setText("2000");
    EXPECT_FALSE(dialog.findChild<QLabel*>("problem")->text().isEmpty());
    EXPECT_NE(lane(0).space()->yRange().minLimit(), 2000);
}

TEST_F(TrendLanesTest, AReportIsToldThatTheHeadsNameTheUnits)
{
    openTrendWithData();
    EXPECT_FALSE(trend().reportContents().value("unitsInGraph").toBool());
    arrange("lane-per-unit");
    EXPECT_TRUE(trend().reportContents().value("unitsInGraph").toBool());
}

TEST_F(TrendLanesTest, MenusOfferTheArrangements)
{
    openTrendWithData();
    QAction* menu = trend().readingActions().front();
    ASSERT_TRUE(menu->menu());
    menu->menu()->actions()[3]->trigger();
    EXPECT_EQ(arrangement().kind(), ArrangementKind::LanePerProperty);
    EXPECT_TRUE(menu->menu()->actions()[3]->isChecked());
}

TEST_F(TrendLanesTest, OneScaleThatServesIsCalledByItsUnit)
{
    openTrend({"airTemperature"});
    answer(records().times({kFrom, kTo}).column("airTemperature", {20, 22}));
    trend().setReading({{"readableLabels", true}});
    arrange("automatic");
    EXPECT_EQ(laneCount(), 0U);
    EXPECT_EQ(graph().axisSet()->yAxis()->title(), QStringLiteral("Air Temperature (°C)"));
    arrange("one-scale");
    EXPECT_EQ(graph().axisSet()->yAxis()->title(), QStringLiteral("Value"));
}

}  // namespace
