#pragma once

#include "records/clickhouse/ServerAddress.h"
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
    void drop() override;
    std::vector<Statements> creation() const override;
    std::vector<Statements> dropping() const override;
    Description description() override;
    std::optional<std::uint32_t> version() override;
    QByteArray changeMark() override;
    std::shared_ptr<RecordStore> records(Owns owns) override;
    std::vector<Row> rows() override;
    std::map<std::uint8_t, RowId> highestIds() override;
    void put(const std::vector<Row>& rows) override;

private:
    void requireNoneAlone();
    void tellAll(const std::vector<Statements>& all);

    const ServerAddress m_address;
    const ServerCredentials m_credentials;
    const SiteTables m_tables;
};

}  // namespace plotix
