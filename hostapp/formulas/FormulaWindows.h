#pragma once

#include "hostapp/core/PropertyFormula.h"
#include "hostapp/formulas/FormulaProgram.h"

#include <QtCore/QTimeZone>

#include <span>

/// Steps over time: each result needs a stretch of its argument. Time in one pass over the values, whatever the span.
///
/// A NaN is no value. Every function but `hold` and `earlier` gives a value only where its argument has one. Sums are
/// carried with their rounding errors, so that a window long after a huge value is not off. Free functions; any thread.
namespace plotix {

struct WindowInput {
    std::span<const double> times;   ///< seconds since 1970-01-01 UTC, strictly ascending
    std::span<const double> values;  ///< as many
    PropertyFormula::Join join{};    ///< how it goes on between two values
    double longestGap = 0;           ///< seconds that are bridged, at most
    QTimeZone zone;                  ///< of local days
};

/// One of Window, Hold, Earlier and Derivative. Requires: `to` is as long as the input and other memory.
void runOverTime(const FormulaStep& step, const WindowInput& input, std::span<double> to);

}  // namespace plotix
