#include "base/ReportableError.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/ShownTrend.h"
#include "hostapp/site/TrendRenderer.h"
#include "tests/hostapp/site/ServedTrendFixture.h"

namespace plotix {

namespace {

/// The site at work with its one trend, whose records are read.
class ShownViewsTest : public ServedTrendTest {
protected:
    ShownViewsTest() : working(site.document, module(), WorkingSite::Use::Elsewhere)
    {
        working.loadPlugIns();
        working.loadViews();
        working.waitForRecords();
    }
    KTVPlugInPtr trend(int row = 0) const { return working.sourceList().plugInAt(row); }
    int count() const { return int(working.sourceList().items().size()); }
    ShownView told() { return viewOf(trend(), *site.document); }

    static constexpr double kStart = 1'700'000'000;
    WorkingSite working;
};

TEST_F(ShownViewsTest, AViewNamesWhatIsShownAndNoFolder)
{
    const ShownView view = told();
    EXPECT_EQ(view.siteName, "Garden");
    EXPECT_EQ(view.siteFile, "garden.plotix");
    EXPECT_EQ(view.trend, "Day");
    EXPECT_EQ(view.agent, "Station");
    EXPECT_EQ(view.properties, (QStringList{"airTemperature", "pressure"}));
    ASSERT_TRUE(view.from && view.to);
    EXPECT_NEAR(view.from->seconds, kStart, 1);
}

TEST_F(ShownViewsTest, TheTrendThatIsStillThereIsMovedToTheSpan)
{
    ShownView view = told();
    view.from = Date{kStart + 3'600};
    view.to = Date{kStart + 7'200};
    EXPECT_EQ(working.showView(view), trend());
    EXPECT_EQ(count(), 1);
    working.waitForRecords();
    EXPECT_EQ(shownRange(trend().get()), std::pair(kStart + 3'600, kStart + 7'200));
}

TEST_F(ShownViewsTest, OneThatIsGoneIsMadeAnewWithItsChoices)
{
    ShownView view = told();
    view.trend = "Another Day";
    view.properties = QStringList{"pressure"};
    view.reading = {{"looks", QVariantMap{{"look", "paper"}}}};
    const KTVPlugInPtr made = working.showView(view);
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(titleOf(*made), "Another Day");
    EXPECT_EQ(plottedKeys(made.get()), view.properties);
    EXPECT_EQ(reading(made.get())->value("looks").toMap().value("look"), "paper");
}

TEST_F(ShownViewsTest, WhatTheSiteDoesNotHaveIsNamed)
{
    ShownView view = told();
    view.agent = "Cellar";
    EXPECT_THROW(working.showView(view), ReportableError);
    view = told();
    view.properties = QStringList{"humidity"};
    EXPECT_THROW(working.showView(view), ReportableError);
    EXPECT_EQ(count(), 1);
}

TEST_F(ShownViewsTest, ARenderedFigureTellsItsViewUnlessItIsNotTo)
{
    RenderRequest request;
    request.trend = {site.document, station, station->properties().objects(), Date{kStart}, Date{kStart + 600}, "Ten"};
    request.reading = {{"looks", QVariantMap{{"look", "paper"}}}};
    for (const auto format : {RenderRequest::Format::Png, RenderRequest::Format::Pdf, RenderRequest::Format::Svg}) {
        request.format = format;
        request.hasRecipe = true;
        const auto view = viewInFigure(TrendRenderer(module()).render(request));
        ASSERT_TRUE(view);
        EXPECT_EQ(view->agent, "Station");
        EXPECT_NEAR(view->to->seconds, kStart + 600, 1);
        EXPECT_EQ(view->reading.value("looks").toMap().value("look"), "paper");
        request.hasRecipe = false;
        EXPECT_FALSE(viewInFigure(TrendRenderer(module()).render(request)));
    }
}

}  // namespace

}  // namespace plotix
