#pragma once

/// How far apart the ticks of the value axis stand and how they are labelled.
///
/// Pure functions; any thread. Spans are in value units, and rounded to single precision first, as the values
/// themselves are.
namespace plotix {

/// A tenth of the span below 5, from 5 on a tenth rounded to a whole number, halves away from zero: 4.9 gives 0.49, 5
/// gives 1, 15 gives 2, 0 gives 0. Negative spans answer a tenth of themselves, a NaN a NaN.
double majorIntervalForValueSpan(double span);

struct ValueLabelFormat {
    const char* pattern;  ///< ICU decimal pattern
    int minimumFractionDigits;
};

/// Two decimals for a span below 7, else one. A NaN gets one.
ValueLabelFormat valueLabelFormatForSpan(double span);

}  // namespace plotix
