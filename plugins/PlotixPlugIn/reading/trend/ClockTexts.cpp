#include "plugins/PlotixPlugIn/reading/trend/ClockTexts.h"

#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"

#include <QtCore/QRegularExpression>

#include <cmath>

namespace plotix {

QDateTime momentBy(const CPTClock& clock, double seconds)
{
    constexpr double kMillis = 1000;
    const auto millis = std::llround(seconds * kMillis);
    return clock.zone.isValid() ? QDateTime::fromMSecsSinceEpoch(millis, clock.zone)
                                : QDateTime::fromMSecsSinceEpoch(millis);
}

QDateTime nowBy(const CPTClock& clock)
{
    const QDateTime now = QDateTime::currentDateTime();
    return clock.zone.isValid() ? now.toTimeZone(clock.zone) : now;
}

QString formatBy(const CPTClock& clock, QString format)
{
    if (clock.hours != CPTHourForm::TwentyFour)
        return format;
    static const QRegularExpression halfOfDay(QStringLiteral("\\s*[aA][pP]?(?=\\W|$)"));
    static const QRegularExpression hour(QStringLiteral("[hH]+"));
    QStringList parts = format.split(QLatin1Char('\''));  // every second one is text, to be written as it is
    for (qsizetype part = 0; part < parts.size(); part += 2)
        parts[part].remove(halfOfDay).replace(hour, QStringLiteral("HH"));
    return parts.join(QLatin1Char('\'')).trimmed();
}

QString momentDescription(const CPTClock& clock, const Date& date)
{
    if (clock == CPTClock())
        return KTVHostServices::installed().userInterface->localizedDescription(date);
    const QLocale locale;
    return locale.toString(momentBy(clock, date.seconds), formatBy(clock, locale.dateTimeFormat(QLocale::LongFormat)));
}

QString zoneDescription(const QTimeZone& zone, const std::vector<int>& offsets)
{
    QStringList texts;
    for (const int offset : offsets)
        texts << plotkit::offsetText(offset);
    const QString name = QString::fromUtf8(zone.id());
    const QString distances = texts.join(QStringLiteral(" / "));
    return name == distances ? name : QStringLiteral("%1, %2").arg(name, distances);
}

}  // namespace plotix
