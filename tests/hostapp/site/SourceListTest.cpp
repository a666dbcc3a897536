#include "hostapp/site/PlugInStore.h"
#include "hostapp/site/SourceListModel.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtTest/QAbstractItemModelTester>

using plotix::PlugInStore;
using plotix::SourceListModel;

namespace {

class SourceListTest : public testing::Test {
protected:
    SourceListTest() : station(site.addStation()) {}

    KTVPlugInPtr makeTrend(const QString& title)
    {
        const KTVPlugInPtr trend =
            module.instantiate(QStringLiteral("KTVPlotixPlugIn"), {station, nullptr, {}, {}, {}});
        trend->setTitle(title);
        return trend;
    }

    ScratchSite site;
    StubModule module;
    std::shared_ptr<plotix::SiteAgent> station;
};

TEST_F(SourceListTest, TitleIsThePlugInsOrItsClassName)
{
    SourceListModel list;
    list.append(makeTrend({}));
    list.append(makeTrend(QStringLiteral("Week")));
    EXPECT_EQ(list.index(0).data().toString(), QStringLiteral("Stub"));
    EXPECT_EQ(list.index(1).data().toString(), QStringLiteral("Week"));
}

TEST_F(SourceListTest, RenamingReachesThePlugIn)
{
    SourceListModel list;
    QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const KTVPlugInPtr trend = makeTrend(QStringLiteral("Week"));
    list.append(trend);
    EXPECT_TRUE(list.setData(list.index(0), QStringLiteral(" Month "), Qt::EditRole));
    EXPECT_EQ(trend->title(), QStringLiteral("Month"));
}

TEST_F(SourceListTest, EmptyTitleIsRefused)
{
    SourceListModel list;
    const KTVPlugInPtr trend = makeTrend(QStringLiteral("Week"));
    list.append(trend);
    EXPECT_FALSE(list.setData(list.index(0), QStringLiteral("  "), Qt::EditRole));
    EXPECT_EQ(trend->title(), QStringLiteral("Week"));
}

TEST_F(SourceListTest, ItemsHandedOutKeepTheirTitle)
{
    SourceListModel list;
    const KTVPlugInPtr trend = makeTrend(QStringLiteral("Week"));
    list.append(trend);
    const SourceListModel::Items before = list.items();
    trend->setTitle(QStringLiteral("Month"));
    EXPECT_EQ(before[0]->title(), QStringLiteral("Week"));
    EXPECT_EQ(list.items()[0]->title(), QStringLiteral("Month"));
}

TEST_F(SourceListTest, StoreKeepsOrderTitleAndIdentity)
{
    const KTVPlugInPtr first = makeTrend(QStringLiteral("Week")), second = makeTrend(QStringLiteral("Month"));
    PlugInStore store(site.document, &module);
    store.store(*first);
    store.store(*second);
    site.reopen();
    PlugInStore again(site.document, &module);
    const auto loaded = again.load(nullptr);
    ASSERT_EQ(loaded.size(), 2U);
    EXPECT_EQ(loaded[0]->uniqueIdentifier(), first->uniqueIdentifier());
    EXPECT_EQ(loaded[1]->title(), QStringLiteral("Month"));
}

TEST_F(SourceListTest, StoringAgainReplacesInPlace)
{
    const KTVPlugInPtr trend = makeTrend(QStringLiteral("Week"));
    PlugInStore store(site.document, &module);
    store.store(*trend);
    trend->setTitle(QStringLiteral("Month"));
    store.store(*trend);
    EXPECT_EQ(site.document->archivedPlugIns().size(), 1U);
    EXPECT_EQ(PlugInStore(site.document, &module).load(nullptr).at(0)->title(), QStringLiteral("Month"));
}

TEST_F(SourceListTest, WhatCannotBeMadeStaysInTheDocument)
{
    site.document->storePlugIn({0, QStringLiteral("SomethingNewer"), QByteArrayLiteral("?")});
    PlugInStore store(site.document, &module);
    EXPECT_TRUE(store.load(nullptr).empty());
    EXPECT_EQ(store.unreadableCount(), 1);
    EXPECT_EQ(site.document->archivedPlugIns().size(), 1U);
}

}  // namespace
