#include "plugins/PlotixPlugIn/reading/marks/MarksPart.h"

#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableWidget>

// The marks A and B of a trend on a screen: set, dragged, typed, stepped, read, archived.

namespace {

class MarksPartTest : public ReadTrendFixture {
protected:
    void SetUp() override
    {
        ReadTrendFixture::SetUp();
        trend().setReading({{"valueLine", QVariantMap{{"shown", true}}}});
    }
    plotix::MarksPart& marks() { return dynamic_cast<plotix::MarksPart&>(part("marks")); }
    void setMarks(double a, double b)
    {
        trend().setReading({{"marks", QVariantMap{{"a", minute(a)}, {"b", minute(b)}}}});
    }
    /// In minutes since the beginning; −1: not set.
    double mark(const QString& name)
    {
        const QVariant time = chosen("marks").value(name);
        return time.isValid() ? (time.toDouble() - kFrom) / kMinute : -1;
    }
    QPointF flag(double minuteCount) { return plotix::flagPlace(geometry(), minute(minuteCount)).center(); }
    std::optional<plotix::TimeSpan> markedSpan() { return marks().readTrend().markedSpan(); }
    QDialog& window()
    {
        action("Marks and Differences…")->trigger();
        return *trend().view()->findChild<QDialog*>();
    }
    static QString cell(QDialog& window, int row, int column)
    {
        return window.findChild<QTableWidget*>()->item(row, column)->text().replace(QChar(QChar::Nbsp), ' ');
    }
};

TEST_F(MarksPartTest, AreSetWhereTheValueLineStands)
{
    moveTo(at(10));
    press(Qt::Key_A);
    moveTo(at(50));
    press(Qt::Key_B);
    EXPECT_DOUBLE_EQ(mark("a"), 10);
    EXPECT_DOUBLE_EQ(mark("b"), 50);
    EXPECT_EQ(markedSpan(), (plotix::TimeSpan{minute(10), minute(50)}));
}

TEST_F(MarksPartTest, AreSetAQuarterFromTheEdgesWithoutAValueLine)
{
    action("Set Mark A Here")->trigger();
    EXPECT_DOUBLE_EQ(mark("a"), 15);
    EXPECT_EQ(markedSpan(), std::nullopt) << "one mark is no stretch";
}

TEST_F(MarksPartTest, AreDraggedByTheirFlagsAndTheGraphStays)
{
    setMarks(10, 50);
    const CPTPlotRange before = trend().graph()->plotSpace().xRange();
    QTest::mousePress(&graphView(), Qt::LeftButton, {}, flag(10).toPoint());
    moveTo(QPointF(at(20).x(), flag(10).y()), Qt::LeftButton);
    QTest::mouseRelease(&graphView(), Qt::LeftButton, {}, QPoint(int(at(20).x()), int(flag(10).y())));
    EXPECT_DOUBLE_EQ(mark("a"), 20) << "and take the record beside them";
    EXPECT_EQ(trend().graph()->plotSpace().xRange(), before);
    EXPECT_FALSE(chosen("valueLine").contains("held")) << "a drag of a flag is no click";
}

TEST_F(MarksPartTest, ADragBesideTheFlagsPansAsEver)
{
    setMarks(10, 50);
    const CPTPlotRange before = trend().graph()->plotSpace().xRange();
    QTest::mousePress(&graphView(), Qt::LeftButton, {}, at(10).toPoint());
    moveTo(at(20), Qt::LeftButton);
    QTest::mouseRelease(&graphView(), Qt::LeftButton, {}, at(20).toPoint());
    EXPECT_NE(trend().graph()->plotSpace().xRange(), before);
    EXPECT_DOUBLE_EQ(mark("a"), 10);
}

TEST_F(MarksPartTest, KeysMoveTheMarkSetLast)
{
    setMarks(10, 50);
    press(Qt::Key_Period, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(mark("a"), 11);
    marks().setMark(plotix::Mark::B, minute(50.5));
    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(mark("b"), 50);
    press(Qt::Key_Colon, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_NEAR(at(mark("b")).x() - at(50).x(), 1, 1e-3);
}

TEST_F(MarksPartTest, MayStandInAnyOrder)
{
    setMarks(50, 10);
    EXPECT_EQ(markedSpan(), (plotix::TimeSpan{minute(10), minute(50)}));
    graphView().grab();
}

TEST_F(MarksPartTest, TheGraphIsFittedToThem)
{
    setMarks(10, 50);
    press(Qt::Key_F);
    const CPTPlotRange& range = trend().graph()->plotSpace().xRange();
    EXPECT_NEAR(range.location, minute(8), 1);
    EXPECT_NEAR(range.length, 44 * kMinute, 1);
}

TEST_F(MarksPartTest, GiveTheirDatesToTheTrend)
{
    setMarks(10, 50);
    action("Dates from Marks")->trigger();
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{minute(10)});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{minute(50)});
}

TEST_F(MarksPartTest, TheirRangeIsCopiedAsTextThatDatesAreReadFrom)
{
    setMarks(10, 50);
    action("Copy Range")->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "2013-01-01T12:10:00Z/2013-01-01T12:50:00Z");
}

