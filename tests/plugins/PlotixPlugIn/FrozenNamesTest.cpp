#include "plugins/PlotixPlugIn/FrozenNames.h"

#include "tests/plugins/PlotixPlugIn/TrendStatisticsFixture.h"

#include <QtWidgets/QScrollBar>

// The names of the rows while the table is scrolled past them.

namespace {

class FrozenNamesTest : public TrendStatisticsFixture {};

TEST_F(FrozenNamesTest, TheNamesStayInSightWhileTheTableIsScrolledPastThem)
{
    openAnHour();
    show();
    trend->view()->resize(500, 500);
    const FrozenNames& names = *table().findChild<FrozenNames*>();
    EXPECT_FALSE(names.isVisible());
    chooseColumns({"median", "coverage", "gaps"});
    table().horizontalScrollBar()->setValue(table().horizontalScrollBar()->maximum());
    ASSERT_TRUE(names.isVisible());
    EXPECT_EQ(names.columnAt(2), InfoTableModel::Property);
    EXPECT_EQ(names.x(), table().viewport()->x());
    table().horizontalScrollBar()->setValue(0);
    EXPECT_FALSE(names.isVisible());
}

TEST_F(FrozenNamesTest, AClickOnANameThatStayedSelectsItsRow)
{
    openTwoLines();
    trend->view()->resize(500, 500);
    chooseColumns({"median", "coverage", "gaps"});
    table().horizontalScrollBar()->setValue(table().horizontalScrollBar()->maximum());
    const FrozenNames& names = *table().findChild<FrozenNames*>();
    QTest::mouseClick(names.viewport(), Qt::LeftButton, {}, QPoint(5, table().rowViewportPosition(1) + 5));
    EXPECT_EQ(table().selectedRowIndexes(), std::vector<std::size_t>{1});
}

TEST_F(FrozenNamesTest, WithoutFiguresNoNameIsKeptInSight)
{
    openAnHour();
    show();
    trend->view()->resize(400, 500);
    table().horizontalScrollBar()->setValue(table().horizontalScrollBar()->maximum());
    EXPECT_FALSE(table().findChild<FrozenNames*>()->isVisible());
}

}  // namespace
