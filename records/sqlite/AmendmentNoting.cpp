#include "records/sqlite/AmendmentNoting.h"

#include <set>

namespace plotix {

AmendmentFinder& AmendmentNoting::finder()
{
    if (!m_finder)
        m_finder = std::make_unique<AmendmentFinder>(m_makeStore(m_database));
    return *m_finder;
}

void AmendmentNoting::note(RowId agent, const RecordsView& records, double now)
{
    // Only the first of a property and a kind may go on where an earlier one ended.
    std::set<std::pair<RowId, Amendment::Kind>> begun;
    for (const Amendment& amendment : finder().find(agent, records, now))
        if (begun.insert({amendment.property, amendment.kind}).second)
            add(agent, amendment);
        else
            m_table.addApart(amendment);
}

void AmendmentNoting::add(RowId agent, const Amendment& amendment)
{
    m_table.add(amendment, [&](double from, double to) {
        return finder().hasNothingBetween(agent, amendment.property, from, to);
    });
}

void AmendmentNoting::stored(RowId agent, const RecordsView& records)
{
    if (m_finder)
        m_finder->stored(agent, records);
}

void AmendmentNoting::forget()
{
    if (m_finder)
        m_finder->forget();
}

}  // namespace plotix
