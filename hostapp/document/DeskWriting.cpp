#include "hostapp/document/DeskWriting.h"

#include "hostapp/document/DeskFile.h"
#include "hostapp/document/SiteCatalogue.h"
#include "records/store/RecordStore.h"
#include "storage/Database.h"

#include <map>
#include <utility>

namespace plotix {

namespace {

using Rows = std::vector<StoreServer::Row>;
using RowData = std::map<std::pair<std::uint8_t, RowId>, QByteArray>;

RowData byId(const Rows& rows)
{
    RowData found;
    for (const StoreServer::Row& row : rows)
        found[{row.kind, row.id}] = row.data;
    return found;
}

class DeskTransaction final : public RecordTransaction {
public:
    DeskTransaction(Database& desk, std::shared_ptr<StoreServer> server)
        : m_desk(desk),
          m_server(std::move(server)),
          m_records(m_server->records([this](RowId agent, RowId property) { return owns(agent, property); })->begin()),
          m_before(m_server->rows())
    {
        // Nobody else changes the rows from here on.
        if (seenBy(m_desk) != digestOf(m_before))
            SiteCatalogue::ofRows(m_before).updateIn(m_desk);
        SiteCatalogue::keepNumbers(m_desk, m_server->highestIds());
    }

    void store(RowId agent, const RecordBlock& block) override { m_records->store(agent, block); }
    void remove(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                std::optional<double> to) override
    {
        m_records->remove(agent, properties, from, to);
    }
    void noteAmendments(double now) override { m_records->noteAmendments(now); }
    void addAmendment(RowId agent, const Amendment& amendment) override { m_records->addAmendment(agent, amendment); }
    void prepare() override
    {
        m_records->prepare();
        m_now = byId(changed());
        for (const StoreServer::Row& row : m_before)
            if (!SiteCatalogue::knows(row))
                m_now[{row.kind, row.id}] = row.data;  // a later version's
        Rows rows;
        for (const auto& [id, data] : m_now)
            rows.push_back({id.first, id.second, data});
        // Where the server does not come to have these, the file is made like the server's rows again.
        keepSeen(m_desk, digestOf(rows));
    }
    /// What is new first: nobody sees a record without its agent. What is gone last, as its records may have become
    /// another's.
    void commit() override
    {
        m_records->prepare();  // throws where somebody else writes meanwhile, as this program stood still
        const RowData before = byId(m_before);
        Rows changes, gone;
        for (const auto& [id, data] : m_now)
            if (const auto old = before.find(id); old == before.end() || old->second != data)
                changes.push_back({id.first, id.second, data});
        for (const auto& [id, data] : before)
            if (!m_now.contains(id))
                gone.push_back({id.first, id.second, {}});
        m_server->put(changes);
        m_records->commit();
        m_server->put(gone);
    }

private:
    /// Recorded ones alone; also of the rows that the file's transaction has just made.
    bool owns(RowId agent, RowId property) const
    {
        Statement known(m_desk, "SELECT 1 FROM property WHERE id = ? AND agent = ? AND id NOT IN (SELECT property FROM "
                                "formula)");
        return known.bind(1, property).bind(2, agent).step();
    }
    /// What the file has now; looks of what was there before, and trends, are the server's own.
    Rows changed() const
    {
        const SiteCatalogue before = SiteCatalogue::ofRows(m_before);
        SiteCatalogue now = SiteCatalogue::of(m_desk);
        now.takeLooks(before);
        now.plugIns = before.plugIns;
        return now.rowsInsteadOf(m_before);
    }

    Database& m_desk;
    const std::shared_ptr<StoreServer> m_server;
    const std::unique_ptr<RecordTransaction> m_records;
    const Rows m_before;  // as they are on the server
    RowData m_now;        // as they will be
};

}  // namespace

std::unique_ptr<RecordTransaction> deskTransaction(Database& desk, std::shared_ptr<StoreServer> server)
{
    return std::make_unique<DeskTransaction>(desk, std::move(server));
}

}  // namespace plotix
