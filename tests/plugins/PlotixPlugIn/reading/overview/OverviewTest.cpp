#include "plugins/PlotixPlugIn/reading/overview/Overview.h"

#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

#include <QtCore/QBuffer>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <QtGui/QWheelEvent>

namespace {

/// A trend of an hour on a screen, with its overview.
class OverviewTest : public ReadTrendFixture {
protected:
    void SetUp() override
    {
        ReadTrendFixture::SetUp();
        trend().setReading({{"overview", QVariantMap{{"shown", true}}}});
    }
    CPTPlotRange times() { return trend().graph()->defaultPlotSpace()->xRange(); }
    void showMinutes(double from, double to)
    {
        trend().graph()->defaultPlotSpace()->setXRange({minute(from), (to - from) * kMinute});
    }
    QRectF room() { return geometry().roomOf(*trend().graph()->layers().back()); }
    /// A point of the strip at a minute of the hour.
    QPoint stripAt(double minuteCount)
    {
        const QRectF area = geometry().plotArea;
        return QPointF(area.left() + minuteCount / 60 * area.width(), room().top() + 20).toPoint();
    }
    void drag(double fromMinute, double toMinute)
    {
        QTest::mousePress(&graphView(), Qt::LeftButton, {}, stripAt(fromMinute));
        moveTo(stripAt(toMinute), Qt::LeftButton);
        QTest::mouseRelease(&graphView(), Qt::LeftButton, {}, stripAt(toMinute));
    }
    void expectShown(double from, double to)
    {
        EXPECT_NEAR((times().minLimit() - minute(0)) / kMinute, from, 0.1);
        EXPECT_NEAR((times().maxLimit() - minute(0)) / kMinute, to, 0.1);
    }
};

TEST_F(OverviewTest, StandsBelowThePlotsAndIsGoneWithoutAChoice)
{
    const double with = geometry().plotArea.height();
    EXPECT_GE(room().top(), geometry().plotArea.bottom());
    action("Overview of Everything Fetched")->trigger();
    EXPECT_GT(geometry().plotArea.height(), with + 30);
    EXPECT_FALSE(trend().reading().contains("overview"));
}

TEST_F(OverviewTest, OfAnotherWidthIsDrawnRoughlyAndSettles)
{
    trend().view()->show();
    const auto settles = [this] {
        return QTest::qWaitFor([this] { return !graphView().property("provisional").toBool(); }, 20'000);
    };
    ASSERT_TRUE(QTest::qWaitForWindowExposed(trend().view()->window()));
    graphView().repaint();
    ASSERT_TRUE(settles());
    graphView().resize(graphView().width() - 12, graphView().height());
    graphView().repaint();
    EXPECT_TRUE(graphView().property("provisional").toBool());
    const QImage picture = graphView().grab().toImage();
    EXPECT_TRUE(settles());
    EXPECT_EQ(graphView().grab().toImage(), picture);
}

TEST_F(OverviewTest, ALowGraphKeepsItsRoomForTheLines)
{
    trend().view()->resize(900, 320);
    EXPECT_TRUE(room().isEmpty());
}

TEST_F(OverviewTest, SpansWhatWasAskedForEvenWhereALineHasNoRecords)
{
    auto records = recordsAt({minute(10), minute(20)}).column("airTemperature", {1, 2});
    answerRefresh(records.column("pressure", {kInvalid, kInvalid}).column("wind", {kInvalid, kInvalid}));
    QTest::mouseDClick(&graphView(), Qt::LeftButton, {}, stripAt(45));
    EXPECT_GE(times().minLimit(), kFrom);
}

TEST_F(OverviewTest, ADragOfTheWindowMovesWhatIsShown)
{
    showMinutes(10, 30);
    drag(20, 30);
    expectShown(20, 40);
}

TEST_F(OverviewTest, ADragOfAnEdgeMovesItAlone)
{
    showMinutes(10, 30);
    drag(30, 50);
    expectShown(10, 50);
}

TEST_F(OverviewTest, ADragElsewhereShowsWhatItSpans)
{
    showMinutes(10, 20);
    drag(55, 40);
    expectShown(40, 55);
}

TEST_F(OverviewTest, AClickElsewhereGoesThere)
{
    showMinutes(10, 20);
    click(stripAt(45));
    expectShown(40, 50);
}

TEST_F(OverviewTest, ADoubleClickShowsEverything)
{
    showMinutes(10, 20);
    QTest::mouseDClick(&graphView(), Qt::LeftButton, {}, stripAt(45));
    expectShown(0, 60);
}

TEST_F(OverviewTest, TheWheelZoomsWhatIsShown)
{
    showMinutes(20, 40);
    QWheelEvent event(stripAt(30), graphView().mapToGlobal(stripAt(30)), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&graphView(), &event);
    expectShown(22, 38);
}

TEST_F(OverviewTest, AHiddenLineLeavesItToo)
{
    const auto picture = [this] { return graphView().imageOfLayer().copy(room().toRect()); };
    const QImage before = picture();
    trend().graph()->allPlots()[0]->setHidden(true);
    dynamic_cast<plotix::Overview&>(part("overview")).linesChanged();
    EXPECT_NE(picture(), before);
}

TEST_F(OverviewTest, OnAPageItIsDrawnInLines)
{
    QByteArray page;
    QBuffer buffer(&page);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    QPainter painter(&writer);
    graphView().render(&painter);
    painter.end();
    EXPECT_FALSE(page.contains("/Subtype /Image"));
}

TEST_F(OverviewTest, AChoiceIsArchived)
{
    EXPECT_EQ(chosen("overview"), (QVariantMap{{"shown", true}}));
    EXPECT_TRUE(action("Overview of Everything Fetched")->isChecked());
}

}  // namespace
