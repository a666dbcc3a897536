#include "hostapp/formulas/FormulaSeries.h"

#include "base/LargeMemory.h"
#include "hostapp/formulas/FormulaBlocks.h"
#include "hostapp/formulas/FormulaJoining.h"
#include "hostapp/formulas/PlainSeries.h"

#include <algorithm>
#include <limits>

namespace plotix {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t kWord = 64;

/// Also where they were read twice: comparing costs less than joining.
bool areSame(const SharedArray<double>& one, const SharedArray<double>& other)
{
    return one.size() == other.size() &&
           (one.data() == other.data() || std::equal(one.span().begin(), one.span().end(), other.span().begin()));
}

FormulaSeries seriesOf(const SharedArray<double>& times, const std::shared_ptr<double>& values)
{
    FormulaSeries series{times, SharedArray<double>(values, times.size()), {}};
    series.validity = finiteOnly({values.get(), times.size()});
    return series;
}

SharedArray<double> merged(const SharedArray<double>& one, const SharedArray<double>& other)
{
    std::vector<double> times(one.size() + other.size());
    const auto end =
        std::set_union(one.span().begin(), one.span().end(), other.span().begin(), other.span().end(), times.begin());
    times.erase(end, times.end());
    return SharedArray<double>::fromVector(std::move(times));
}

/// The bits [first, first + count) of a bitmap, from its beginning.
ValidityBitmap cutBits(const ValidityBitmap& validity, std::size_t first, std::size_t count)
{
    if (validity.isAllValid())
        return {};
    const auto words = validity.words().span();
    std::vector<std::uint64_t> cut((count + kWord - 1) / kWord);
    const std::size_t shift = first % kWord;
    for (std::size_t i = 0; i < cut.size(); ++i) {
        const std::size_t from = first / kWord + i;
        cut[i] = words[from] >> shift;
        if (shift != 0 && from + 1 < words.size())
            cut[i] |= words[from + 1] << (kWord - shift);
    }
    return ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(cut)));
}

}  // namespace

SharedArray<double> unionOfTimes(const std::vector<SharedArray<double>>& times)
{
    SharedArray<double> all = times.empty() ? SharedArray<double>() : times.front();
    for (const SharedArray<double>& each : times)
        if (!areSame(each, all))
            all = merged(all, each);
    return all;
}

FormulaSeries joined(const FormulaSeries& series, const SharedArray<double>& times, PropertyFormula::Join join,
                     double longestGap)
{
    if (areSame(series.times, times))
        return {times, series.values, series.validity};
    const SharedArray<double> own = plainValues(series.values, series.validity);
    const auto values = unsetArray<double>(times.size());
    const PlainSeries source{series.times.span(), own.span()}, at{times.span(), {}};
    JoiningCourse().run(source, at, join, longestGap, 0, {values.get(), times.size()});
    return seriesOf(times, values);
}

FormulaSeries placed(const FormulaSeries& series, const SharedArray<double>& times)
{
    if (areSame(series.times, times))
        return {times, series.values, series.validity};
    const SharedArray<double> own = plainValues(series.values, series.validity);
    const auto values = unsetArray<double>(times.size());
    const PlainSeries source{series.times.span(), own.span()}, at{times.span(), {}};
    PlacingCourse().run(source, at, 0, {values.get(), times.size()});
    return seriesOf(times, values);
}

FormulaSeries cutTo(const FormulaSeries& series, std::optional<double> from, std::optional<double> to)
{
    const auto times = series.times.span();
    const auto begin = from ? std::lower_bound(times.begin(), times.end(), *from) : times.begin();
    const auto end = to ? std::upper_bound(begin, times.end(), *to) : times.end();
    const auto first = static_cast<std::size_t>(begin - times.begin());
    const auto count = static_cast<std::size_t>(std::max(end, begin) - begin);
    if (count == times.size())
        return series;
    const auto part = [first, count](const SharedArray<double>& whole) {
        if (count == 0)
            return SharedArray<double>();
        // Keeps the whole alive.
        const auto owner = std::make_shared<const SharedArray<double>>(whole);
        return SharedArray<double>(std::shared_ptr<const double>(owner, whole.data() + first), count);
    };
    return {part(series.times), part(series.values), cutBits(series.validity, first, count)};
}

SharedArray<double> plainValues(const SharedArray<double>& values, const ValidityBitmap& validity)
{
    if (validity.isAllValid())
        return values;
    const auto plain = unsetArray<double>(values.size());
    copyMasked(values.data(), validity, 0, values.size(), plain.get());
    return {plain, values.size()};
}

ValidityBitmap finiteOnly(std::span<double> values)
{
    FiniteBits bits(values.size());
    bits.take(values.data(), 0, values.size());
    return bits.bitmap();
}

}  // namespace plotix
