#include "hostapp/window/ScreenFit.h"

#include "tests/hostapp/window/StubbedServices.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtGui/QScreen>
#include <QtWidgets/QApplication>

namespace {

constexpr QRect kScreen{0, 0, 800, 600};

TEST(InsideScreenTest, WhatFitsStaysWhereItIs)
{
    EXPECT_EQ(plotix::insideScreen({100, 50, 300, 200}, kScreen), QRect(100, 50, 300, 200));
}

TEST(InsideScreenTest, WhatIsTooLargeBecomesAsLargeAsTheScreen)
{
    EXPECT_EQ(plotix::insideScreen({200, 100, 1280, 800}, kScreen), kScreen);
}

TEST(InsideScreenTest, WhatStandsOutsideComesInAsLittleAsPossible)
{
    EXPECT_EQ(plotix::insideScreen({1500, 700, 300, 200}, kScreen), QRect(500, 400, 300, 200));
    EXPECT_EQ(plotix::insideScreen({-40, -10, 300, 200}, kScreen), QRect(0, 0, 300, 200));
}

TEST(InsideScreenTest, AScreenMayBeginAnywhere)
{
    EXPECT_EQ(plotix::insideScreen({0, 0, 2000, 200}, {1440, 30, 800, 570}), QRect(1440, 30, 800, 200));
}

class ScreenFitTest : public testing::Test {
protected:
    QRect screen() const { return QApplication::primaryScreen()->availableGeometry(); }
    void expectInside(const QWidget& window) const
    {
        EXPECT_LE(window.width(), screen().width());
        EXPECT_LT(window.height(), screen().height());  // the title bar takes its part
    }

    plotix::ScreenFit fit;
};

TEST_F(ScreenFitTest, AWindowLargerThanTheScreenIsMadeToFitWhenItAppears)
{
    QWidget window;
    window.setGeometry(50, 50, screen().width() + 400, screen().height() + 400);
    window.show();
    expectInside(window);
    EXPECT_TRUE(screen().contains(window.geometry()));
}

TEST_F(ScreenFitTest, AMaximisedWindowIsLeftToTheDesktop)
{
    QWidget window;
    window.resize(screen().size() * 2);
    window.setWindowState(Qt::WindowMaximized);
    window.show();
    EXPECT_GE(window.height(), screen().height());
}

TEST_F(ScreenFitTest, ASiteWindowOfAnotherScreenFitsThisOne)
{
    ScratchSite site;
    site.addStation();
    StubbedServices stubs;
    plotix::SiteWindow window(site.document, stubs.services());
    window.resize(screen().size() * 2);
    window.show();
    expectInside(window);
    EXPECT_LE(window.minimumSizeHint().width(), 700);  // 1440 × 900 at 200 % is 720 × 450 points
    EXPECT_LE(window.minimumSizeHint().height(), 400);
}

}  // namespace
