#include "plugins/PlotixPlugIn/reading/notes/NumberedNotes.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

QDateTime momentOf(double seconds, const QTimeZone& zone)
{
    return QDateTime::fromSecsSinceEpoch(std::llround(seconds), zone);
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

QString timeTextOf(const KTVNote& note, const QTimeZone& zone)
{
    const QLocale locale;
    const QDateTime begin = momentOf(note.from, zone), end = momentOf(note.to, zone);
    const QString first = locale.toString(begin, QLocale::ShortFormat);
    if (!(note.to > note.from))
        return first;
    const QString last = begin.date() == end.date() ? locale.toString(end.time(), QLocale::ShortFormat)
                                                    : locale.toString(end, QLocale::ShortFormat);
    return first + QStringLiteral(" – ") + last;
}

QVariantMap footnoteOf(const NumberedNote& note, const QTimeZone& zone)
{
    return {{QStringLiteral("number"), note.number},
            {QStringLiteral("time"), timeTextOf(note.note, zone)},
            {QStringLiteral("text"), note.note.text},
            {QStringLiteral("author"), note.note.author}};
}

QString spokenText(const std::vector<NumberedNote>& notes, const QTimeZone& zone)
{
    QStringList texts;
    for (const NumberedNote& note : notes) {
        QString text = QStringLiteral("%1 · %2").arg(note.number).arg(timeTextOf(note.note, zone));
        if (!note.note.author.isEmpty())
            text += QStringLiteral(" · ") + note.note.author;
        texts << text + QLatin1Char('\n') + note.note.text;
    }
    return texts.join(QStringLiteral("\n\n"));
}

}  // namespace plotix
