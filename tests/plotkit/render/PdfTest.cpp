#include "plotkit/render/GraphRendering.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace plotkit;
using plotkit_test::CountingDelegate;

class PdfTest : public testing::Test {
protected:
    QByteArray draw(const QSizeF& size = QSizeF(1200, 600), DrawingReport report = DrawingReport::Silent)
    {
        return pdfOfGraph(rendered.graph, size, report);
    }

    /// Two years of minutes that jump up and down between neighbours: the densest picture there is.
    void addDensePlot(const QColor& color)
    {
        constexpr std::size_t kMinutesOfTwoYears = 2 * 365 * 1440;
        std::vector<double> x(kMinutesOfTwoYears);
        std::vector<float> y(kMinutesOfTwoYears);
        for (std::size_t index = 0; index < kMinutesOfTwoYears; ++index) {
            x[index] = double(index) * 100.0 / double(kMinutesOfTwoYears);
            y[index] = float(50 + 45 * std::sin(double(index) * 12.9898) * std::sin(double(index) * 0.0003));
        }
        rendered.addPlot(color, std::move(x), std::move(y));
    }

    plotkit_test::RenderedGraph rendered;
    CountingDelegate delegate;
};

TEST_F(PdfTest, IsOnePageOfTheSizeInPoints)
{
    const QByteArray pdf = draw(QSizeF(400, 300));
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_EQ(pdf.count("/Type /Page\n"), 1);
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 400.000000 300.000000]"));
}

TEST_F(PdfTest, HoldsNoImages)
{
    rendered.graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    rendered.addPlot(Qt::yellow, {0, 30, 100}, {25, 90, 4});
    EXPECT_FALSE(draw().contains("/Subtype /Image"));
}

TEST_F(PdfTest, SameGraphGivesTheSameBytes)
{
    rendered.graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    rendered.graph.setTitle(QStringLiteral("Newark"));
    const QByteArray pdf = draw();
    EXPECT_EQ(pdf, draw());
    EXPECT_FALSE(pdf.contains("CreationDate"));
}

TEST_F(PdfTest, DensePlotsStaySmall)
{
    for (const Qt::GlobalColor color : {Qt::yellow, Qt::cyan, Qt::red})
        addDensePlot(color);
    EXPECT_LT(draw().size(), 700'000);
}

TEST_F(PdfTest, GrowsWithWhatIsDrawn)
{
    const qsizetype empty = draw().size();
    rendered.addPlot(Qt::yellow, {0, 30, 100}, {25, 90, 4});
    EXPECT_GT(draw().size(), empty);
}

TEST_F(PdfTest, VisiblePlotsReport)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {25, 25})->setDelegate(&delegate);
    rendered.addPlot(Qt::cyan, {0, 100}, {25, 25})->setDelegate(&delegate);
    rendered.graph.allPlots().back()->setHidden(true);
    draw(QSizeF(400, 300), DrawingReport::TellDelegates);
    EXPECT_EQ(delegate.drawn, QStringList{"1"});
}

TEST_F(PdfTest, EmptySizesGiveNoData)
{
    for (const QSizeF& size : {QSizeF(0, 0), QSizeF(-5, 10), QSizeF(std::nan(""), 10)})
        EXPECT_TRUE(draw(size).isEmpty());
}

}  // namespace
