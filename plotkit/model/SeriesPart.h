#pragma once

#include "plotkit/model/CPTPointSeries.h"

#include <cstddef>
#include <vector>

/// A stretch of a series' elements. A value that *shares* the series; any thread.
namespace plotkit {

struct SeriesPart {
    CPTPointSeriesPtr series;
    std::size_t first = 0, end = 0;  ///< elements
};

using SeriesParts = std::vector<SeriesPart>;

}  // namespace plotkit
