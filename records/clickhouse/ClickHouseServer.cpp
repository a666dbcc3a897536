#include "records/clickhouse/ClickHouseServer.h"

#include "base/ReportableError.h"
#include "records/clickhouse/AgentReading.h"
#include "records/clickhouse/ClickHouseRecordStore.h"
#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerStamps.h"

namespace plotix {

namespace {

/// Numbers of one row.
std::vector<std::uint64_t> numbersOf(ServerConnection& server, const std::string& statement, std::size_t count)
{
    const std::vector<std::byte> answer = server.ask(statement + " FORMAT RowBinary");
    rowbinary::Reader row(answer);
    std::vector<std::uint64_t> numbers;
    while (numbers.size() < count)
        numbers.push_back(row.number<std::uint64_t>());
    return numbers;
}

std::uint64_t numberOf(ServerConnection& server, const std::string& statement)
{
    return numbersOf(server, statement, 1).front();
}

constexpr const char* kAll = "about|batch|chunk|young|amendment|turn|catalogue";

/// Nothing: some table is not there.
std::optional<std::uint32_t> versionOf(ServerConnection& server, const SiteTables& tables)
{
    if (numberOf(server, "SELECT count() FROM system.tables WHERE " + tables.among("name", kAll)) < 7)
        return std::nullopt;
    return static_cast<std::uint32_t>(numberOf(server, "SELECT toUInt64(max(version)) FROM " + tables.about()));
}

}  // namespace

std::shared_ptr<ClickHouseServer> ClickHouseServer::at(const QString& address)
{
    const ServerAddress parsed = ServerAddress::parsed(address);
    return std::make_shared<ClickHouseServer>(parsed, ServerCredentials::of(parsed));
}

std::vector<QString> ClickHouseServer::sitesAt(const QString& address)
{
    const ServerAddress parsed = ServerAddress::parsed(address);
    const std::vector<std::byte> answer =
        ServerConnection(parsed, ServerCredentials::of(parsed))
            .ask("SELECT concat(database, '/', replaceRegexpOne(name, '_catalogue$', '')) AS site FROM system.tables "
                 "WHERE match(name, '._catalogue$') ORDER BY site FORMAT RowBinary");
    std::vector<QString> sites;
    for (rowbinary::Reader row(answer); !row.isAtEnd();) {
        const std::string_view site = row.text();
        sites.push_back(QString::fromUtf8(site.data(), static_cast<qsizetype>(site.size())));
    }
    return sites;
}

std::vector<StoreServer::Statements> ClickHouseServer::creation() const
{
    if (m_address.hosts.size() == 1)
        return {{{}, m_tables.creation()}};
    std::vector<Statements> each;
    for (const ServerAddress::Host& host : m_address.hosts) {
        const QString name = QStringLiteral("%1:%2").arg(host.name).arg(host.port);
        each.push_back({name, m_tables.creation(name.toStdString())});
    }
    return each;
}

std::vector<StoreServer::Statements> ClickHouseServer::dropping() const
{
    if (m_address.hosts.size() == 1)
        return {{{}, m_tables.dropping()}};
    std::vector<Statements> each;
    for (const ServerAddress::Host& host : m_address.hosts)
        each.push_back({QStringLiteral("%1:%2").arg(host.name).arg(host.port), m_tables.dropping()});
    return each;
}

/// Each host does its own.
void ClickHouseServer::tellAll(const std::vector<Statements>& all)
{
    const std::vector<ServerAddress> hosts = m_address.hostByHost();
    for (std::size_t host = 0; host < hosts.size(); ++host) {
        ServerConnection server(hosts[host], m_credentials);
        for (const std::string& statement : all[host].statements)
            server.tell(statement);
    }
}

/// Records that one host has alone, the others would never get.
void ClickHouseServer::requireNoneAlone()
{
    for (const ServerAddress& host : m_address.hostByHost()) {
        ServerConnection server(host, m_credentials);
        const Replication::Found found =
            Replication::foundOn(host, [&](const std::string& statement) { return server.ask(statement); });
        if (found.tables == Replication::Tables::Single)
            throw ReportableError(QStringLiteral("The site %1 stands on that server alone: make one of another name on "
                                                 "all of them, and “plotix copy” its records there.")
                                      .arg(host.title()));
    }
}

void ClickHouseServer::create()
{
    if (m_address.hosts.size() > 1)
        requireNoneAlone();
    tellAll(creation());
    ServerConnection::forgetReplication(m_address);
}

void ClickHouseServer::drop()
{
    tellAll(dropping());
    ServerConnection::forgetReplication(m_address);
}

std::optional<std::uint32_t> ClickHouseServer::version()
{
    ServerConnection server(m_address, m_credentials);
    return versionOf(server, m_tables);
}

ClickHouseServer::Description ClickHouseServer::description()
{
    ServerConnection server(m_address, m_credentials);
    Description found;
    const std::vector<std::byte> version = server.ask("SELECT version() FORMAT RowBinary");
    const std::string_view text = rowbinary::Reader(version).text();
    found.serverVersion = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    const std::optional<std::uint32_t> tables = versionOf(server, m_tables);
    found.exists = tables.has_value();
    if (!found.exists)
        return found;
    found.version = *tables;
    const std::vector<std::uint64_t> replicas =
        numbersOf(server,
                  "SELECT toUInt64(max(total_replicas)), toUInt64(min(active_replicas)) FROM system.replicas WHERE " +
                      m_tables.among("table", kAll),
                  2);
    found.replicas = replicas[0];
    found.replicasAlive = replicas[1];
    found.chunks =
        numberOf(server, "SELECT uniqExact(chunk) FROM " + m_tables.chunks() + " WHERE property = 0 AND n > 0");
    found.youngRecords = numberOf(server, "SELECT count() FROM " + m_tables.young());
    found.bytes = numberOf(server, "SELECT toUInt64(sum(bytes_on_disk)) FROM system.parts WHERE active AND " +
                                       m_tables.among("table", kAll));
    found.agents = agentsOn(server, m_tables).size();
    return found;
}

QByteArray ClickHouseServer::changeMark()
{
    // Whatever is stored makes rows more, and merging them leaves their number; taking away what counts for nothing
    // makes them fewer, which is looked at once in vain.
    ServerConnection server(
        m_address, m_credentials,
        {std::chrono::seconds(1), std::chrono::seconds(5), std::chrono::seconds(1), std::chrono::seconds(1)});
    return QByteArray::number(
        qulonglong(numberOf(server, "SELECT toUInt64(sum(rows)) FROM system.parts WHERE active AND " +
                                        m_tables.among("table", "batch|chunk|young|amendment|catalogue"))));
}

std::shared_ptr<RecordStore> ClickHouseServer::records(Owns owns)
{
    return std::make_shared<ClickHouseRecordStore>(
        std::make_shared<SiteOnServer>(m_address, m_credentials, std::move(owns)));
}

std::vector<StoreServer::Row> ClickHouseServer::rows()
{
    ServerConnection server(m_address, m_credentials);
    const std::vector<std::byte> answer =
        server.ask("SELECT kind, id, argMax(data, version) AS now FROM " + m_tables.catalogue() +
                   " GROUP BY kind, id HAVING now != '' ORDER BY kind, id FORMAT RowBinary");
    std::vector<Row> rows;
    try {
        for (rowbinary::Reader row(answer); !row.isAtEnd();) {
            Row read;
            read.kind = row.number<std::uint8_t>();
            read.id = row.number<RowId>();
            const std::string_view data = row.text();
            read.data = QByteArray(data.data(), static_cast<qsizetype>(data.size()));
            rows.push_back(std::move(read));
        }
    } catch (const rowbinary::TooShort&) {
        throw ReportableError(QStringLiteral("The server “%1” answers something else than it was asked.").arg(title()));
    }
    return rows;
}

std::map<std::uint8_t, RowId> ClickHouseServer::highestIds()
{
    ServerConnection server(m_address, m_credentials);
    const std::vector<std::byte> answer =
        server.ask("SELECT kind, max(id) FROM " + m_tables.catalogue() + " GROUP BY kind FORMAT RowBinary");
    std::map<std::uint8_t, RowId> highest;
    for (rowbinary::Reader row(answer); !row.isAtEnd();) {
        const auto kind = row.number<std::uint8_t>();
        highest[kind] = row.number<RowId>();
    }
    return highest;
}

void ClickHouseServer::put(const std::vector<Row>& rows)
{
    if (rows.empty())
        return;
    ServerConnection server(m_address, m_credentials);
    // After everything that is there, whatever the clocks of others say.
    stamps::saw(numberOf(server, "SELECT max(version) FROM " + m_tables.catalogue()));
    const std::uint64_t version = stamps::version();
    rowbinary::Writer written;
    for (const Row& row : rows) {
        written.add(row.kind).add(row.id).add(version);
        written.addBytes(std::as_bytes(std::span(row.data.constData(), static_cast<std::size_t>(row.data.size()))));
    }
    server.insert("INSERT INTO " + m_tables.catalogue() + " (kind, id, version, data) FORMAT RowBinary",
                  written.bytes());
}

}  // namespace plotix
