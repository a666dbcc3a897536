#include "hostapp/core/Converter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include <QtCore/QByteArray>

namespace plotix {

namespace {

constexpr int kSignificantDigits = 4;

/// Through decimal text, so that the answer is the double nearest to the decimal number shown.
double withDecimals(double value, int decimals)
{
    return QByteArray::number(value, 'e', std::clamp(decimals, 0, 17)).toDouble();
}

}  // namespace

double Converter::roundedValue(double value, int toNearest) const
{
    if (toNearest < 1 || value == 0 || !std::isfinite(value))
        return value;
    const double significant = withDecimals(value, kSignificantDigits - 1);
    const double nearest = std::round(value * toNearest) / toNearest;
    // The finer of two grids: the one with enough digits, or multiples of 1/n.
    const double digitStep = std::pow(10.0, std::floor(std::log10(std::abs(value))) - (kSignificantDigits - 1));
    return std::isfinite(nearest) && digitStep > 1.0 / toNearest ? nearest : significant;
}

}  // namespace plotix
