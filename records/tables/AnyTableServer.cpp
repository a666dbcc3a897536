#include "records/tables/AnyTableServer.h"

#include "base/ReportableError.h"
#include "records/tables/TableRecordStore.h"

namespace plotix {

namespace {

bool isClickHouse(const QString& text)
{
    return text.startsWith(QLatin1String("clickhouse://"));
}

bool isPostgres(const QString& text)
{
    return text.startsWith(QLatin1String("postgresql://")) || text.startsWith(QLatin1String("postgres://"));
}

class DatabaseTables final : public TableServer {
public:
    explicit DatabaseTables(std::shared_ptr<TableDatabase> database) : m_database(std::move(database)) {}

    QString title() const override { return m_database->title(); }
    QString address() const override { return m_database->address(); }
    QStringList tables() override { return m_database->tables(); }
    std::vector<Column> columns(const QString& table) override { return m_database->columns(table); }
    QStringList names(const QString& table, const QString& column, int most) override
    {
        Column named{column, QStringLiteral("?"), Column::Kind::Text};
        for (const Column& each : columns(table))
            if (each.name == column)
                named = each;
        const std::string text = m_database->nameText(named);
        std::string statement = "SELECT DISTINCT " + text + " AS plotix_name FROM " + m_database->tableName(table);
        statement += " WHERE " + text + " IS NOT NULL ORDER BY plotix_name LIMIT " + std::to_string(most);
        QStringList found;
        for (const QStringList& row : m_database->texts(statement))
            found.append(row.value(0));
        return found;
    }
    std::shared_ptr<RecordStore> records(const AttachedTable& table) override
    {
        return std::make_shared<TableRecordStore>(m_database, table);
    }

private:
    const std::shared_ptr<TableDatabase> m_database;
};

}  // namespace

std::shared_ptr<TableServer> tableServerAt(const QString& address)
{
    if (isClickHouse(address))
        return std::make_shared<DatabaseTables>(clickHouseTables(address));
    if (isPostgres(address))
        return std::make_shared<DatabaseTables>(postgresTables(address));
    throw ReportableError(QStringLiteral("“%1” is no address of a database: write clickhouse://HOST/DATABASE or "
                                         "postgresql://HOST/DATABASE.")
                              .arg(address.section(QLatin1Char('@'), -1)));
}

}  // namespace plotix
