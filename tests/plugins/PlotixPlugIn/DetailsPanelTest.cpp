#include "tests/plugins/PlotixPlugIn/PropertyTableFixture.h"

#include <QtCore/QParallelAnimationGroup>
#include <QtWidgets/QCheckBox>

namespace {

class DetailsPanelTest : public PropertyTableFixture {
protected:
    static constexpr int kShift = 162;  ///< 12 and a panel of 150

    void openTrend()
    {
        open({"airTemperature"});
        rememberFrames();
    }
    /// A trend view read from an archive that says the panel is closed.
    void openClosed()
    {
        fakehost::FakeArchive archive;
        fakehost::FakeEncoder encoder(archive);
        open({"airTemperature"});
        trend->encodeWithCoder(encoder);
        archive.setValue("propertyDetailsShowing", false);
        auto decoder = host.decoder(archive);
        trend = KTVPlotixPlugIn::initWithCoder(decoder);
        trend->view();
        rememberFrames();
    }
    void rememberFrames()
    {
        panel = trend->propertyDetailsView()->geometry();
        button = trend->propertyDetailsDisclosureButton()->geometry();
        label = trend->propertyDetailsTextField()->geometry();
        graph = trend->hostView()->geometry();
    }
    QRect dates() { return trend->dataClusterHostView()->geometry(); }
    void finish()
    {
        QTest::qWait(50);
        ASSERT_TRUE(QTest::qWaitFor([this] {
            return !trend->findChild<QParallelAnimationGroup*>() ||
                   trend->findChild<QParallelAnimationGroup*>()->state() == QAbstractAnimation::Stopped;
        }));
    }
    /// The frames remembered, moved up by `distance`.
    void expectMoved(int distance)
    {
        EXPECT_EQ(trend->propertyDetailsDisclosureButton()->geometry(), button.translated(0, -distance));
        EXPECT_EQ(trend->propertyDetailsTextField()->geometry(), label.translated(0, -distance));
        EXPECT_EQ(trend->hostView()->geometry(), graph.adjusted(0, 0, 0, -distance));
        EXPECT_EQ(trend->propertyDetailsView()->geometry(), panel);
    }
    bool isPanelShown() const { return !trend->propertyDetailsView()->isHidden(); }

