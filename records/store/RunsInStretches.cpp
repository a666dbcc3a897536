#include "records/store/RunsInStretches.h"

#include <algorithm>
#include <limits>

namespace plotix {

void RunsInStretches::add(const ColumnView& stretch, std::size_t count)
{
    for (std::size_t done = 0; done < count;) {
        const std::size_t run = m_runs.count();
        const std::size_t part = std::min(count - done, m_times->begin[run + 1] - m_element);
        const ColumnIndex index = indexOf({stretch.values + done, stretch.valid, stretch.firstValid + done}, part);
        m_total.valid += index.whole.valid;
        m_total.sum.add(index.sum);
        m_run.append(index.whole, m_element - m_times->begin[run]);
        m_element += part;
        done += part;
        if (m_element == m_times->begin[run + 1])
            endRun();
    }
}

void RunsInStretches::endRun()
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const bool isEmpty = m_run.valid == 0;
    m_runs.least.push_back(isEmpty ? kInfinity : m_run.least.value);
    m_runs.greatest.push_back(isEmpty ? -kInfinity : m_run.greatest.value);
    m_runs.first.push_back(isEmpty || m_run.first.at > 0 ? absentValue() : m_run.first.value);
    m_run = {};
}

void RunsInStretches::giveTo(RecordColumns::Column& column)
{
    column.runs = KeptRuns::of(std::move(m_runs));
    column.total = m_total;
}

}  // namespace plotix
