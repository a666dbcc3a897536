#include "hostapp/site/WorkingSite.h"

#include "hostapp/site/WindowMemory.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

using plotix::Date;
using plotix::WorkingSite;

namespace {

/// A scratch site with an agent, at work with trends that record what they are sent.
class WorkingSiteTest : public testing::Test {
protected:
    WorkingSiteTest() { site.addStation(); }

    void open(WorkingSite::Use use)
    {
        working = std::make_unique<WorkingSite>(site.document, &module, use);
        working->loadPlugIns();
    }
    KTVPlugInPtr add(const char* title)
    {
        return working->newTrend(site.document->agents()[0], {}, Date{0}, Date{10}, QLatin1String(title));
    }
    void storeTrends(std::initializer_list<const char*> titles)
    {
        open(WorkingSite::Use::OnScreen);
        for (const char* title : titles)
            add(title);
        working.reset();
    }
    QStringList titles() const
    {
        QStringList titles;
        for (const KTVSourceListItemPtr& item : working->sourceList().items())
            titles << item->title();
        return titles;
    }

    ScratchSite site;
    StubModule module;
    std::unique_ptr<WorkingSite> working;
};

TEST_F(WorkingSiteTest, WhatIsAddedOnScreenIsThereAgain)
{
    storeTrends({"One", "Two"});
    open(WorkingSite::Use::Elsewhere);
    EXPECT_EQ(titles(), QStringList({"One", "Two"}));
}

TEST_F(WorkingSiteTest, ElsewhereNothingIsStored)
{
    storeTrends({"One"});
    open(WorkingSite::Use::Elsewhere);
    add("Two");
    working->removePlugIn(working->sourceList().plugInAt(0));
    working.reset();
    EXPECT_EQ(site.document->archivedPlugIns().size(), 1U);
}

TEST_F(WorkingSiteTest, TrendsAreListedAsTheWindowWasLeft)
{
    storeTrends({"One", "Two", "Three"});
    open(WorkingSite::Use::OnScreen);
    plotix::WindowState state;
    state.order << working->sourceList().plugInAt(2)->uniqueIdentifier();
    plotix::WindowMemory(site.document).store(state);
    open(WorkingSite::Use::Elsewhere);
    EXPECT_EQ(titles(), QStringList({"Three", "One", "Two"}));
}

TEST_F(WorkingSiteTest, ARemovedTrendComesBackWhereItStood)
{
    storeTrends({"One", "Two"});
    open(WorkingSite::Use::OnScreen);
    const KTVPlugInPtr one = working->sourceList().plugInAt(0);
    working->removePlugIn(one);
    EXPECT_EQ(titles(), QStringList("Two"));
    working->restorePlugIn(one, 0);
    EXPECT_EQ(titles(), QStringList({"One", "Two"}));
}

TEST_F(WorkingSiteTest, ANewTrendIsSelected)
{
    open(WorkingSite::Use::OnScreen);
    const QSignalSpy selected(working.get(), &WorkingSite::selectionRequested);
    add("One");
    EXPECT_EQ(selected.count(), 1);
}

TEST_F(WorkingSiteTest, ViewsNobodyHasLookedAtAreLoadedAtTheUsualSize)
{
    storeTrends({"One"});
    open(WorkingSite::Use::Elsewhere);
    const KTVPlugInPtr trend = working->sourceList().plugInAt(0);
    EXPECT_FALSE(trend->isViewLoaded());
    working->loadViews();
    EXPECT_EQ(trend->view()->size(), QSize(1200, 600));
}

TEST_F(WorkingSiteTest, ItHasNoWindowAndLeavesItsAgentsAtTheEnd)
{
    open(WorkingSite::Use::Elsewhere);
    EXPECT_EQ(working->window(), nullptr);
    EXPECT_EQ(site.document->agents()[0]->siteWindowController(), working.get());
    working.reset();
    EXPECT_EQ(site.document->agents()[0]->siteWindowController(), nullptr);
}

}  // namespace
