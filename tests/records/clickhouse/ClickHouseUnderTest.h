#pragma once

#include "records/clickhouse/ClickHouseRecordStore.h"
#include "records/clickhouse/ClickHouseServer.h"
#include "tests/records/clickhouse/ServerForTests.h"
#include "tests/records/contract/RecordStoreContract.h"

#include <set>

/// A site of its own on the server of this program.
class ClickHouseUnderTest : public StoreUnderTest {
public:
    ClickHouseUnderTest() : m_address(ServerForTests::running().newSite())
    {
        plotix::ClickHouseServer(m_address, {}).create();
    }

    std::shared_ptr<plotix::RecordStore> opened() override
    {
        return std::make_shared<plotix::ClickHouseRecordStore>(site());
    }
    std::shared_ptr<plotix::SiteOnServer> site()
    {
        return std::make_shared<plotix::SiteOnServer>(m_address, plotix::ServerCredentials(),
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

private:
    using Owners = std::set<std::pair<plotix::RowId, plotix::RowId>>;

    const plotix::ServerAddress m_address;
    const std::shared_ptr<Owners> m_owners = std::make_shared<Owners>();
    plotix::RowId m_agents = 0, m_properties = 0;
};
