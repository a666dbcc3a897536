#include "hostapp/app/ProgramServices.h"

#include "base/ReportableError.h"
#include "hostapp/core/Coder.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/site/PlugInStore.h"
#include "storage/Database.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtCore/QFile>

#include <gmock/gmock.h>

#include <cmath>

using plotix::Composition;
using plotix::Date;
using plotix::RenderRequest;

namespace {

constexpr double kStart = 1'700'000'000;

/// The program's services over the real module and a scratch site with a day of records.
class ProgramServicesTest : public testing::Test {
protected:
    ProgramServicesTest()
        : composition(Composition::Audience::Nobody), services(composition), station(site.addStation())
    {
        recordManyMinutes(1440);
    }

    void recordManyMinutes(int count)
    {
        std::vector<double> times;
        for (int minute = 0; minute < count; ++minute)
            times.push_back(kStart + minute * 60.0);
        site.store(*station, times);
    }

    RenderRequest request(RenderRequest::Format format)
    {
        RenderRequest wanted;
        wanted.trend = {
            site.document,           station, station->properties().objects(), Date{kStart}, Date{kStart + 86'400},
            QStringLiteral("Garden")};
        wanted.size = {640, 320};
        wanted.format = format;
        return wanted;
    }

    /// Of what the site has by now.
    RenderRequest reopened()
    {
        const auto document = plotix::SiteDocument::open(site.document->path());
        RenderRequest wanted = request(RenderRequest::Format::Png);
        wanted.trend.document = document;
        wanted.trend.agent = document->agents().front();
        wanted.trend.properties = document->agents().front()->properties().objects();
        return wanted;
    }
    RenderRequest withLittleMemory()
    {
        qputenv("PLOTIX_MEMORY_BUDGET", "10 kB");
        RenderRequest wanted = reopened();
        qunsetenv("PLOTIX_MEMORY_BUDGET");
        return wanted;
    }

    ScratchSite site;
    Composition composition;
    plotix::ProgramServices services;
    std::shared_ptr<plotix::SiteAgent> station;
};

TEST_F(ProgramServicesTest, RendersAPngOfTheSizeAskedFor)
{
    const QImage image = QImage::fromData(services.render(request(RenderRequest::Format::Png)), "PNG");
    EXPECT_EQ(image.size(), QSize(640, 320));
}

TEST_F(ProgramServicesTest, RenderingTwiceGivesTheSameBytes)
{
    EXPECT_EQ(services.render(request(RenderRequest::Format::Png)),
              services.render(request(RenderRequest::Format::Png)));
}

TEST_F(ProgramServicesTest, APictureOfAViewStoresNoTrend)
{
    plotix::OpenRequest request;
    request.site = site.document->path();
    request.view = plotix::ShownView{.siteName = "Garden",
                                     .siteFile = "garden.plotix",
                                     .trend = "Gone",
                                     .agent = "Station",
                                     .properties = {"airTemperature"},
                                     .from = Date{kStart},
                                     .to = Date{kStart + 600}};
    request.screenshot = site.file("window.png");
    const QSize size = request.screenshotSize;
    EXPECT_EQ(services.open(request), 0);
    EXPECT_EQ(QImage(site.file("window.png")).size(), size);
    for (const plotix::ArchivedPlugIn& stored : plotix::SiteDocument::open(request.site)->archivedPlugIns())
        EXPECT_NE(stored.className, "KTVPlotixPlugIn");
}

TEST_F(ProgramServicesTest, RendersAPdf)
{
    EXPECT_TRUE(services.render(request(RenderRequest::Format::Pdf)).startsWith("%PDF"));
}

TEST_F(ProgramServicesTest, BareGraphComesThroughTheClassOperation)
{
    RenderRequest bare = request(RenderRequest::Format::Png);
    bare.bare = true;
    EXPECT_EQ(QImage::fromData(services.render(bare), "PNG").size(), QSize(640, 320));
    EXPECT_NE(services.render(bare), services.render(request(RenderRequest::Format::Png)));
}

TEST_F(ProgramServicesTest, BareGraphWithoutPropertiesIsAnErrorAndNoEndlessWait)
{
    RenderRequest bare = request(RenderRequest::Format::Png);
    bare.bare = true;
    bare.trend.properties.clear();
    EXPECT_THROW(services.render(bare), plotix::ReportableError);
}

TEST_F(ProgramServicesTest, RangeWithoutRecordsIsAnError)
{
    RenderRequest empty = request(RenderRequest::Format::Png);
    empty.trend.from = Date{0};
    empty.trend.to = Date{60};
    EXPECT_THROW(services.render(empty), plotix::ReportableError);
}

TEST_F(ProgramServicesTest, APictureOfRecordsThatCannotBeReadIsAnError)
{
    recordManyMinutes(60'000);
    plotix::Database(site.document->path(), plotix::siteSchema(), plotix::Database::Access::ReadWrite)
        .execute("UPDATE segment SET data = zeroblob(length(data))");
    for (const bool bare : {false, true}) {
        RenderRequest wanted = withLittleMemory();
        wanted.trend.to = Date{kStart + 60'000 * 60.0};
        wanted.bare = bare;
        EXPECT_THROW(services.render(wanted), plotix::ReportableError);
    }
}

TEST_F(ProgramServicesTest, RecordsBeyondTheMemoryBudgetAreDrawnTheSame)
{
    const QByteArray usual = services.render(request(RenderRequest::Format::Png));
    EXPECT_TRUE(services.render(withLittleMemory()) == usual);
}

TEST_F(ProgramServicesTest, WhatIsComputedBeyondTheMemoryBudgetIsDrawnTheSame)
{
    constexpr int kMinutes = 70'000;  // several pages
    recordManyMinutes(kMinutes);
    plotix::computeProperty(site.document->path(), station->id(), {"Twice", {"Pressure * 2", {}}});
    plotix::computeProperty(site.document->path(), station->id(), {"Smoothed", {"mean(Pressure, 3 h)", {}}});
    for (const bool bare : {false, true}) {
        RenderRequest usual = reopened(), little = withLittleMemory();
        usual.bare = little.bare = bare;
        usual.trend.to = little.trend.to = Date{kStart + kMinutes * 60.0};
        EXPECT_TRUE(services.render(little) == services.render(usual));
    }
}

TEST_F(ProgramServicesTest, StoredTrendKeepsTheDatesAskedForAndItsTitle)
{
    plotix::TrendRequest trend = request(RenderRequest::Format::Png).trend;
    trend.from = Date{kStart + 3'600};
    trend.to = Date{kStart + 7'200};
    services.storeTrend(trend);
    const auto archived = site.document->archivedPlugIns();
    ASSERT_EQ(archived.size(), 1U);
    EXPECT_EQ(archived[0].className, QStringLiteral("KTVPlotixPlugIn"));
    plotix::Decoder decoder(archived[0].state, {});
    EXPECT_EQ(decoder.decodeValue(QStringLiteral("title")).toString(), QStringLiteral("Garden"));
    double from = 0;
    decoder.decodeObject(QStringLiteral("dataClusterViewController"), [&](plotix::KeyedDecoder& dates) {
        from = dates.decodeValue(QStringLiteral("fromDate")).toDouble();
    });
    EXPECT_EQ(from, kStart + 3'600);
}

TEST_F(ProgramServicesTest, OpeningWithoutADisplayIsOneClearError)
{
    try {
        services.open({.site = site.path(), .screenshot = {}});
        FAIL() << "opened";
    } catch (const plotix::ReportableError& error) {
        EXPECT_THAT(std::string(error.what()), testing::HasSubstr("--screenshot"));
    }
}

TEST_F(ProgramServicesTest, PictureShowsTheWholeWindowAtTheSizeAskedFor)
{
    services.storeTrend(request(RenderRequest::Format::Png).trend);
    const QString picture = site.file(QStringLiteral("window.png"));
    EXPECT_EQ(services.open({.site = site.path(), .screenshot = picture, .screenshotSize = {900, 600}}), 0);
    EXPECT_EQ(QImage(picture).size(), QSize(900, 600));
}

TEST_F(ProgramServicesTest, PictureThatCannotBeWrittenIsAnError)
{
    EXPECT_THROW(
        services.open(
            {.site = site.path(), .screenshot = QStringLiteral("/nowhere/window.png"), .screenshotSize = {900, 600}}),
        plotix::ReportableError);
}

TEST_F(ProgramServicesTest, MissingModuleIsAnErrorWhenItIsNeeded)
{
    Composition without(Composition::Audience::Nobody, {QStringLiteral("/nowhere")});
    plotix::ProgramServices lost(without);
    EXPECT_THROW(lost.render(request(RenderRequest::Format::Png)), plotix::ReportableError);
}

TEST_F(ProgramServicesTest, AllTimeSpansTheOpenDocuments)
{
    composition.documentOpened(site.document);
    plotix::OptionalDate start, end;
    KTVNaturalLanguageDateCreator::dateRangeForAllTime(start, end);
    ASSERT_TRUE(start && end);
    EXPECT_EQ(start->seconds, kStart);
    EXPECT_EQ(end->seconds, kStart + 1439 * 60.0);
}

TEST_F(ProgramServicesTest, AllTimeLeavesOutASiteWhoseFileHasGone)
{
    composition.documentOpened(site.document);
    QFile::remove(site.path());
    plotix::OptionalDate start, end;
    EXPECT_NO_THROW(KTVNaturalLanguageDateCreator::dateRangeForAllTime(start, end));
}

}  // namespace
