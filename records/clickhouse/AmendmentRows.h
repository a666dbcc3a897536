#pragma once

#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerConnection.h"
#include "records/clickhouse/SiteTables.h"
#include "records/store/AmendmentFinder.h"

#include <map>
#include <memory>

/// What comes to be noted as late or corrected, and the stretches that are taken out, as rows of a batch.
///
/// Borrows the connection; one thread. Throws as it does.
namespace plotix {

class AmendmentRows {
public:
    /// *Shares* the finder, which knows the records as they were before.
    AmendmentRows(ServerConnection& server, const SiteTables& tables, std::uint64_t batch,
                  std::shared_ptr<AmendmentFinder> finder)
        : m_server(server), m_tables(tables), m_batch(batch), m_finder(std::move(finder))
    {
    }

    /// Of records that are about to be stored.
    void note(RowId agent, const RecordsView& records, double now);
    void add(RowId agent, const Amendment& amendment) { add(agent, amendment, true); }
    /// Takes [from, to] out of what is noted of these properties.
    void remove(std::span<const RowId> properties, double from, double to);

    bool isEmpty() const { return m_rows.isEmpty(); }
    void flush();

private:
    void add(RowId agent, const Amendment& amendment, bool mayGoOn);
    std::vector<Amendment>& known(RowId property);
    void addRow(RowId property, std::uint8_t kind, double t0, double t1, double first, double last);

    ServerConnection& m_server;
    const SiteTables& m_tables;
    const std::uint64_t m_batch;
    const std::shared_ptr<AmendmentFinder> m_finder;
    std::map<RowId, std::vector<Amendment>> m_known;  // with those of this batch
    rowbinary::Writer m_rows;
    std::uint32_t m_place = 0;
};

/// By property, in the order they were made. `properties`: null for all; `own`: a batch that counts already, or 0.
std::map<RowId, std::vector<Amendment>> amendmentsOf(ServerConnection& server, const SiteTables& tables,
                                                     const std::vector<RowId>* properties, std::uint64_t own);

}  // namespace plotix
