#include "tests/plotkit/widget/HostingViewFixture.h"

namespace {

/// What the view shows, and what it does with the graph it hosts.
TEST_F(HostingViewTest, WithoutAGraphEventsAreSafe)
{
    view->setHostedGraph(nullptr);
    turnWheel({120, 120}, {0, 120});
    drag({{100, 100}, {50, 50}});
    QTest::keyClick(view, Qt::Key_Home);
    EXPECT_FALSE(view->grab().isNull());
}

TEST_F(HostingViewTest, WithoutAGraphPicturesHoldTheEmptyFrameThatIsShown)
{
    view->setHostedGraph(nullptr);
    const QImage picture = view->imageOfLayer();
    EXPECT_EQ(picture.size(), view->size());
    EXPECT_EQ(picture.pixelColor(120, 120), view->grab().toImage().pixelColor(120, 120));
    EXPECT_TRUE(view->dataForPDFRepresentationOfLayer().startsWith("%PDF"));
}

TEST_F(HostingViewTest, EveryPaintReportsEachVisiblePlotOnce)
{
    addPlot({0, 200}, {0, 200});
    addPlot({0, 200}, {200, 0});
    addPlot({0, 200}, {50, 50})->setHidden(true);
    plotDelegate.drawn.clear();
    view->grab();
    EXPECT_EQ(plotDelegate.drawn, (QStringList{"1", "2"}));
}

TEST_F(HostingViewTest, ChangedRangeIsPaintedAndReportedOnce)
{
    addPlot({0, 200}, {0, 200});
    QCoreApplication::processEvents();
    plotDelegate.drawn.clear();
    show({10, 200}, {10, 200});
    QCoreApplication::processEvents();
    EXPECT_EQ(plotDelegate.drawn, QStringList{"1"});
}

TEST_F(HostingViewTest, ViewAnywhereInItsWindowShowsTheSamePicture)
{
    addPlot({0, 200}, {0, 200})->setDataLineStyle({.width = 5, .color = Qt::black});
    const QImage picture = view->imageOfLayer();
    parent.resize(400, 400);
    view->move(33, 57);
    const QImage window = parent.grab().toImage().copy(33, 57, 240, 240);
    for (int place = 30; place < 210; ++place) {
        const QColor expected = picture.pixelColor(place, 240 - place);
        EXPECT_TRUE(expected.alpha() < 255 || window.pixelColor(place, 240 - place) == expected) << place;
    }
    EXPECT_EQ(picture.pixelColor(120, 120), QColor(Qt::black));
}

TEST_F(HostingViewTest, PartOfTheViewPaintsAsTheWholeDoes)
{
    addPlot({0, 200}, {0, 200});
    const QImage whole = view->grab().toImage();
    EXPECT_EQ(view->grab(QRect(50, 60, 70, 80)).toImage(), whole.copy(50, 60, 70, 80));
}

TEST_F(HostingViewTest, ImagesAndPdfReport)
{
    addPlot({0, 200}, {0, 200});
    plotDelegate.drawn.clear();
    EXPECT_EQ(view->imageOfLayer(2).size(), QSize(480, 480));
    EXPECT_TRUE(view->dataForPDFRepresentationOfLayer().startsWith("%PDF"));
    EXPECT_EQ(plotDelegate.drawn, (QStringList{"1", "1"}));
}

TEST_F(HostingViewTest, ViewOfSizeZeroDrawsNothing)
{
    view->resize(0, 0);
    EXPECT_TRUE(view->imageOfLayer().isNull());
    EXPECT_TRUE(view->dataForPDFRepresentationOfLayer().isEmpty());
}

TEST_F(HostingViewTest, GraphFillsTheView)
{
    EXPECT_EQ(graph->bounds(), QRectF(0, 0, 240, 240));
    view->resize(100, 90);
    EXPECT_EQ(graph->bounds(), QRectF(0, 0, 100, 90));
}

TEST_F(HostingViewTest, GraphMayOutliveTheView)
{
    delete view;
    graph->setNeedsDisplay();
    show({5, 6}, {7, 8});
    expectRanges({5, 6}, {7, 8});
}

TEST_F(HostingViewTest, ViewKeepsTheGraphItShows)
{
    const std::weak_ptr<CPTXYGraph> weak = graph;
    graph.reset();
    EXPECT_FALSE(weak.expired());
    EXPECT_FALSE(view->grab().isNull());
    view->setHostedGraph(nullptr);
    EXPECT_TRUE(weak.expired());
}

TEST_F(HostingViewTest, TakesFocusAndHasAName)
{
    EXPECT_EQ(view->focusPolicy(), Qt::StrongFocus);
    EXPECT_TRUE(view->acceptsFirstResponder());
    EXPECT_FALSE(view->accessibleName().isEmpty());
}

TEST_F(HostingViewTest, FocusShowsAtTheEdgeOfTheView)
{
    const QImage before = view->grab().toImage();
    parent.activateWindow();
    view->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([this] { return view->hasFocus(); }));
    EXPECT_NE(view->grab().toImage().pixel(120, 0), before.pixel(120, 0));
}

TEST_F(HostingViewTest, EmptyViewShowsADarkFrame)
{
    view->setHostedGraph(nullptr);
    const QColor middle = view->grab().toImage().pixelColor(120, 120);
    EXPECT_LT(middle.lightness(), 90);
    EXPECT_EQ(middle.alpha(), 255);
}

}  // namespace
