#include "records/clickhouse/KnownRows.h"

#include "base/ReportableError.h"

namespace plotix {

namespace {

constexpr int kMostAttempts = 20;

}  // namespace

/// Of a moment after the call began, but for what is fresh.
SiteMark KnownRows::markOf(ServerConnection& server, const SiteTables& tables)
{
    const std::uint64_t changes = ServerConnection::changesMade();
    const auto now = std::chrono::steady_clock::now();
    {
        const std::lock_guard lock(m_mutex);
        const OfServer& known = m_servers[tables.chunks() + server.address().text().toStdString()];
        if (known.mark && known.changes == changes && now - known.asked < kFresh)
            return *known.mark;
    }
    const SiteMark mark = SiteMark::askedOf(server, tables);
    const std::lock_guard lock(m_mutex);
    OfServer& known = m_servers[tables.chunks() + server.address().text().toStdString()];
    if (known.mark != mark) {
        known.agents.clear();
        known.amendments.reset();
    }
    known.mark = mark;
    known.asked = now;
    known.changes = changes;
    return mark;
}

void KnownRows::forget()
{
    const std::lock_guard lock(m_mutex);
    for (auto& [server, known] : m_servers)
        known.asked = {};
}

template <class Keep>
void KnownRows::keep(ServerConnection& server, const SiteTables& tables, const SiteMark& of, const Keep& keep)
{
    const std::lock_guard lock(m_mutex);
    OfServer& known = m_servers[tables.chunks() + server.address().text().toStdString()];
    if (known.mark == of)
        keep(known);
}

std::shared_ptr<const AgentReading::Rows> KnownRows::rows(ServerConnection& server, const SiteTables& tables,
                                                          RowId agent, double from, double to)
{
    if (!(from <= to))
        return std::make_shared<const AgentReading::Rows>();
    SiteMark mark = markOf(server, tables);
    {
        const std::lock_guard lock(m_mutex);
        const OfServer& known = m_servers[tables.chunks() + server.address().text().toStdString()];
        if (const auto found = known.agents.find(agent);
            known.mark == mark && found != known.agents.end() && found->second.from <= from && to <= found->second.to)
            return found->second.rows;
    }
    AgentReading reading(server, tables, agent);
    // Two statements may see two states: then again, so that nobody sees half a batch.
    for (int attempt = 1;; ++attempt) {
        auto rows = std::make_shared<const AgentReading::Rows>(reading.rowsNow(from, to));
        const SiteMark after = SiteMark::askedOf(server, tables);
        if (after == mark)
            keep(server, tables, mark, [&](OfServer& known) { known.agents[agent] = {from, to, rows}; });
        if (after.batches == mark.batches || attempt == kMostAttempts)
            return rows;
        mark = after;
    }
}

std::shared_ptr<const KnownRows::Amendments> KnownRows::amendments(ServerConnection& server, const SiteTables& tables)
{
    const SiteMark mark = markOf(server, tables);
    {
        const std::lock_guard lock(m_mutex);
        const OfServer& known = m_servers[tables.chunks() + server.address().text().toStdString()];
        if (known.mark == mark && known.amendments)
            return known.amendments;
    }
    auto all = std::make_shared<const Amendments>(amendmentsOf(server, tables, nullptr, 0));
    if (SiteMark::askedOf(server, tables) == mark)
        keep(server, tables, mark, [&](OfServer& known) { known.amendments = all; });
    return all;
}

}  // namespace plotix
