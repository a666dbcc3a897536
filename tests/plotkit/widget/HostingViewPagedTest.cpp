#include "tests/plotkit/model/PagedSeriesMaking.h"
#include "tests/plotkit/widget/HostingViewFixture.h"

// A view of a paged series shows it at once, and exactly soon after.

namespace {

using namespace plotkit_test;

class HostingViewPagedTest : public HostingViewTest {
protected:
    void SetUp() override
    {
        HostingViewTest::SetUp();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
        QCoreApplication::processEvents();
        for (int second = 0; second < 3'000'000; ++second)
            twin.add(second, second % 100);
        twin.cutRuns(20'000, 1);  // longer than a pixel shows
        controllers.push_back(std::make_shared<CPTSeriesController>(twin.paged()));
        auto plot = std::make_shared<CPTScatterPlot>();
        plot->setDelegate(&plotDelegate);
        plot->bind(CPTScatterPlotBindingXValues, controllers.back(), QStringLiteral("arrangedObjects.x"));
        plot->bind(CPTScatterPlotBindingYValues, controllers.back(), QStringLiteral("arrangedObjects.y"));
        graph->addPlot(plot);
        show({200'000, 1'900'000}, {-20, 140});
    }

    void paint() { QCoreApplication::sendPostedEvents(); }
    bool settles()
    {
        return QTest::qWaitFor([this] { return !view->isProvisional(); }, 20'000);
    }

    TwinSeries twin;
};

TEST_F(HostingViewPagedTest, SettlesByItself)
{
    paint();
    EXPECT_TRUE(view->isProvisional());
    EXPECT_TRUE(settles());
}

TEST_F(HostingViewPagedTest, EachPaintIsReported)
{
    paint();
    EXPECT_EQ(plotDelegate.drawn.size(), 1);
    ASSERT_TRUE(settles());
    EXPECT_EQ(plotDelegate.drawn.size(), 2);
}

TEST_F(HostingViewPagedTest, APictureOfItIsExactAtAnyTime)
{
    paint();
    ASSERT_TRUE(view->isProvisional());
    const QImage early = view->grab().toImage();
    ASSERT_TRUE(settles());
    EXPECT_EQ(view->grab().toImage(), early);
}

TEST_F(HostingViewPagedTest, SettlesThoughAPictureWasTaken)
{
    paint();
    view->grab();
    EXPECT_TRUE(view->isProvisional());
    EXPECT_TRUE(settles());
}

TEST_F(HostingViewPagedTest, CanGoWhileItsPagesCome)
{
    paint();
    ASSERT_TRUE(view->isProvisional());
    delete std::exchange(view, nullptr);
    QCoreApplication::processEvents();
}

TEST_F(HostingViewPagedTest, CanBeHiddenWhileItsPagesComeAndSettlesLater)
{
    paint();
    parent.hide();
    parent.show();
    paint();
    EXPECT_TRUE(settles());
}

TEST_F(HostingViewPagedTest, SettlesAfterItWasHiddenThoughNothingElsePaintsIt)
{
    paint();
    ASSERT_TRUE(view->isProvisional());
    QHideEvent hidden;
    QCoreApplication::sendEvent(view, &hidden);
    QShowEvent shown;
    QCoreApplication::sendEvent(view, &shown);
    EXPECT_TRUE(settles());
}

}  // namespace
