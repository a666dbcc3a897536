#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "tests/plugins/PlotixPlugIn/PropertyTableFixture.h"

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QTextDocument>
#include <QtWidgets/QHeaderView>

// The statistics table on its way to other programs.

namespace {

class TableCopyTest : public PropertyTableFixture {
protected:
    TableCopyTest()
    {
        openAndDeliver({"airTemperature", "pressure", "windSpeed"});
        QGuiApplication::clipboard()->clear();
    }

    PropertyDetailsTableView& table() { return *trend->infoTable(); }
    QString shownCell(int row, int column) { return table().model()->index(row, column).data().toString(); }
    void copy() { trend->copyTable(nullptr); }
    static QStringList lines() { return QGuiApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts); }
    static QString html() { return QGuiApplication::clipboard()->mimeData()->html(); }
};

TEST_F(TableCopyTest, TitlesAndAllRowsAreCopiedWhereNoneIsSelected)
{
    copy();
    ASSERT_EQ(lines().size(), 4);
    EXPECT_EQ(lines().at(0), "Show\tProperty\tUnit\tMinimum\tMaximum\tAverage\tNo. of Points");
    QStringList cells{"shown"};
    for (int column = InfoTableModel::Property; column <= InfoTableModel::Points; ++column)
        cells << shownCell(1, column);
    EXPECT_EQ(lines().at(2), cells.join(u'\t'));
}

TEST_F(TableCopyTest, WithAHeadingItBeginsWithTrendAndSpan)
{
    trend->setTitle("Week");
    trend->setReading({{"statistics", QVariantMap{{"offered", true}}}});
    copy();
    ASSERT_EQ(lines().size(), 7);
    EXPECT_EQ(lines().at(0), "Week");
    EXPECT_FALSE(lines().at(1).isEmpty());  // the site
    EXPECT_TRUE(lines().at(2).contains(" – ")) << lines().at(2).toStdString();
    EXPECT_FALSE(lines().at(2).contains("visible"));
    EXPECT_TRUE(lines().at(3).startsWith("Show\tProperty"));
    EXPECT_TRUE(html().contains("<p>Week</p>"));
}

TEST_F(TableCopyTest, TheHeadingSaysWhatTheFiguresAreAbout)
{
    trend->setReading({{"statistics", QVariantMap{{"offered", true}, {"over", "visible"}}}});
    copy();
    EXPECT_TRUE(lines().filter(" – ").value(0).endsWith("(what is visible)")) << lines().at(0).toStdString();
    trend->setReading({{"marks", QVariantMap{{"a", 7200.0}, {"b", 3600.0}}},
                       {"statistics", QVariantMap{{"offered", true}, {"over", "marked"}}}});
    copy();
    EXPECT_TRUE(lines().filter(" – ").value(0).endsWith("(the time from A to B)")) << lines().at(0).toStdString();
}

TEST_F(TableCopyTest, OnlyTheSelectedRowsAreCopied)
{
    controller().setSelectionIndexes({0, 2});
    copy();
    ASSERT_EQ(lines().size(), 3);
    EXPECT_TRUE(lines().at(1).startsWith("shown\tAir Temperature\t"));
    EXPECT_TRUE(lines().at(2).startsWith("shown\tWind Speed\t"));
}

TEST_F(TableCopyTest, HiddenLinesAreMarkedAsTheTableMarksThem)
{
    table().showLine(1, false);
    copy();
    EXPECT_TRUE(lines().at(2).startsWith("hidden\tPressure\t"));
}

TEST_F(TableCopyTest, ColumnsAndRowsFollowTheScreen)
{
    table().horizontalHeader()->moveSection(InfoTableModel::Property, 0);
    table().sortByColumn(InfoTableModel::Property, Qt::DescendingOrder);
    copy();
    EXPECT_TRUE(lines().at(0).startsWith("Property\tShow\t"));
    EXPECT_TRUE(lines().at(1).startsWith("Wind Speed\tshown\t"));
}

TEST_F(TableCopyTest, HtmlHasTheSameCellsAndTheLinesColours)
{
    copy();
    QTextDocument document;
    document.setHtml(html());
    EXPECT_TRUE(document.toPlainText().contains("Air Temperature"));
    EXPECT_EQ(html().count("<tr>"), 4);
    EXPECT_TRUE(html().contains("bgcolor=\"" + controller().arrangedObjects()[0]->color.name() + "\""));
}

TEST_F(TableCopyTest, NamesInHtmlAreShownAsTheyAre)
{
    controller().arrangedObjects()[0]->tableName = "<b>x</b> & y";
    copy();
    EXPECT_TRUE(html().contains("<td>&lt;b&gt;x&lt;/b&gt; &amp; y</td>"));
}

TEST_F(TableCopyTest, TabsAndLineBreaksInNamesStayInTheirCell)
{
    controller().arrangedObjects()[0]->tableName = "one\ttwo\nthree";
    copy();
    ASSERT_EQ(lines().size(), 4);
    EXPECT_TRUE(lines().at(1).startsWith("shown\tone two three\t"));
}

TEST_F(TableCopyTest, WithoutRowsTheClipboardKeepsWhatItHad)
{
    QGuiApplication::clipboard()->setText("before");
    controller().removeAllObjects();
    copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
}

TEST_F(TableCopyTest, TheMenuCopiesWhereTheHostChoseCommandsOfLines)
{
    EXPECT_EQ(table().menuForEvent(nullptr)->actions().size(), 1);
    trend->setReading({{"lineCommands", true}});
    const auto menu = table().menuForEvent(nullptr);
    QAction* copy = menu->actions().last();
    EXPECT_EQ(copy->text(), "Copy\tCtrl+C");
    copy->trigger();
    EXPECT_EQ(lines().size(), 4);
}

TEST_F(TableCopyTest, TheTableItselfStillIgnoresTheKey)
{
    QGuiApplication::clipboard()->setText("before");
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
}

}  // namespace
