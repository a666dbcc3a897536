#include "ToolbarFixture.h"

#include <QtCore/QDateTime>

namespace {

class ToolbarPlugIn : public ToolbarFixture {
protected:
    static double midnight(int daysFromToday)
    {
        return static_cast<double>(QDate::currentDate().addDays(daysFromToday).startOfDay().toSecsSinceEpoch());
    }
};

TEST_F(ToolbarPlugIn, NewOneOffersTheTitlePlotix)
{
    EXPECT_EQ(toolbar->lastUsedTitle(), "Plotix");
    EXPECT_EQ(toolbar->desiredTitle(), "Plotix");
}

TEST_F(ToolbarPlugIn, NewOneOpensInTheSiteWindow)
{
    EXPECT_FALSE(toolbar->openInSeparateWindow());
}

TEST_F(ToolbarPlugIn, NewOneHasNoRowsAndNoSheet)
{
    EXPECT_EQ(toolbar->selectableProperties(), nullptr);
    EXPECT_EQ(toolbar->configurationWindow(), nullptr);
}

TEST_F(ToolbarPlugIn, DatesBeginAtMidnightTodayAndTomorrow)
{
    EXPECT_EQ(dates().fromDateValue()->seconds, midnight(0));
    EXPECT_EQ(dates().toDateValue()->seconds, midnight(1));
}

TEST_F(ToolbarPlugIn, DatesHaveNoDelegate)
{
    toolbar->view();
    EXPECT_EQ(dates().delegate(), nullptr);
}

TEST_F(ToolbarPlugIn, WithoutAnAgentThereIsNone)
{
    EXPECT_EQ(KTVPlotixToolbarPlugIn::initWithAgent(nullptr, &window()), nullptr);
}

TEST_F(ToolbarPlugIn, ArchivesItsKeysAfterTheBases)
{
    EXPECT_EQ(archived().keys(), QStringList({"uniqueIdentifier", "title", "agent", "dataClusterViewController",
                                              "lastUsedTitle", "openInSeparateWindow"}));
}

TEST_F(ToolbarPlugIn, WindowChoiceAndTitleComeBack)
{
    toolbar->setOpenInSeparateWindow(true);
    fakehost::FakeArchive archive = archived();
    archive.setValue("lastUsedTitle", "Weather");
    const auto again = decoded(archive);
    EXPECT_TRUE(again->openInSeparateWindow());
    EXPECT_EQ(again->lastUsedTitle(), "Weather");
    EXPECT_EQ(again->desiredTitle(), "Weather");
}

// The archived dates would offer the day on which the site was closed; every opening begins with today instead.
TEST_F(ToolbarPlugIn, DecodedDatesAreThrownAway)
{
    dates().setFromDateValue(plotix::Date{1'000});
    dates().setToDateValue(plotix::Date{2'000});
    const fakehost::FakeArchive archive = archived();
    ASSERT_EQ(archive.object("dataClusterViewController")->value("fromDate").toDouble(), 1'000);
    const auto again = decoded(archive);
    EXPECT_EQ(again->dataClusterViewController()->fromDateValue()->seconds, midnight(0));
    EXPECT_EQ(again->dataClusterViewController()->toDateValue()->seconds, midnight(1));
}

TEST_F(ToolbarPlugIn, MissingTitleIsAnEmptyOne)
{
    fakehost::FakeArchive archive = archived();
    archive.remove("lastUsedTitle");
    toolbar = decoded(archive);
    toolbar->view();
    EXPECT_EQ(toolbar->desiredTitle(), "");
    EXPECT_EQ(toolbar->titleField()->text(), "");
}

TEST_F(ToolbarPlugIn, EmptyArchiveDecodesWithFallbacks)
{
    const auto again = decoded(fakehost::FakeArchive());
    ASSERT_NE(again, nullptr);
    EXPECT_FALSE(again->openInSeparateWindow());
    EXPECT_EQ(again->dataClusterViewController()->fromDateValue()->seconds, midnight(0));
}

// The title offered next time is the one the plug-in was made with, not the one typed last.
TEST_F(ToolbarPlugIn, TypedTitleIsNotKept)
{
    showSheet();
    toolbar->titleField()->setText("Typed");
    done();
    EXPECT_EQ(toolbar->lastUsedTitle(), "Plotix");
    EXPECT_EQ(decoded(archived())->desiredTitle(), "Plotix");
}

TEST_F(ToolbarPlugIn, TicksAreNotArchived)
{
    makeTrend({0});
    EXPECT_EQ(decoded(archived())->selectableProperties(), nullptr);
}

TEST_F(ToolbarPlugIn, NameAndTextAreTheTrendViews)
{
    EXPECT_EQ(toolbar->name(), "Plotix");
    EXPECT_EQ(toolbar->textDescription(), "Plotix provides provides plotting, trending, and analytics services.");
}

// Unlike the trend view, whose group is "Plotix".
TEST_F(ToolbarPlugIn, HasNoGroupNoXmlAndNoJson)
{
    EXPECT_EQ(toolbar->group(), std::nullopt);
    EXPECT_EQ(toolbar->xmlDescription(), std::nullopt);
    EXPECT_EQ(toolbar->jsonDescription(), std::nullopt);
}

TEST_F(ToolbarPlugIn, HtmlDescriptionNamesTheBundlesVersions)
{
    EXPECT_EQ(toolbar->htmlDescription(),
              "<table><tr><th colspan=2 align=center>Plotix Plug-In - Version 1.0 (1)</th></tr></table>");
}

TEST_F(ToolbarPlugIn, IconIsTheBundles)
{
    const QImage picture(QStringLiteral(":/PlotixPlugIn/icon.png"));
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(toolbar->icon().pixmap(picture.size()).toImage().convertToFormat(picture.format()), picture);
}

TEST_F(ToolbarPlugIn, ToolbarItemIsNamedAfterTheBundle)
{
    const std::unique_ptr<QAction> item(toolbar->toolbarItem());
    EXPECT_EQ(item->objectName(), toolbar->bundleIdentifier());
    EXPECT_FALSE(item->objectName().isEmpty());
    EXPECT_EQ(item->text(), "Plotix");
    EXPECT_FALSE(item->icon().isNull());
}

TEST_F(ToolbarPlugIn, ToolbarItemIsANewOneOnEveryCall)
{
    const std::unique_ptr<QAction> first(toolbar->toolbarItem()), second(toolbar->toolbarItem());
    EXPECT_NE(first, second);
}

TEST_F(ToolbarPlugIn, ToolbarItemOpensTheSheet)
{
    const std::unique_ptr<QAction> item(toolbar->toolbarItem());
    item->trigger();
    ASSERT_NE(toolbar->configurationWindow(), nullptr);
    EXPECT_TRUE(sheet().isVisible());
}

TEST_F(ToolbarPlugIn, ToolbarItemMayOutliveThePlugIn)
{
    const std::unique_ptr<QAction> item(toolbar->toolbarItem());
    toolbar.reset();
    item->trigger();
    EXPECT_EQ(trendCount(), 0U);
}

TEST_F(ToolbarPlugIn, ReleasesItsViewAndItsSheet)
{
    showSheet();
    const QPointer<QWidget> view = toolbar->view();
    const QPointer<QDialog> shown = toolbar->configurationWindow();
    toolbar.reset();
    EXPECT_TRUE(view.isNull());
    EXPECT_TRUE(shown.isNull());
}

}  // namespace
