#pragma once

#include "base/SharedArray.h"
#include "base/ValidityBitmap.h"
#include "hostapp/core/PropertyFormula.h"

#include <optional>
#include <span>
#include <vector>

/// Values over time, on their way into and out of formulas. Values; any thread.
namespace plotix {

struct FormulaSeries {
    SharedArray<double> times;   ///< seconds since 1970-01-01 UTC, strictly ascending
    SharedArray<double> values;  ///< as many; a NaN is no value
    ValidityBitmap validity;
};

/// All times of these, each once. Times that are one array everywhere are answered as they are.
SharedArray<double> unionOfTimes(const std::vector<SharedArray<double>>& times);

/// The series at other times: its value there, its last one, or the one on the straight line between its neighbours.
/// What is bridged is never longer than `longestGap` seconds. A series of these very times is answered as it is.
FormulaSeries joined(const FormulaSeries& series, const SharedArray<double>& times, PropertyFormula::Join join,
                     double longestGap);

/// The series at other times where it has a value at exactly them, and none elsewhere.
FormulaSeries placed(const FormulaSeries& series, const SharedArray<double>& times);

/// What lies in [from, to], without copying values; absent bounds are open.
FormulaSeries cutTo(const FormulaSeries& series, std::optional<double> from, std::optional<double> to);

/// The values with a NaN wherever there is none; those of a series without gaps are not copied.
SharedArray<double> plainValues(const SharedArray<double>& values, const ValidityBitmap& validity);

/// One bit for each value that is a finite number; no words when all are. Others become NaN.
ValidityBitmap finiteOnly(std::span<double> values);

}  // namespace plotix
