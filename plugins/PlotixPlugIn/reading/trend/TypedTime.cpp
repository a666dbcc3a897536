#include "plugins/PlotixPlugIn/reading/trend/TypedTime.h"

#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/reading/trend/ClockTexts.h"

#include <QtCore/QCoreApplication>

namespace plotix {

namespace {

QString word(const char* key)
{
    return KTVBundle::mainBundle()->localizedString(QLatin1String(key)).toLower();
}

}  // namespace

DayWords dayWords()
{
    return {word(QT_TRANSLATE_NOOP("Plotix", "now")), word(QT_TRANSLATE_NOOP("Plotix", "today")),
            word(QT_TRANSLATE_NOOP("Plotix", "yesterday")), word(QT_TRANSLATE_NOOP("Plotix", "tomorrow")),
            //: Before a day of the week: "last Tuesday". Words that begin so are understood too.
            word(QT_TRANSLATE_NOOP("Plotix", "last")),
            //: A time before now: %1 is a number with a unit, "2 days ago"
            word(QT_TRANSLATE_NOOP("Plotix", "%1 ago")),
            //: As people type them after a number, each unit in all its forms, in this order
            word(QT_TRANSLATE_NOOP("Plotix", "year years; month months; week weeks; day days; hour hours; "
                                             "minute minutes; second seconds"))};
}

std::optional<double> typedTime(const QString& text, double shown, const CPTClock& clock)
{
    const auto read = typedDate(text, {QLocale(), dayWords(), momentBy(clock, shown), nowBy(clock)});
    if (!read)
        return std::nullopt;
    constexpr double kMillis = 1000;
    return static_cast<double>(read->moment.toMSecsSinceEpoch()) / kMillis;
}

QString noSuchDateText()
{
    return KTVBundle::mainBundle()->localizedString(
        QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "There is no such date.")));
}

QString whyNoTime(const QString& text, double shown, const CPTClock& clock)
{
    return namesNoSuchDate(text, {QLocale(), dayWords(), momentBy(clock, shown), nowBy(clock)}) ? noSuchDateText()
                                                                                                : QString();
}

QString timeForTyping(double time, const CPTClock& clock)
{
    QString date = QLocale().dateFormat(QLocale::ShortFormat);
    if (!date.contains(QLatin1String("yyyy")))
        date.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    QString hours = QLocale().timeFormat(QLocale::ShortFormat);
    if (!hours.contains(QLatin1String("ss")))
        hours.replace(QLatin1String("mm"), QLatin1String("mm:ss"));
    return QLocale().toString(momentBy(clock, time), date + QLatin1Char(' ') + formatBy(clock, hours));
}

}  // namespace plotix
