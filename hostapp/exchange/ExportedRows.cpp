#include "hostapp/exchange/ExportedRows.h"

#include "base/ReportableError.h"
#include "hostapp/exchange/ExportClock.h"

#include <algorithm>

namespace plotix {

bool ExportedRows::haveCalendarTimes() const
{
    if (m_records.runs)
        return std::all_of(m_records.runs->first.begin(), m_records.runs->first.end(), hasCalendarText) &&
               std::all_of(m_records.runs->last.begin(), m_records.runs->last.end(), hasCalendarText);
    const PagedMemory::Hold held = m_records.times.holdAll();
    const std::span<const double> times = m_records.times.span();
    return std::all_of(times.begin(), times.end(), hasCalendarText);
}

void ExportedRows::holdPage()
{
    const bool isResident = m_records.times.isResident();
    m_held.clear();
    m_first = isResident ? 0 : m_row / PagedMemory::kPage * PagedMemory::kPage;
    m_end = isResident ? count() : std::min(count(), m_first + PagedMemory::kPage);
    m_held.push_back(m_records.times.hold(m_first, m_end));
    for (const RecordColumns::Column& column : m_records.columns)
        m_held.push_back(column.values.hold(m_first, m_end));
    if (const auto failure = m_records.failure->message())
        throw ReportableError(*failure);
}

}  // namespace plotix