TEST_F(MarksPartTest, AreRemovedTogether)
{
    setMarks(10, 50);
    press(Qt::Key_X);
    EXPECT_TRUE(chosen("marks").isEmpty());
    EXPECT_EQ(markedSpan(), std::nullopt);
}

TEST_F(MarksPartTest, TheirWindowSaysWhatLiesBetweenThem)
{
    setMarks(10, 50);
    QDialog& open = window();
    EXPECT_EQ(cell(open, 0, 0), "Air Temperature");
    EXPECT_EQ(cell(open, 0, 1), "10 °C");
    EXPECT_EQ(cell(open, 0, 2), "50 °C");
    EXPECT_EQ(cell(open, 0, 3), "+40 K");
    EXPECT_EQ(cell(open, 0, 4), "+1 K/min");
    EXPECT_EQ(cell(open, 0, 7), "30 °C") << "average";
    EXPECT_EQ(cell(open, 0, 10), "41") << "points";
    EXPECT_EQ(cell(open, 1, 5), "1,000 hPa") << "minimum of the pressure";
    EXPECT_EQ(cell(open, 1, 9), "50 %") << "coverage: nothing from minute 20 to 40";
}

TEST_F(MarksPartTest, WhatWasNotRecordedHasNoDifference)
{
    setMarks(10, 30);
    QDialog& open = window();
    EXPECT_EQ(cell(open, 1, 2), "not recorded");
    EXPECT_EQ(cell(open, 1, 3), "");
}

TEST_F(MarksPartTest, AreTypedIntoTheirWindow)
{
    setMarks(10, 50);
    QDialog& open = window();
    auto* field = open.findChildren<QLineEdit*>().front();
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, "12:05");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(mark("a"), 5);
    EXPECT_EQ(cell(open, 0, 1), "5 °C") << "the window follows";
}

TEST_F(MarksPartTest, WhatIsNoTimeChangesNothing)
{
    setMarks(10, 50);
    auto* field = window().findChildren<QLineEdit*>().front();
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, "12:99");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(mark("a"), 10);
    EXPECT_FALSE(field->styleSheet().isEmpty());
}

TEST_F(MarksPartTest, WhatLiesBetweenThemIsSpoken)
{
    setMarks(10, 50);
    press(Qt::Key_Period, Qt::ControlModifier);
    EXPECT_TRUE(graphView().accessibleDescription().startsWith("A – B. 39 min. Δ Air Temperature +39 K."))
        << graphView().accessibleDescription().toStdString();
}

TEST_F(MarksPartTest, PicturesShowThem)
{
    const auto picture = [this] { return trend().graphImageWithSize({600, 300}, 1, {}); };
    const QImage before = picture();
    setMarks(10, 50);
    EXPECT_NE(picture(), before);
    action("Remove Marks")->trigger();
    EXPECT_EQ(picture(), before);
}

