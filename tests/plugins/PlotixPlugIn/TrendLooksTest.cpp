#include "TrendViewFixture.h"

#include "ImageReceiver.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>

#include <filesystem>

// What the graph looks like and when its axes are ticked; what pictures, files and the sharing picker receive.

namespace {

class TrendLooks : public TrendViewFixture {
protected:
    CPTXYAxis& xAxis() { return *trend().graph()->axisSet()->firstAxis(); }
    CPTXYAxis& yAxis() { return *trend().graph()->axisSet()->lastAxis(); }
    CPTXYPlotSpace& space() { return *trend().graph()->defaultPlotSpace(); }
    QString valueLabel(double value) { return yAxis().labelFormatter()->stringForNumber(value); }
    KTVRecordDictionaryPtr valuesFrom(double low, double high) const
    {
        return recordsAt({kFrom, kTo}).column("airTemperature", {low, high}).build();
    }
    void openTwiceWith(double low, double high)
    {
        openTrend();
        answer(valuesFrom(low, high));
        answerRefresh(valuesFrom(low, high));
    }
};

// The graph.

TEST_F(TrendLooks, GraphWearsTheDarkTheme)
{
    openTrendWithData();
    CPTXYGraph themed;
    themed.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    ASSERT_NE(themed.plotAreaFrame().fill, CPTFill::none());
    EXPECT_EQ(trend().graph()->plotAreaFrame().fill, themed.plotAreaFrame().fill);
    EXPECT_EQ(trend().graph()->plotAreaFrame().borderLineStyle, themed.plotAreaFrame().borderLineStyle);
    EXPECT_EQ(trend().graph()->plotAreaFrame().cornerRadius, themed.plotAreaFrame().cornerRadius);
}

TEST_F(TrendLooks, GraphHasNoSizeUntilSomebodyGivesItOne)
{
    makeTrend();
    trend().refreshPlot();
    answer(twoProperties());
    EXPECT_EQ(trend().graph()->bounds(), QRectF());
}

TEST_F(TrendLooks, LettingGoOfTheButtonEndsTheDrag)
{
    openTrendWithData();
    KTVGraphHostingView& view = *trend().hostView();
    trend().view()->show();
    const QPoint middle = view.rect().center();
    QTest::mousePress(&view, Qt::LeftButton, {}, middle);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, middle);
    const CPTPlotRange before = space().xRange();
    QMouseEvent move(QEvent::MouseMove, QPointF(middle + QPoint(50, 0)), QPointF(), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&view, &move);
    EXPECT_EQ(space().xRange(), before);
}

TEST_F(TrendLooks, KeyThatIsNotTakenGoesToTheBase)
{
    openTrendWithData();
    const CPTPlotRange before = space().xRange();
    QTest::keyClick(trend().hostView(), Qt::Key_Right);
    EXPECT_GT(space().xRange().location, before.location);
}

TEST_F(TrendLooks, RefreshKeyGoesNoFurtherThanTheRefresh)
{
    openTrendWithData();
    const CPTPlotRange before = space().xRange();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, QStringLiteral("r"));
    press.ignore();
    QApplication::sendEvent(trend().hostView(), &press);
    EXPECT_EQ(fetchCount(), 2);
    EXPECT_TRUE(press.isAccepted());
    EXPECT_EQ(space().xRange(), before);
}

// Its ticks.

