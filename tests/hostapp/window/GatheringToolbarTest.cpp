#include "hostapp/window/GatheringToolbar.h"

#include <QtTest/QTest>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolButton>

#include <gtest/gtest.h>

namespace {

class GatheringToolbarTest : public testing::Test {
protected:
    GatheringToolbarTest()
    {
        window.addToolBar(&bar);
        window.resize(700, 300);
    }
    void fill(int count)
    {
        QList<QAction*> items;
        for (int number = 0; number < count; ++number) {
            items << new QAction(QStringLiteral("Plotix – Source %1").arg(number));
            QObject::connect(items.last(), &QAction::triggered, &bar, [this, number] { triggered = number; });
        }
        bar.setItems(items);
        window.show();
        QCoreApplication::processEvents();
    }
    QList<QAction*> inMenu() const { return bar.gatheringButton()->menu()->actions(); }

    QMainWindow window;
    plotix::GatheringToolbar bar{QStringLiteral("Toolbar"), &window};
    int triggered = -1;
};

TEST_F(GatheringToolbarTest, AFewButtonsStandSideBySide)
{
    fill(2);
    EXPECT_FALSE(bar.isGathered());
    EXPECT_EQ(bar.actions().size(), 2);
}

TEST_F(GatheringToolbarTest, AHundredAreInTheMenuOfOneThatIsSeen)
{
    fill(100);
    EXPECT_TRUE(bar.isGathered());
    EXPECT_EQ(inMenu().size(), 100);
    EXPECT_TRUE(bar.gatheringButton()->isVisible());
    EXPECT_TRUE(bar.rect().contains(bar.gatheringButton()->geometry()));
}

TEST_F(GatheringToolbarTest, AGatheredButtonStillActs)
{
    fill(100);
    inMenu().at(57)->trigger();
    EXPECT_EQ(triggered, 57);
}

TEST_F(GatheringToolbarTest, TheyFollowTheWindowsWidth)
{
    fill(5);
    window.resize(220, 300);
    QCoreApplication::processEvents();
    EXPECT_TRUE(bar.isGathered());
    window.resize(1200, 300);
    QCoreApplication::processEvents();
    EXPECT_FALSE(bar.isGathered());
    EXPECT_TRUE(bar.widgetForAction(bar.actions().at(4))->isVisible());
}

TEST_F(GatheringToolbarTest, NewItemsTakeThePlaceOfOldOnes)
{
    fill(100);
    fill(1);
    EXPECT_FALSE(bar.isGathered());
    EXPECT_EQ(bar.actions().size(), 1);
    EXPECT_TRUE(inMenu().isEmpty());
}

}  // namespace
