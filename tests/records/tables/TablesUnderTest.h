#pragma once

#include "records/store/MemoryRecordStore.h"
#include "records/store/TableServer.h"
#include "tests/records/contract/RecordStoreContract.h"

#include <map>
#include <set>

/// A database whose tables a test can fill.
class DatabaseForTests {
public:
    virtual ~DatabaseForTests() = default;
    virtual QString address() const = 0;
    /// Without anything in it; a column of times and so many of values, all numbers, named "time", "v1", "v2" …
    virtual void makeTable(const std::string& name, std::size_t columns) = 0;
    /// Rows as texts, NULL as "\N".
    virtual void addRows(const std::string& name, const std::vector<std::vector<std::string>>& rows) = 0;
    virtual void tell(const std::string& statement) = 0;
};

std::unique_ptr<DatabaseForTests> clickHouseForTables();
std::unique_ptr<DatabaseForTests> postgresForTables();

/// Tables as stores: what a test stores goes into a table of each agent, which is read from then on.
class TablesUnderTest : public StoreUnderTest {
public:
    explicit TablesUnderTest(std::unique_ptr<DatabaseForTests> database);

    std::shared_ptr<plotix::RecordStore> opened() override;
    plotix::RowId addAgent() override;
    plotix::RowId addProperty(plotix::RowId agent) override;

private:
    const std::shared_ptr<DatabaseForTests> m_database;
    const std::shared_ptr<plotix::MemoryRecordStore> m_written = std::make_shared<plotix::MemoryRecordStore>();
    const std::shared_ptr<std::map<plotix::RowId, std::vector<plotix::RowId>>> m_agents;
    const int m_number;  // tells this one's tables from others'
    plotix::RowId m_properties = 0;
};

/// "1.5" of a number, "\N" of none; it reads back to the same bits.
std::string cellOf(std::optional<double> value);
