#include "plugins/PlotixPlugIn/reading/trend/FittedValues.h"

#include <algorithm>
#include <cmath>

namespace plotix {

CPTPlotRange fittedValues(double lowest, double highest)
{
    double length = highest - lowest;
    if (!(length > 0))
        length = 2 * std::max(std::abs(highest) * 0.1, 1e-3);
    const double wanted = length * (1 + 2 * kFitMargin);
    return {(lowest + highest) / 2 - wanted / 2, wanted};
}

}  // namespace plotix