TEST_F(TrendLooks, TimeAxisIsTickedWhenTheGraphIsBuiltAlsoWithoutAPlot)
{
    openTrend();
    answer(records().withoutTime());
    EXPECT_EQ(xAxis().majorIntervalLength(), 1'800);
    EXPECT_EQ(xAxis().labelFormatter()->pattern(), "h:mma");
}

TEST_F(TrendLooks, OffScreenTheTimeAxisIsNotTicked)
{
    makeTrend();
    trend().refreshPlot();
    answer(twoProperties());
    CPTXYGraph untouched;
    EXPECT_EQ(xAxis().majorIntervalLength(), untouched.axisSet()->firstAxis()->majorIntervalLength());
    EXPECT_EQ(std::dynamic_pointer_cast<const CPTTimeFormatter>(xAxis().labelFormatter()), nullptr);
}

TEST_F(TrendLooks, FirstViewOfASmallSpanKeepsOneDecimal)
{
    openTrend();
    answer(valuesFrom(0, 5));
    EXPECT_EQ(valueLabel(2), "2.0");
    answerRefresh(valuesFrom(0, 5));
    EXPECT_EQ(valueLabel(2), "2.00");
}

TEST_F(TrendLooks, ValueLabelsHaveALeastNumberOfDigits)
{
    openTwiceWith(0, 40);
    EXPECT_EQ(valueLabel(20), "20.0");
}

// Where the delegate has cut the range it has left the interval, and the fit sets it.
TEST_F(TrendLooks, FitSetsTheIntervalOfACutRange)
{
    openTwiceWith(-100, 6'000);
    EXPECT_EQ(yAxis().majorIntervalLength(), 500);
}

TEST_F(TrendLooks, EditedDatesTickNothing)
{
    openTrendWithData();
    const double interval = xAxis().majorIntervalLength();
    panel().updateDates(plotix::Date{kFrom}, plotix::Date{kFrom + 604'800});
    EXPECT_EQ(xAxis().majorIntervalLength(), interval);
}

TEST_F(TrendLooks, FetchTicksNothingBeforeItsAnswer)
{
    openTrendWithData();
    const double interval = xAxis().majorIntervalLength();
    refreshFor(kFrom, kFrom + 604'800);
    EXPECT_EQ(xAxis().majorIntervalLength(), interval);
}

TEST_F(TrendLooks, LongRangesKeepTheirFractions)
{
    openTrendWithData();
    space().setXRange({kFrom, 1e7 + 0.0625});
    EXPECT_EQ(space().xRange().length, 1e7 + 0.0625);
    EXPECT_EQ(panel().toDateValue(), plotix::Date{kFrom + 1e7 + 0.0625});
}

TEST_F(TrendLooks, EndOfAResizeAsksForNothing)
{
    openTrendWithData();
    const QStringList before = host().log().lines();
    trend().windowDidEndLiveResize(nullptr);
    EXPECT_EQ(host().log().lines(), before);
}

TEST_F(TrendLooks, FittingAllCountsHiddenPlots)
{
    openTrendWithData();
    const CPTPlotRange all = space().yRange();
    trend().setPlotForPropertyName("pressure", true);
    trend().fitAll(nullptr);
    EXPECT_EQ(space().yRange(), all);
}

// Pictures and files.

class TrendFiles : public TrendViewFixture {
protected:
    QString write(void (KTVPlotixPlugIn::*exporting)(QObject*), const QString& name)
    {
        const QString path = m_folder.filePath(name);
        desktop().answerSavePanelWith(path);
        (trend().*exporting)(nullptr);
        return path;
    }
    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QByteArray offscreenPicture(const QString& title, double from = kFrom)
    {
        ImageReceiver receiver;
        KTVPlotixPlugIn::graph(agent(), plotix::Date{from}, plotix::Date{kTo}, QStringList{"airTemperature"}, title,
                               {320, 240}, &receiver, "receiveImage");
        answer(twoProperties());
        return receiver.images.empty() ? QByteArray() : receiver.images[0];
    }

    QTemporaryDir m_folder;
};

TEST_F(TrendFiles, PdfShowsTheGraphAsItStandsInTheView)
{
    openTrendWithData();
    trend().hostView()->resize(500, 300);
    const QByteArray written = contentOf(write(&KTVPlotixPlugIn::exportToPDF, "graph.pdf"));
    EXPECT_TRUE(written.contains("/MediaBox [0 0 500.000000 300.000000]"));
    EXPECT_EQ(written, trend().hostView()->dataForPDFRepresentationOfLayer());
    trend().removePropertiesAndRefresh({"Air Temperature"});
    EXPECT_NE(written, trend().hostView()->dataForPDFRepresentationOfLayer());
}

// Written where it stands and not moved there: whatever else leads to the file leads to the new content.
TEST_F(TrendFiles, ExportsAreWrittenInPlace)
{
    openTrendWithData();
    for (const auto exporting : {&KTVPlotixPlugIn::exportToPDF, &KTVPlotixPlugIn::exportToPNG}) {
        QFile old(m_folder.filePath("graph"));
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("old");
        old.close();
        const std::string link = m_folder.filePath("link").toStdString();
        std::filesystem::remove(link);
        std::filesystem::create_hard_link(old.fileName().toStdString(), link);
        const QString path = write(exporting, "graph");
        EXPECT_EQ(contentOf(QString::fromStdString(link)), contentOf(path));
        EXPECT_GT(contentOf(path).size(), 100);
    }
}

TEST_F(TrendFiles, PlotImageGivesTheGraphItsBoundsAndAWhiteTitle)
{
    openTrendWithData();
    trend().plotImageForSize({640, 480}, "Weather");
    EXPECT_EQ(trend().graph()->bounds(), QRectF(0, 0, 640, 480));
    EXPECT_EQ(trend().graph()->titleTextStyle().color, QColor(Qt::white));
}

TEST_F(TrendFiles, OffScreenPictureBearsItsTitle)
{
    const QByteArray titled = offscreenPicture("Weather");
    ASSERT_FALSE(titled.isEmpty());
    EXPECT_EQ(titled, offscreenPicture("Weather"));
    EXPECT_NE(titled, offscreenPicture("Climate"));
}

TEST_F(TrendFiles, OffScreenPictureIsFetchedForItsOwnDates)
{
    offscreenPicture("Weather", kFrom - 60);
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom - 60});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{kTo});
}

TEST_F(TrendFiles, NameGivenTwiceIsFetchedTwice)
{
    ImageReceiver receiver;
    KTVPlotixPlugIn::graph(agent(), plotix::Date{kFrom}, plotix::Date{kTo}, QStringList{"wind", "wind"}, "Weather",
                           {320, 240}, &receiver, "receiveImage");
    EXPECT_EQ(lastFetch().properties, KTVPropertyList({property("wind"), property("wind")}));
    answer(twoProperties());
}

TEST_F(TrendFiles, SharedPictureShowsTheWholeView)
{
    openTrendWithData();
    imageRepresentation(trend().view());  // the first drawing ends the refresh
    trend().sharingButtonClicked(trend().sharingButton());
    ASSERT_EQ(desktop().sharings().size(), 1U);
    EXPECT_EQ(desktop().sharings()[0].image, imageRepresentation(trend().view()));
}

}  // namespace
