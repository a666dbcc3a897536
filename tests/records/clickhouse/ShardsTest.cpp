#include "base/ReportableError.h"
#include "records/clickhouse/JointBatches.h"
#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ShardCheck.h"
#include "records/clickhouse/ShardPlaces.h"
#include "tests/records/clickhouse/ClickHouseUnderTest.h"

#include <thread>

namespace plotix {

namespace {

/// A site on two shards, an agent on each.
class ShardsOnServerTest : public RecordsFixture {
protected:
    ShardsOnServerTest() : site(m_store.site())
    {
        agent = m_store.addAgent();
        air = m_store.addProperty(agent);
        store(ramp(air, 0, 10));
        other = m_store.addAgent();
        wind = m_store.addProperty(other);
        storeOf(other, ramp(wind, 0, 10));
    }
    std::shared_ptr<RecordStore> opened() override { return m_store.opened(); }

    void storeOf(RowId of, const RecordBlock& records)
    {
        const auto writer = opened()->begin();
        writer->store(of, records);
        writer->commit();
    }
    /// More records of both, in one transaction that is not stored yet.
    std::unique_ptr<RecordTransaction> both()
    {
        auto writer = opened()->begin();
        writer->store(agent, ramp(air, 10, 10));
        writer->store(other, ramp(wind, 10, 10));
        writer->prepare();
        return writer;
    }
    std::size_t countOf(RowId of) { return opened()->overview(of, {}).records(); }
    std::pair<std::size_t, std::size_t> counts() { return {countOf(agent), countOf(other)}; }
    std::uint64_t rowsIn(std::size_t shard, const std::string& table, RowId of)
    {
        const SiteOnServer::Lease server = site->leaseOn(shard);
        const auto answer =
            server->ask("SELECT count() FROM " + table + " WHERE agent = " + std::to_string(of) + " FORMAT RowBinary");
        return rowbinary::Reader(answer).number<std::uint64_t>();
    }
    void rename(std::size_t shard, const std::string& table, const std::string& to)
    {
        // Replicas do not tell each other of it.
        for (const ServerAddress& host : m_store.address().shardByShard()[shard].hostByHost())
            ServerConnection(host, {}).tell("RENAME TABLE " + table + " TO " + to);
    }
    /// Throws as it would where the process ends when it is about to write there.
    void commitWithout(std::size_t shard, const std::string& table, std::unique_ptr<RecordTransaction> writer)
    {
        const std::string away = table.substr(0, table.size() - 1) + "_away`";
        rename(shard, table, away);
        EXPECT_THROW(writer->commit(), ReportableError);
        writer.reset();
        rename(shard, away, table);
    }
    bool isReplicated() { return site->leaseOn(SiteOnServer::kHome)->isReplicated(); }
    std::shared_ptr<RecordStore> storeAt(const ServerAddress& address)
    {
        return std::make_shared<ClickHouseRecordStore>(m_store.siteAt(address));
    }
    /// The site where the second shard cannot be reached.
    ServerAddress withoutSecond()
    {
        ServerAddress address = m_store.address();
        address.others = {{{QStringLiteral("127.0.0.1"), 1}}};
        return address;
    }

