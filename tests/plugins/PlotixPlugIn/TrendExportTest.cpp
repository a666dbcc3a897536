#include "TrendViewFixture.h"

#include <QtCore/QTemporaryDir>

namespace {

class TrendExport : public TrendViewFixture {
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    double topPadding() { return trend().graph()->plotAreaFrame().padding.top; }

private:
    QTemporaryDir m_folder;
};

TEST_F(TrendExport, PngOfAWideViewIs320WideAndLower)
{
    openTrendWithData();
    trend().hostView()->resize(900, 300);
    desktop().answerSavePanelWith(path("graph.png"));
    trend().exportToPNG(nullptr);
    const QImage image(path("graph.png"));
    EXPECT_EQ(image.width(), 320);
    EXPECT_EQ(image.height(), 107);
    EXPECT_EQ(desktop().savePanels().at(0), QStringList({"png"}));
}

TEST_F(TrendExport, PngOfASmallViewIsEnlarged)
{
    openTrendWithData();
    trend().hostView()->resize(100, 160);
    const QImage image = QImage::fromData(trend().PNGDataWithSize({320, 320}));
    EXPECT_EQ(image.size(), QSize(200, 320));
}

TEST_F(TrendExport, PdfIsWritten)
{
    openTrendWithData();
    desktop().answerSavePanelWith(path("graph.pdf"));
    trend().exportToPDF(nullptr);
    EXPECT_TRUE(contentOf(path("graph.pdf")).startsWith("%PDF"));
    EXPECT_EQ(desktop().savePanels().at(0), QStringList({"pdf"}));
}

TEST_F(TrendExport, CancelledPanelDoesNothing)
{
    openTrendWithData();
    trend().refreshPlot();
    desktop().answerSavePanelWith(std::nullopt);
    trend().exportToPNG(nullptr);
    trend().exportToPDF(nullptr);
    EXPECT_TRUE(isBusy());
}

TEST_F(TrendExport, FailedWriteIsNotReported)
{
    openTrendWithData();
    desktop().answerSavePanelWith(QStringLiteral("/nowhere/at/all.png"));
    trend().exportToPNG(nullptr);
    EXPECT_TRUE(desktop().modalAlerts().empty());
    EXPECT_TRUE(desktop().sheets().empty());
}

TEST_F(TrendExport, WithoutAViewThereIsNothingToWrite)
{
    makeTrend();
    desktop().answerSavePanelWith(path("graph.png"));
    trend().exportToPNG(nullptr);
    EXPECT_FALSE(QFile::exists(path("graph.png")));
    EXPECT_TRUE(trend().PNGDataWithSize({320, 320}).isEmpty());
    EXPECT_FALSE(trend().isViewLoaded());
}

TEST_F(TrendExport, BeforeTheFirstAnswerTheEmptyFrameIsWritten)
{
    openTrend();
    desktop().answerSavePanelWith(path("graph.png"));
    trend().exportToPNG(nullptr);
    EXPECT_FALSE(QImage(path("graph.png")).isNull());
    desktop().answerSavePanelWith(path("graph.pdf"));
    trend().exportToPDF(nullptr);
    EXPECT_TRUE(contentOf(path("graph.pdf")).startsWith("%PDF"));
    EXPECT_TRUE(isBusy());
}

// Not tied to the fetch under way: any drawing switches the panel back.
TEST_F(TrendExport, DrawingForAnExportEndsTheBusyState)
{
    openTrendWithData();
    trend().refreshPlot();
    ASSERT_TRUE(isBusy());
    trend().PNGDataWithSize({320, 320});
    EXPECT_FALSE(isBusy());
}

TEST_F(TrendExport, PlotsReportThatTheyAreDrawn)
{
    openTrendWithData();
    trend().refreshPlot();
    trend().didFinishDrawing(trend().graph()->allPlots()[0].get());
    EXPECT_FALSE(isBusy());
}

TEST_F(TrendExport, PlotImageHasTheSizeAskedAndATitle)
{
    openTrendWithData();
    const QImage image = trend().plotImageForSize({640, 480}, "Weather");
    EXPECT_EQ(image.size(), QSize(640, 480));
    EXPECT_EQ(trend().graph()->title(), "Weather");
    EXPECT_EQ(trend().graph()->titleTextStyle().fontName, "Helvetica-Bold");
    EXPECT_EQ(trend().graph()->titleTextStyle().fontSize, 18.0);
    EXPECT_EQ(trend().graph()->titleDisplacement(), QPointF(0, 1));
    EXPECT_EQ(trend().graph()->titlePlotAreaFrameAnchor(), CPTRectAnchor::Top);
}

// Every call adds the title's height again.
TEST_F(TrendExport, TopPaddingGrowsOnEveryPlotImage)
{
    openTrendWithData();
    trend().plotImageForSize({640, 480}, "Weather");
    EXPECT_EQ(topPadding(), 38);
    trend().plotImageForSize({640, 480}, "Weather");
    EXPECT_EQ(topPadding(), 56);
}

TEST_F(TrendExport, PlotImageWithoutAGraphIsNull)
{
    makeTrend();
    EXPECT_TRUE(trend().plotImageForSize({640, 480}, "Weather").isNull());
}

TEST_F(TrendExport, HostsRenderingHasSizeTimesDensity)
{
    openTrendWithData();
    EXPECT_EQ(trend().graphImageWithSize({600, 300}, 2.0, "Weather").size(), QSize(1200, 600));
    EXPECT_TRUE(trend().graphPDFWithSize({600, 300}, "Weather").startsWith("%PDF"));
}

TEST_F(TrendExport, HostsRenderingLeavesTheGraphAsItWas)
{
    openTrendWithData();
    const QRectF bounds = trend().graph()->bounds();
    trend().graphImageWithSize({600, 300}, 1.0, "Weather");
    trend().graphPDFWithSize({600, 300}, "Weather");
    EXPECT_EQ(trend().graph()->bounds(), bounds);
    EXPECT_EQ(trend().graph()->title(), QString());
    EXPECT_EQ(topPadding(), 20);
}

TEST_F(TrendExport, HostsRenderingIsTheSameTwice)
{
    openTrendWithData();
    EXPECT_EQ(trend().graphImageWithSize({600, 300}, 1.0, "Weather"),
              trend().graphImageWithSize({600, 300}, 1.0, "Weather"));
}

TEST_F(TrendExport, TitleChangesTheHostsRendering)
{
    openTrendWithData();
    EXPECT_NE(trend().graphImageWithSize({600, 300}, 1.0, "Weather"),
              trend().graphImageWithSize({600, 300}, 1.0, QString()));
}

TEST_F(TrendExport, HostsRenderingWithoutAGraphIsNull)
{
    makeTrend();
    EXPECT_TRUE(trend().graphImageWithSize({600, 300}, 1.0, QString()).isNull());
    EXPECT_TRUE(trend().graphPDFWithSize({600, 300}, QString()).isEmpty());
}

TEST_F(TrendExport, SharingOffersAnImageOfTheWholeViewAtTheButton)
{
    openTrendWithData();
    trend().sharingButtonClicked(trend().sharingButton());
    ASSERT_EQ(desktop().sharings().size(), 1U);
    EXPECT_EQ(desktop().sharings()[0].image.size(), trend().view()->size());
    EXPECT_EQ(desktop().sharings()[0].view, trend().sharingButton());
    EXPECT_EQ(desktop().sharings()[0].rect, trend().sharingButton()->rect());
    EXPECT_EQ(desktop().sharings()[0].preferredEdge, KTVRectEdge::MinY);
}

TEST_F(TrendExport, TheTrendIsTheSharingPickersDelegateAsLongAsItLives)
{
    openTrendWithData();
    trend().sharingButtonClicked(trend().sharingButton());
    const auto delegate = desktop().sharings().at(0).delegate;
    EXPECT_EQ(delegate.lock().get(), static_cast<KTVSharingPickerDelegate*>(&trend()));
    releaseTrend();
    EXPECT_TRUE(delegate.expired());
}

TEST_F(TrendExport, SharingActsOnThePress)
{
    openTrendWithData();
    emit trend().sharingButton()->pressed();
    EXPECT_EQ(desktop().sharings().size(), 1U);
    emit trend().sharingButton()->released();
    emit trend().sharingButton()->clicked();
    EXPECT_EQ(desktop().sharings().size(), 1U);
}

}  // namespace
