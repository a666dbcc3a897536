#include "hostapp/document/EditProgress.h"

#include <algorithm>

namespace plotix {

void EditMeter::advance()
{
    ++m_done;
    const double fraction = m_expected > 0 ? static_cast<double>(m_done) / static_cast<double>(m_expected) : 1.0;
    if (m_progress && !m_progress(std::min(fraction, 1.0)))
        throw EditCancelled();
}

std::size_t partsOf(RecordStore& stored, RowId agent, std::optional<double> from, std::optional<double> to)
{
    return stored.overview(agent, {}, from, to).runs.size();
}

void removeInParts(RecordStore& stored, RecordTransaction& records, RowId agent, const std::vector<RowId>& properties,
                   std::optional<double> from, std::optional<double> to, EditMeter& meter)
{
    for (const RecordOverview::Run& run : stored.overview(agent, {}, from, to).runs) {
        records.remove(agent, properties, std::max(run.t0, from.value_or(run.t0)),
                       std::min(run.t1, to.value_or(run.t1)));
        meter.advance();
    }
}

}  // namespace plotix
