#include "hostapp/window/SeparateWindow.h"

#include "tests/hostapp/window/StubbedServices.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtTest/QTest>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

using plotix::Date;

namespace {

/// A site window that shows "Week", and "Month" in a window of its own in front of it.
class SeparateWindowTest : public testing::Test, protected StubbedServices {
protected:
    SeparateWindowTest()
    {
        station = site.addStation();
        window.emplace(site.document, services());
        week = add(QStringLiteral("Week"));
        month = add(QStringLiteral("Month"));
        window->show();
        window->actions().openInWindow->trigger();
        window->selectPlugIn(week);
        bringToFront(separate());
    }
    KTVPlugInPtr add(const QString& title)
    {
        return window->controller().newTrend(site.document->agents()[0], {}, Date{0}, Date{10}, title);
    }
    plotix::SeparateWindow* separate() { return window->controller().separateWindowOf(month.get()); }
    void bringToFront(QWidget* one)
    {
        one->activateWindow();
        QApplication::setActiveWindow(one);
        QCoreApplication::processEvents();
    }
    static const QStringList& logOf(const KTVPlugInPtr& trend) { return dynamic_cast<StubTrend&>(*trend).log(); }
    QMenu* menu(int number) { return separate()->menuBar()->actions().at(number)->menu(); }

    ScratchSite site;
    std::shared_ptr<plotix::SiteAgent> station;
    std::optional<plotix::SiteWindow> window;
    KTVPlugInPtr week, month;
};

TEST_F(SeparateWindowTest, HasTheMenusOfATrend)
{
    QStringList titles;
    for (const QAction* action : separate()->menuBar()->actions())
        titles << action->text();
    EXPECT_EQ(titles, (QStringList{"&File", "&Edit", "&View", "&Window", "&Help"}));
    EXPECT_TRUE(menu(0)->actions().contains(window->actions().print));
    EXPECT_TRUE(menu(1)->actions().contains(window->actions().undo));
}

TEST_F(SeparateWindowTest, ItsKeysActOnItsTrend)
{
    QTest::keyClick(separate(), Qt::Key_F5);
    EXPECT_EQ(logOf(month), QStringList("refresh"));
    EXPECT_EQ(logOf(week), QStringList());
}

TEST_F(SeparateWindowTest, ItsMenusActOnItsTrend)
{
    window->actions().fit->trigger();
    EXPECT_EQ(logOf(month), QStringList("fitAll"));
}

TEST_F(SeparateWindowTest, InTheSiteWindowTheSameMenusActOnTheSelectedTrend)
{
    bringToFront(&*window);
    QTest::keyClick(&*window, Qt::Key_F5);
    EXPECT_EQ(logOf(week), QStringList("refresh"));
    EXPECT_EQ(logOf(month), QStringList());
}

TEST_F(SeparateWindowTest, ControlWClosesItAlone)
{
    QTest::keyClick(separate(), Qt::Key_W, Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !separate(); }));
    EXPECT_TRUE(window->isVisible());
}

}  // namespace
