#include "base/FigureDecimals.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace plotix {

namespace {

constexpr int kDigitsOfRange = 4;
constexpr int kMostDecimals = 9;
constexpr float kSmallestPlain = 1e-5F, kLargestPlain = 1e15F;  // beyond them numbers are written with an exponent

/// The decimals of the shortest text that reads back to the same number.
int ownDecimals(float number)
{
    const float magnitude = std::abs(number);
    if (magnitude != 0.0F && !(magnitude >= kSmallestPlain && magnitude < kLargestPlain))
        return magnitude < 1 ? kMostDecimals : 0;
    char text[64];
    const auto written = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed);
    const std::string_view digits(text, static_cast<std::size_t>(written.ptr - text));
    const std::size_t point = digits.find('.');
    return point == std::string_view::npos ? 0 : std::min(static_cast<int>(digits.size() - point) - 1, kMostDecimals);
}

/// Averages come rounded to tenths, but to no fewer than four digits.
int decimalsRoundedTo(float average)
{
    constexpr int kDigits = 4, kLeast = 1;
    const double magnitude = std::abs(static_cast<double>(average));
    const bool isNumber = magnitude > 0 && std::isfinite(magnitude);
    return isNumber
               ? std::clamp(kDigits - 1 - static_cast<int>(std::floor(std::log10(magnitude))), kLeast, kMostDecimals)
               : kMostDecimals;
}

}  // namespace

int decimalsForStatistics(float minimum, float maximum)
{
    const int own = std::max(ownDecimals(minimum), ownDecimals(maximum));
    const double range = static_cast<double>(maximum) - static_cast<double>(minimum);
    if (!(range > 0))
        return own;
    const int worth = kDigitsOfRange - 1 - static_cast<int>(std::floor(std::log10(range)));
    return std::clamp(worth, 0, own + 1);
}

FigureDecimals figureDecimals(float minimum, float maximum, float average)
{
    const int decimals = std::isfinite(minimum) && std::isfinite(maximum) ? decimalsForStatistics(minimum, maximum) : 0;
    const int extremes = std::min(decimals, std::max(ownDecimals(minimum), ownDecimals(maximum)));
    return {extremes,
            std::max(std::min(decimals, ownDecimals(average)), std::min(extremes, decimalsRoundedTo(average)))};
}

}  // namespace plotix
