#include "plotkit/render/GraphRendering.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>

// A line that breaks at gaps, on screen and on a page of vectors alike, crowded or not.

namespace {

using namespace plotkit;

const QSize kSize(400, 400);

class BrokenLinesTest : public testing::Test {
protected:
    /// Samples up to x = 40 at 30, and from x = 60 at 70.
    void addSteps(int samplesAUnit)
    {
        std::vector<double> x;
        std::vector<float> y;
        for (int sample = 0; sample <= 100 * samplesAUnit; ++sample) {
            const double at = static_cast<double>(sample) / samplesAUnit;
            if (at > 40 && at < 60)
                continue;
            x.push_back(at);
            y.push_back(at < 50 ? 30 : 70);
        }
        plot = rendered.addPlot(Qt::red, std::move(x), std::move(y));
    }
    QImage image() { return imageOfGraph(rendered.graph, kSize, 1, DrawingReport::Silent); }
    /// Null where pages cannot be turned into pictures.
    QImage page()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("page.pdf")));
        if (!file.open(QIODevice::WriteOnly))
            return {};
        file.write(pdfOfGraph(rendered.graph, kSize, DrawingReport::Silent));
        file.close();
        QProcess::execute(QStringLiteral("pdftoppm"),
                          {QStringLiteral("-r"), QStringLiteral("72"), QStringLiteral("-png"),
                           QStringLiteral("-singlefile"), file.fileName(), folder.filePath(QStringLiteral("page"))});
        return QImage(folder.filePath(QStringLiteral("page.png")));
    }
    /// How many red pixels stand in the picture's column that shows this x.
    static int redAt(const QImage& picture, double x)
    {
        const int column = 10 + static_cast<int>(x * (kSize.width() - 20) / 100);
        int red = 0;
        for (int row = 0; row < picture.height(); ++row) {
            const QColor color = picture.pixelColor(column, row);
            red += color.red() > 128 && color.green() < 100 && color.alpha() > 128 ? 1 : 0;
        }
        return red;
    }
    static void expectBroken(const QImage& picture)
    {
        EXPECT_GT(redAt(picture, 30), 0);
        EXPECT_EQ(redAt(picture, 50), 0);
        EXPECT_GT(redAt(picture, 70), 0);
    }

    plotkit_test::RenderedGraph rendered;
    CPTScatterPlotPtr plot;
};

TEST_F(BrokenLinesTest, JoinUnlessTold)
{
    addSteps(2000);
    EXPECT_GT(redAt(image(), 50), 0);
}

TEST_F(BrokenLinesTest, BreakInAPictureCrowdedOrNot)
{
    for (const int samples : {1, 2000}) {
        addSteps(samples);
        plot->setGapThreshold(2);
        expectBroken(image());
        rendered.graph.removePlot(plot);
    }
}

TEST_F(BrokenLinesTest, BreakOnAPage)
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty())
        GTEST_SKIP() << "pdftoppm is not installed";
    for (const int samples : {1, 2000}) {
        addSteps(samples);
        plot->setGapThreshold(2);
        expectBroken(page());
        rendered.graph.removePlot(plot);
    }
}

TEST_F(BrokenLinesTest, ATranslucentLineIsNowhereTwiceAsStrong)
{
    addSteps(2000);
    plot->setGapThreshold(2);
    CPTLineStyle style = plot->dataLineStyle();
    style.color = QColor(255, 0, 0, 128);
    plot->setDataLineStyle(style);
    const QImage picture = image();
    for (int row = 0; row < picture.height(); ++row)
        for (int column = 0; column < picture.width(); ++column)
            ASSERT_LE(picture.pixelColor(column, row).alpha(), 130);
    EXPECT_EQ(redAt(picture, 50), 0);
}

TEST_F(BrokenLinesTest, AnyOtherThresholdThanAPositiveOneJoins)
{
    addSteps(1);
    for (const double threshold : {0.0, -1.0, std::nan("")}) {
        plot->setGapThreshold(threshold);
        EXPECT_TRUE(std::isinf(plot->gapThreshold()));
    }
}

class LonePointTest : public BrokenLinesTest {
protected:
    /// Two samples that are joined, and one far from them.
    void addLonePoint(double width = 1) { plot = rendered.addPlot(Qt::red, {10, 11, 50}, {30, 30, 70}, width); }
};

TEST_F(LonePointTest, IsADotThatIsSeen)
{
    addLonePoint();
    plot->setGapThreshold(5);
    EXPECT_GE(redAt(image(), 50), 2) << "wider than the line";
    EXPECT_LE(redAt(image(), 50), 4);
}

TEST_F(LonePointTest, IsADotOnAPageToo)
{
    addLonePoint(2);
    plot->setGapThreshold(5);
    if (QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty())
        GTEST_SKIP() << "pdftoppm is not there";
    EXPECT_GE(redAt(page(), 50), 4);
}

TEST_F(LonePointTest, OfALineThatDoesNotBreakIsOneOfItsPoints)
{
    plot = rendered.addPlot(Qt::red, {50}, {70}, 1);
    EXPECT_LE(redAt(image(), 50), 1);
}

}  // namespace
