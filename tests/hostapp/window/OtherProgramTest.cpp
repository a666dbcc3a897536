#include "hostapp/site/WorkingSite.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/SiteWindow.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtTest/QTest>
#include <QtWidgets/QListView>
#include <QtWidgets/QStatusBar>

namespace plotix {
namespace {

/// A site in a window, with the trends "One" and "Two", and the same site in another program.
class OtherProgramTest : public testing::Test {
protected:
    OtherProgramTest()
    {
        site.addStation();
        window = std::make_unique<SiteWindow>(site.document, WindowServices{&module, &desktop, &help});
        window->show();
        for (const char* title : {"One", "Two"})
            window->controller().newTrend(site.document->agents()[0], {}, Date{0}, Date{10}, QLatin1String(title));
        window->storeNow();
        other = std::make_unique<WorkingSite>(SiteDocument::open(site.path()), &module, WorkingSite::Use::OnScreen);
        other->loadPlugIns();
    }
    void TearDown() override
    {
        other.reset();
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void select(int row) { window->selectPlugIn(window->controller().sourceList().plugInAt(row)); }
    QString selected() const { return window->selectedPlugIn() ? titleOf(*window->selectedPlugIn()) : QString(); }
    bool waitForTitle(int row, const char* title)
    {
        return QTest::qWaitFor(
            [&] {
                const KTVPlugInPtr trend = window->controller().sourceList().plugInAt(row);
                return trend && titleOf(*trend) == QLatin1String(title);
            },
            10'000);
    }
    QString told() const { return window->statusBar()->currentMessage(); }

    ScratchSite site;
    StubModule module;
    DesktopUserInterface desktop;
    HelpManager help;
    std::unique_ptr<SiteWindow> window;
    std::unique_ptr<WorkingSite> other;
};

TEST_F(OtherProgramTest, ATrendRenamedThereHasItsNewNameAndIsTold)
{
    other->sourceList().plugInAt(0)->setTitle(QStringLiteral("First"));
    ASSERT_TRUE(waitForTitle(0, "First"));
    EXPECT_EQ(told(), QStringLiteral("Another program renamed the trend “One” to “First”."));
    EXPECT_TRUE(window->statusBar()->isVisible());
}

TEST_F(OtherProgramTest, TheSelectedTrendStaysSelected)
{
    select(0);
    other->sourceList().plugInAt(0)->setTitle(QStringLiteral("First"));
    ASSERT_TRUE(waitForTitle(0, "First"));
    EXPECT_EQ(selected(), QStringLiteral("First"));
}

TEST_F(OtherProgramTest, ATrendThatIsNotSelectedTakesNothingFromTheOneThatIs)
{
    select(1);
    other->sourceList().plugInAt(0)->setTitle(QStringLiteral("First"));
    ASSERT_TRUE(waitForTitle(0, "First"));
    EXPECT_EQ(selected(), QStringLiteral("Two"));
}

TEST_F(OtherProgramTest, ATrendInItsOwnWindowKeepsIt)
{
    window->controller().openInSeparateWindow(window->controller().sourceList().items()[0]);
    other->sourceList().plugInAt(0)->setTitle(QStringLiteral("First"));
    ASSERT_TRUE(waitForTitle(0, "First"));
    const KTVPlugInPtr fresh = window->controller().sourceList().plugInAt(0);
    EXPECT_TRUE(window->controller().separateWindowOf(fresh.get()));
}

TEST_F(OtherProgramTest, ATrendDeletedThereIsNotStoredAgainByTheSelection)
{
    select(0);
    other->removePlugIn(other->sourceList().plugInAt(0));
    ASSERT_TRUE(waitForTitle(0, "Two"));
    window->storeNow();
    EXPECT_EQ(site.document->archivedPlugIns().size(), 1U);
    EXPECT_EQ(told(), QStringLiteral("Another program deleted the trend “One”."));
}

}  // namespace
}  // namespace plotix
