#include "plotkit/render/GraphRendering.h"
#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/LineMenu.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "tests/plugins/PlotixPlugIn/PropertyTableFixture.h"

#include <QtGui/QPainter>
#include <QtWidgets/QAbstractItemDelegate>

// How the lines of a trend look and the trend itself: chosen by name, in menus and by keys; drawn, archived, taken
// back.

namespace {

class LineLooksTest : public PropertyTableFixture {
protected:
    LineLooksTest()
    {
        openAndDeliver({"airTemperature", "pressure", "windSpeed"});
        trend->setReading({{"lineCommands", true}});
    }
    ~LineLooksTest() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    void choose(const QVariantMap& looks) { trend->setReading({{"looks", looks}}); }
    void chooseLine(const QString& key, const QVariantMap& look) { choose({{"lines", QVariantMap{{key, look}}}}); }
    QVariantMap chosen() { return trend->reading().value("looks").toMap(); }
    QVariantMap chosenOf(const QString& key) { return chosen().value("lines").toMap().value(key).toMap(); }
    CPTScatterPlot& plot(const QString& key) const { return *PropertyTableFixture::plot(key); }
    QImage picture() { return plotkit::imageOfGraph(*trend->graph(), {500, 300}, 1, plotkit::DrawingReport::Silent); }
    PropertyDetailsTableView& table() { return *trend->infoTable(); }
    void select(const std::vector<std::size_t>& rows) { controller().setSelectionIndexes(rows); }
    static QAction* item(const QMenu& menu, const QString& text)
    {
        for (QAction* action : menu.actions())
            if (action->text().section(u'\t', 0, 0).remove(u'&') == text)
                return action;
        return nullptr;
    }
    /// The item of the table's menu for the selected rows.
    void chooseFromTable(const QString& submenu, const QString& text)
    {
        const auto menu = table().menuForEvent(nullptr);
        QMenu* looks = item(*menu, "Look")->menu();
        item(submenu.isEmpty() ? *looks : *item(*looks, submenu)->menu(), text)->trigger();
    }
    QImage drawn(const QModelIndex& cell)
    {
        QImage image(60, 24, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = image.rect();
        table().itemDelegateForColumn(cell.column())->paint(&painter, option, cell);
        return image;
    }
    QAction* action(const QString& text)
    {
        for (QAction* each : qobject_cast<plotix::TrendReader*>(trend->trendReader())->actions())
            if (each->text().remove(u'&') == text)
                return each;
        return nullptr;
    }
};

TEST_F(LineLooksTest, WithoutAChoiceNothingIsArchivedAndTheTrendLooksAsItDid)
{
    const QImage before = picture();
    EXPECT_FALSE(trend->reading().contains("looks"));
    chooseLine("pressure", {{"dash", "dotted"}});
    EXPECT_NE(picture(), before);
    choose({});
    EXPECT_EQ(picture(), before);
    EXPECT_FALSE(trend->reading().contains("looks"));
}

TEST_F(LineLooksTest, ALineIsDrawnAsItWasChosen)
{
    chooseLine("pressure", {{"interpolation", "steps"},
                            {"width", 1.5},
                            {"dash", "dashed"},
                            {"color", "#010203"},
                            {"pointSize", 6},
                            {"fill", "zero"}});
    EXPECT_EQ(plot("pressure").interpolation(), CPTScatterPlotInterpolation::HoldLast);
    EXPECT_EQ(plot("pressure").dataLineStyle(),
              (CPTLineStyle{.width = 1.5, .color = QColor(1, 2, 3), .dashPattern = {7.5, 3.75}}));
    EXPECT_EQ(plot("pressure").pointSize(), 6);
    EXPECT_TRUE(plot("pressure").areaFill().isVisible());
    EXPECT_EQ(plot("windSpeed").dataLineStyle().width, 3);
}

TEST_F(LineLooksTest, AFillReachesToAnotherLine)
{
    chooseLine("pressure", {{"fill", "line"}, {"fillLine", "windSpeed"}});
    EXPECT_EQ(plot("pressure").areaFill().plot.lock().get(), &plot("windSpeed"));
    chooseLine("pressure", {{"fill", "line"}, {"fillLine", "gone"}});
    EXPECT_FALSE(plot("pressure").areaFill().plot.lock());
}

TEST_F(LineLooksTest, NewRecordsAreDrawnInTheSameLook)
{
    chooseLine("pressure", {{"dash", "dotted"}});
    deliverAgain(twoRows({"airTemperature", "pressure", "windSpeed"}));
    EXPECT_FALSE(plot("pressure").dataLineStyle().dashPattern.empty());
    EXPECT_TRUE(plot("windSpeed").dataLineStyle().dashPattern.empty());
}

TEST_F(LineLooksTest, AColorOfThePropertyIsPutBackAsItIsByThen)
{
    chooseLine("pressure", {{"color", "#010203"}});
    pressure->setColor(Qt::magenta);
    EXPECT_EQ(plot("pressure").dataLineStyle().color, QColor(1, 2, 3));
    choose({});
    EXPECT_EQ(plot("pressure").dataLineStyle().color, QColor(Qt::magenta));
}

TEST_F(LineLooksTest, ChoicesAreTakenBackAndMadeAgain)
{
    const QVariantMap before = trend->changeable();
    const QImage plain = picture();
    chooseLine("pressure", {{"fill", "zero"}});
    const QVariantMap after = trend->changeable();
    EXPECT_NE(before, after);
    trend->changeTo(before);
    EXPECT_EQ(picture(), plain);
    trend->changeTo(after);
    EXPECT_TRUE(plot("pressure").areaFill().isVisible());
}

TEST_F(LineLooksTest, AChoiceForAPropertyThatIsNotThereIsKept)
{
    chooseLine("absent", {{"width", 2.0}});
    EXPECT_EQ(chosenOf("absent").value("width"), 2.0);
}

TEST_F(LineLooksTest, PaperIsWhiteWithDarkThinLines)
{
    choose({{"look", "paper"}, {"fontSize", 8}});
    EXPECT_EQ(trend->graph()->axisSet()->yAxis()->labelTextStyle().fontSize, 8);
    EXPECT_LT(plot("pressure").dataLineStyle().width, 2);
    EXPECT_EQ(picture().pixelColor(250, 30), QColor(Qt::white));
}

TEST_F(LineLooksTest, DistinctLinesDifferInColorAndDash)
{
    choose({{"marks", "distinct"}});
    EXPECT_NE(plot("pressure").dataLineStyle().color, plot("windSpeed").dataLineStyle().color);
    EXPECT_NE(plot("pressure").dataLineStyle().dashPattern, plot("windSpeed").dataLineStyle().dashPattern);
}

TEST_F(LineLooksTest, DashesAreAddedWhereLinesWouldLookAlike)
{
    choose({{"marks", "apart"}});
    EXPECT_TRUE(plot("windSpeed").dataLineStyle().dashPattern.empty());
    windSpeed->setColor(plot("airTemperature").dataLineStyle().color);
    EXPECT_FALSE(plot("windSpeed").dataLineStyle().dashPattern.empty());
    EXPECT_TRUE(plot("airTemperature").dataLineStyle().dashPattern.empty());
}

TEST_F(LineLooksTest, TheTablesMenuChoosesForAllSelectedLines)
{
    select({0, 2});
    chooseFromTable("", "Steps: Hold the Last Value");
    chooseFromTable("Dashes", "Dots");
    chooseFromTable("Fill", "To Zero");
    EXPECT_EQ(chosenOf("airTemperature"),
              (QVariantMap{{"interpolation", "steps"}, {"dash", "dotted"}, {"fill", "zero"}}));
    EXPECT_EQ(chosenOf("windSpeed"), chosenOf("airTemperature"));
    EXPECT_TRUE(chosenOf("pressure").isEmpty());
    chooseFromTable("", "Usual Look");
    EXPECT_TRUE(chosen().isEmpty());
}

TEST_F(LineLooksTest, TheMenuChecksWhatWasChosen)
{
    chooseLine("airTemperature", {{"width", 2.0}});
    select({0});
    const auto menu = table().menuForEvent(nullptr);
    QMenu* widths = item(*item(*menu, "Look")->menu(), "Width")->menu();
    EXPECT_TRUE(item(*widths, "2 pt")->isChecked());
    EXPECT_FALSE(item(*widths, "As Usual")->isChecked());
}

TEST_F(LineLooksTest, AKeyOpensTheMenuOfTheSelectedLines)
{
    select({1});
    QTest::keyClick(&table(), Qt::Key_L);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_EQ(chosenOf("pressure").value("interpolation"), "steps");
}

TEST_F(LineLooksTest, ActionsChooseTheLookOfTheTrend)
{
    action("Paper")->trigger();
    EXPECT_EQ(chosen().value("look"), "paper");
    EXPECT_TRUE(action("Paper")->isChecked());
    action("Larger Text")->trigger();
    EXPECT_EQ(chosen().value("fontSize"), 13);
    action("Distinct Colors and Dashes")->trigger();
    EXPECT_EQ(chosen().value("marks"), "distinct");
    action("Dark")->trigger();
    action("Usual Text Size")->trigger();
    action("Colors of the Properties")->trigger();
    EXPECT_EQ(chosen(), (QVariantMap{{"marks", "own"}}));  // not what a host would choose
}

TEST_F(LineLooksTest, ActionsFollowWhatWasChosenByName)
{
    choose({{"look", "light"}, {"marks", "apart"}});
    EXPECT_TRUE(action("Light")->isChecked());
    EXPECT_TRUE(action("Dashes Where Colors Are Alike")->isChecked());
}

TEST_F(LineLooksTest, TheLooksOfLinesAreInTheTrendsMenuToo)
{
    QMenu* lines = action("Look of Lines")->menu();
    emit lines->aboutToShow();
    ASSERT_EQ(lines->actions().size(), 3);
    item(*item(*lines, "Pressure")->menu(), "Points Only")->trigger();
    EXPECT_EQ(chosenOf("pressure").value("interpolation"), "points");
}

TEST_F(LineLooksTest, TheTableShowsPiecesOfTheLines)
{
    const QModelIndex cell = table().infoTableModel()->index(1, InfoTableModel::Color);
    using PlotPointer = std::shared_ptr<const CPTScatterPlot>;
    EXPECT_EQ(cell.data(InfoTableModel::kPlotRole).value<PlotPointer>(), nullptr);
    const QImage swatch = drawn(cell);
    chooseLine("pressure", {{"dash", "dotted"}});
    EXPECT_EQ(cell.data(InfoTableModel::kPlotRole).value<PlotPointer>().get(), &plot("pressure"));
    EXPECT_NE(drawn(cell), swatch);
}

TEST_F(LineLooksTest, AReportHasTheColorsOfTheLines)
{
    chooseLine("pressure", {{"color", "#102030"}});
    const QVariantList rows = trend->reportContents().value("rows").toList();
    EXPECT_EQ(rows[1].toMap().value("color").value<QColor>(), QColor(0x10, 0x20, 0x30));
}

}  // namespace
