#include "records/clickhouse/AmendmentRows.h"

#include "base/ReportableError.h"
#include "records/clickhouse/ServerStamps.h"
#include "records/store/RecordsInMemory.h"

#include <set>

namespace plotix {

namespace {

constexpr std::uint8_t kTakenOut = 0;  // beside the kinds of amendments

}  // namespace

std::map<RowId, std::vector<Amendment>> amendmentsOf(ServerConnection& server, const SiteTables& tables,
                                                     const std::vector<RowId>* properties, std::uint64_t own)
{
    std::map<RowId, std::vector<Amendment>> found;
    const std::vector<std::byte> rows =
        server.ask("SELECT property, version, kind, t0, t1, first, last FROM " + tables.amendments() + " WHERE " +
                   (properties ? "property IN " + sqlList(*properties) + " AND " : std::string()) + tables.counts(own) +
                   " ORDER BY property, version, place LIMIT 1 BY property, version, place FORMAT RowBinary");
    try {
        for (rowbinary::Reader row(rows); !row.isAtEnd();) {
            Amendment amendment;
            amendment.property = row.number<RowId>();
            stamps::saw(row.number<std::uint64_t>());
            const auto kind = row.number<std::uint8_t>();
            amendment.kind = static_cast<Amendment::Kind>(kind);
            amendment.from = row.number<double>();
            amendment.to = row.number<double>();
            amendment.first = row.number<double>();
            amendment.last = row.number<double>();
            std::vector<Amendment>& ofProperty = found[amendment.property];
            if (kind == kTakenOut)
                remove(amendment.from, amendment.to, ofProperty);
            else
                add(amendment, ofProperty, [](double, double) { return false; });
        }
    } catch (const rowbinary::TooShort&) {
        throw ReportableError(
            QStringLiteral("The server “%1” answers something else than it was asked.").arg(server.address().title()));
    }
    return found;
}

std::vector<Amendment>& AmendmentRows::known(RowId property)
{
    const auto found = m_known.find(property);
    if (found != m_known.end())
        return found->second;
    const std::vector<RowId> asked{property};
    return m_known.emplace(property, amendmentsOf(m_server, m_tables, &asked, m_batch)[property]).first->second;
}

void AmendmentRows::note(RowId agent, const RecordsView& records, double now)
{
    // Only the first of a property and a kind may go on where an earlier one ended.
    std::set<std::pair<RowId, Amendment::Kind>> begun;
    for (const Amendment& amendment : m_finder->find(agent, records, now))
        add(agent, amendment, begun.insert({amendment.property, amendment.kind}).second);
}

void AmendmentRows::add(RowId agent, const Amendment& amendment, bool mayGoOn)
{
    const Amendment now = plotix::add(amendment, known(amendment.property),
                                      [&, agent, property = amendment.property](double from, double to) {
                                          return mayGoOn && m_finder->hasNothingBetween(agent, property, from, to);
                                      });
    addRow(now.property, static_cast<std::uint8_t>(now.kind), now.from, now.to, now.first, now.last);
}

void AmendmentRows::remove(std::span<const RowId> properties, double from, double to)
{
    for (const RowId property : properties) {
        std::vector<Amendment>& noted = known(property);
        if (noted.empty())
            continue;
        plotix::remove(from, to, noted);
        addRow(property, kTakenOut, from, to, 0, 0);
    }
}

void AmendmentRows::addRow(RowId property, std::uint8_t kind, double t0, double t1, double first, double last)
{
    m_rows.add(property).add(stamps::version()).add(m_place++).add(m_batch).add(kind);
    m_rows.add(t0).add(t1).add(first).add(last);
}

void AmendmentRows::flush()
{
    if (m_rows.isEmpty())
        return;
    m_server.insert("INSERT INTO " + m_tables.amendments() +
                        " (property, version, place, batch, kind, t0, t1, first, last) FORMAT RowBinary",
                    m_rows.bytes());
    m_rows.clear();
}

}  // namespace plotix
