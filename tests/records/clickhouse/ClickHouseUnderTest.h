#pragma once

#include "records/clickhouse/ClickHouseRecordStore.h"
#include "records/clickhouse/ClickHouseServer.h"
#include "records/clickhouse/ShardPlaces.h"
#include "tests/records/clickhouse/ServerForTests.h"
#include "tests/records/contract/RecordStoreContract.h"

#include <set>

/// A site of its own on the server of this program.
class ClickHouseUnderTest : public StoreUnderTest {
public:
    ClickHouseUnderTest() : ClickHouseUnderTest(ServerForTests::running().newSite()) {}
    explicit ClickHouseUnderTest(plotix::ServerAddress address) : m_address(std::move(address))
    {
        plotix::ClickHouseServer(m_address, {}).create();
    }

    std::shared_ptr<plotix::RecordStore> opened() override
    {
        return std::make_shared<plotix::ClickHouseRecordStore>(site());
    }
    std::shared_ptr<plotix::SiteOnServer> site() { return siteAt(m_address); }
    /// The same site by another address.
    std::shared_ptr<plotix::SiteOnServer> siteAt(const plotix::ServerAddress& address)
    {
        return std::make_shared<plotix::SiteOnServer>(address, plotix::ServerCredentials(),
                                                      [owners = m_owners](plotix::RowId agent, plotix::RowId property) {
                                                          return owners->contains({agent, property});
                                                      });
    }
    plotix::RowId addAgent() override { return ++m_agents; }
    plotix::RowId addProperty(plotix::RowId agent) override
    {
        m_owners->insert({agent, ++m_properties});
        return m_properties;
    }

    const plotix::ServerAddress& address() const { return m_address; }

private:
    using Owners = std::set<std::pair<plotix::RowId, plotix::RowId>>;

    const plotix::ServerAddress m_address;
    const std::shared_ptr<Owners> m_owners = std::make_shared<Owners>();
    plotix::RowId m_agents = 0, m_properties = 0;
};

/// The same on two shards; agents go to the second one first.
class ClickHouseShardsUnderTest : public ClickHouseUnderTest {
public:
    ClickHouseShardsUnderTest() : ClickHouseUnderTest(ServerForTests::running().newSiteOnShards())
    {
        const std::shared_ptr<plotix::SiteOnServer> shards = site();
        plotix::WritersTurn turn(shards, plotix::SiteOnServer::kHome, 0);
        plotix::givePlace(*shards, turn, kElsewhere);
    }
    static constexpr plotix::RowId kElsewhere = 1'000'000;  ///< an agent of the first shard
};
