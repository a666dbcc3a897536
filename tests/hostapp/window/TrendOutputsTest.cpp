#include "hostapp/window/TrendOutputs.h"

#include "tests/hostapp/window/SiteWindowFixture.h"

#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>

namespace {

using TrendOutputsTest = SiteWindowFixture;

TEST_F(TrendOutputsTest, AnExportBeforeTheFirstAnswerSaysThatThereIsNoPicture)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    window->actions().exportPNG->trigger();
    EXPECT_EQ(selectedStub().log(), QStringList{"exportToPNG"});
    selectedStub().loseGraph();
    window->actions().exportPNG->trigger();
    EXPECT_EQ(selectedStub().log().size(), 1);
    ASSERT_NE(shownBox(), nullptr);
    EXPECT_EQ(shownBox()->text(), QStringLiteral("There is no picture to export"));
}

TEST_F(TrendOutputsTest, ALinkToTheTrendInFrontGoesIntoTheClipboard)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    window->actions().copyLink->trigger();
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(QStringLiteral("plotix:garden.plotix?trend=Week&agent=")));
}

TEST_F(TrendOutputsTest, ALinkToTheMarkedStretchNamesItsSpan)
{
    openWindow();
    const KTVPlugInPtr trend = addTrend(QStringLiteral("Week"));
    static_cast<StubTrend&>(*trend).setReading(
        {{"marks", QVariantMap{{"a", 1'400'000'060.0}, {"b", 1'400'000'000.0}}}});
    window->actions().copyMarkedLink->trigger();
    EXPECT_TRUE(QApplication::clipboard()->text().endsWith(
        QStringLiteral("&from=2014-05-13T16:53:20.000Z&to=2014-05-13T16:54:20.000Z")))
        << QApplication::clipboard()->text().toStdString();
}

TEST_F(TrendOutputsTest, APictureOfTheTrendInFrontGoesIntoTheClipboard)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    window->actions().copyPicture->trigger();
    EXPECT_EQ(QApplication::clipboard()->image().size(), plotix::kUsualGraphSize * 2);
}

}  // namespace
