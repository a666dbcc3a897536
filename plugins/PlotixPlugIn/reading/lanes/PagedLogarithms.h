#pragma once

#include "plotkit/model/CPTPointSeries.h"

/// The logarithms of a paged series, paged like it. A free function; any thread.
namespace plotix {

/// Points that are not positive are dropped. *Shares* the pages of the series. Looks at the runs that hold both kinds,
/// and at all where elements are no points, to count the others; among those it takes points of −∞. Requires:
/// series.runs().
CPTPointSeriesPtr pagedLogarithms(const CPTPointSeries& series);

}  // namespace plotix
