#include "tests/records/tables/TablesUnderTest.h"

#include "records/tables/AnyTableServer.h"
#include "tests/records/clickhouse/ServerForTests.h"
#include "tests/records/tables/PostgresForTests.h"

#include "records/clickhouse/ServerConnection.h"

#include <charconv>

using namespace plotix;

namespace {

class ClickHouseDatabase final : public DatabaseForTests {
public:
    QString address() const override
    {
        return QStringLiteral("clickhouse://127.0.0.1:%1/default").arg(ServerForTests::running().port());
    }
    void makeTable(const std::string& name, std::size_t columns) override
    {
        std::string statement = "CREATE TABLE " + name + " (time Float64";
        for (std::size_t i = 1; i <= columns; ++i)
            statement += ", v" + std::to_string(i) + " Nullable(Float64)";
        tell("DROP TABLE IF EXISTS " + name);
        tell(statement + ") ENGINE = MergeTree ORDER BY time");
    }
    void addRows(const std::string& name, const std::vector<std::vector<std::string>>& rows) override
    {
        std::string text;
        for (const auto& row : rows)
            for (std::size_t i = 0; i < row.size(); ++i) {
                text += row[i];
                text += i + 1 < row.size() ? '\t' : '\n';
            }
        connection().insert("INSERT INTO " + name + " FORMAT TabSeparated", std::as_bytes(std::span(text)));
    }
    void tell(const std::string& statement) override { connection().tell(statement); }

private:
    static ServerConnection connection()
    {
        return {ServerAddress::parsed(
                    QStringLiteral("clickhouse://127.0.0.1:%1/default/none").arg(ServerForTests::running().port())),
                {}};
    }
};

class PostgresDatabase final : public DatabaseForTests {
public:
    QString address() const override { return PostgresForTests::running().address(); }
    void makeTable(const std::string& name, std::size_t columns) override
    {
        std::string statement = "CREATE TABLE " + name + " (time float8";
        for (std::size_t i = 1; i <= columns; ++i)
            statement += ", v" + std::to_string(i) + " float8";
        tell("DROP TABLE IF EXISTS " + name);
        tell(statement + ')');
    }
    void addRows(const std::string& name, const std::vector<std::vector<std::string>>& rows) override
    {
        std::string text;
        for (const auto& row : rows)
            for (std::size_t i = 0; i < row.size(); ++i) {
                text += row[i];
                text += i + 1 < row.size() ? '\t' : '\n';
            }
        PostgresForTests::running().tell("COPY " + name + " FROM STDIN", text);
    }
    void tell(const std::string& statement) override { PostgresForTests::running().tell(statement); }
};

using Agents = std::map<RowId, std::vector<RowId>>;

std::string tableOf(int number, RowId agent)
{
    std::string name = "under_test_" + std::to_string(number);
    return name += '_' + std::to_string(agent);
}

/// What is written goes into the twin, and from there into tables.
class WrittenTables final : public RecordStore, public std::enable_shared_from_this<WrittenTables> {
public:
    WrittenTables(std::shared_ptr<DatabaseForTests> database, std::shared_ptr<MemoryRecordStore> written,
                  std::shared_ptr<Agents> agents, int number)
        : m_database(std::move(database)),
          m_written(std::move(written)),
          m_agents(std::move(agents)),
          m_number(number),
          m_server(tableServerAt(m_database->address()))
    {
    }

    std::optional<RecordExtent> extent(RowId agent) override { return of(agent)->extent(agent); }
    std::optional<RecordExtent> extent() override
    {
        std::optional<RecordExtent> all;
        for (const auto& [agent, properties] : *m_agents)
            all = united(all, extent(agent));
        return all;
    }
    RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                            std::optional<double> to) override
    {
        return of(agent)->overview(agent, properties, from, to);
    }
    bool hasMoreThan(std::size_t records, RowId agent, std::optional<double> from, std::optional<double> to) override
    {
        return of(agent)->hasMoreThan(records, agent, from, to);
    }
    RecordIndex index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                      std::optional<double> to, RecordIndex::Detail detail) override
    {
        return of(agent)->index(agent, properties, from, to, detail);
    }
    std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, const ArchiveProgress& progress) override
    {
        return of(agent)->read(agent, properties, from, to, progress);
    }
    std::optional<RecordColumns> columns(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                         std::optional<double> to, const std::shared_ptr<PageCache>& cache,
                                         const ArchiveProgress& progress) override
    {
        return of(agent)->columns(agent, properties, from, to, cache, progress);
    }
    bool unpacksOnDemand(std::span<const RowId>) const override { return true; }
    ColumnStatistics statistics(RowId agent, RowId property, std::optional<double> from, std::optional<double> to,
                                StatisticsFrom source) override
    {
        return of(agent)->statistics(agent, property, from, to, source);
    }
    std::vector<Amendment> amendments(RowId, std::span<const RowId>, std::optional<double>,
                                      std::optional<double>) override
    {
        return {};
    }
    std::unique_ptr<RecordTransaction> begin() override;
    std::unique_ptr<RecordAppender> appender() override;
    CompactionResult compact(const CompactionRequest&, const ArchiveProgress&) override { return {}; }
    VerificationResult verify(const ArchiveProgress&, std::uint64_t) override { return {}; }
    void requireInPlace() override {}
    void closeIdle() override {}

    void writeTables()
    {
        for (const auto& [agent, properties] : *m_agents) {
            const std::string name = tableOf(m_number, agent);
            m_database->makeTable(name, properties.size());
            const RecordBlock block = *m_written->read(agent, properties, {}, {}, {});
            std::vector<std::vector<std::string>> rows;
            for (std::size_t i = 0; i < block.times.size(); ++i) {
                std::vector<std::string>& row = rows.emplace_back();
                row.push_back(cellOf(block.times[i]));
                for (const RecordBlock::Column& column : block.columns)
                    row.push_back(cellOf(column.validity.isValid(i) ? std::optional(column.values[i]) : std::nullopt));
            }
            if (!rows.empty())
                m_database->addRows(name, rows);
        }
    }