    ClickHouseShardsUnderTest m_store;
    const std::shared_ptr<SiteOnServer> site;
    RowId other = 0;
};

TEST_F(ShardsOnServerTest, AnAgentIsOnOneShardAndTheNextOneElsewhere)
{
    EXPECT_EQ(site->shardOf(agent), 1U);
    EXPECT_EQ(site->shardOf(other), 0U);
    EXPECT_EQ(rowsIn(1, site->tables(1).young(), agent), 10U);
    EXPECT_EQ(rowsIn(0, site->tables(0).young(), agent), 0U);
    EXPECT_EQ(rowsIn(0, site->tables(0).young(), other), 10U);
}

TEST_F(ShardsOnServerTest, WhoOpensTheSiteFindsAllOfIt)
{
    EXPECT_EQ(counts(), std::pair(10UL, 10UL));
    storeOf(other, ramp(wind, 100, 10));
    EXPECT_EQ(opened()->extent()->last, 109);
    EXPECT_EQ(opened()->verify().records, 30U);
}

TEST_F(ShardsOnServerTest, CompactingTakesAllShards)
{
    opened()->compact({});
    EXPECT_EQ(rowsIn(1, site->tables(1).chunks(), agent), 2U);
    EXPECT_EQ(rowsIn(0, site->tables(0).chunks(), other), 2U);
    EXPECT_EQ(counts(), std::pair(10UL, 10UL));
}

TEST_F(ShardsOnServerTest, OneTransactionStoresOnSeveral)
{
    both()->commit();
    EXPECT_EQ(counts(), std::pair(20UL, 20UL));
}

/// A transaction that ends between two of its steps.
class ShardsHalfStoredOnServerTest : public ShardsOnServerTest {
protected:
    void SetUp() override
    {
        if (isReplicated())
            GTEST_SKIP() << "replicas are waited for, longer than whoever opens the site looks away";
    }
};

TEST_F(ShardsHalfStoredOnServerTest, BeforeItIsDecidedNothingIsThere)
{
    commitWithout(0, site->tables().joint(), both());
    opened()->compact({});
    EXPECT_EQ(counts(), std::pair(10UL, 10UL));
}

TEST_F(ShardsHalfStoredOnServerTest, WhoWritesNextConfirmsWhatWasDecided)
{
    commitWithout(1, site->tables(1).batches(), both());
    EXPECT_EQ(counts(), std::pair(10UL, 20UL));
    storeOf(other, ramp(wind, 50, 1));
    EXPECT_EQ(counts(), std::pair(20UL, 21UL));
}

TEST_F(ShardsHalfStoredOnServerTest, TheHomeItselfIsConfirmedByWhoWritesNext)
{
    commitWithout(0, site->tables(0).batches(), both());
    EXPECT_EQ(countOf(other), 10U);
    storeOf(other, ramp(wind, 50, 1));
    EXPECT_EQ(counts(), std::pair(20UL, 21UL));
}

TEST_F(ShardsHalfStoredOnServerTest, WhoSealsConfirmsBefore)
{
    auto writer = opened()->begin();
    writer->store(agent, ramp(air, 0, 20'000));
    writer->store(other, ramp(wind, 10, 10));
    writer->prepare();
    commitWithout(1, site->tables(1).batches(), std::move(writer));
    joint::turnOf(site, 1, 1'000);
    EXPECT_EQ(counts(), std::pair(20'000UL, 20UL));
}

TEST_F(ShardsHalfStoredOnServerTest, WhoOpensItConfirmsWhatWasDecided)
{
    commitWithout(1, site->tables(1).batches(), both());
    forgetSuitable();
    EXPECT_EQ(counts(), std::pair(20UL, 20UL));
}

TEST_F(ShardsOnServerTest, WhoeverPlacesAnAgentFirstAllAgree)
{
    std::vector<RowId> fresh;
    std::vector<RowId> property;
    for (int i = 0; i < 6; ++i) {
        fresh.push_back(m_store.addAgent());
        property.push_back(m_store.addProperty(fresh.back()));
    }
    std::vector<std::thread> collectors;
    for (int collector = 0; collector < 2; ++collector)
        collectors.emplace_back([&, collector] {
            const auto appender = m_store.opened()->appender();
            appender->setPatience(30'000);
            for (std::size_t i = 0; i < fresh.size(); ++i)
                appender->append(fresh[i], ramp(property[i], collector * 100, 5));
        });
    for (std::thread& collector : collectors)
        collector.join();
    for (const RowId each : fresh)
        EXPECT_EQ(countOf(each), 10U);
}

TEST_F(ShardsOnServerTest, ALostShardTakesNothingButItsOwnAgents)
{
    const std::shared_ptr<RecordStore> records = storeAt(withoutSecond());
    EXPECT_EQ(records->overview(other, {}).records(), 10U);
    EXPECT_EQ(records->extent()->last, 9);
    records->appender()->append(other, ramp(wind, 10, 5));
    const auto writer = records->begin();
    writer->store(other, ramp(wind, 20, 5));
    writer->commit();
    EXPECT_EQ(countOf(other), 20U);
}

TEST_F(ShardsOnServerTest, WhatNeedsALostShardSaysWhichItIs)
{
    try {
        storeAt(withoutSecond())->overview(agent, {});
        FAIL() << "it was read";
    } catch (const ReportableError& error) {
        EXPECT_TRUE(error.message().contains("127.0.0.1:1/plotix/")) << error.what();
        EXPECT_TRUE(error.message().contains("cannot be reached")) << error.what();
    }
}

TEST_F(ShardsOnServerTest, ANewAgentIsNotGivenALostShard)
{
    for (int i = 0; i < 2; ++i) {
        const RowId fresh = m_store.addAgent();
        storeAt(withoutSecond())->appender()->append(fresh, ramp(m_store.addProperty(fresh), 0, 1));
        EXPECT_EQ(site->shardOf(fresh), 0U);
    }
}

TEST_F(ShardsOnServerTest, ALostShardChangesTheMarkOnceAndIsDescribed)
{
    ClickHouseServer whole(m_store.address(), {}), left(withoutSecond(), {});
    EXPECT_EQ(left.changeMark(), left.changeMark());
    EXPECT_NE(left.changeMark(), whole.changeMark());
    EXPECT_TRUE(whole.description().shards[1].failure.isEmpty());
    EXPECT_TRUE(left.description().shards[1].failure.contains("cannot be reached"));
    EXPECT_EQ(left.description().shards[0].agents, 1U);
}

TEST_F(ShardsOnServerTest, WhateverIsStoredOnAnyShardChangesTheMark)
{
    ClickHouseServer server(m_store.address(), {});
    const QByteArray before = server.changeMark();
    storeOf(agent, ramp(air, 10, 1));
    EXPECT_NE(server.changeMark(), before);
}

/// An address that does not mean the site as it is.
class ShardsMistakenOnServerTest : public ShardsOnServerTest {
protected:
    QString refusal(const ServerAddress& address)
    {
        forgetSuitable();
        try {
            storeAt(address)->overview(agent, {});
        } catch (const ReportableError& error) {
            return error.message();
        }
        return {};
    }
};

TEST_F(ShardsMistakenOnServerTest, TooFewShardsAreRefused)
{
    ServerAddress address = m_store.address();
    address.others.clear();
    EXPECT_TRUE(refusal(address).contains("has 2 shards and the address names 1: name all"))
        << qPrintable(refusal(address));
    EXPECT_THROW(ClickHouseServer(address, {}).requireUsable(), ReportableError);
    EXPECT_THROW(ClickHouseServer(address, {}).drop(), ReportableError);
}

TEST_F(ShardsMistakenOnServerTest, TooManyShardsAreRefused)
{
    ServerAddress address = m_store.address();
    address.others.push_back(address.hosts);
    EXPECT_TRUE(refusal(address).contains("has 2 shards and the address names 3")) << qPrintable(refusal(address));
}

TEST_F(ShardsMistakenOnServerTest, AnotherSitesShardIsRefused)
{
    if (isReplicated())
        GTEST_SKIP() << "its place at the keeper is taken";
    const ServerAddress second = m_store.address().shardByShard()[1];
    const SiteOnServer::Lease server = site->leaseOn(1);
    server->tell("DROP TABLE " + server.tables().shards());
    EXPECT_TRUE(refusal(m_store.address()).contains("has no shard 2")) << qPrintable(refusal(m_store.address()));
    for (const std::string& statement : SiteTables(second).creation({}, "elsewhere:8123/plotix/plant", 2))
        ServerConnection(second, {}).tell(statement);
    EXPECT_TRUE(refusal(m_store.address()).contains("has shard 2 of another site, “elsewhere"))
        << qPrintable(refusal(m_store.address()));
}

/// A site that had no shards at first.
class AddedShardOnServerTest : public RecordsFixture {
protected:
    AddedShardOnServerTest() : address(m_store.address())
    {
        address.others.push_back(address.hosts);
        agent = m_store.addAgent();
        air = m_store.addProperty(agent);
        store(ramp(air, 0, 2'000));
    }
    std::shared_ptr<RecordStore> opened() override
    {
        return std::make_shared<ClickHouseRecordStore>(m_store.siteAt(isAdded ? address : m_store.address()));
    }
    void add()
    {
        ClickHouseServer(address, {}).create();
        isAdded = true;
    }
    /// As the first version made it, which knew no shards.
    void makeOld()
    {
        server().drop();
        const std::vector<StoreServer::Statements> all = server().creation();
        const std::vector<ServerAddress> hosts = m_store.address().hostByHost();
        for (std::size_t host = 0; host < hosts.size(); ++host)
            for (const std::string& statement : all[host].statements) {
                const auto has = [&](const char* part) { return statement.find(part) != std::string::npos; };
                if (has("_shard`") || has("_placement`") || has("_joint`"))
                    continue;
                ServerConnection(hosts[host], {})
                    .tell(has("VALUES (") ? statement.substr(0, statement.find(" VALUES")) + " VALUES (1)" : statement);
            }
        forgetSuitable();
        store(ramp(air, 0, 2'000));
    }
    ClickHouseServer server() { return {m_store.address(), {}}; }

    ClickHouseUnderTest m_store{ServerForTests::running().newSiteOnOneShard()};
    ServerAddress address;
    bool isAdded = false;
};

TEST_F(AddedShardOnServerTest, WhatWasThereStaysWhereItWas)
{
    add();
    EXPECT_EQ(m_store.siteAt(address)->placeOf(agent), 0U);
    EXPECT_EQ(count(), 2'000U);
}

TEST_F(AddedShardOnServerTest, TheNewOneTakesNewAgents)
{
    add();
    const RowId fresh = m_store.addAgent();
    opened()->appender()->append(fresh, ramp(m_store.addProperty(fresh), 0, 10));
    EXPECT_EQ(m_store.siteAt(address)->placeOf(fresh), 1U);
    EXPECT_EQ(opened()->overview(fresh, {}).records(), 10U);
}

TEST_F(AddedShardOnServerTest, TheAddressWithoutItIsRefused)
{
    add();
    isAdded = false;
    EXPECT_THROW(count(), ReportableError);
}

TEST_F(AddedShardOnServerTest, AddingItAgainChangesNothing)
{
    add();
    const RowId fresh = m_store.addAgent();
    opened()->appender()->append(fresh, ramp(m_store.addProperty(fresh), 0, 10));
    add();
    EXPECT_EQ(ClickHouseServer(address, {}).layout()->shards, 2U);
    EXPECT_EQ(m_store.siteAt(address)->placeOf(fresh), 1U);
}

TEST_F(AddedShardOnServerTest, AnOldSiteIsReadAndWrittenAsItIs)
{
    makeOld();
    store(ramp(air, 2'000, 10));
    EXPECT_EQ(count(), 2'010U);
    EXPECT_EQ(server().layout()->version, 1U);
    EXPECT_THROW(server().create(), ReportableError);
    EXPECT_EQ(server().layout()->version, 1U);
}

TEST_F(AddedShardOnServerTest, AnOldSiteThatIsUpgradedHasItsRecordsAndTakesShards)
{
    makeOld();
    server().upgrade();
    EXPECT_EQ(server().layout()->version, StoreServer::kVersion);
    EXPECT_EQ(count(), 2'000U);
    server().upgrade();
    EXPECT_EQ(server().layout()->shards, 1U);
    add();
    EXPECT_EQ(count(), 2'000U);
}

TEST_F(AddedShardOnServerTest, ALaterVersionIsRefused)
{
    ServerConnection(m_store.address(), {})
        .tell("INSERT INTO " + SiteTables(m_store.address()).about() + " VALUES (3)");
    forgetSuitable();
    EXPECT_THROW(count(), ReportableError);
    EXPECT_THROW(server().upgrade(), ReportableError);
    EXPECT_THROW(server().requireUsable(), ReportableError);
}

TEST(LeastFilledTest, NewAgentsGoWhereLeastIs)
{
    EXPECT_EQ(leastFilled({{0, 1e9, 10}, {1, 2e9, 10}}), 0U);
    EXPECT_EQ(leastFilled({{0, 1e9, 10}, {1, 0, 0}}), 1U);
}

TEST(LeastFilledTest, AgentsWithoutRecordsYetCount)
{
    EXPECT_EQ(leastFilled({{0, 0, 3}, {1, 0, 2}}), 1U);
    EXPECT_EQ(leastFilled({{0, 1e9, 10}, {1, 0, 30}}), 0U);
}

}  // namespace

}  // namespace plotix
