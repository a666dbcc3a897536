#include "records/clickhouse/SiteTables.h"

#include "records/store/StoreServer.h"

#include <array>
#include <bit>
#include <charconv>

namespace plotix {

QString SiteTables::bareName(const char* table) const
{
    const QString name = m_site + QLatin1Char('_') + QLatin1String(table);
    return m_shard == 0 ? name : QStringLiteral("%1_%2").arg(name).arg(m_shard + 1);
}

std::string SiteTables::named(const char* table) const
{
    return QStringLiteral("`%1`.`%2`").arg(m_database, bareName(table)).toStdString();
}

std::vector<std::string> SiteTables::creation(const std::string& replica, const std::string& origin,
                                              std::size_t count) const
{
    // Thirty days of a chunk's first time, as far as that is a day of this age: what is too old goes by the partition.
    static const std::string kMonth = "toInt32(greatest(-100000, least(100000, floor(t0 / 2592000))))";
    const auto table = [&](const char* name, const std::string& columns, const std::string& order) {
        // Replicas find each other by the place, which is the same for all.
        const std::string place = QStringLiteral("/plotix/%1/%2/%3")
                                      .arg(m_database, m_site, bareName(name).mid(m_site.size() + 1))
                                      .toStdString();
        const std::string engine =
            replica.empty() ? std::string("MergeTree") : "ReplicatedMergeTree('" + place + "', '" + replica + "')";
        return "CREATE TABLE IF NOT EXISTS " + named(name) + " (" + columns + ") ENGINE = " + engine +
               " PARTITION BY " + order;
    };
    // A granule is what a server unpacks for one row: sixteen packed columns are half a megabyte, the usual 8,192 a
    // quarter of a gigabyte.
    std::vector<std::string> statements{
        "CREATE DATABASE IF NOT EXISTS `" + m_database.toStdString() + "`",
        table("about", "version UInt32", "tuple() ORDER BY version"),
        table("chunk",
              "agent Int64, property Int64, t0 Float64, t1 Float64, begin Float64, end Float64, n UInt32, chunk "
              "UInt64, version UInt64, batch UInt64, writers Array(UInt64), upto Array(UInt64), codec UInt8, valid "
              "String, data String, count UInt32, minimum Float64, maximum Float64, sum Float64, whole String, runs "
              "String",
              kMonth + " ORDER BY (agent, property, begin, chunk) SETTINGS index_granularity = 16"),
        table("young",
              "agent Int64, time Float64, writer UInt64, number UInt64, place UInt32, version UInt64, batch UInt64, "
              "day UInt32, properties Array(Int64), values Array(Float64), valid Array(UInt8)",
              "day ORDER BY (agent, time, writer, number)"),
        table("batch", "batch UInt64", "tuple() ORDER BY batch"),
        table("amendment",
              "property Int64, version UInt64, place UInt32, batch UInt64, kind UInt8, t0 Float64, t1 Float64, first "
              "Float64, last Float64",
              "tuple() ORDER BY (property, version, place)"),
        table("turn", "day UInt32, claim UInt64, renewed UInt64, state UInt8", "day ORDER BY (claim, renewed)"),
        table("shard", "number UInt32, site String", "tuple() ORDER BY number"),
    };
    if (m_shard == 0)
        for (const std::string& statement :
             {table("catalogue", "kind UInt8, id Int64, version UInt64, data String",
                    "tuple() ORDER BY (kind, id, version)"),
              table("placement", "agent Int64, shard UInt32, version UInt64", "tuple() ORDER BY (agent, version)"),
              table("joint", "batch UInt64, shard UInt32, state UInt8", "tuple() ORDER BY (shard, batch)")})
            statements.push_back(statement);
    for (const std::string& statement : registration(origin, count))
        statements.push_back(statement);
    statements.push_back("INSERT INTO " + about() + " VALUES (" + std::to_string(StoreServer::kVersion) + ")");
    return statements;
}

/// Each takes effect once, however often it is carried out.
std::vector<std::string> SiteTables::registration(const std::string& origin, std::size_t count) const
{
    std::vector<std::string> statements;
    // Agents that came while there was no other shard.
    if (m_shard == 0 && count > 1)
        statements.push_back("INSERT INTO " + placement() +
                             " SELECT agent, toUInt32(1), toUInt64(0) FROM (SELECT DISTINCT agent FROM (SELECT agent "
                             "FROM " +
                             chunks() + " WHERE property = 0 UNION ALL SELECT agent FROM " + young() +
                             ")) WHERE agent NOT IN (SELECT agent FROM " + placement() + ")");
    for (std::size_t shard = m_shard; shard < (m_shard == 0 ? count : m_shard + 1); ++shard) {
        const std::string number = "toUInt32(" + std::to_string(shard + 1) + ")";
        statements.push_back("INSERT INTO " + shards() + " SELECT " + number + ", '" + origin +
                             "' FROM system.one WHERE " + number + " NOT IN (SELECT number FROM " + shards() + ")");
    }
    return statements;
}

std::vector<std::string> SiteTables::dropping() const
{
    std::vector<std::string> statements;
    for (const std::string& table : {chunks(), young(), batches(), amendments(), turns()})
        statements.push_back("DROP TABLE IF EXISTS " + table);
    if (m_shard == 0)
        for (const std::string& table : {placement(), joint(), catalogue()})
            statements.push_back("DROP TABLE IF EXISTS " + table);
    for (const std::string& table : {shards(), about()})
        statements.push_back("DROP TABLE IF EXISTS " + table);
    return statements;
}

std::string SiteTables::among(const std::string& column, const char* tables) const
{
    const QByteArray names = '(' + QByteArray(tables) + ')';
    return "database = '" + m_database.toStdString() + "' AND match(" + column + ", '^" +
           bareName(names.constData()).toStdString() + "$')";
}

std::string SiteTables::counts(std::uint64_t own) const
{
    return "(batch = 0 OR batch IN (SELECT batch FROM " + batches() + ")" +
           (own ? " OR batch = " + std::to_string(own) : std::string()) + ")";
}

std::string sqlNumber(double value)
{
    // Decimal text is read back otherwise by servers of 2018: some numbers come out a unit in the last place off.
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string hex;
    for (const auto byte : std::bit_cast<std::array<unsigned char, sizeof value>>(value)) {
        hex += kDigits[byte >> 4];
        hex += kDigits[byte & 15];
    }
    return "reinterpretAsFloat64(unhex('" + hex + "'))";
}

}  // namespace plotix
