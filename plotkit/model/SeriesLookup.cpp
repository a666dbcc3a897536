#include "plotkit/model/SeriesLookup.h"

#include <cmath>
#include <limits>

namespace plotkit {

namespace {

SeriesRecord recordOf(const CPTPointSeries& series, std::size_t element, double askedX)
{
    const CPTPointSeries::Hold held = series.hold(element, element + 1);
    const double x = series.x()[element];
    const float y = series.y()[element];
    const bool isPoint = series.isPoint(element) && std::isfinite(y);
    return {element, x, isPoint ? y : std::numeric_limits<float>::quiet_NaN(), isPoint, std::abs(x - askedX)};
}

}  // namespace

std::optional<SeriesRecord> RecordsAtX::nearest() const
{
    if (!atOrBefore || !after)
        return atOrBefore ? atOrBefore : after;
    return after->distance < atOrBefore->distance ? after : atOrBefore;
}

RecordsAtX recordsAtX(const CPTPointSeries& series, double x)
{
    RecordsAtX records;
    if (std::isnan(x) || !series.isXSorted())
        return records;
    const std::size_t next = series.elementAfter(x);
    if (next > 0)
        records.atOrBefore = recordOf(series, next - 1, x);
    if (next < series.elementCount())
        records.after = recordOf(series, next, x);
    return records;
}

}  // namespace plotkit
