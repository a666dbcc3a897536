#include "plugins/PlotixPlugIn/reading/trend/ReadableNumbers.h"

#include "plugins/PlotixPlugIn/logic/NumberText.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr int kMostDecimals = 9;

bool isPlain(double number)
{
    constexpr double kLeast = 1e-9F;
    constexpr double kMost = 1e15;
    const double magnitude = std::abs(number);
    return std::isfinite(number) && magnitude < kMost && (magnitude == 0.0 || magnitude >= kLeast);
}

}  // namespace

QString ReadableNumbers::withDecimals(double number, int decimals) const
{
    return isPlain(number) ? m_formatter.stringForTick(number, std::pow(10.0, -decimals))
                           : numberText(static_cast<float>(number));
}

QString ReadableNumbers::toFiveDigits(double number) const
{
    constexpr int kDigits = 5;
    const double magnitude = std::abs(number);
    const int whole =
        magnitude > 0 && std::isfinite(magnitude) ? static_cast<int>(std::floor(std::log10(magnitude))) : 0;
    const int decimals = number == 0 ? 0 : std::clamp(kDigits - 1 - whole, 0, kMostDecimals);
    return withDecimals(number, decimals);
}

ReadableNumbers::Texts ReadableNumbers::statistics(float minimum, float maximum, float average) const
{
    const FigureDecimals decimals = figureDecimals(minimum, maximum, average);
    const auto text = [this](float number, int digits) { return withDecimals(static_cast<double>(number), digits); };
    return {text(minimum, decimals.extremes), text(maximum, decimals.extremes), text(average, decimals.average)};
}

QString ReadableNumbers::count(qint64 number) const
{
    return m_formatter.stringForTick(static_cast<double>(number), 1);
}

}  // namespace plotix
