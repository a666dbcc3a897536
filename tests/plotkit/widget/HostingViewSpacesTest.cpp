#include "tests/plotkit/render/CrossLayer.h"
#include "tests/plotkit/widget/HostingViewFixture.h"

namespace {

/// A second plot space with the x of the first and y from 1000 to 3000, ten values a point; and layers above it all.
class HostingViewSpacesTest : public HostingViewTest {
protected:
    void SetUp() override
    {
        HostingViewTest::SetUp();
        second->followXOf(graph->allPlotSpaces().front());
        second->setYRange({1000, 2000});
        second->setAllowsUserInteraction(true);
        graph->addPlotSpace(second);
    }
    void expectSecond(const CPTPlotRange& y)
    {
        EXPECT_NEAR(second->yRange().location, y.location, 1e-9);
        EXPECT_NEAR(second->yRange().length, y.length, 1e-9);
        EXPECT_EQ(second->xRange(), space().xRange());
    }
    void paintWhatAwaitsIt() { QCoreApplication::processEvents(); }

    CPTXYPlotSpacePtr second = std::make_shared<CPTXYPlotSpace>();
    FreezingDelegate secondDelegate;
    std::shared_ptr<CrossLayer> layer = std::make_shared<CrossLayer>();
};

TEST_F(HostingViewSpacesTest, ADragMovesEverySpaceByTheSamePoints)
{
    drag({{100, 100}, {90, 120}});
    expectRanges({10, 200}, {20, 200});
    expectSecond({1200, 2000});
}

TEST_F(HostingViewSpacesTest, TheWheelZoomsEverySpaceAboutThePointer)
{
    turnWheel({120, 120}, {0, 120});
    expectRanges({20, 160}, {20, 160});
    expectSecond({1200, 1600});
}

TEST_F(HostingViewSpacesTest, KeysPanEverySpaceByATenth)
{
    QTest::keyClick(view, Qt::Key_Up);
    expectRanges({0, 200}, {20, 200});
    expectSecond({1200, 2000});
}

TEST_F(HostingViewSpacesTest, HomeFitsEachSpaceToItsOwnPlots)
{
    addPlot({0, 100}, {5, 25});
    addPlot({50, 150}, {7000, 9000})->setPlotSpace(second);
    QTest::keyClick(view, Qt::Key_Home);
    expectRanges({0, 100}, {5, 20});
    expectSecond({7000, 2000});
}

TEST_F(HostingViewSpacesTest, ASpaceWithoutInteractionStays)
{
    second->setAllowsUserInteraction(false);
    drag({{100, 100}, {90, 120}});
    expectRanges({10, 200}, {20, 200});
    expectSecond({1000, 2000});
    space().setAllowsUserInteraction(false);
    drag({{100, 100}, {90, 120}});
    EXPECT_EQ(parent.presses, 1);
}

TEST_F(HostingViewSpacesTest, EachDelegateDecidesForItsOwnSpace)
{
    space().setDelegate(&delegate);
    second->setDelegate(&secondDelegate);
    secondDelegate.freezesY = true;
    drag({{100, 100}, {90, 120}});
    expectRanges({10, 200}, {20, 200});
    expectSecond({1000, 2000});
    EXPECT_EQ(delegate.log, (QStringList{"x", "y", "up"}));
    EXPECT_EQ(secondDelegate.log, (QStringList{"y", "up"}));
}

TEST_F(HostingViewSpacesTest, ASpaceMayLeaveTheGraphDuringADrag)
{
    QTest::mousePress(view, Qt::LeftButton, {}, {100, 100});
    graph->removePlotSpace(second);
    second.reset();
    moveOn({{90, 120}});
    QTest::mouseRelease(view, Qt::LeftButton, {}, {90, 120});
    expectRanges({10, 200}, {20, 200});
}

TEST_F(HostingViewSpacesTest, ALayerThatMovesRepaintsNoPlotAndReportsNone)
{
    const auto formatter = std::make_shared<CountingFormatter>();
    graph->axisSet()->xAxis()->setLabelFormatter(formatter);
    addPlot({0, 200}, {0, 200});
    graph->addLayer(layer);
    paintWhatAwaitsIt();
    plotDelegate.drawn.clear();
    formatter->written = layer->drawings = 0;
    layer->setNeedsDisplay();
    paintWhatAwaitsIt();
    EXPECT_EQ(layer->drawings, 1);
    EXPECT_EQ(formatter->written, 0);
    EXPECT_TRUE(plotDelegate.drawn.isEmpty());
}

TEST_F(HostingViewSpacesTest, AChangeOfTheGraphBesideALayersPaintsEverything)
{
    addPlot({0, 200}, {0, 200});
    graph->addLayer(layer);
    paintWhatAwaitsIt();
    plotDelegate.drawn.clear();
    show({10, 200}, {10, 200});
    layer->setNeedsDisplay();
    paintWhatAwaitsIt();
    EXPECT_EQ(plotDelegate.drawn, QStringList{"1"});
}

TEST_F(HostingViewSpacesTest, ARepaintNobodyAskedForReportsAsEver)
{
    addPlot({0, 200}, {0, 200});
    graph->addLayer(layer);
    paintWhatAwaitsIt();
    plotDelegate.drawn.clear();
    view->grab();
    EXPECT_EQ(plotDelegate.drawn, QStringList{"1"});
    view->hide();
    layer->setNeedsDisplay();
    view->show();
    paintWhatAwaitsIt();
    EXPECT_EQ(plotDelegate.drawn, (QStringList{"1", "1"}));
}

TEST_F(HostingViewSpacesTest, AViewWithLayersShowsThePictureItHandsOut)
{
    addPlot({0, 200}, {0, 200})->setDataLineStyle({.width = 5, .color = Qt::black});
    graph->addLayer(layer);
    const QImage picture = view->imageOfLayer();
    const QImage shown = view->grab().toImage();
    EXPECT_EQ(picture.pixelColor(70, 120), QColor(Qt::magenta));
    for (int place = 30; place < 210; ++place) {
        const QColor expected = picture.pixelColor(place, 240 - place);
        EXPECT_TRUE(expected.alpha() < 255 || shown.pixelColor(place, 240 - place) == expected) << place;
    }
}

/// The second space in the lower half; only time moves with the first one.
class HostingViewLanesTest : public HostingViewSpacesTest {
protected:
    void SetUp() override
    {
        HostingViewSpacesTest::SetUp();
        space().setMovableRanges(CPTMovableRanges::OnlyX);
        second->setMovableRanges(CPTMovableRanges::OnlyY);
        second->setStrip({.top = 0.5, .bottom = 1});
    }
    int middleOf(double share) { return int(view->geometryShown(*graph).plotArea.top() + share * plotHeight()); }
    int plotHeight() { return int(view->geometryShown(*graph).plotArea.height()); }
};

TEST_F(HostingViewLanesTest, ADragInALaneMovesItsValuesAndTheTimeOfAll)
{
    drag({{100, middleOf(0.75)}, {90, middleOf(0.75) + plotHeight() / 4}});
    expectRanges({10, 200}, {0, 200});
    expectSecond({2000, 2000});
}

TEST_F(HostingViewLanesTest, ADragElsewhereLeavesTheLaneAsItIs)
{
    drag({{100, middleOf(0.25)}, {90, middleOf(0.25) + 20}});
    expectRanges({10, 200}, {0, 200});
    expectSecond({1000, 2000});
}

TEST_F(HostingViewLanesTest, TheWheelZoomsTheLaneUnderThePointer)
{
    turnWheel(QPointF(120, middleOf(0.25)), {0, 120});
    expectSecond({1000, 2000});
    turnWheel(QPointF(120, middleOf(0.75)), {0, 120});
    EXPECT_NEAR(second->yRange().length, 1600, 1e-9);
}

TEST_F(HostingViewLanesTest, HomeFitsTheTimeToThePlotsOfTheLanes)
{
    addPlot({50, 150}, {7000, 9000})->setPlotSpace(second);
    QTest::keyClick(view, Qt::Key_Home);
    EXPECT_EQ(space().xRange(), (CPTPlotRange{50, 100}));
    expectSecond({7000, 2000});
}

}  // namespace
