#include "hostapp/print/ReportText.h"

#include "base/FigureDecimals.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

class ReportText {
    Q_DECLARE_TR_FUNCTIONS(ReportText)
};

constexpr double kSpanWithSeconds = 600;
constexpr double kSameToAReader = 0.01;  // of the span drawn
constexpr double kLongestNumber = 1e12;  // from here on powers of ten are shorter

QDateTime momentOf(double seconds, const QTimeZone& zone)
{
    const qint64 whole = std::llround(seconds);
    return zone.isValid() ? QDateTime::fromSecsSinceEpoch(whole, zone) : QDateTime::fromSecsSinceEpoch(whole);
}

QString dateText(const QDateTime& moment, const QLocale& locale)
{
    return locale.toString(moment.date(), QLocale::LongFormat);
}

QString timeText(const QDateTime& moment, const QLocale& locale, bool withSeconds, bool hasTwentyFourHours)
{
    QString format = hasTwentyFourHours ? QStringLiteral("HH:mm") : locale.timeFormat(QLocale::ShortFormat);
    if (withSeconds && !format.contains(QLatin1String("ss")))
        format.replace(QLatin1String("mm"), QLatin1String("mm:ss"));
    if (!withSeconds)
        format.remove(QLatin1String(":ss"));
    return locale.toString(moment.time(), format);
}

QString numberText(double number, int decimals, const QLocale& locale)
{
    constexpr double kLeast = 0.5e-6;
    const bool vanishes = number != 0 && std::abs(number) < kLeast && decimals > 0;
    if (!std::isfinite(number) || std::abs(number) >= kLongestNumber || vanishes)
        return locale.toString(number, 'g', 6);
    return locale.toString(number, 'f', decimals);
}

}  // namespace

QString spanText(const ReportContents& contents, double from, double to, const QLocale& locale)
{
    const QDateTime begin = momentOf(from, contents.zone), end = momentOf(to, contents.zone);
    const bool withSeconds = to - from < kSpanWithSeconds;
    const QString first = timeText(begin, locale, withSeconds, contents.hasTwentyFourHours);
    const QString last = timeText(end, locale, withSeconds, contents.hasTwentyFourHours);
    QString zone = end.timeZoneAbbreviation();
    if (contents.zone.isValid() && QString::fromUtf8(contents.zone.id()) != zone)
        zone += QStringLiteral(" (%1)").arg(QString::fromUtf8(contents.zone.id()));
    if (begin.date() == end.date())
        return ReportText::tr("%1, %2 to %3 %4").arg(dateText(begin, locale), first, last, zone);
    const QString beginZone =
        begin.timeZoneAbbreviation() == end.timeZoneAbbreviation() ? QString() : ' ' + begin.timeZoneAbbreviation();
    return ReportText::tr("%1 %2 to %3 %4 %5")
        .arg(dateText(begin, locale), first + beginZone, dateText(end, locale), last, zone);
}

QString placeText(const ReportContents& contents)
{
    QStringList parts{contents.siteName, contents.siteLocation};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QString recordsText(const ReportContents& contents, const QLocale& locale)
{
    if (!contents.about.isEmpty())
        return ReportText::tr("The figures cover %1").arg(contents.about);
    if (!contents.firstRecord || !contents.lastRecord)
        return {};
    const double tolerance = kSameToAReader * std::abs(contents.to - contents.from);
    const auto isOutside = [&](double time) {
        return time < contents.from - tolerance || time > contents.to + tolerance;
    };
    if (!isOutside(*contents.firstRecord) && !isOutside(*contents.lastRecord))
        return {};
    return ReportText::tr("The figures are those of all records read: %1")
        .arg(spanText(contents, *contents.firstRecord, *contents.lastRecord, locale));
}

QString noteText(const ReportContents& contents, const QLocale& locale)
{
    QStringList parts{recordsText(contents, locale)};
    if (!contents.outside.isEmpty())
        parts.prepend(ReportText::tr("Outside the values shown: %1").arg(contents.outside.join(QStringLiteral(", "))));
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}

QString sharedUnit(const ReportContents& contents)
{
    const auto differs = [&](const ReportContents::Row& row) { return row.unit != contents.rows.front().unit; };
    return contents.areUnitsInGraph || contents.rows.empty() ||
                   std::any_of(contents.rows.begin(), contents.rows.end(), differs)
               ? QString()
               : contents.rows.front().unit;
}

FiguresText figuresText(const ReportContents::Row& row, const QLocale& locale)
{
    const QString points = locale.toString(row.points);
    if (row.points == 0)
        return {QStringLiteral("–"), QStringLiteral("–"), QStringLiteral("–"), points};
    const FigureDecimals decimals = figureDecimals(static_cast<float>(row.minimum), static_cast<float>(row.maximum),
                                                   static_cast<float>(row.average));
    return {numberText(row.minimum, decimals.extremes, locale), numberText(row.maximum, decimals.extremes, locale),
            numberText(row.average, decimals.average, locale), points};
}

}  // namespace plotix
