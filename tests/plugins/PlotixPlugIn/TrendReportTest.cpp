#include "TrendViewFixture.h"

#include <QtCore/QRegularExpression>

namespace {

class TrendReport : public TrendViewFixture {
protected:
    QString html() { return trend().htmlContentForPrinting().value_or(QString()); }
    KTVPrintInfo& settings() { return host().printInfo(); }

    static QImage embeddedImage(const QString& html)
    {
        const QString uri = html.section("base64, ", 1).section('"', 0, 0);
        return QImage::fromData(QByteArray::fromBase64(uri.toLatin1()), "PNG");
    }
    static QStringList rowNames(const QString& html)
    {
        QStringList names;
        static const QRegularExpression row("<tr><td>([^<]*)</td>");
        for (auto match = row.globalMatch(html); match.hasNext();)
            names << match.next().captured(1);
        return names;
    }
};

TEST_F(TrendReport, PageSetupIsLandscapeWithItsMargins)
{
    openTrend();
    settings().setScalingFactor(0.5);
    settings().setHorizontalPagination(KTVPaginationMode::Fit);
    settings().setVerticalPagination(KTVPaginationMode::Clip);
    EXPECT_EQ(trend().customPrintInfo(), &settings());
    EXPECT_EQ(settings().orientation(), KTVPaperOrientation::Landscape);
    EXPECT_EQ(settings().margins(), QMarginsF(36, 45, 36, 45));
    EXPECT_EQ(settings().scalingFactor(), 1.0);
    EXPECT_EQ(settings().horizontalPagination(), KTVPaginationMode::Automatic);
    EXPECT_EQ(settings().verticalPagination(), KTVPaginationMode::Automatic);
}

// The next print begins with the report's settings; nothing restores the old ones.
TEST_F(TrendReport, SharedSettingsAreChangedForGood)
{
    openTrendWithData();
    settings().setScalingFactor(0.5);
    settings().setLeftMargin(7);
    html();
    releaseTrend();
    EXPECT_EQ(KTVPrintInfo::sharedPrintInfo(), &settings());
    EXPECT_EQ(settings().orientation(), KTVPaperOrientation::Landscape);
    EXPECT_EQ(settings().scalingFactor(), 1.0);
    EXPECT_EQ(settings().margins(), QMarginsF(36, 45, 36, 45));
}

TEST_F(TrendReport, PaperIsMeasuredAsItLies)
{
    openTrend();
    EXPECT_EQ(settings().paperSize(), QSizeF(612, 792));
    trend().customPrintInfo();
    EXPECT_EQ(settings().paperSize(), QSizeF(792, 612));
}

TEST_F(TrendReport, LetterHoldsAGraphOf720By348)
{
    openTrendWithData();
    EXPECT_EQ(embeddedImage(html()).size(), QSize(720, 348));
}

TEST_F(TrendReport, EmbeddedImageIsWhatPngDataAnswers)
{
    openTrendWithData();
    const QString text = html();
    const QByteArray png = trend().PNGDataWithSize({720, 348});
    EXPECT_TRUE(text.contains("base64, " + QString::fromLatin1(png.toBase64()) + "\" alt=\"Plot\" />"));
}

// The view itself is resized, before it is rendered, and stays so until its container lays it out.
TEST_F(TrendReport, HostingViewIsResizedAndLeftSo)
{
    openTrendWithData();
    html();
    EXPECT_EQ(trend().hostView()->geometry(), QRect(0, 0, 1440, 696));
}

TEST_F(TrendReport, LayingOutTheContainerPutsTheHostingViewBack)
{
    openTrendWithData();
    trend().view()->show();
    trend().view()->resize(900, 700);
    const QRect shown = trend().hostView()->geometry();
    html();
    trend().view()->resize(901, 700);
    trend().view()->resize(900, 700);
    EXPECT_EQ(trend().hostView()->geometry(), shown);
}

TEST_F(TrendReport, NamesTheRangeOfTheDatePanel)
{
    openTrendWithData();
    panel().setFromDateValue(plotix::Date{kFrom});
    panel().setToDateValue(plotix::Date{kTo});
    EXPECT_TRUE(html().contains("<h2>From 2013-01-01 12:00:00 to 2013-01-01 13:00:00</h2>"));
}

TEST_F(TrendReport, NamesTheSiteOfTheWindow)
{
    openTrendWithData();
    EXPECT_TRUE(html().contains("<h2><b>Meadow Station at Hillside</b></h2>"));
}

TEST_F(TrendReport, SiteIsTheWindowsAlsoWhereTheViewsAgentIsAnother)
{
    const auto other = std::make_shared<fakehost::FakeAgent>("agent-2", host().units(), nullptr);
    other->setSite("Harbour", "Quay 4");
    fakehost::FakeSiteWindowController window(other, &host().log());
    adopt(KTVPlotixPlugIn::initWithAgent(agent(), &window));
    EXPECT_TRUE(html().contains("<h2><b>Harbour at Quay 4</b></h2>"));
    releaseTrend();
}

TEST_F(TrendReport, AbsentSiteTextsReadNull)
{
    openTrendWithData();
    host().agent()->setSite(std::nullopt, std::nullopt);
    EXPECT_TRUE(html().contains("<h2><b>(null) at (null)</b></h2>"));
}

TEST_F(TrendReport, WithoutASiteWindowTheSiteReadsNull)
{
    adopt(KTVPlotixPlugIn::initWithAgent(agent(), nullptr));
    EXPECT_TRUE(html().contains("<h2><b>(null) at (null)</b></h2>"));
}

TEST_F(TrendReport, ListsEveryRowWithItsStatistics)
{
    openTrendWithData();
    const QString text = html();
    EXPECT_TRUE(text.contains(
        QString::fromUtf8("<tr><td>Air Temperature</td><td>°C</td><td>20</td><td>22</td><td>21</td><td>3</td>")));
    EXPECT_TRUE(text.contains(QString::fromUtf8("<h1>Air Temperature ●  Pressure</h1>")));
}

// Statistics are single-precision numbers: no digits of their double-precision image appear.
TEST_F(TrendReport, NumbersAreTheShortestTextOfTheirSinglePrecision)
{
    openTrend({"airTemperature"});
    answer(recordsAt({kFrom, kTo}).column("airTemperature", {20.1, 20.1}));
    EXPECT_TRUE(html().contains("<td>20.1</td><td>20.1</td>"));
    EXPECT_FALSE(html().contains("20.100000"));
}

// The list's order counts, not the one the table is sorted in.
TEST_F(TrendReport, RowsStandInTheOrderOfTheListNotOfTheScreen)
{
    openTrendWithData();
    trend().infoTableArrayController()->setSortOrder(
        [](const InfoTableRowPtr& one, const InfoTableRowPtr& other) { return one->tableName > other->tableName; });
    ASSERT_EQ(trend().infoTableArrayController()->arrangedObjects().front()->tableName, "Pressure");
    EXPECT_EQ(rowNames(html()), QStringList({"Air Temperature", "Pressure"}));
}

TEST_F(TrendReport, WithoutRowsTitleAndTableAreEmpty)
{
    openTrend({});
    const QString text = html();
    EXPECT_TRUE(text.startsWith("<html><header><h1></h1>"));
    EXPECT_TRUE(rowNames(text).isEmpty());
}

TEST_F(TrendReport, WithoutAViewTheImageIsEmpty)
{
    makeTrend();
    EXPECT_TRUE(html().contains("base64, \" alt"));
    EXPECT_FALSE(trend().isViewLoaded());
}

TEST_F(TrendReport, IsBuiltAnewEveryTime)
{
    openTrendWithData();
    const QString before = html();
    host().agent()->setSite("Other", "Elsewhere");
    EXPECT_NE(html(), before);
}

}  // namespace
