#include "records/columns/ColumnSummary.h"

#include "records/columns/ColumnKernels.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace plotix {

namespace {

constexpr std::size_t kRun = ColumnKernels::kRun;
using Mask = std::array<std::uint64_t, ColumnKernels::kMask>;

/// A compensated sum: it keeps what its additions round away (Neumaier 1974).
class CarefulSum {
public:
    void add(double value)
    {
        const double sum = m_sum + value;
        m_lost += std::abs(m_sum) >= std::abs(value) ? (m_sum - sum) + value : (value - sum) + m_sum;
        m_sum = sum;
    }
    /// After an overflow the lost part is not a number.
    double value() const { return std::isfinite(m_sum) ? m_sum + m_lost : m_sum; }

private:
    double m_sum = 0, m_lost = 0;
};

Mask maskOf(const ColumnView& column, std::size_t first, std::size_t count)
{
    Mask mask{};
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
    const Mask mask = maskOf(column, first, count);
    if (count == kRun)
        return kernels.sumOfSome(values, mask.data());
    std::array<double, kRun> copy{};
    std::copy_n(values, count, copy.data());
    return kernels.sumOfSome(copy.data(), mask.data());
}

}  // namespace

void Summary::add(const Summary& other)
{
    if (other.valid == 0)
        return;
    minimum = valid == 0 ? other.minimum : std::min(minimum, other.minimum);
    maximum = valid == 0 ? other.maximum : std::max(maximum, other.maximum);
    sum += other.sum;
    valid += other.valid;
}

Summary summaryOf(const ColumnView& column, std::size_t count)
{
    Summary summary;
    CarefulSum total;
    for (std::size_t done = 0; done < count; done += kRun) {
        const ColumnKernels::Sum sum = sumOfRun(column, done, std::min(count - done, kRun));
        if (sum.count == 0)
            continue;
        summary.minimum = summary.valid == 0 || sum.minimum < summary.minimum ? sum.minimum : summary.minimum;
        summary.maximum = summary.valid == 0 || sum.maximum > summary.maximum ? sum.maximum : summary.maximum;
        summary.valid += sum.count;
        total.add(sum.sum);
    }
    summary.sum = total.value();
    return summary;
}

}  // namespace plotix
