#include "base/TimeDistance.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <cmath>

namespace plotix {

namespace {

constexpr double kSecondsOfMinute = 60, kSecondsOfHour = 3'600;
constexpr int kDaysOfWeek = 7, kMonthsOfYear = 12;
constexpr int kMostMonths = 12'000, kMostDays = 366'000;
constexpr double kMostSeconds = 366'000.0 * 86'400;

/// A unit by the names it is typed by, and what one of it is worth.
struct UnitRow {
    const char* names;  // between blanks; the first one is written
    double months, days, seconds;
};
constexpr UnitRow kUnits[] = {
    {" y year years ", kMonthsOfYear, 0, 0},  {" mo month months ", 1, 0, 0},
    {" w week weeks ", 0, kDaysOfWeek, 0},    {" d day days ", 0, 1, 0},
    {" h hour hours ", 0, 0, kSecondsOfHour}, {" min minute minutes m ", 0, 0, kSecondsOfMinute},
    {" s second seconds ", 0, 0, 1},
};

const UnitRow* unitNamed(const QString& name)
{
    for (const UnitRow& unit : kUnits)
        if (QLatin1String(unit.names).contains(QLatin1Char(' ') + name.toLower() + QLatin1Char(' ')))
            return &unit;
    return nullptr;
}

QString secondsText(double seconds)
{
    if (std::fmod(seconds, kSecondsOfHour) == 0)
        return QStringLiteral("%1h").arg(seconds / kSecondsOfHour, 0, 'g', 15);
    if (std::fmod(seconds, kSecondsOfMinute) == 0)
        return QStringLiteral("%1min").arg(seconds / kSecondsOfMinute, 0, 'g', 15);
    return QStringLiteral("%1s").arg(seconds, 0, 'g', 15);
}

}  // namespace

std::optional<TimeDistance> timeDistanceFrom(const QString& text)
{
    static const QRegularExpression part(QStringLiteral("\\G\\s*(\\d{1,9}(?:\\.\\d{1,6})?)\\s*([A-Za-z]+)\\s*"));
    double months = 0, days = 0, seconds = 0;
    qsizetype end = 0;
    while (end < text.size()) {
        const QRegularExpressionMatch match = part.match(text, end);
        const UnitRow* unit = match.hasMatch() ? unitNamed(match.captured(2)) : nullptr;
        if (!unit)
            return std::nullopt;
        const double count = match.captured(1).toDouble();
        months += count * unit->months;
        days += count * unit->days;
        seconds += count * unit->seconds;
        end = match.capturedEnd();
    }
    // A calendar has no half days: they are as long as their day is.
    if (months != std::floor(months) || days != std::floor(days))
        return std::nullopt;
    if (months > kMostMonths || days > kMostDays || seconds > kMostSeconds)
        return std::nullopt;
    const TimeDistance distance{static_cast<int>(months), static_cast<int>(days), seconds};
    return distance.isZero() ? std::nullopt : std::optional(distance);
}

QString textOf(const TimeDistance& distance)
{
    QStringList parts;
    if (distance.months >= kMonthsOfYear)
        parts << QStringLiteral("%1y").arg(distance.months / kMonthsOfYear);
    if (distance.months % kMonthsOfYear != 0)
        parts << QStringLiteral("%1mo").arg(distance.months % kMonthsOfYear);
    if (distance.days > 0)
        parts << QStringLiteral("%1d").arg(distance.days);
    if (distance.seconds > 0)
        parts << secondsText(distance.seconds);
    return parts.join(QLatin1Char(' '));
}

}  // namespace plotix
