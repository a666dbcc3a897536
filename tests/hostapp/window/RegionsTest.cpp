#include "hostapp/window/Regions.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

using plotix::RegionStep;

namespace {

/// A list, a panel of two fields and a table, made in another order than the keys lead through them.
class RegionsTest : public testing::Test {
protected:
    RegionsTest()
    {
        auto* column = new QVBoxLayout(&window);
        for (QWidget* part : std::initializer_list<QWidget*>{&table, &panel, &list})
            column->addWidget(part);
        auto* row = new QVBoxLayout(&panel);
        row->addWidget(&first);
        row->addWidget(&second);
        list.setProperty(plotix::kRegionProperty, 1);
        panel.setProperty(plotix::kRegionProperty, 10);
        table.setProperty(plotix::kRegionProperty, 12);
        window.show();
        window.activateWindow();
        list.setFocus();
    }
    void go(RegionStep step) { plotix::focusRegion(window, step); }
    const QWidget* focus() const { return window.focusWidget(); }

    QWidget window, panel;
    QListWidget list, table;
    QLineEdit first, second;
};

TEST_F(RegionsTest, NextGoesRoundInTheOrderOfTheRegions)
{
    go(RegionStep::Next);
    EXPECT_EQ(focus(), &first);
    go(RegionStep::Next);
    EXPECT_EQ(focus(), &table);
    go(RegionStep::Next);
    EXPECT_EQ(focus(), &list);
}

TEST_F(RegionsTest, PreviousGoesTheOtherWay)
{
    go(RegionStep::Previous);
    EXPECT_EQ(focus(), &table);
}

TEST_F(RegionsTest, FromInsideARegionTheNextOneFollows)
{
    second.setFocus();
    go(RegionStep::Next);
    EXPECT_EQ(focus(), &table);
}

TEST_F(RegionsTest, AHiddenRegionIsPassedOver)
{
    panel.hide();
    go(RegionStep::Next);
    EXPECT_EQ(focus(), &table);
}

TEST_F(RegionsTest, WithoutRegionsNothingHappens)
{
    for (QWidget* part : std::initializer_list<QWidget*>{&table, &panel, &list})
        part->setProperty(plotix::kRegionProperty, {});
    go(RegionStep::Next);
    EXPECT_EQ(focus(), &list);
}

}  // namespace
