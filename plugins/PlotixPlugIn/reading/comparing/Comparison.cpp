#include "plugins/PlotixPlugIn/reading/comparing/Comparison.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <QtCore/QDateTime>

#include <cmath>

namespace plotix {

namespace {

constexpr double kMillisOfSecond = 1000;

QString momentText(double time)
{
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(std::llround(time * kMillisOfSecond), Qt::UTC);
    return moment.toString(moment.time().msec() == 0 ? Qt::ISODate : Qt::ISODateWithMs);
}

std::optional<double> momentFrom(const QString& text)
{
    const QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
    return moment.isValid() ? std::optional(static_cast<double>(moment.toMSecsSinceEpoch()) / kMillisOfSecond)
                            : std::nullopt;
}

QString counted(int count, const char* one, const char* more)
{
    return count == 1 ? localizedText(one) : localizedText(more).arg(count);
}

QString nameOfDistance(const TimeDistance& distance)
{
    constexpr int kMonthsOfYear = 12, kDaysOfWeek = 7;
    constexpr double kSecondsOfHour = 3'600;
    const bool isMonths = distance.days == 0 && distance.seconds == 0;
    const bool isDays = distance.months == 0 && distance.seconds == 0;
    if (isMonths && distance.months % kMonthsOfYear == 0)
        return counted(distance.months / kMonthsOfYear, QT_TRANSLATE_NOOP("Plotix", "a year earlier"),
                       QT_TRANSLATE_NOOP("Plotix", "%1 years earlier"));
    if (isMonths)
        return counted(distance.months, QT_TRANSLATE_NOOP("Plotix", "a month earlier"),
                       QT_TRANSLATE_NOOP("Plotix", "%1 months earlier"));
    if (isDays && distance.days % kDaysOfWeek == 0)
        return counted(distance.days / kDaysOfWeek, QT_TRANSLATE_NOOP("Plotix", "a week earlier"),
                       QT_TRANSLATE_NOOP("Plotix", "%1 weeks earlier"));
    if (isDays)
        return counted(distance.days, QT_TRANSLATE_NOOP("Plotix", "a day earlier"),
                       QT_TRANSLATE_NOOP("Plotix", "%1 days earlier"));
    const double hours = distance.seconds / kSecondsOfHour;
    const bool isHours = distance.isBySecondsAlone() && hours == std::floor(hours);
    return localizedText(QT_TRANSLATE_NOOP("Plotix", "%1 earlier"))
        .arg(isHours ? QStringLiteral("%1 h").arg(hours) : textOf(distance));
}

}  // namespace

QString textOf(const Comparison& comparison)
{
    if (!comparison.span)
        return textOf(comparison.distance);
    return momentText(comparison.span->from) + QLatin1Char('/') + momentText(comparison.span->to) + QLatin1Char('@') +
           momentText(comparison.at);
}

std::optional<Comparison> comparisonFrom(const QString& text)
{
    if (const auto distance = timeDistanceFrom(text))
        return Comparison{*distance, {}, 0};
    const qsizetype slash = text.indexOf(QLatin1Char('/'));
    const qsizetype at = text.indexOf(QLatin1Char('@'));
    if (slash < 0 || at < slash)
        return std::nullopt;
    const auto from = momentFrom(text.left(slash));
    const auto to = momentFrom(text.mid(slash + 1, at - slash - 1));
    const auto begin = momentFrom(text.mid(at + 1));
    if (!from || !to || !begin || !(*from < *to) || *from == *begin)
        return std::nullopt;
    return Comparison{{}, TimeSpan{*from, *to}, *begin};
}

QString nameOf(const Comparison& comparison, const CPTClock& clock)
{
    constexpr double kMinute = 60;
    if (!comparison.span)
        return nameOfDistance(comparison.distance);
    return localizedText(QT_TRANSLATE_NOOP("Plotix", "from %1"))
        .arg(ValueTexts(clock).moment(comparison.span->from, kMinute));
}

std::vector<EarlierStretch> stretchesOf(const Comparison& comparison, const TimeSpan& present, const QTimeZone& zone)
{
    if (comparison.span)
        return {{*comparison.span, comparison.at - comparison.span->from}};
    return earlierStretches(present, comparison.distance, zone);
}

}  // namespace plotix
