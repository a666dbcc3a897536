#include "hostapp/site/HeadlessSite.h"

#include "hostapp/core/Defaults.h"
#include "hostapp/document/ArchiveManager.h"
#include "hostapp/site/PlugInWebSite.h"
#include "tests/hostapp/site/ServedTrendFixture.h"

namespace {

class HeadlessSiteTest : public plotix::ServedTrendTest {
protected:
    HeadlessSiteTest() : headless(site.document, module()) { headless.load(); }
    plotix::HeadlessSite headless;
};

TEST_F(HeadlessSiteTest, ItsViewsAreLoadedAtASensibleSizeWithTheirRecords)
{
    const auto items = headless.itemsWithRepresentedObjectsOfClass(QStringLiteral("KTVPlotixPlugIn"));
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items.front()->title(), QStringLiteral("Day"));
    EXPECT_EQ(items.front()->representedObject()->view()->size(), plotix::kUsualGraphSize);
    EXPECT_EQ(station->siteArchiveManager()->pendingFetches(), 0);
}

TEST_F(HeadlessSiteTest, ThereIsOneToAnswerForIt)
{
    ASSERT_EQ(headless.toolbarPlugIns().size(), 1u);
    EXPECT_TRUE(headless.toolbarPlugIns().front()->inherits("KTVPlotixToolbarPlugIn"));
}

TEST_F(HeadlessSiteTest, TheSiteStaysAsItIsStored)
{
    const auto before = site.document->archivedPlugIns();
    {
        plotix::HeadlessSite another(site.document, module());
        another.load();
    }
    const auto after = site.document->archivedPlugIns();
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after.front().state, before.front().state);
}

TEST_F(HeadlessSiteTest, ARequestsViewsAreThoseOfTheSourceList)
{
    plotix::PlugInWebSite web(headless);
    std::vector<plotix::WebView> views;
    meanwhile([&] { views = web.views(); });
    ASSERT_EQ(views.size(), 1u);
    EXPECT_EQ(views.front().title, QStringLiteral("Day"));
}

}  // namespace