    QRect panel, button, label, graph;
};

TEST_F(DetailsPanelTest, OpensWithTheLayoutOfTheInterfaceDescription)
{
    openTrend();
    EXPECT_TRUE(trend->propertyDetailsShowing());
    EXPECT_TRUE(trend->propertyDetailsDisclosureButton()->isChecked());
    EXPECT_TRUE(isPanelShown());
    EXPECT_EQ(panel.height(), 150);
    EXPECT_EQ(trend->findChild<QParallelAnimationGroup*>(), nullptr);
}

TEST_F(DetailsPanelTest, HidingMovesButtonAndLabelDownAndGrowsTheGraph)
{
    openTrend();
    trend->propertyDetailsDisclosureButton()->click();
    finish();
    expectMoved(-kShift);
    EXPECT_FALSE(isPanelShown());
}

TEST_F(DetailsPanelTest, ShowingAfterHidingGivesEveryFrameBack)
{
    openTrend();
    trend->propertyDetailsDisclosureButton()->click();
    finish();
    trend->propertyDetailsDisclosureButton()->click();
    finish();
    expectMoved(0);
    EXPECT_TRUE(isPanelShown());
}

TEST_F(DetailsPanelTest, TheAnimationTakesAQuarterOfASecondAndStartsFromThePresentFrames)
{
    openTrend();
    trend->hidePropertyDetailsView();
    const auto* animation = trend->findChild<QParallelAnimationGroup*>();
    ASSERT_NE(animation, nullptr);
    EXPECT_EQ(animation->state(), QAbstractAnimation::Running);
    EXPECT_EQ(animation->totalDuration(), 250);
    EXPECT_EQ(animation->animationCount(), 4);
    expectMoved(0);
    finish();
}

// The table's white fades into the darker background of the view.
TEST_F(DetailsPanelTest, ThePanelFadesOverWhatLiesBehindIt)
{
    openTrend();
    show();
    trend->propertyDetailsView()->parentWidget()->setStyleSheet("PropertyDragDropView { background: black; }");
    const QPoint empty = panel.bottomRight() - QPoint(20, 20);
    const int shown = trend->view()->grab().toImage().pixelColor(empty).lightness();
    trend->hidePropertyDetailsView();
    auto* animation = trend->findChild<QParallelAnimationGroup*>();
    animation->setCurrentTime(125);
    trend->hostView()->hide();
    const int halfway = trend->view()->grab().toImage().pixelColor(empty).lightness();
    EXPECT_LT(halfway, shown);
    animation->setCurrentTime(200);
    EXPECT_LT(trend->view()->grab().toImage().pixelColor(empty).lightness(), halfway);
    finish();
}

TEST_F(DetailsPanelTest, TheGraphsUpperEdgeStaysThroughoutTheAnimation)
{
    openTrend();
    trend->hidePropertyDetailsView();
    auto* animation = trend->findChild<QParallelAnimationGroup*>();
    for (int time = 0; time < 250; time += 25) {
        animation->setCurrentTime(time);
        EXPECT_EQ(trend->hostView()->geometry().top(), graph.top());
    }
    finish();
}

TEST_F(DetailsPanelTest, TheFlagIsWrittenBeforeTheAnimationStarts)
{
    openTrend();
    trend->propertyDetailsDisclosureButton()->click();
    EXPECT_FALSE(trend->propertyDetailsShowing());
    expectMoved(0);
    finish();
}

// No record is kept of whether the panel is shown.
TEST_F(DetailsPanelTest, ShowingTwiceShiftsTwice)
{
    openTrend();
    trend->showPropertyDetailsView();
    finish();
    trend->showPropertyDetailsView();
    finish();
    expectMoved(2 * kShift);
    EXPECT_TRUE(trend->propertyDetailsShowing());
}

TEST_F(DetailsPanelTest, TogglingDuringTheAnimationEndsWhereItBegan)
{
    openTrend();
    trend->propertyDetailsDisclosureButton()->click();
    QTest::qWait(80);
    trend->propertyDetailsDisclosureButton()->click();
    finish();
    expectMoved(0);
    EXPECT_TRUE(isPanelShown());
}

TEST_F(DetailsPanelTest, AClosedViewStartsFromTheInterfaceDescriptionAndHidesWithTheAnimation)
{
    openTrend();
    const QRect openGraph = graph;
    const QRect openButton = button;
    openClosed();
    EXPECT_FALSE(trend->propertyDetailsShowing());
    EXPECT_FALSE(trend->propertyDetailsDisclosureButton()->isChecked());
    EXPECT_EQ(graph, openGraph);
    EXPECT_EQ(button, openButton);
    ASSERT_NE(trend->findChild<QParallelAnimationGroup*>(), nullptr);
    finish();
    expectMoved(-kShift);
    EXPECT_FALSE(isPanelShown());
}

TEST_F(DetailsPanelTest, AResizeIsFollowedOpenAndClosed)
{
    openTrend();
    show();
    trend->view()->resize(trend->view()->size() + QSize(100, 50));
    EXPECT_EQ(trend->hostView()->geometry(), graph.adjusted(0, 0, 100, 50));
    trend->propertyDetailsDisclosureButton()->click();
    finish();
    EXPECT_EQ(trend->hostView()->geometry(), graph.adjusted(0, 0, 100, 50 + kShift));
    trend->view()->resize(trend->view()->size() - QSize(100, 50));
    EXPECT_EQ(trend->hostView()->geometry(), graph.adjusted(0, 0, 0, kShift));
    EXPECT_EQ(trend->propertyDetailsDisclosureButton()->geometry(), button.translated(0, kShift));
    trend->propertyDetailsDisclosureButton()->click();
    finish();
    expectMoved(0);
}

TEST_F(DetailsPanelTest, AResizeBeforeTheFirstShowIsFollowed)
{
    openTrend();
    trend->view()->resize(trend->view()->size() + QSize(100, 50));
    show();
    EXPECT_EQ(trend->hostView()->geometry(), graph.adjusted(0, 0, 100, 50));
    EXPECT_EQ(trend->propertyDetailsView()->geometry(), panel.adjusted(0, 50, 100, 50));
}

TEST_F(DetailsPanelTest, AResizeDuringTheAnimationMovesItsEnd)
{
    openTrend();
    show();
    trend->hidePropertyDetailsView();
    trend->view()->resize(trend->view()->size() + QSize(100, 50));
    finish();
    EXPECT_EQ(trend->hostView()->geometry(), graph.adjusted(0, 0, 100, 50 + kShift));
    EXPECT_EQ(trend->propertyDetailsDisclosureButton()->geometry(), button.translated(0, 50 + kShift));
}

TEST_F(DetailsPanelTest, AGraphMovedBySomeoneElseComesBackAtTheNextResize)
{
    openTrend();
    show();
    trend->hostView()->setGeometry(0, 0, 1440, 696);
    trend->view()->resize(trend->view()->size() + QSize(10, 10));
    EXPECT_EQ(trend->hostView()->geometry(), graph.adjusted(0, 0, 10, 10));
}

TEST_F(DetailsPanelTest, TheMixedStateIsStoredAsTrueAndHides)
{
    openTrend();
    QCheckBox button3;
    button3.setTristate(true);
    button3.setCheckState(Qt::PartiallyChecked);
    trend->propertyDetailsDisclosureButtonAction(&button3);
    EXPECT_TRUE(trend->propertyDetailsShowing());
    finish();
    EXPECT_FALSE(isPanelShown());
}

TEST_F(DetailsPanelTest, MissingViewsAreAnimatedAsNothing)
{
    openTrend();
    delete trend->propertyDetailsView();
    trend->hidePropertyDetailsView();
    finish();
    EXPECT_EQ(trend->hostView()->geometry(), graph.adjusted(0, 0, 0, 12));
    delete trend->view();
    trend->showPropertyDetailsView();
    finish();
}

TEST_F(DetailsPanelTest, TheTrendViewMayGoDuringTheAnimation)
{
    openTrend();
    trend->hidePropertyDetailsView();
    trend.reset();
    QTest::qWait(300);
    EXPECT_EQ(trend, nullptr);
}

TEST_F(DetailsPanelTest, ANarrowViewWrapsTheDatesAndTheGraphMakesRoom)
{
    openTrend();
    const QRect wide = dates();
    trend->view()->resize(500, 640);
    trend->view()->show();
    QCoreApplication::processEvents();
    EXPECT_GT(dates().height(), wide.height());
    EXPECT_EQ(trend->hostView()->y() - graph.y(), dates().height() - wide.height());
    EXPECT_EQ(trend->hostView()->geometry().bottom(), graph.bottom());
    trend->view()->resize(960, 640);
    QCoreApplication::processEvents();
    EXPECT_EQ(dates(), wide);
    EXPECT_EQ(trend->hostView()->geometry(), graph);
}

TEST_F(DetailsPanelTest, TheDatesMayWrapDuringTheAnimation)
{
    openTrend();
    trend->view()->show();
    trend->hidePropertyDetailsView();
    trend->view()->resize(500, 640);
    finish();
    EXPECT_EQ(trend->hostView()->y() - graph.y(), dates().height() - 40);
    EXPECT_EQ(trend->hostView()->geometry().bottom(), graph.bottom() + kShift);
}

}  // namespace
