#include "plugins/PlotixPlugIn/reading/notes/NumberedNotes.h"

#include "plugins/PlotixPlugIn/reading/trend/ClockTexts.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

/// To the minute, by a clock.
QString shortText(const QDateTime& moment, const CPTClock& clock)
{
    const QLocale locale;
    return locale.toString(moment, formatBy(clock, locale.dateTimeFormat(QLocale::ShortFormat)));
}

}  // namespace

std::vector<NumberedNote> numberedNotes(const std::vector<KTVNote>& notes, const QStringList& propertyNames)
{
    std::vector<NumberedNote> numbered;
    for (const KTVNote& note : notes) {
        const bool isMeant = std::any_of(note.propertyNames.begin(), note.propertyNames.end(),
                                         [&](const QString& name) { return propertyNames.contains(name); });
        if (note.isAboutAll || isMeant)
            numbered.push_back({0, note});
    }
    std::stable_sort(numbered.begin(), numbered.end(), [](const NumberedNote& one, const NumberedNote& other) {
        return one.note.from < other.note.from;
    });
    int number = 0;
    for (NumberedNote& note : numbered)
        note.number = ++number;
    return numbered;
}

std::vector<NumberedNote> notesIn(const std::vector<NumberedNote>& notes, const std::optional<TimeSpan>& span)
{
    std::vector<NumberedNote> within;
    for (const NumberedNote& note : notes)
        if (!span || (note.note.from <= span->to && note.note.to >= span->from))
            within.push_back(note);
    return within;
}

QString timeTextOf(const KTVNote& note, const CPTClock& clock)
{
    const QLocale locale;
    const QDateTime begin = momentBy(clock, std::round(note.from)), end = momentBy(clock, std::round(note.to));
    const QString first = shortText(begin, clock);
    if (!(note.to > note.from))
        return first;
    const QString last = begin.date() == end.date()
                             ? locale.toString(end.time(), formatBy(clock, locale.timeFormat(QLocale::ShortFormat)))
                             : shortText(end, clock);
    return first + QStringLiteral(" – ") + last;
}

QVariantMap footnoteOf(const NumberedNote& note, const CPTClock& clock)
{
    return {{QStringLiteral("number"), note.number},
            {QStringLiteral("time"), timeTextOf(note.note, clock)},
            {QStringLiteral("text"), note.note.text},
            {QStringLiteral("author"), note.note.author}};
}

QString spokenText(const std::vector<NumberedNote>& notes, const CPTClock& clock)
{
    QStringList texts;
    for (const NumberedNote& note : notes) {
        QString text = QStringLiteral("%1 · %2").arg(note.number).arg(timeTextOf(note.note, clock));
        if (!note.note.author.isEmpty())
            text += QStringLiteral(" · ") + note.note.author;
        texts << text + QLatin1Char('\n') + note.note.text;
    }
    return texts.join(QStringLiteral("\n\n"));
}

}  // namespace plotix
