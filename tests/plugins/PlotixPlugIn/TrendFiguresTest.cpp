#include "plugins/PlotixPlugIn/host/PngImage.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "tests/plugins/PlotixPlugIn/TrendViewFixture.h"

#include <QtTest/QSignalSpy>

// The graph as a file, also with choices for that file alone.

namespace {

class TrendFiguresTest : public TrendViewFixture {
protected:
    TrendFiguresTest()
    {
        openTrendWithData();
        trend().setReading({{"readableLabels", true}, {"arrangement", QVariantMap{{"kind", "lane-per-unit"}}}});
    }
    QByteArray file(const QString& format, const QVariantMap& reading = {})
    {
        return trend().graphFile(
            {{"format", format}, {"size", QSizeF(400, 300)}, {"density", 1.0}, {"reading", reading}});
    }
    QImage screen() { return trend().graphImageWithSize({400, 300}, 1, {}); }
    CPTXYPlotSpace& lane() { return *trend().graph()->allPlotSpaces().back(); }
    static QVariantMap onPaper()
    {
        return {{"looks", QVariantMap{{"look", "paper"}, {"fontSize", 7.0}}},
                {"legend", QVariantMap{{"place", "below"}, {"axisTitles", "values"}}},
                {"arrangement", QVariantMap{{"kind", "one-scale"}}}};
    }
};

TEST_F(TrendFiguresTest, AFileHasTheFormatAskedFor)
{
    EXPECT_TRUE(file("png").startsWith("\x89PNG"));
    EXPECT_TRUE(file("pdf").startsWith("%PDF"));
    EXPECT_TRUE(file("svg").contains("<svg"));
}

TEST_F(TrendFiguresTest, WithoutChoicesItIsTheGraphAsItIs)
{
    EXPECT_EQ(file("png"), pngOfImage(screen()));
}

TEST_F(TrendFiguresTest, ChoicesForAFileLeaveTheTrendAsItWas)
{
    const QImage before = screen();
    const QVariantMap reading = trend().reading();
    EXPECT_NE(file("png", onPaper()), pngOfImage(before));
    EXPECT_EQ(screen(), before);
    EXPECT_EQ(trend().reading(), reading);
}

TEST_F(TrendFiguresTest, RangesOfLanesAreKept)
{
    lane().setYRange({900, 50});
    const double location = lane().yRange().location;
    file("svg", onPaper());
    EXPECT_EQ(lane().yRange().location, location);
    EXPECT_EQ(lane().yRange().length, 50);
}

TEST_F(TrendFiguresTest, NobodyIsToldOfAChoiceThatIsAFilesAlone)
{
    const QSignalSpy told(static_cast<plotix::TrendReader*>(trend().trendReader()),
                          &plotix::TrendReader::chosenChanged);
    file("pdf", onPaper());
    EXPECT_EQ(told.count(), 0);
}

TEST_F(TrendFiguresTest, TheSameFigureIsTheSameBytes)
{
    for (const char* format : {"png", "pdf", "svg"})
        EXPECT_EQ(file(format, onPaper()), file(format, onPaper())) << format;
}

TEST_F(TrendFiguresTest, BeforeTheFirstRecordsThereIsNone)
{
    makeTrend();
    EXPECT_TRUE(file("svg").isEmpty());
}

}  // namespace
