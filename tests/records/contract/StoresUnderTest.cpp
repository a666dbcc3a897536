#include "records/store/MemoryRecordStore.h"
#include "tests/records/clickhouse/ClickHouseUnderTest.h"
#include "tests/records/contract/RecordStoreContract.h"
#include "tests/records/sqlite/SqliteFile.h"
#include "tests/records/tables/TablesUnderTest.h"

namespace {

class MemoryUnderTest : public StoreUnderTest {
public:
    std::shared_ptr<plotix::RecordStore> opened() override { return m_store; }
    plotix::RowId addAgent() override { return ++m_agents; }
    plotix::RowId addProperty(plotix::RowId agent) override
    {
        m_store->addProperty(agent, ++m_properties);
        return m_properties;
    }

private:
    std::shared_ptr<plotix::MemoryRecordStore> m_store = std::make_shared<plotix::MemoryRecordStore>();
    plotix::RowId m_agents = 0, m_properties = 0;
};

class SqliteUnderTest : public StoreUnderTest {
public:
    std::shared_ptr<plotix::RecordStore> opened() override { return m_file.opened(); }
    plotix::RowId addAgent() override { return m_file.addAgent("Agent"); }
    plotix::RowId addProperty(plotix::RowId agent) override { return m_file.addProperty(agent, "key"); }

private:
    SqliteFile m_file;
};

template <class Store>
std::unique_ptr<StoreUnderTest> make()
{
    return std::make_unique<Store>();
}

}  // namespace

const std::vector<StoreKind>& storesUnderTest()
{
    static const std::vector<StoreKind> stores{{"Memory", &make<MemoryUnderTest>},
                                               {"Sqlite", &make<SqliteUnderTest>},
                                               {"ClickHouse", &make<ClickHouseUnderTest>},
                                               {"ClickHouseShards", &make<ClickHouseShardsUnderTest>}};
    return stores;
}

const std::vector<StoreKind>& storesReadUnderTest()
{
    static const std::vector<StoreKind> stores = [] {
        std::vector<StoreKind> all = storesUnderTest();
        all.push_back({"ClickHouseTable", []() -> std::unique_ptr<StoreUnderTest> {
                           return std::make_unique<TablesUnderTest>(clickHouseForTables());
                       }});
        all.push_back({"PostgresTable", []() -> std::unique_ptr<StoreUnderTest> {
                           return std::make_unique<TablesUnderTest>(postgresForTables());
                       }});
        return all;
    }();
    return stores;
}
