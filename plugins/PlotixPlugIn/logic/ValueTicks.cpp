#include "plugins/PlotixPlugIn/logic/ValueTicks.h"

#include "base/SinglePrecision.h"

#include <cmath>

namespace plotix {

double majorIntervalForValueSpan(double span)
{
    const double read = static_cast<double>(singlePrecision(span));
    return read < 5.0 ? 0.1 * read : std::round(read / 10.0);
}

ValueLabelFormat valueLabelFormatForSpan(double span)
{
    if (singlePrecision(span) < 7.0F)
        return {"#.##", 2};
    return {"#.#", 1};
}

}  // namespace plotix
