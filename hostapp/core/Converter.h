#pragma once

#include "plugins/PlotixPlugIn/host/KTVConverter.h"

/// The host's rounding of numbers for display. Stateless; any thread.
namespace plotix {

class Converter : public KTVConverter {
public:
    /// To the nearest 1/n, halves away from zero, but never to fewer than four significant digits.
    /// Zero, NaN, infinities and n < 1 answer the value itself.
    double roundedValue(double value, int toNearest) const override;
};

}  // namespace plotix
