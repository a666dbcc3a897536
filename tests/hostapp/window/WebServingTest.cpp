#include "hostapp/site/WebServing.h"

#include "base/ReportableError.h"
#include "hostapp/window/WebAddressBar.h"
#include "tests/hostapp/window/StubbedServices.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QStatusBar>

namespace {

/// Counts instead of serving.
class CountingServing : public plotix::WebServing {
public:
    QString start(plotix::WorkingSite&) override
    {
        if (fails)
            throw plotix::ReportableError(QStringLiteral("no port is free"));
        ++starts;
        return QStringLiteral("http://127.0.0.1:8123/sites/garden/");
    }
    void stop(plotix::WorkingSite& site) override
    {
        ++stops;
        trendsAtStop = site.sourceList().rowCount();
    }

    bool fails = false;
    int starts = 0, stops = 0, trendsAtStop = -1;
};

class WebServingTest : public testing::Test, protected StubbedServices {
protected:
    WebServingTest() { site.addStation(); }
    void TearDown() override
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void openWindow(plotix::WebServing* web)
    {
        window = std::make_unique<plotix::SiteWindow>(site.document, services(web));
        window->show();
    }
    QAction* serveOnWeb() const { return window->actions().serveOnWeb; }
    plotix::WebAddressBar* addressBar() const { return window->findChild<plotix::WebAddressBar*>(); }

    ScratchSite site;
    CountingServing serving;
    std::unique_ptr<plotix::SiteWindow> window;
};

TEST_F(WebServingTest, TheMenuItemServesAndShowsTheAddress)
{
    openWindow(&serving);
    EXPECT_FALSE(addressBar()->isVisible());
    serveOnWeb()->trigger();
    EXPECT_EQ(serving.starts, 1);
    EXPECT_TRUE(addressBar()->isVisible());
    EXPECT_EQ(addressBar()->address(), QStringLiteral("http://127.0.0.1:8123/sites/garden/"));
}

TEST_F(WebServingTest, TheAddressStaysWhenAMessageHasPassed)
{
    openWindow(&serving);
    serveOnWeb()->trigger();
    window->statusBar()->showMessage(QStringLiteral("Something else"));
    window->statusBar()->clearMessage();
    EXPECT_TRUE(addressBar()->isVisible());
}

TEST_F(WebServingTest, TheAddressCanBeCopied)
{
    openWindow(&serving);
    EXPECT_FALSE(window->actions().copyWebAddress->isEnabled());
    serveOnWeb()->trigger();
    window->actions().copyWebAddress->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("http://127.0.0.1:8123/sites/garden/"));
}

TEST_F(WebServingTest, SwitchingOffStopsAndHidesTheAddress)
{
    openWindow(&serving);
    serveOnWeb()->trigger();
    serveOnWeb()->trigger();
    EXPECT_EQ(serving.stops, 1);
    EXPECT_FALSE(addressBar()->isVisible());
    EXPECT_FALSE(window->actions().copyWebAddress->isEnabled());
}

TEST_F(WebServingTest, AServerThatCannotBeginLeavesTheSwitchOffAndSaysWhy)
{
    serving.fails = true;
    openWindow(&serving);
    serveOnWeb()->trigger();
    EXPECT_FALSE(serveOnWeb()->isChecked());
    EXPECT_FALSE(addressBar()->isVisible());
    const auto* alert = window->findChild<QMessageBox*>();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->informativeText(), QStringLiteral("no port is free"));
}

TEST_F(WebServingTest, AWindowStopsServingWhileItsTrendsAreStillThere)
{
    openWindow(&serving);
    window->controller().newTrend(site.document->agents()[0], {}, plotix::Date{0}, plotix::Date{10},
                                  QStringLiteral("One"));
    serveOnWeb()->trigger();
    window.reset();
    EXPECT_EQ(serving.stops, 1);
    EXPECT_EQ(serving.trendsAtStop, 1);
}

TEST_F(WebServingTest, WithoutAServerTheMenuItemIsGreyedWithTheReason)
{
    openWindow(nullptr);
    EXPECT_FALSE(serveOnWeb()->isEnabled());
    EXPECT_FALSE(serveOnWeb()->toolTip().isEmpty());
}

}  // namespace
