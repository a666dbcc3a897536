#include "tests/hostapp/window/StubbedServices.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>

using plotix::Date;
using plotix::SiteWindow;

namespace {

/// A window with the trends Week, Month and Year, Month being selected.
class TrendListTest : public testing::Test, protected StubbedServices {
protected:
    TrendListTest()
    {
        site.addStation();
        openWindow();
        for (const char* title : {"Week", "Month", "Year"})
            window->controller().newTrend(site.document->agents()[0], {}, Date{0}, Date{10}, QLatin1String(title));
        select(1);
    }
    ~TrendListTest() override
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void openWindow() { window = std::make_unique<SiteWindow>(site.document, services()); }
    void show()
    {
        window->show();
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->isVisible(); }, 5000));
        QCoreApplication::processEvents();
    }
    void reopen()
    {
        window->close();
        window.reset();
        site.reopen();
        openWindow();
    }
    void select(int row) { window->selectPlugIn(window->controller().sourceList().plugInAt(row)); }
    QString selected() { return window->selectedPlugIn() ? window->selectedPlugIn()->title() : QString(); }
    QStringList titles()
    {
        QStringList list;
        for (int row = 0; row < window->controller().sourceList().rowCount(); ++row)
            list << window->controller().sourceList().plugInAt(row)->title();
        return list;
    }
    QListView* list() { return window->findChild<QListView*>(QStringLiteral("trendList")); }
    void undo() { window->actions().undo->trigger(); }
    void redo() { window->actions().redo->trigger(); }

    ScratchSite site;
    std::unique_ptr<SiteWindow> window;
};

const QStringList kAll{QStringLiteral("Week"), QStringLiteral("Month"), QStringLiteral("Year")};
const QStringList kWithoutMonth{QStringLiteral("Week"), QStringLiteral("Year")};

TEST_F(TrendListTest, UndoneDeletionStandsWhereItStoodAndIsStored)
{
    window->actions().deleteTrend->trigger();
    EXPECT_EQ(titles(), kWithoutMonth);
    EXPECT_EQ(site.document->archivedPlugIns().size(), 2U);
    undo();
    EXPECT_EQ(titles(), kAll);
    EXPECT_EQ(selected(), QStringLiteral("Month"));
    EXPECT_EQ(site.document->archivedPlugIns().size(), 3U);
    redo();
    EXPECT_EQ(titles(), kWithoutMonth);
}

TEST_F(TrendListTest, UndoneDeletionKeepsItsPlaceWhenTheSiteOpensAgain)
{
    window->actions().deleteTrend->trigger();
    undo();
    reopen();
    EXPECT_EQ(titles(), kAll);
    EXPECT_EQ(selected(), QStringLiteral("Month"));
}

TEST_F(TrendListTest, DeletedForGoodIsGone)
{
    window->actions().deleteTrend->trigger();
    reopen();
    EXPECT_EQ(titles(), kWithoutMonth);
    EXPECT_FALSE(window->actions().undo->isEnabled());
}

TEST_F(TrendListTest, RenamingInTheListCanBeUndone)
{
    auto& model = window->controller().sourceList();
    model.setData(model.index(1), QStringLiteral("Thirty Days"), Qt::EditRole);
    EXPECT_TRUE(window->actions().undo->text().contains(QStringLiteral("Thirty Days")));
    undo();
    EXPECT_EQ(titles(), kAll);
    redo();
    EXPECT_EQ(titles().at(1), QStringLiteral("Thirty Days"));
}

TEST_F(TrendListTest, TypingTheSameTitleIsNothingToUndo)
{
    auto& model = window->controller().sourceList();
    model.setData(model.index(1), QStringLiteral("Month"), Qt::EditRole);
    EXPECT_FALSE(window->actions().undo->isEnabled());
}

TEST_F(TrendListTest, KeyF2AndDoubleClickEdit)
{
    show();
    window->actions().renameTrend->trigger();
    EXPECT_TRUE(list()->isPersistentEditorOpen(list()->currentIndex()) || list()->findChild<QLineEdit*>());
    EXPECT_TRUE(list()->editTriggers().testFlag(QAbstractItemView::DoubleClicked));
    EXPECT_EQ(window->actions().renameTrend->shortcut(), QKeySequence(Qt::Key_F2));
}

TEST_F(TrendListTest, MovingUpAndDownKeepsTheSelection)
{
    window->actions().moveUp->trigger();
    EXPECT_EQ(titles(), QStringList({"Month", "Week", "Year"}));
    EXPECT_EQ(selected(), QStringLiteral("Month"));
    EXPECT_FALSE(window->actions().moveUp->isEnabled());
    EXPECT_EQ(window->actions().moveUp->toolTip(), QStringLiteral("This trend is the first one."));
    undo();
    EXPECT_EQ(titles(), kAll);
}

