#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <QtCore/QLocale>

#include <algorithm>
#include <array>
#include <cmath>

namespace plotix {

namespace {

constexpr int kDigits = 7;
constexpr int kMostDecimals = 15;
constexpr double kLeastPlain = 1e-6;  // numbers below are written with an exponent

struct TimePart {
    double seconds;
    const char* symbol;
};

constexpr std::array<TimePart, 4> kTimeParts{{{86'400, "d"}, {3'600, "h"}, {60, "min"}, {1, "s"}}};

/// Decimals less the zeros at their end.
int neededDecimals(double number, int decimals)
{
    const QByteArray text = QByteArray::number(number, 'f', decimals);
    for (qsizetype last = text.size() - 1; decimals > 0 && text.at(last) == '0'; --last)
        --decimals;
    return decimals;
}

QString partText(double count, const char* symbol)
{
    return QStringLiteral("%1 %2").arg(QLocale::c().toString(count, 'f', 0), QLatin1String(symbol));
}

/// Whole parts of time, the first that counts and the one after it.
QString longDuration(double seconds, std::size_t first)
{
    const TimePart& large = kTimeParts[first];
    const TimePart& small = kTimeParts[first + 1];
    const double rounded = std::round(seconds / small.seconds) * small.seconds;
    if (first > 0 && rounded >= kTimeParts[first - 1].seconds)
        return longDuration(rounded, first - 1);
    const double whole = std::floor(rounded / large.seconds);
    const double rest = std::round((rounded - whole * large.seconds) / small.seconds);
    const QString text = partText(whole, large.symbol);
    return rest > 0 ? text + QLatin1Char(' ') + partText(rest, small.symbol) : text;
}

}  // namespace

int decimalsOf(double number)
{
    const double magnitude = std::abs(number);
    if (!(magnitude > 0) || !std::isfinite(magnitude))
        return kDigits;
    return std::clamp(kDigits - 1 - static_cast<int>(std::floor(std::log10(magnitude))), 0, kMostDecimals);
}

QString ValueTexts::moment(double time, double step) const
{
    return m_moments->stringForTick(time, step);
}

QString ValueTexts::number(double number, int decimals) const
{
    if (!std::isfinite(number))
        return QString::number(number);
    if (number != 0 && std::abs(number) < kLeastPlain)
        return QLocale().toString(number, 'g', kDigits);
    return m_numbers.stringForTick(number, std::pow(10.0, -neededDecimals(number, decimals)));
}

QString ValueTexts::signedNumber(double value, int decimals) const
{
    const double rounded = QByteArray::number(value, 'f', decimals).toDouble();
    const QString text = number(rounded, decimals);
    return rounded > 0 ? QLatin1Char('+') + text : text;
}

QString ValueTexts::withUnit(const QString& text, const QString& unitSymbol) const
{
    return unitSymbol.isEmpty() ? text : text + QChar(QChar::Nbsp) + unitSymbol;
}

QString ValueTexts::value(double value, const QString& unitSymbol) const
{
    return withUnit(number(value, decimalsOf(value)), unitSymbol);
}

QString ValueTexts::difference(double earlier, double later, const QString& unitSymbol) const
{
    const int decimals = decimalsOf(std::max(std::abs(earlier), std::abs(later)));
    return withUnit(signedNumber(later - earlier, decimals), differenceSymbol(unitSymbol));
}

QString ValueTexts::slope(double earlier, double later, double seconds, const QString& unitSymbol) const
{
    constexpr double kAtLeast = 2;  // of a part of time, for slopes by it
    constexpr int kSlopeDigits = 4;
    if (!(std::abs(seconds) > 0))
        return {};
    const auto part = std::find_if(kTimeParts.begin(), kTimeParts.end() - 1, [seconds](const TimePart& each) {
        return std::abs(seconds) >= kAtLeast * each.seconds;
    });
    const double slope = (later - earlier) / seconds * part->seconds;
    const int decimals = std::max(0, decimalsOf(slope) - (kDigits - kSlopeDigits));
    const QString symbol = differenceSymbol(unitSymbol);
    return signedNumber(slope, decimals) + QChar(QChar::Nbsp) + (symbol.isEmpty() ? QStringLiteral("1") : symbol) +
           QLatin1Char('/') + QLatin1String(part->symbol);
}

QString durationText(double seconds)
{
    const double length = std::abs(seconds);
    if (!std::isfinite(length))
        return {};
    constexpr double kMilli = 1e-3;
    if (length > 0 && length < 1 - kMilli / 2)
        return QStringLiteral("%1 ms").arg(QLocale().toString(length / kMilli, 'g', 3));
    if (length < kTimeParts[2].seconds) {
        const double rounded = std::round(length / kMilli) * kMilli;
        return QStringLiteral("%1 s").arg(QLocale().toString(rounded, 'g', 5));
    }
    std::size_t first = 0;
    while (length < kTimeParts[first].seconds)
        ++first;
    return longDuration(length, first);
}

QString differenceSymbol(const QString& unitSymbol)
{
    return unitSymbol == QStringLiteral("°C") || unitSymbol == QStringLiteral("℃") ? QStringLiteral("K") : unitSymbol;
}

}  // namespace plotix
