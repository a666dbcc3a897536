#pragma once

#include "plotkit/model/CPTFormatter.h"

/// How the ticks of a lane read. Main thread only.
namespace plotix {

/// Numbers as people read them, each times `factor`; of a logarithmic axis, whose ticks are powers of ten, the numbers
/// they stand for.
CPTFormatterPtr laneFormatter(bool isLogarithmic, double factor);

}  // namespace plotix
