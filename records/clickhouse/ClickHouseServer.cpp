#include "records/clickhouse/ClickHouseServer.h"

#include "base/ReportableError.h"
#include "records/clickhouse/AgentReading.h"
#include "records/clickhouse/ClickHouseRecordStore.h"
#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerStamps.h"

#include <algorithm>

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

QString nameOf(const ServerAddress& host)
{
    return QStringLiteral("%1:%2").arg(host.hosts.front().name).arg(host.hosts.front().port);
}

/// Each host by itself.
std::vector<ServerAddress> homeLast(const ServerAddress& address)
{
    std::vector<ServerAddress> hosts = address.hostByHost();
    std::rotate(hosts.begin(), hosts.begin() + static_cast<std::ptrdiff_t>(address.hosts.size()), hosts.end());
    return hosts;
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

ServerConnection ClickHouseServer::home() const
{
    return {m_address.shardByShard().front(), m_credentials};
}

std::vector<StoreServer::Statements> ClickHouseServer::creation() const
{
    std::optional<SiteLayout> layout;
    try {
        ServerConnection server = home();
        layout = layoutOn(server);
    } catch (const ReportableError&) {  // the statements are for a server that need not be there yet
    }
    return creation(originOf(layout));
}

/// Whose shards these are: of a new site, other than of any that had its name before.
QString ClickHouseServer::originOf(const std::optional<SiteLayout>& layout) const
{
    return layout && !layout->origin.empty() ? QString::fromStdString(layout->origin)
                                             : QStringLiteral("%1 %2").arg(m_address.title()).arg(stamps::number());
}

/// The home comes last: until it knows of another shard, nobody looks for it.
std::vector<StoreServer::Statements> ClickHouseServer::creation(const QString& origin) const
{
    const std::vector<ServerAddress> shards = m_address.shardByShard();
    std::vector<Statements> each;
    for (const ServerAddress& host : homeLast(m_address)) {
        const bool isReplica = shards[host.shard.value_or(0)].hosts.size() > 1;
        const QString name = nameOf(host);
        each.push_back({m_address.hosts.size() + m_address.others.size() > 1 ? name : QString(),
                        SiteTables(host).creation(isReplica ? name.toStdString() : std::string(), origin.toStdString(),
                                                  shards.size())});
    }
    return each;
}

std::vector<StoreServer::Statements> ClickHouseServer::dropping() const
{
    std::vector<Statements> each;
    for (const ServerAddress& host : homeLast(m_address))
        each.push_back({m_address.hosts.size() + m_address.others.size() > 1 ? nameOf(host) : QString(),
                        SiteTables(host).dropping()});
    return each;
}

/// Each host does its own.
void ClickHouseServer::tellAll(const std::vector<Statements>& all)
{
    const std::vector<ServerAddress> hosts = homeLast(m_address);
    for (std::size_t host = 0; host < hosts.size(); ++host) {
        ServerConnection server(hosts[host], m_credentials);
        for (const std::string& statement : all[host].statements)
            server.tell(statement);
    }
    for (const ServerAddress& shard : m_address.shardByShard())
        ServerConnection::forgetReplication(shard);
    forgetSuitable();
}

/// Records that one host has alone, the others would never get.
void ClickHouseServer::requireNoneAlone()
{
    const std::vector<ServerAddress> shards = m_address.shardByShard();
    for (const ServerAddress& host : m_address.hostByHost()) {
        if (shards[host.shard.value_or(0)].hosts.size() == 1)
            continue;
        ServerConnection server(host, m_credentials);
        const Replication::Found found =
            Replication::foundOn(host, [&](const std::string& statement) { return server.ask(statement); });
        if (found.tables == Replication::Tables::Single)
            throw ReportableError(QStringLiteral("The site %1 stands on that server alone: make one of another name on "
                                                 "all of them, and “plotix copy” its records there.")
                                      .arg(host.title()));
    }
}

void ClickHouseServer::make(const std::optional<SiteLayout>& layout)
{
    if (layout && (layout->version > kVersion || layout->shards > m_address.others.size() + 1))
        plotix::requireSuitable(*layout, m_address);
    requireNoneAlone();
    tellAll(creation(originOf(layout)));
}

void ClickHouseServer::create()
{
    ServerConnection server = home();
    const std::optional<SiteLayout> layout = layoutOn(server);
    if (layout && layout->version < kVersion)
        throw ReportableError(QStringLiteral("%1 was made by an earlier version of this program (%2): “plotix store "
                                             "upgrade” makes it one of this version")
                                  .arg(title())
                                  .arg(layout->version));
    make(layout);
}

void ClickHouseServer::upgrade()
{
    ServerConnection server = home();
    const std::optional<SiteLayout> layout = layoutOn(server);
    if (!layout)
        throw ReportableError(QStringLiteral("there is no site %1: “plotix store create” makes one").arg(title()));
    make(layout);
}

void ClickHouseServer::drop()
{
    ServerConnection server = home();
    if (const std::optional<SiteLayout> layout = layoutOn(server);
        layout && layout->shards > m_address.others.size() + 1)
        plotix::requireSuitable(*layout, m_address);
    tellAll(dropping());
}

std::optional<StoreServer::Layout> ClickHouseServer::layout()
{
    ServerConnection server = home();
    const std::optional<SiteLayout> layout = layoutOn(server);
    return layout ? std::optional(Layout{layout->version, layout->shards}) : std::nullopt;
}

void ClickHouseServer::requireUsable()
{
    ServerConnection server = home();
    plotix::requireSuitable(server, m_address);
}

ClickHouseServer::Description ClickHouseServer::description()
{
    ServerConnection server = home();
    Description found;
    const std::vector<std::byte> version = server.ask("SELECT version() FORMAT RowBinary");
    const std::string_view text = rowbinary::Reader(version).text();
    found.serverVersion = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    const std::optional<SiteLayout> layout = layoutOn(server);
    found.exists = layout.has_value();
    if (!layout)
        return found;
    found.version = layout->version;
    for (const ServerAddress& shard : m_address.shardByShard())
        found.shards.push_back(described(shard));
    return found;
}

StoreServer::Shard ClickHouseServer::described(const ServerAddress& address) const
{
    constexpr const char* kAll = "about|batch|chunk|young|amendment|turn|catalogue|shard|placement|joint";
    Shard found;
    found.title = address.title();
    try {
        ServerConnection server(address, m_credentials);
        plotix::requireSuitable(server, m_address);
        const SiteTables tables(address);
        const std::vector<std::uint64_t> replicas = numbersOf(
            server,
            "SELECT toUInt64(max(total_replicas)), toUInt64(min(active_replicas)) FROM system.replicas WHERE " +
                tables.among("table", kAll),
            2);
        found.replicas = replicas[0];
        found.replicasAlive = replicas[1];
        found.chunks =
            numberOf(server, "SELECT uniqExact(chunk) FROM " + tables.chunks() + " WHERE property = 0 AND n > 0");
        found.youngRecords = numberOf(server, "SELECT count() FROM " + tables.young());
        found.bytes = numberOf(server, "SELECT toUInt64(sum(bytes_on_disk)) FROM system.parts WHERE active AND " +
                                           tables.among("table", kAll));
        found.agents = agentsOn(server, tables).size();
    } catch (const ReportableError& error) {
        if (address.shard.value_or(0) == 0)
            throw;
        found.failure = error.message();
    }
    return found;
}

QByteArray ClickHouseServer::changeMark()
{
    // Whatever is stored makes rows more, and merging them leaves their number; taking away what counts for nothing
    // makes them fewer, which is looked at once in vain. A shard that is gone changes nothing but when it goes and
    // comes.
    QByteArray mark;
    for (const ServerAddress& shard : m_address.shardByShard()) {
        mark += mark.isEmpty() ? "" : ",";
        try {
            ServerConnection server(
                shard, m_credentials,
                {std::chrono::seconds(1), std::chrono::seconds(5), std::chrono::seconds(1), std::chrono::seconds(1)});
            mark += QByteArray::number(qulonglong(
                numberOf(server, "SELECT toUInt64(sum(rows)) FROM system.parts WHERE active AND " +
                                     SiteTables(shard).among("table", "batch|chunk|young|amendment|catalogue"))));
        } catch (const ReportableError&) {
            if (shard.shard.value_or(0) == 0)
                throw;
            mark += '-';
        }
    }
    return mark;
}

std::shared_ptr<RecordStore> ClickHouseServer::records(Owns owns)
{
    return std::make_shared<ClickHouseRecordStore>(
        std::make_shared<SiteOnServer>(m_address, m_credentials, std::move(owns)));
}

std::vector<StoreServer::Row> ClickHouseServer::rows()
{
    ServerConnection server = home();
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
    ServerConnection server = home();
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
    ServerConnection server = home();
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
