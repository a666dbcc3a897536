#include "tests/plugins/PlotixPlugIn/TrendStatisticsFixture.h"
#include "tests/support/paging/PagedRecords.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QComboBox>

#include <cmath>

// The table that tells more: columns beyond its own, over everything fetched, what is visible, or from A to B.

namespace {

using plotix::StatisticsOver;

class TrendStatistics : public TrendStatisticsFixture {};

TEST_F(TrendStatistics, WithoutAChoiceTheTableIsAsItAlwaysWas)
{
    open({"airTemperature"});
    deliver(twoRows({"airTemperature"}));
    settle();
    EXPECT_EQ(model().columnCount(), InfoTableModel::kColumnCount);
    EXPECT_TRUE(heading().isHidden());
    EXPECT_TRUE(trend->reading().isEmpty());
    EXPECT_EQ(table().dictionaryForAutosavingLayout().value("columns").toList().size(), InfoTableModel::kColumnCount);
}

TEST_F(TrendStatistics, ChosenColumnsStandBehindTheTablesOwn)
{
    openAnHour();
    chooseColumns({"median", "maximumTime"});
    ASSERT_EQ(model().columnCount(), kFirstFigure + 2);
    EXPECT_EQ(model().headerData(kFirstFigure, Qt::Horizontal).toString(), "Time of Maximum");
    EXPECT_EQ(model().headerData(kFirstFigure + 1, Qt::Horizontal).toString(), "Median");
    EXPECT_EQ(cellOf("median"), "30.0");
    EXPECT_TRUE(cellOf("maximumTime").contains("1:00")) << cellOf("maximumTime").toStdString();
}

TEST_F(TrendStatistics, EveryColumnHasItsFigure)
{
    openAnHour();
    chooseColumns({"first", "last", "range", "sum", "deviation", "timeWeightedMean", "integral", "coverage", "gaps"});
    EXPECT_EQ(cellOf("first"), "0.0");
    EXPECT_EQ(cellOf("last"), "60.0");
    EXPECT_EQ(cellOf("range"), "60.0");
    EXPECT_EQ(cellOf("sum"), "1,830.0");
    EXPECT_EQ(cellOf("deviation"), "17.75");
    EXPECT_EQ(cellOf("timeWeightedMean"), "30.0");
    EXPECT_EQ(cellOf("integral"), "30.000\u00A0°C·h");
    EXPECT_EQ(cellOf("coverage"), "100\u00A0%");
    EXPECT_EQ(cellOf("gaps"), "0");
}

TEST_F(TrendStatistics, TheHintOfTheCoverageCountsWhatIsNotValidWhereThatIsShown)
{
    open({"airTemperature"});
    deliver(host.records()
                .at(0)
                .value("airTemperature", 1)
                .at(60)
                .invalid("airTemperature", 99)
                .at(120)
                .value("airTemperature", 2)
                .build());
    chooseColumns({"coverage"});
    const auto hint = [this] {
        return model().index(0, model().columnNamed("coverage")).data(Qt::ToolTipRole).toString();
    };
    EXPECT_FALSE(hint().contains("not valid"));
    trend->setReading(
        {{"statistics", QVariantMap{{"columns", QStringList{"coverage"}}}}, {"missing", QVariantMap{{"strip", true}}}});
    settle();
    EXPECT_TRUE(hint().endsWith("\n1 not valid")) << hint().toStdString();
}

TEST_F(TrendStatistics, ALineThatHoldsItsValueIsWeightedAsItIsDrawn)
{
    openAnHour();
    chooseColumns({"timeWeightedMean"});
    QSignalSpy told(&model(), &QAbstractItemModel::dataChanged);
    trend->setReading(
        {{"looks", QVariantMap{{"lines", QVariantMap{{"airTemperature", QVariantMap{{"interpolation", "steps"}}}}}}}});
    settle();
    EXPECT_EQ(cellOf("timeWeightedMean"), "29.5");
    EXPECT_FALSE(told.isEmpty());
}

TEST_F(TrendStatistics, OverWhatIsVisibleAllColumnsFollowTheGraph)
{
    openAnHour({{"over", "visible"}, {"columns", QStringList{"median"}}});
    see(600, 1200);
    EXPECT_EQ(cell(InfoTableModel::Minimum), "10");
    EXPECT_EQ(cell(InfoTableModel::Maximum), "20");
    EXPECT_EQ(cell(InfoTableModel::Points), "11");
    EXPECT_EQ(cellOf("median"), "15.0");
    see(0, 3600);
    EXPECT_EQ(cell(InfoTableModel::Points), "61");
}

TEST_F(TrendStatistics, TheRowsThemselvesStayThoseOfEverythingFetched)
{
    openAnHour({{"over", "visible"}});
    see(600, 1200);
    EXPECT_EQ(row(0).points, 61);
    EXPECT_EQ(row(0).maximum, 60);
}

TEST_F(TrendStatistics, WithoutMarksThereIsNothingFromAToB)
{
    openAnHour({{"over", "marked"}, {"columns", QStringList{"median"}}});
    EXPECT_EQ(cell(InfoTableModel::Points), "0");
    EXPECT_EQ(cell(InfoTableModel::Maximum), "–");
    EXPECT_EQ(cellOf("median"), "–");
}

TEST_F(TrendStatistics, FromAToBTheFiguresAreThoseBetweenTheMarks)
{
    openAnHour({{"over", "marked"}, {"columns", QStringList{"median"}}});
    trend->setReading({{"marks", QVariantMap{{"a", 1200.0}, {"b", 600.0}}}});
    settle();
    EXPECT_EQ(cell(InfoTableModel::Points), "11");
    EXPECT_EQ(cellOf("median"), "15.0");
    trend->setReading({{"marks", QVariantMap{}}});
    settle();
    EXPECT_EQ(cellOf("median"), "–");
}

TEST_F(TrendStatistics, AClickOnATimeGoesThereAndKeepsTheZoom)
{
    openAnHour();
    chooseColumns({"maximumTime"});
    see(0, 600);
    clickCell("maximumTime");
    EXPECT_NEAR(middleOfTheView(), 3600, 1e-6);
    EXPECT_NEAR(trend->graph()->defaultPlotSpace()->xRange().length, 600, 1e-6);
}

TEST_F(TrendStatistics, ReturnGoesToTheMaximumOfTheSelectedRowAndWithShiftToItsMinimum)
{
    openAnHour();
    see(1000, 1600);
    table().selectRow(0);
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_NEAR(middleOfTheView(), 3600, 1e-6);
    QTest::keyClick(&table(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_NEAR(middleOfTheView(), 0, 1e-6);
}

TEST_F(TrendStatistics, TheHeadingSwitchesByMouse)
{
    openAnHour({{"offered", true}});
    EXPECT_FALSE(heading().isHidden());
    see(600, 1200);
    QTest::mouseClick(heading().button(StatisticsOver::Visible), Qt::LeftButton);
    settle();
    EXPECT_EQ(cell(InfoTableModel::Points), "11");
    EXPECT_EQ(trend->reading().value("statistics").toMap().value("over"), "visible");
}

TEST_F(TrendStatistics, TheHeadingSwitchesByArrowKeys)
{
    openAnHour({{"offered", true}});
    show();
    heading().button(StatisticsOver::Fetched)->setFocus();
    QTest::keyClick(heading().button(StatisticsOver::Fetched), Qt::Key_Right);
    settle();
    EXPECT_EQ(trend->reading().value("statistics").toMap().value("over"), "visible");
    EXPECT_TRUE(action("Statistics of What Is Visible")->isChecked());
}

TEST_F(TrendStatistics, TheHeadingStandsBesideTheTitleWhereverThatIsMoved)
{
    openAnHour({{"offered", true}});
    show();
    trend->view()->resize(1200, 800);
    settle();
    EXPECT_EQ(heading().geometry().top(), trend->propertyDetailsTextField()->geometry().top());
    EXPECT_LE(heading().geometry().right(), 1200);
    EXPECT_GT(heading().geometry().left(), trend->propertyDetailsTextField()->geometry().left());
}

TEST_F(TrendStatistics, ActionsChooseColumnsAndShowWhatIsChosen)
{
    openAnHour();
    action("Coverage")->trigger();
    settle();
    EXPECT_EQ(cellOf("coverage"), "100\u00A0%");
    action("Coverage")->trigger();
    EXPECT_EQ(model().columnCount(), InfoTableModel::kColumnCount);
    chooseColumns({"gaps"});
    EXPECT_TRUE(action("Gaps")->isChecked());
    EXPECT_EQ(plotix::menuOf(*action("Columns")), "&Table");
}

TEST_F(TrendStatistics, AColumnThatComesOrGoesLeavesTheOthersAsTheyAre)
{
    openAnHour();
    chooseColumns({"maximumTime", "gaps"});
    table().setColumnWidth(model().columnNamed("gaps"), 77);
    table().horizontalHeader()->moveSection(placeOf("points"), 0);
    chooseColumns({"minimumTime", "gaps"});
    EXPECT_EQ(table().columnWidth(model().columnNamed("gaps")), 77);
    EXPECT_EQ(table().horizontalHeader()->visualIndex(InfoTableModel::Points), 0);
    EXPECT_EQ(cellOf("gaps"), "0");
}

TEST_F(TrendStatistics, AColumnThatWasJustChosenIsSeen)
{
    openAnHour();
    show();
    trend->view()->resize(500, 500);
    chooseColumns({"coverage"});
    const QRect cell = table().visualRect(model().index(0, kFirstFigure));
    EXPECT_TRUE(table().viewport()->rect().intersects(cell));
}

TEST_F(TrendStatistics, ColumnsAndTheirWidthsAreArchived)
{
    openAnHour();
    chooseColumns({"coverage", "gaps"});
    table().setColumnWidth(model().columnNamed("coverage"), 133);
    fakehost::FakeArchive archive;
    fakehost::FakeEncoder encoder(archive);
    trend->encodeWithCoder(encoder);
    fakehost::FakeDecoder decoder = host.decoder(archive);
    trend = KTVPlotixPlugIn::initWithCoder(decoder);
    trend->view();
    ASSERT_EQ(model().columnCount(), kFirstFigure + 2);
    EXPECT_EQ(table().columnWidth(model().columnNamed("coverage")), 133);
}

TEST_F(TrendStatistics, RowsAreSortedByAFigure)
{
    open({"airTemperature", "pressure"});
    deliver(host.records().times({0, 60}).column("airTemperature", {0, 9}).column("pressure", {1, 2}).build());
    chooseColumns({"range"});
    table().sortByColumn(kFirstFigure, Qt::AscendingOrder);
    EXPECT_EQ(rowNames(), (QStringList{"Pressure", "Air Temperature"}));
    chooseColumns({});
    EXPECT_EQ(rowNames(), (QStringList{"Air Temperature", "Pressure"}));
}

TEST_F(TrendStatistics, TheTableIsCopiedAsItIsShown)
{
    openAnHour({{"over", "visible"}, {"columns", QStringList{"gaps"}}});
    see(600, 1200);
    trend->copyTable(nullptr);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    EXPECT_TRUE(lines.at(0).contains("Property\tUnit\tGaps\tMinimum\t")) << lines.at(0).toStdString();
    EXPECT_TRUE(lines.at(1).contains("Air Temperature\t°C\t0\t")) << lines.at(1).toStdString();
    EXPECT_TRUE(lines.at(1).endsWith("\t11")) << lines.at(1).toStdString();
}

TEST_F(TrendStatistics, AReportTellsTheSame)
{
    openAnHour({{"over", "visible"}, {"columns", QStringList{"median"}}});
    see(600, 1200);
    const QVariantMap contents = trend->reportContents();
    EXPECT_EQ(contents.value("figureTitles").toStringList(), QStringList{"Median"});
    EXPECT_EQ(contents.value("about"), "what is visible");
    const QVariantMap first = contents.value("rows").toList().at(0).toMap();
    EXPECT_EQ(first.value("points").toInt(), 11);
    EXPECT_EQ(first.value("figures").toStringList(), QStringList{"15.0"});
}

TEST_F(TrendStatistics, ChoosingCanBeUndone)
{
    openAnHour();
    const QVariantMap before = trend->changeable();
    chooseColumns({"coverage"});
    trend->changeTo(before);
    settle();
    EXPECT_EQ(model().columnCount(), InfoTableModel::kColumnCount);
}

TEST_F(TrendStatistics, AnAnswerOpensTheClosedPanel)
{
    openAnHour();
    show();
    trend->propertyDetailsDisclosureButton()->click();
    action("Median")->trigger();
    EXPECT_TRUE(trend->propertyDetailsShowing());
    EXPECT_TRUE(trend->propertyDetailsDisclosureButton()->isChecked());
}

TEST_F(TrendStatistics, AValueOfLongAgoSaysOfWhenItIs)
{
    openAnHour({{"columns", QStringList{"now"}}});
    EXPECT_TRUE(cellOf("now").startsWith("60.0, ")) << cellOf("now").toStdString();
    EXPECT_TRUE(cellOf("now").contains("1970")) << cellOf("now").toStdString();
    const double now = static_cast<double>(QDateTime::currentSecsSinceEpoch());
    deliverAgain(host.records().times({now - 60, now}).column("airTemperature", {1, 2}).build());
    settle();
    EXPECT_EQ(cellOf("now"), "2.00");
}

TEST_F(TrendStatistics, ChosenColumnsAreShownRightBehindNameAndUnitInTheirOrder)
{
    openAnHour();
    chooseColumns({"median"});
    chooseColumns({"median", "maximumTime"});
    EXPECT_EQ(placeOf("unit"), placeOf("tableName") + 1);
    EXPECT_EQ(placeOf("maximumTime"), placeOf("tableName") + 2);
    EXPECT_EQ(placeOf("median"), placeOf("tableName") + 3);
    EXPECT_EQ(placeOf("minimum"), placeOf("tableName") + 4);
}

TEST_F(TrendStatistics, NothingInAChosenColumnIsCut)
{
    openAnHour();
    show();
    choose({{"columns", QStringList{"aboveLimit"}},
            {"limits", QVariantMap{{"airTemperature", QVariantMap{{"high", 12.34567}, {"highUnit", "degC"}}}}}});
    const int column = model().columnNamed("aboveLimit");
    const int text = table().fontMetrics().horizontalAdvance(cellOf("aboveLimit"));
    EXPECT_GT(table().columnWidth(column), text);
    table().horizontalHeader()->resizeSection(column, 40);
    see(600, 1200);
    EXPECT_EQ(table().columnWidth(column), 40) << "a hand has made it so";
}

TEST_F(TrendStatistics, AnotherUnitIsFollowed)
{
    openAnHour({{"over", "visible"}, {"columns", QStringList{"last"}}});
    airTemperature->setUnit("K");
    settle();
    EXPECT_EQ(cellOf("last"), "333.15");
    EXPECT_EQ(cell(InfoTableModel::Maximum), "333.15");
}

TEST_F(TrendStatistics, NewRecordsAreFollowed)
{
    openAnHour({{"columns", QStringList{"now", "coverage"}}});
    deliverAgain(host.records().times({0, 60, 120, 180, 3600}).column("airTemperature", {1, 2, 3, 3, 3}).build());
    settle();
    EXPECT_TRUE(cellOf("now").startsWith("3.0, ")) << cellOf("now").toStdString();
    EXPECT_NE(cellOf("coverage"), "100\u00A0%");
}

TEST_F(TrendStatistics, APanLeavesATableAboutEverythingFetchedAsItIs)
{
    openAnHour({{"offered", true}, {"columns", QStringList{"last"}}});
    const QSignalSpy changed(model().figures(), &plotix::TableFigures::figuresChanged);
    see(600, 1200);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(cellOf("last"), "60.0");
}

/// The hour in pages that are unpacked where somebody looks.
class PagedTrendStatistics : public TrendStatistics {
protected:
    PagedTrendStatistics()
    {
        openAnHour({{"over", "visible"}, {"columns", QStringList{"last"}}});
        deliverAgain(plotix_test::paged(*anHour(), m_cache, m_random));
        EXPECT_TRUE(QTest::qWaitFor([this] { return span() != "…"; }));
    }
    QString span() { return heading().findChildren<QLabel*>().front()->text(); }

private:
    std::shared_ptr<plotix::PageCache> m_cache = std::make_shared<plotix::PageCache>(0);
    std::mt19937 m_random{1};
};

TEST_F(PagedTrendStatistics, FiguresOfWhatIsVisibleFollowOnceWhenAPanRests)
{
    const QSignalSpy changed(model().figures(), &plotix::TableFigures::figuresChanged);
    for (double from = 0; from < 600; from += 60)
        see(from, from + 600);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(span(), "…");
    EXPECT_TRUE(QTest::qWaitFor([this] { return cellOf("last") == "19.0"; })) << cellOf("last").toStdString();
    EXPECT_EQ(span(), "10 min");
}

TEST_F(PagedTrendStatistics, WhatIsCopiedIsOfWhatIsVisibleNow)
{
    see(0, 600);
    trend->copyTable(nullptr);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains("\t10.0\t"));
}

TEST_F(TrendStatistics, TheHeadersMenuOffersTheColumnsOnlyWhereItIsWanted)
{
    openAnHour();
    EXPECT_TRUE(trend->infoTable()->infoTableModel()->figures()->headerActions().empty());
    choose({{"offered", true}});
    EXPECT_FALSE(trend->infoTable()->infoTableModel()->figures()->headerActions().empty());
}

}  // namespace