TEST_F(TrendListTest, AltDownOnTheListMoves)
{
    show();
    list()->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return list()->hasFocus(); }));
    QTest::keyClick(list(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(titles(), QStringList({"Week", "Year", "Month"}));
}

TEST_F(TrendListTest, DraggedRowIsMovedStoredAndUndone)
{
    // What a drag inside the list does in the end: drops the third row before the first.
    EXPECT_TRUE(window->controller().sourceList().moveRow({}, 2, {}, 0));
    EXPECT_EQ(titles(), QStringList({"Year", "Week", "Month"}));
    reopen();
    EXPECT_EQ(titles(), QStringList({"Year", "Week", "Month"}));
}

TEST_F(TrendListTest, DroppingARowWhereItIsChangesNothing)
{
    auto& model = window->controller().sourceList();
    EXPECT_FALSE(model.moveRow({}, 1, {}, 1));
    EXPECT_FALSE(model.moveRow({}, 1, {}, 2));
    EXPECT_EQ(titles(), kAll);
    EXPECT_FALSE(window->actions().undo->isEnabled());
}

TEST_F(TrendListTest, SeparateWindowComesBackWithItsPlace)
{
    show();
    window->actions().openInWindow->trigger();
    auto* separate = window->controller().separateWindowOf(window->selectedPlugIn().get());
    separate->setGeometry(111, 122, 700, 500);
    reopen();
    show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return site.document->windowControllers().size() == 1; }));
    EXPECT_EQ(site.document->windowControllers()[0]->contentViewController()->title(), QStringLiteral("Month"));
    EXPECT_EQ(site.document->windowControllers()[0]->window()->geometry(), QRect(111, 122, 700, 500));
}

TEST_F(TrendListTest, SeparateWindowBroughtBackStaysBack)
{
    show();
    window->actions().openInWindow->trigger();
    EXPECT_TRUE(window->actions().bringBack->isEnabled());
    window->actions().bringBack->trigger();
    ASSERT_TRUE(QTest::qWaitFor([&] { return site.document->windowControllers().empty(); }));
    EXPECT_FALSE(window->actions().bringBack->isEnabled());
    reopen();
    show();
    EXPECT_TRUE(site.document->windowControllers().empty());
}

TEST_F(TrendListTest, DeletedSeparateTrendComesBackInItsWindow)
{
    window->actions().openInWindow->trigger();
    window->actions().deleteTrend->trigger();
    EXPECT_TRUE(site.document->windowControllers().empty());
    undo();
    EXPECT_EQ(site.document->windowControllers().size(), 1U);
}

TEST_F(TrendListTest, WindowsSizeIsTheDocuments)
{
    show();
    window->resize(900, 555);
    QCoreApplication::processEvents();
    reopen();
    EXPECT_EQ(window->size(), QSize(900, 555));
}

TEST_F(TrendListTest, StoringAgainWritesNothing)
{
    show();
    window->storeNow();
    const QByteArray order = site.document->setting(QStringLiteral("trendOrder"));
    EXPECT_EQ(order.split('\n').size(), 3);
    site.document->setSetting(QStringLiteral("trendOrder"), "marked");
    window->storeNow();
    EXPECT_EQ(site.document->setting(QStringLiteral("trendOrder")), QByteArrayLiteral("marked"));
}

TEST_F(TrendListTest, WhatIsFollowedIsTheDocuments)
{
    reopen();
    plotix::WindowMemory memory(site.document);
    plotix::WindowState state = memory.state();
    EXPECT_TRUE(state.followed.isEmpty());
    state.followed = QStringList{"one", "two"};
    memory.store(state);
    EXPECT_EQ(plotix::readWindowState(*site.document).followed, QStringList({"one", "two"}));
    EXPECT_EQ(site.document->setting(QStringLiteral("followedTrends")), QByteArrayLiteral("one\ntwo"));
}

TEST_F(TrendListTest, DamagedMemoryIsNoMemory)
{
    reopen();
    site.document->setSetting(QStringLiteral("separateWindows"), "[{\"identifier\":3},7");
    site.document->setSetting(QStringLiteral("windowGeometry"), "rubbish");
    const plotix::WindowState state = plotix::readWindowState(*site.document);
    EXPECT_TRUE(state.separate.empty());
    window.reset();
    openWindow();
    EXPECT_EQ(titles(), kAll);
}

}  // namespace
