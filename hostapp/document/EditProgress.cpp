#include "hostapp/document/EditProgress.h"

#include <algorithm>
#include <cmath>
#include <limits>

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
    // Each from where the one before ended, so that nothing is left of what is known of times between two parts.
    std::optional<double> begin = from;
    const std::vector<RecordOverview::Run> runs = stored.overview(agent, {}, from, to).runs;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const std::optional<double> end = i + 1 < runs.size() ? runs[i].t1 : to;
        records.remove(agent, properties, begin, end);
        begin = std::nextafter(runs[i].t1, std::numeric_limits<double>::infinity());
        meter.advance();
    }
}

}  // namespace plotix
