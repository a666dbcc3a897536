#include "plugins/PlotixPlugIn/reading/figures/FigureRecords.h"

#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"
#include "plugins/PlotixPlugIn/reading/figures/FigureKernels.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>

namespace plotix {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// The column as it is now; a unit chosen later does not change what a worker is reading.
std::shared_ptr<const KTVRecordColumn> columnNow(const KTVRecordColumn& column)
{
    return std::make_shared<const KTVRecordColumn>(column.descriptor(), column.archivedValues(), column.validity(),
                                                   column.unitModel());
}

FigureRecords::Conversion conversionOf(const KTVRecordColumn& column)
{
    if (column.unit() == column.descriptor().archivedUnit)
        return {};
    return [kept = columnNow(column)](std::size_t first, std::span<double> out) { kept->copyUnitValues(first, out); };
}

/// What is not valid answers NaN, and what differs from the column as what it is.
FigureRecords::Conversion exceptionsOf(const KTVRecordColumn& column)
{
    std::map<std::size_t, double> exceptions;
    for (const auto& [index, snapshot] : column.exceptions())
        exceptions[index] = snapshot && snapshot->isValid() ? snapshot->unitValue() : kNone;
    return [kept = columnNow(column), exceptions = std::move(exceptions)](std::size_t first, std::span<double> out) {
        kept->copyUnitValues(first, out);
        const KTVRecordColumn::Hold held = kept->hold(first, first + out.size());
        for (std::size_t index = 0; index < out.size(); ++index)
            if (!kept->validity().isValid(first + index))
                out[index] = kNone;
        for (auto each = exceptions.lower_bound(first); each != exceptions.end() && each->first - first < out.size();
             ++each)
            out[each->first - first] = each->second;
    };
}

}  // namespace

FigureRecords::FigureRecords(RecordTimes times, PagedArray<double> values, ValidityBitmap validity,
                             Conversion conversion)
    : m_times(std::move(times)),
      m_values(std::move(values)),
      m_validity(std::move(validity)),
      m_conversion(std::move(conversion)),
      m_size(std::min(m_times.size(), m_values.size()))
{
}

FigureRecords::FigureRecords(RecordTimes times, const KTVRecordColumn& column)
    : FigureRecords(std::move(times), column.archivedValues(),
                    column.exceptions().empty() ? column.validity() : ValidityBitmap(),
                    column.exceptions().empty() ? conversionOf(column) : exceptionsOf(column))
{
}

FigureRecords::Held FigureRecords::hold(std::size_t first, std::size_t last) const
{
    constexpr std::size_t kBits = 64;
    if (m_values.isResident() && m_times.isResident() && m_validity.words().isResident())
        return {};
    return {m_times.hold(first, last), m_values.hold(first, last),
            m_validity.isAllValid() ? PagedMemory::Hold()
                                    : m_validity.words().hold(first / kBits, (last + kBits - 1) / kBits)};
}

std::span<const double> FigureRecords::values(std::size_t first, std::size_t last, Buffer& buffer) const
{
    if (!m_conversion)
        return m_values.span().subspan(first, last - first);
    const std::span<double> converted(buffer.values.data(), last - first);
    m_conversion(first, converted);
    return converted;
}

bool FigureRecords::isAllValid(std::size_t first, std::size_t last) const
{
    constexpr std::size_t kBits = 64;
    if (m_validity.isAllValid())
        return true;
    for (; first < last && first % kBits != 0; ++first)
        if (!m_validity.isValid(first))
            return false;
    for (; first + kBits <= last; first += kBits)
        if (m_validity.words()[first / kBits] != ~std::uint64_t{0})
            return false;
    for (; first < last; ++first)
        if (!m_validity.isValid(first))
            return false;
    return true;
}

FigureRecords::Points FigureRecords::points(std::size_t first, std::size_t last, Buffer& buffer) const
{
    assert(first <= last && last <= m_size && last - first <= kBlock);
    buffer.held = hold(first, last);
    const std::span<const double> values = this->values(first, last, buffer);
    const std::span<const double> times = m_times.span().subspan(first, last - first);
    if (isAllValid(first, last) && !FigureKernels::best().holdsNaN(values.data(), values.size()))
        return {times, values};
    std::size_t count = 0;
    for (std::size_t index = 0; index < values.size(); ++index) {
        // Written always, kept only if it counts: a branch here would be guessed wrong again and again.
        const double value = values[index];
        buffer.times[count] = times[index];
        buffer.values[count] = value;
        count += m_validity.isValid(first + index) && !std::isnan(value) ? 1 : 0;
    }
    return {std::span(buffer.times).first(count), std::span(buffer.values).first(count)};
}

FigureRecords FigureRecords::arranged(const std::vector<std::size_t>& order, const SharedArray<double>& times) const
{
    std::vector<double> all(m_size);
    for (std::size_t first = 0; first < m_size; first += kBlock) {
        Buffer buffer;
        const std::size_t last = std::min(m_size, first + kBlock);
        const Held held = hold(first, last);
        std::ranges::copy(values(first, last, buffer), all.begin() + static_cast<std::ptrdiff_t>(first));
        for (std::size_t index = first; index < last; ++index)
            if (!m_validity.isValid(index))
                all[index] = std::numeric_limits<double>::quiet_NaN();
    }
    std::vector<double> sorted(order.size());
    std::ranges::transform(order, sorted.begin(), [&](std::size_t index) {
        return index < all.size() ? all[index] : std::numeric_limits<double>::quiet_NaN();
    });
    return {times, SharedArray<double>::fromVector(std::move(sorted))};
}

std::optional<std::vector<std::size_t>> sortingOrder(std::span<const double> times)
{
    // A NaN is not at most its neighbour; one that has none is looked for by itself.
    const auto stepsBack = [](double one, double next) { return !(one <= next); };
    const bool isSorted = std::adjacent_find(times.begin(), times.end(), stepsBack) == times.end();
    if (isSorted && (times.empty() || !std::isnan(times.front())))
        return std::nullopt;
    std::vector<std::size_t> order(times.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::erase_if(order, [&](std::size_t index) { return std::isnan(times[index]); });
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t one, std::size_t other) { return times[one] < times[other]; });
    return order;
}

}  // namespace plotix