TEST_F(MarksPartTest, ATitleOfAPictureStandsClearOfThem)
{
    const auto titled = [this] { return trend().graphImageWithSize({600, 300}, 1, "Title"); };
    const auto heading = [](const QImage& picture) { return picture.copy(0, 0, 600, 32); };
    const QImage before = titled();
    setMarks(25, 35);
    EXPECT_NE(titled(), before);
    EXPECT_EQ(heading(titled()), heading(before));
}

TEST_F(MarksPartTest, LieBeneathTheReadout)
{
    const CPTGraphLayerPtr line = trend().graph()->layers().back();
    setMarks(10, 50);
    EXPECT_EQ(trend().graph()->layers().back(), line);
}

TEST_F(MarksPartTest, PagesAndPaperShowThem)
{
    const auto page = [this] { return trend().graphPDFWithSize({600, 300}, {}); };
    const auto paper = [this] {
        QImage sheet(600, 300, QImage::Format_RGB32);
        sheet.fill(Qt::white);
        QPainter painter(&sheet);
        trend().drawGraphOnPaper(&painter, QRectF(0, 0, 600, 300));
        return sheet;
    };
    const qsizetype pageBefore = page().size();
    const QImage paperBefore = paper();
    setMarks(10, 50);
    EXPECT_GT(page().size(), pageBefore);
    EXPECT_NE(paper(), paperBefore);
}

TEST_F(MarksPartTest, TheirWindowIsGoneWhenItIsClosed)
{
    setMarks(10, 50);
    window().close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(trend().view()->findChild<QDialog*>(), nullptr);
}

TEST_F(MarksPartTest, AreArchivedAndCanBeUndone)
{
    const QVariantMap before = trend().changeable();
    setMarks(10, 50);
    EXPECT_EQ(encodedAndDecoded()->reading().value("marks").toMap().value("b").toDouble(), minute(50));
    trend().changeTo(before);
    EXPECT_TRUE(chosen("marks").isEmpty());
}

TEST_F(MarksPartTest, AMarkIsNotSetOntoTheOtherWhileTheLineIsHeldThere)
{
    moveTo(at(10));
    click(at(10));
    press(Qt::Key_A);
    moveTo(at(30));
    press(Qt::Key_B);
    EXPECT_EQ(chosen("marks").value("a").toDouble(), minute(10));
    EXPECT_EQ(chosen("marks").value("b").toDouble(), minute(30)) << "where the pointer is";
}

TEST_F(MarksPartTest, WithoutMarksAndValueLineNoKeyIsTaken)
{
    trend().setReading({{"valueLine", QVariantMap()}});
    press(Qt::Key_A);
    EXPECT_TRUE(chosen("marks").isEmpty());
    EXPECT_TRUE(trend().graph()->layers().empty());
}

TEST(MarkHeadingTest, LeavesOutWhatDoesNotFit)
{
    const auto letters = [](const QString& text) { return static_cast<double>(text.size()); };
    const QStringList items{"A – B", "4 d 1 h", "Δ air 4.4 K"};
    EXPECT_EQ(plotix::fittingHeading(items, 100, letters), "A – B    4 d 1 h    Δ air 4.4 K");
    EXPECT_EQ(plotix::fittingHeading(items, 20, letters), "A – B    4 d 1 h …");
    EXPECT_EQ(plotix::fittingHeading(items, 3, letters), "");
}

TEST_F(MarksPartTest, FlagsAreAsLargeAsTheGraphsTexts)
{
    setMarks(10, 20);
    const double usual = plotix::flagPlace(geometry(), minute(10)).height();
    trend().setReading({{"looks", QVariantMap{{"fontSize", 6}}}});
    EXPECT_DOUBLE_EQ(plotix::flagPlace(geometry(), minute(10)).height(), usual / 2);
}

}  // namespace
