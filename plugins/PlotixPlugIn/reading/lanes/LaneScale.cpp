#include "plugins/PlotixPlugIn/reading/lanes/LaneScale.h"

#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"
#include "plugins/PlotixPlugIn/reading/lanes/PagedLogarithms.h"
#include "plugins/PlotixPlugIn/reading/trend/FittedValues.h"
#include "plugins/PlotixPlugIn/reading/values/SeriesReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace plotix {

namespace {

constexpr double kFarOff = 3;  // distances of the quartiles
constexpr std::size_t kMostTaken = 100'000;
constexpr std::array<std::pair<LaneFit, const char*>, 4> kFits{
    std::pair{LaneFit::AllValues, "all"}, std::pair{LaneFit::Robust, "robust"}, std::pair{LaneFit::GrowOnly, "grow"},
    std::pair{LaneFit::Fixed, "fixed"}};

std::optional<CPTPlotRange> fixedRange(const LaneSettings& settings)
{
    const auto scaled = [&](double value) { return settings.isLogarithmic ? std::log10(value) : value; };
    const double lowest = scaled(settings.lowest);
    const double highest = scaled(settings.highest);
    if (!std::isfinite(lowest) || !std::isfinite(highest) || !(lowest < highest))
        return std::nullopt;
    return CPTPlotRange{lowest, highest - lowest};
}

/// Values evenly taken over the elements, every one of a short series.
std::vector<float> takenValues(const CPTPointSeries& series)
{
    const std::size_t step = series.elementCount() / kMostTaken + 1;
    std::vector<float> values;
    values.reserve(series.elementCount() / step + 1);
    SeriesReader reader(series);
    for (std::size_t element = 0; element < series.elementCount(); element += step)
        if (reader.isPoint(element))
            values.push_back(reader.y(element));
    return values;
}

float quantile(std::vector<float>& values, double share)
{
    const auto place = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<std::size_t>(place)];
}

}  // namespace

QString textOf(LaneFit fit)
{
    for (const auto& [each, text] : kFits)
        if (each == fit)
            return QString::fromLatin1(text);
    return {};
}

std::optional<LaneFit> laneFitNamed(const QString& text)
{
    for (const auto& [fit, name] : kFits)
        if (text == QLatin1String(name))
            return fit;
    return std::nullopt;
}

std::optional<ValueSpan> usualValues(const CPTPointSeries& series)
{
    const std::optional<CPTPointSeries::Extent> extent = series.extent();
    std::vector<float> values = takenValues(series);
    if (!extent)
        return std::nullopt;
    if (values.empty())
        return ValueSpan{extent->minY, extent->maxY};
    const double lower = static_cast<double>(quantile(values, 0.25));
    const double upper = static_cast<double>(quantile(values, 0.75));
    const double reach = kFarOff * (upper - lower);
    if (!(reach > 0))  // more than half of them are one value: nothing says what is far off
        return ValueSpan{extent->minY, extent->maxY};
    return ValueSpan{std::max(extent->minY, static_cast<float>(lower - reach)),
                     std::min(extent->maxY, static_cast<float>(upper + reach))};
}

std::optional<CPTPlotRange> fittedLaneRange(const std::vector<CPTPointSeriesPtr>& series, const LaneSettings& settings,
                                            const CPTPlotRange& shown)
{
    if (settings.fit == LaneFit::Fixed)
        return fixedRange(settings);
    std::optional<std::pair<double, double>> all;
    for (const CPTPointSeriesPtr& each : series) {
        if (!each || !each->extent())
            continue;
        ValueSpan span{each->extent()->minY, each->extent()->maxY};
        if (settings.fit == LaneFit::Robust)
            span = usualValues(*each).value_or(span);
        const auto lowest = static_cast<double>(span.lowest);
        const auto highest = static_cast<double>(span.highest);
        all =
            all ? std::pair(std::min(all->first, lowest), std::max(all->second, highest)) : std::pair(lowest, highest);
    }
    if (!all)
        return std::nullopt;
    CPTPlotRange range = fittedValues(all->first, all->second);
    if (settings.fit == LaneFit::GrowOnly) {
        const double lowest = std::min(range.minLimit(), shown.minLimit());
        range = {lowest, std::max(range.maxLimit(), shown.maxLimit()) - lowest};
    }
    return range;
}

CPTPointSeriesPtr logarithmicSeries(const CPTPointSeries& series)
{
    if (series.runs())
        return pagedLogarithms(series);
    SeriesBuilder builder(series.x(), series.elementCount());
    std::vector<double> block(std::min(SeriesBuilder::kBlock, builder.elementCount()));
    for (std::size_t first = 0; first < builder.elementCount(); first += block.size()) {
        const std::size_t count = std::min(block.size(), builder.elementCount() - first);
        for (std::size_t index = 0; index < count; ++index) {
            const auto value = static_cast<double>(series.y()[first + index]);
            block[index] = value > 0 ? std::log10(value) : std::numeric_limits<double>::quiet_NaN();  // dropped
        }
        builder.setBlock(first, std::span<const double>(block.data(), count), series.points());
    }
    return builder.finish();
}

}  // namespace plotix
