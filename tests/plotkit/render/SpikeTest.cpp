#include "base/LargeMemory.h"
#include "plotkit/render/GraphRendering.h"
#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

// One sample that stands out among a hundred million, all of which are shown: on screen, in the exported picture and on
// the page.

namespace {

constexpr std::size_t kSamples = 100'000'000;
constexpr std::size_t kSpike = 61'803'398;
constexpr double kSpikeHeight = 80;
const QSize kSize(1200, 600);

plotix::SharedArray<double> everySecond()
{
    const std::shared_ptr<double> times = plotix::unsetArray<double>(kSamples);
    for (std::size_t element = 0; element < kSamples; ++element)
        times.get()[element] = 1.4e9 + static_cast<double>(element);
    return {times, kSamples};
}

/// Zero everywhere but once.
CPTPointSeriesPtr seriesWithOneSpike()
{
    plotix::SeriesBuilder builder(everySecond(), kSamples);
    std::vector<double> block(plotix::SeriesBuilder::kBlock);
    for (std::size_t first = 0; first < kSamples; first += block.size()) {
        const std::size_t count = std::min(block.size(), kSamples - first);
        const bool isHere = first <= kSpike && kSpike < first + count;
        if (isHere)
            block[kSpike - first] = kSpikeHeight;
        builder.setBlock(first, std::span(block).first(count), {});
        if (isHere)
            block[kSpike - first] = 0;
    }
    return builder.finish();
}

class SpikeTest : public testing::Test {
protected:
    SpikeTest()
    {
        graph->setPadding({});
        graph->setPlotAreaFramePadding({});
        graph->defaultPlotSpace()->setXRange({1.4e9, kSamples});
        graph->defaultPlotSpace()->setYRange({-20, 120});
        for (CPTXYAxis* axis : {graph->axisSet()->xAxis(), graph->axisSet()->yAxis()}) {
            axis->setAxisLineStyle(std::nullopt);
            axis->setMajorTickLineStyle(std::nullopt);
            axis->setMinorTickLineStyle(std::nullopt);
            axis->setLabelTextStyle({.color = CPTColor()});
        }
        graph->setFill(CPTFill::withColor(Qt::white));
        plot->setDataLineStyle({.width = 3, .color = CPTColor(Qt::red)});
        plot->bind(CPTScatterPlotBindingXValues, controller, QStringLiteral("arrangedObjects.x"));
        plot->bind(CPTScatterPlotBindingYValues, controller, QStringLiteral("arrangedObjects.y"));
        graph->addPlot(plot);
    }

    /// A red column where the spike stands, from the line at zero up to its tip, and nothing as high beside it.
    static void expectSpike(const QImage& picture)
    {
        ASSERT_FALSE(picture.isNull());
        const double scale = static_cast<double>(picture.width()) / kSize.width();
        const int at = static_cast<int>(static_cast<double>(kSpike) / kSamples * picture.width());
        const int tip = static_cast<int>((120 - 20 - kSpikeHeight) / 120 * picture.height());
        const auto reddest = [&](int x, int y) {
            int most = 0;
            for (int dx = -1; dx <= 1; ++dx) {
                const QColor color = picture.pixelColor(x + dx, y);
                most = std::max(most, color.alpha() * (color.red() - color.green()) / 255);
            }
            return most;
        };
        for (const double share : {0.02, 0.5, 0.98})
            EXPECT_GT(reddest(at, static_cast<int>(tip + share * (picture.height() * 5.0 / 6 - tip))), 150) << share;
        EXPECT_LT(reddest(at, tip - static_cast<int>(4 * scale)), 30);
        for (const int beside : {-8, 8})
            EXPECT_LT(reddest(at + static_cast<int>(beside * scale), picture.height() / 2), 30);
    }

    static QImage pageAsPicture(const QByteArray& pdf)
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("page.pdf")));
        if (!file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size())
            return {};
        file.close();
        const QString page = folder.filePath(QStringLiteral("page"));
        QProcess::execute(QStringLiteral("pdftoppm"),
                          {QStringLiteral("-r"), QStringLiteral("144"), QStringLiteral("-singlefile"),
                           QStringLiteral("-png"), file.fileName(), page});
        return QImage(page + QStringLiteral(".png"));
    }

    CPTXYGraphPtr graph = std::make_shared<CPTXYGraph>();
    CPTScatterPlotPtr plot = std::make_shared<CPTScatterPlot>();
    CPTSeriesControllerPtr controller = std::make_shared<CPTSeriesController>(series());

private:
    /// Made once for all tests of a process: it is over a gigabyte.
    static const CPTPointSeriesPtr& series()
    {
        static const CPTPointSeriesPtr made = seriesWithOneSpike();
        return made;
    }
};

TEST_F(SpikeTest, StandsOnScreen)
{
    CPTGraphHostingView view;
    view.resize(kSize);
    view.setHostedGraph(graph);
    expectSpike(view.grab().toImage());
}

TEST_F(SpikeTest, StandsInTheExportedPicture)
{
    expectSpike(plotkit::imageOfGraph(*graph, kSize, 1, plotkit::DrawingReport::Silent));
    expectSpike(plotkit::imageOfGraph(*graph, kSize, 2, plotkit::DrawingReport::Silent));
}

TEST_F(SpikeTest, StandsOnThePage)
{
    const QByteArray pdf = plotkit::pdfOfGraph(*graph, kSize, plotkit::DrawingReport::Silent);
    ASSERT_FALSE(pdf.isEmpty());
    if (QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty())
        GTEST_SKIP() << "pdftoppm is not installed";
    expectSpike(pageAsPicture(pdf));
}

}  // namespace
