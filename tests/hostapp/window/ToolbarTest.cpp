#include "hostapp/window/SiteWindow.h"

#include "base/MainQueue.h"
#include "hostapp/site/ModuleNames.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/HelpWindow.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtTest/QTest>
#include <QtWidgets/QToolBar>

#include <thread>

using plotix::SiteWindow;

namespace {

/// The toolbar's plug-in as far as the window knows it: an item, a class name, an archive.
class KTVPlotixToolbarPlugIn : public KTVPlugIn {
    Q_OBJECT
public:
    static KTVPlugInPtr make(const KTVPlugInModule::Arguments& arguments)
    {
        const std::shared_ptr<KTVPlotixToolbarPlugIn> plugIn(new KTVPlotixToolbarPlugIn);
        return plugIn->initWithAgent(arguments.agent, arguments.siteWindowController) ? plugIn : nullptr;
    }
    static KTVPlugInPtr make(KTVDecoder& decoder)
    {
        const std::shared_ptr<KTVPlotixToolbarPlugIn> plugIn(new KTVPlotixToolbarPlugIn);
        return plugIn->initWithCoder(decoder) ? plugIn : nullptr;
    }
    QString name() const override { return QStringLiteral("Stub Button"); }
    QAction* toolbarItem() override
    {
        auto* item = new QAction(name());
        connect(item, &QAction::triggered, this, [this] { ++m_pressed; });
        return item;
    }
    int pressed() const { return m_pressed; }

private:
    KTVPlotixToolbarPlugIn() = default;
    int m_pressed = 0;
};

class ToolbarModule : public StubModule {
public:
    QStringList classNames() const override { return StubModule::classNames() << QLatin1String(plotix::kToolbarClass); }
    KTVPlugInPtr instantiate(const QString& className, const Arguments& arguments) override
    {
        return className == QLatin1String(plotix::kToolbarClass) ? KTVPlotixToolbarPlugIn::make(arguments)
                                                                 : StubModule::instantiate(className, arguments);
    }
    KTVPlugInPtr instantiate(const QString& className, KTVDecoder& decoder) override
    {
        return className == QLatin1String(plotix::kToolbarClass) ? KTVPlotixToolbarPlugIn::make(decoder)
                                                                 : StubModule::instantiate(className, decoder);
    }
};

class ToolbarTest : public testing::Test {
protected:
    ToolbarTest() { site.addStation(); }
    void TearDown() override
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void openWindow()
    {
        window = std::make_unique<SiteWindow>(site.document, plotix::WindowServices{&module, &desktop, &help});
    }
    void reopen()
    {
        window.reset();
        site.reopen();
        openWindow();
    }
    QToolBar& toolbar() { return *window->findChild<QToolBar*>("toolbar"); }
    QStringList buttons()
    {
        QStringList texts;
        for (const QAction* item : toolbar().actions())
            texts << item->text();
        return texts;
    }
    const std::vector<KTVPlugInPtr>& plugIns() { return window->controller().toolbarPlugIns(); }

    ScratchSite site;
    ToolbarModule module;
    plotix::DesktopUserInterface desktop;
    plotix::HelpManager help;
    std::unique_ptr<SiteWindow> window;
};

TEST_F(ToolbarTest, ShowsTheItemOfTheAgentsPlugIn)
{
    openWindow();
    EXPECT_EQ(buttons(), QStringList("Stub Button"));
    EXPECT_FALSE(toolbar().isHidden());
}

TEST_F(ToolbarTest, PlugInOfTheToolbarIsNotListed)
{
    openWindow();
    EXPECT_EQ(window->controller().sourceList().rowCount(), 0);
    reopen();
    EXPECT_EQ(window->controller().sourceList().rowCount(), 0);
}

TEST_F(ToolbarTest, ButtonReachesItsPlugIn)
{
    openWindow();
    toolbar().actions().first()->trigger();
    EXPECT_EQ(dynamic_cast<KTVPlotixToolbarPlugIn&>(*plugIns().at(0)).pressed(), 1);
}

TEST_F(ToolbarTest, PlugInIsArchivedAndComesBackAsTheSame)
{
    openWindow();
    ASSERT_EQ(site.document->archivedPlugIns().size(), 1U);
    const QString identifier = plugIns().at(0)->uniqueIdentifier();
    reopen();
    ASSERT_EQ(plugIns().size(), 1U);
    EXPECT_EQ(plugIns().at(0)->uniqueIdentifier(), identifier);
    EXPECT_EQ(site.document->archivedPlugIns().size(), 1U);
}

TEST_F(ToolbarTest, EveryAgentHasItsOwnNamedButton)
{
    site.document->addAgent(QStringLiteral("Boiler"));
    openWindow();
    EXPECT_EQ(buttons(), QStringList({"Stub Button – Station", "Stub Button – Boiler"}));
    EXPECT_NE(plugIns().at(0)->agent(), plugIns().at(1)->agent());
}

TEST_F(ToolbarTest, AgentThatIsAddedLaterGetsItsButton)
{
    openWindow();
    site.document->addAgent(QStringLiteral("Boiler"));
    EXPECT_EQ(buttons().size(), 2);
    EXPECT_EQ(plugIns().size(), 2U);
}

TEST_F(ToolbarTest, SiteWithoutAgentsHasNoToolbar)
{
    ScratchSite empty;
    SiteWindow fresh(empty.document, {&module, &desktop, &help});
    EXPECT_TRUE(fresh.findChild<QToolBar*>("toolbar")->isHidden());
}

TEST_F(ToolbarTest, ModuleWithoutTheClassHasNoToolbar)
{
    StubModule plain;
    SiteWindow without(site.document, {&plain, &desktop, &help});
    EXPECT_TRUE(without.controller().toolbarPlugIns().empty());
    EXPECT_TRUE(without.findChild<QToolBar*>("toolbar")->isHidden());
}

TEST_F(ToolbarTest, ButtonsAreReachedByKeyboard)
{
    openWindow();
    EXPECT_TRUE(toolbar().widgetForAction(toolbar().actions().first())->focusPolicy() & Qt::TabFocus);
}

// A web request may be the last to hold an item; the view's widgets end on the main thread all the same.
TEST_F(ToolbarTest, LastReferenceOfAnItemOnAnotherThreadEndsOnTheMainQueue)
{
    openWindow();
    KTVPlugInPtr trend = StubTrend::make(KTVPlugInModule::Arguments{site.document->agents()[0], nullptr, {}, {}, {}});
    std::thread::id endedOn;
    QObject::connect(trend.get(), &QObject::destroyed, [&endedOn] { endedOn = std::this_thread::get_id(); });
    auto item = std::make_shared<plotix::SourceListItem>(std::move(trend), "Week");
    std::thread([&item] { item.reset(); }).join();
    EXPECT_EQ(endedOn, std::thread::id());
    bool drained = false;
    plotix::MainQueue::main().async([&drained] { drained = true; });
    ASSERT_TRUE(QTest::qWaitFor([&drained] { return drained; }));
    EXPECT_EQ(endedOn, std::this_thread::get_id());
}

}  // namespace

#include "ToolbarTest.moc"