private:
    std::shared_ptr<RecordStore> of(RowId agent)
    {
        const auto found = m_agents->find(agent);
        if (found == m_agents->end())
            return std::make_shared<MemoryRecordStore>();
        AttachedTable table;
        table.address = m_server->address();
        table.table = QString::fromStdString(tableOf(m_number, agent));
        table.timeColumn = QStringLiteral("time");
        for (std::size_t i = 0; i < found->second.size(); ++i)
            table.columns[found->second[i]] = QStringLiteral("v%1").arg(i + 1);
        return m_server->records(table);
    }

    const std::shared_ptr<DatabaseForTests> m_database;
    const std::shared_ptr<MemoryRecordStore> m_written;
    const std::shared_ptr<Agents> m_agents;
    const int m_number;
    const std::shared_ptr<TableServer> m_server;
};

class Writing final : public RecordTransaction {
public:
    Writing(std::shared_ptr<WrittenTables> tables, std::unique_ptr<RecordTransaction> into)
        : m_tables(std::move(tables)), m_into(std::move(into))
    {
    }
    void store(RowId agent, const RecordBlock& block) override { m_into->store(agent, block); }
    void remove(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                std::optional<double> to) override
    {
        m_into->remove(agent, properties, from, to);
    }
    void noteAmendments(double now) override { m_into->noteAmendments(now); }
    void addAmendment(RowId agent, const Amendment& amendment) override { m_into->addAmendment(agent, amendment); }
    void prepare() override { m_into->prepare(); }
    void commit() override
    {
        m_into->commit();
        m_tables->writeTables();
    }

private:
    const std::shared_ptr<WrittenTables> m_tables;
    std::unique_ptr<RecordTransaction> m_into;
};

class Appending final : public RecordAppender {
public:
    Appending(std::shared_ptr<WrittenTables> tables, std::unique_ptr<RecordAppender> into)
        : m_tables(std::move(tables)), m_into(std::move(into))
    {
    }
    void append(RowId agent, const RecordBlock& block) override
    {
        m_into->append(agent, block);
        m_tables->writeTables();
    }
    void noteAmendments(std::function<double()> clock) override { m_into->noteAmendments(clock); }
    void setPatience(int milliseconds) override { m_into->setPatience(milliseconds); }

private:
    const std::shared_ptr<WrittenTables> m_tables;
    std::unique_ptr<RecordAppender> m_into;
};

std::unique_ptr<RecordTransaction> WrittenTables::begin()
{
    return std::make_unique<Writing>(shared_from_this(), m_written->begin());
}

std::unique_ptr<RecordAppender> WrittenTables::appender()
{
    return std::make_unique<Appending>(shared_from_this(), m_written->appender());
}

int nextNumber()
{
    static int number = 0;
    return ++number;
}

}  // namespace

std::unique_ptr<DatabaseForTests> clickHouseForTables()
{
    return std::make_unique<ClickHouseDatabase>();
}

std::unique_ptr<DatabaseForTests> postgresForTables()
{
    return std::make_unique<PostgresDatabase>();
}

std::string cellOf(std::optional<double> value)
{
    if (!value)
        return "\\N";
    char digits[40];
    const auto end = std::to_chars(digits, digits + sizeof digits, *value);
    return {digits, end.ptr};
}

TablesUnderTest::TablesUnderTest(std::unique_ptr<DatabaseForTests> database)
    : m_database(std::move(database)), m_agents(std::make_shared<Agents>()), m_number(nextNumber())
{
}

std::shared_ptr<RecordStore> TablesUnderTest::opened()
{
    return std::make_shared<WrittenTables>(m_database, m_written, m_agents, m_number);
}

RowId TablesUnderTest::addAgent()
{
    const auto agent = static_cast<RowId>(m_agents->size()) + 1;
    (*m_agents)[agent];
    m_database->makeTable(tableOf(m_number, agent), 0);
    return agent;
}

RowId TablesUnderTest::addProperty(RowId agent)
{
    m_written->addProperty(agent, ++m_properties);
    (*m_agents)[agent].push_back(m_properties);
    m_database->makeTable(tableOf(m_number, agent), (*m_agents)[agent].size());
    return m_properties;
}
