#include "records/columns/ColumnSummary.h"

#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr std::size_t kRun = ColumnKernels::kRun;

}  // namespace

RunMask maskOfRun(const ColumnView& column, std::size_t first, std::size_t count)
{
    RunMask mask{};
    for (std::size_t i = 0; i * 64 < count; ++i)
        mask[i] =
            bits::get(column.valid, column.firstValid + first + i * 64, std::min<std::size_t>(count - i * 64, 64));
    return mask;
}

ColumnKernels::Sum sumOfRun(const ColumnView& column, std::size_t first, std::size_t count)
{
    const ColumnKernels& kernels = ColumnKernels::best();
    const double* values = column.values + first;
    if (count == kRun && bits::allSet(column.valid, column.firstValid + first, kRun)) {
        const ColumnKernels::Sum sum = kernels.sumOfAll(values);
        if (!std::isnan(sum.sum))
            return sum;
    }
    const RunMask mask = maskOfRun(column, first, count);
    if (count == kRun)
        return kernels.sumOfSome(values, mask.data());
    std::array<double, kRun> copy{};
    std::copy_n(values, count, copy.data());
    return kernels.sumOfSome(copy.data(), mask.data());
}

void Summary::add(const Summary& other)
{
    if (other.valid == 0)
        return;
    minimum = valid == 0 ? other.minimum : std::min(minimum, other.minimum);
    maximum = valid == 0 ? other.maximum : std::max(maximum, other.maximum);
    sum += other.sum;
    valid += other.valid;
}

void SummaryInWork::add(const ColumnKernels::Sum& run)
{
    if (run.count == 0)
        return;
    const bool isFirst = m_summary.valid == 0;
    m_summary.minimum = isFirst || run.minimum < m_summary.minimum ? run.minimum : m_summary.minimum;
    m_summary.maximum = isFirst || run.maximum > m_summary.maximum ? run.maximum : m_summary.maximum;
    m_summary.valid += run.count;
    const double sum = m_sum + run.sum;
    m_lost += std::abs(m_sum) >= std::abs(run.sum) ? (m_sum - sum) + run.sum : (run.sum - sum) + m_sum;
    m_sum = sum;
}

void SummaryInWork::add(const ColumnView& column, std::size_t count)
{
    for (std::size_t done = 0; done < count; done += kRun)
        add(sumOfRun(column, done, std::min(count - done, kRun)));
}

Summary SummaryInWork::finished() const
{
    Summary summary = m_summary;
    // After an overflow the lost part is not a number.
    summary.sum = std::isfinite(m_sum) ? m_sum + m_lost : m_sum;
    return summary;
}

Summary summaryOf(const ColumnView& column, std::size_t count)
{
    SummaryInWork summary;
    summary.add(column, count);
    return summary.finished();
}

}  // namespace plotix
