#include "plugins/PlotixPlugIn/reading/trend/ReadableNumbers.h"

#include "plugins/PlotixPlugIn/logic/NumberText.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr int kDigitsOfRange = 4;
constexpr int kMostDecimals = 9;

/// The decimals of the shortest text that reads back to the same number.
int ownDecimals(float number)
{
    const QString text = numberText(number);
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    if (text.contains(QLatin1Char('e')))
        return std::abs(number) < 1 ? kMostDecimals : 0;
    return point < 0 ? 0 : static_cast<int>(std::min<qsizetype>(text.size() - point - 1, kMostDecimals));
}

bool isPlain(double number)
{
    constexpr double kLeast = 1e-9F;
    constexpr double kMost = 1e15;
    const double magnitude = std::abs(number);
    return std::isfinite(number) && magnitude < kMost && (magnitude == 0.0 || magnitude >= kLeast);
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
    const int decimals = std::isfinite(minimum) && std::isfinite(maximum) ? decimalsForStatistics(minimum, maximum) : 0;
    const auto text = [&](float number) { return withDecimals(static_cast<double>(number), decimals); };
    return {text(minimum), text(maximum), text(average)};
}

QString ReadableNumbers::count(qint64 number) const
{
    return m_formatter.stringForTick(static_cast<double>(number), 1);
}

}  // namespace plotix
