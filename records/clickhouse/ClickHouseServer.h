#pragma once

#include "records/clickhouse/ShardCheck.h"
#include "records/clickhouse/SiteTables.h"
#include "records/store/StoreServer.h"

/// A site on a ClickHouse server. See StoreServer.
namespace plotix {

class ClickHouseServer final : public StoreServer {
public:
    ClickHouseServer(ServerAddress address, ServerCredentials credentials)
        : m_address(std::move(address)), m_credentials(std::move(credentials)), m_tables(m_address)
    {
    }
    /// Of this address, with the credentials of the environment.
    static std::shared_ptr<ClickHouseServer> at(const QString& address);

    /// The sites of the server, as `database/site`; what the address says of a site does not matter.
    static std::vector<QString> sitesAt(const QString& address);

    QString title() const override { return m_address.title(); }
    void create() override;
    void upgrade() override;
    void drop() override;
    std::vector<Statements> creation() const override;
    std::vector<Statements> dropping() const override;
    std::optional<Layout> layout() override;
    void requireUsable() override;
    Description description() override;
    QByteArray changeMark() override;
    std::shared_ptr<RecordStore> records(Owns owns) override;
    std::vector<Row> rows() override;
    std::map<std::uint8_t, RowId> highestIds() override;
    void put(const std::vector<Row>& rows) override;

private:
    std::vector<Statements> creation(const QString& origin) const;
    QString originOf(const std::optional<SiteLayout>& layout) const;
    ServerConnection home() const;
    void make(const std::optional<SiteLayout>& layout);
    void requireNoneAlone();
    void tellAll(const std::vector<Statements>& all);
    Shard described(const ServerAddress& address) const;

    const ServerAddress m_address;
    const ServerCredentials m_credentials;
    const SiteTables m_tables;
};

}  // namespace plotix
