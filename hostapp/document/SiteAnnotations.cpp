#include "hostapp/document/SiteAnnotations.h"

#include "base/ReportableError.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace plotix {

namespace {

bool hasAnnotations(const Database& database)
{
    Statement table(database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = 'note'");
    return table.step();
}

/// What a newer program may have stored becomes what this one knows.
template <class Choice>
Choice choiceFrom(qint64 stored, Choice last)
{
    return static_cast<Choice>(std::clamp<qint64>(stored, 0, static_cast<qint64>(last)));
}

void requireUsable(const std::vector<SiteLimit>& limits, const SiteLimit& limit)
{
    if (limit.name.trimmed().isEmpty())
        throw ReportableError(QStringLiteral("A limit needs a name: give it one, such as “alarm high”."));
    if (!std::isfinite(limit.value))
        throw ReportableError(QStringLiteral("The limit “%1” needs a number.").arg(limit.name.trimmed()));
    for (const SiteLimit& other : limits)
        if (other.property == limit.property && other.id != limit.id &&
            other.name.compare(limit.name.trimmed(), Qt::CaseInsensitive) == 0)
            throw ReportableError(
                QStringLiteral("There is a limit “%1” already: choose another name.").arg(other.name));
}

void storePropertiesOf(Database& database, qint64 note, const std::vector<qint64>& properties)
{
    Statement(database, "DELETE FROM note_property WHERE note = ?").bind(1, note).run();
    for (const qint64 property : properties)
        Statement(database, "INSERT OR IGNORE INTO note_property(note, property) VALUES(?, ?)")
            .bind(1, note)
            .bind(2, property)
            .run();
}

}  // namespace

std::vector<SiteLimit> storedLimits(const Database& database)
{
    std::vector<SiteLimit> limits;
    if (!hasAnnotations(database))
        return limits;
    Statement rows(database, "SELECT id, property, name, value, unit, side, severity FROM value_limit ORDER BY id");
    while (rows.step())
        limits.push_back({rows.integer(0), rows.integer(1), rows.text(2), rows.real(3), rows.text(4),
                          choiceFrom(rows.integer(5), KTVLimit::Side::Below),
                          choiceFrom(rows.integer(6), KTVLimit::Severity::Alarm)});
    return limits;
}

std::vector<SiteNote> storedNotes(const Database& database)
{
    std::vector<SiteNote> notes;
    if (!hasAnnotations(database))
        return notes;
    std::map<qint64, std::vector<qint64>> about;
    Statement properties(database, "SELECT note, property FROM note_property ORDER BY note, property");
    while (properties.step())
        about[properties.integer(0)].push_back(properties.integer(1));
    Statement rows(database, "SELECT id, begin, end, author, text, created, modified FROM note ORDER BY begin, id");
    while (rows.step())
        notes.push_back({rows.integer(0), rows.real(1), rows.real(2), rows.text(3), rows.text(4),
                         about[rows.integer(0)], rows.real(5), rows.real(6)});
    return notes;
}

qint64 storeLimit(Database& database, const SiteLimit& limit)
{
    requireUsable(storedLimits(database), limit);
    const bool isNew = limit.id == 0;
    Statement statement(database, isNew ? "INSERT INTO value_limit(property, name, value, unit, side, severity) "
                                          "VALUES(?1, ?2, ?3, ?4, ?5, ?6)"
                                        : "INSERT OR REPLACE INTO value_limit(id, property, name, value, unit, side, "
                                          "severity) VALUES(?7, ?1, ?2, ?3, ?4, ?5, ?6)");
    statement.bind(1, limit.property).bind(2, limit.name.trimmed()).bind(3, limit.value).bind(4, limit.unit);
    statement.bind(5, static_cast<qint64>(limit.side)).bind(6, static_cast<qint64>(limit.severity));
    if (!isNew)
        statement.bind(7, limit.id);
    statement.run();
    return database.lastInsertedRow();
}

void removeStoredLimit(Database& database, qint64 id)
{
    Statement(database, "DELETE FROM value_limit WHERE id = ?").bind(1, id).run();
}

qint64 storeNote(Database& database, const SiteNote& note)
{
    if (note.text.trimmed().isEmpty())
        throw ReportableError(QStringLiteral("A note needs a text: write one."));
    if (!std::isfinite(note.from) || !std::isfinite(note.to) || note.to < note.from)
        throw ReportableError(QStringLiteral("A note needs a time, or a span that ends after it begins."));
    const bool isNew = note.id == 0;
    Statement statement(database, isNew ? "INSERT INTO note(begin, end, author, text, created, modified) "
                                          "VALUES(?1, ?2, ?3, ?4, ?5, ?6)"
                                        : "INSERT OR REPLACE INTO note(id, begin, end, author, text, created, "
                                          "modified) VALUES(?7, ?1, ?2, ?3, ?4, ?5, ?6)");
    statement.bind(1, note.from).bind(2, note.to).bind(3, note.author.trimmed()).bind(4, note.text.trimmed());
    statement.bind(5, note.created).bind(6, note.modified);
    if (!isNew)
        statement.bind(7, note.id);
    statement.run();
    const qint64 id = database.lastInsertedRow();
    storePropertiesOf(database, id, note.properties);
    return id;
}

void removeStoredNote(Database& database, qint64 id)
{
    Statement(database, "DELETE FROM note WHERE id = ?").bind(1, id).run();
    Statement(database, "DELETE FROM note_property WHERE note = ?").bind(1, id).run();
}

void moveAnnotations(Database& database, qint64 from, qint64 into)
{
    const std::vector<SiteLimit> limits = storedLimits(database);
    const auto isTaken = [&](const QString& name) {
        return std::any_of(limits.begin(), limits.end(), [&](const SiteLimit& limit) {
            return limit.property == into && limit.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    };
    for (const SiteLimit& limit : limits) {
        if (limit.property != from)
            continue;
        SiteLimit moved = limit;
        moved.property = into;
        const bool isThere = std::any_of(limits.begin(), limits.end(), [&moved](SiteLimit other) {
            other.id = moved.id;
            return other == moved;
        });
        removeStoredLimit(database, limit.id);
        for (int number = 2; isTaken(moved.name); ++number)
            moved.name = QStringLiteral("%1 %2").arg(limit.name).arg(number);
        if (!isThere)
            storeLimit(database, moved);
    }
    Statement(database, "UPDATE OR REPLACE note_property SET property = ?2 WHERE property = ?1")
        .bind(1, from)
        .bind(2, into)
        .run();
}

std::vector<SiteNote> notesWithin(const std::vector<SiteNote>& notes, double from, double to,
                                  const std::vector<qint64>& properties)
{
    std::vector<SiteNote> within;
    for (const SiteNote& note : notes) {
        const bool isAbout = note.properties.empty() ||
                             std::any_of(note.properties.begin(), note.properties.end(), [&](qint64 property) {
                                 return std::find(properties.begin(), properties.end(), property) != properties.end();
                             });
        if (isAbout && note.from <= to && note.to >= from)
            within.push_back(note);
    }
    return within;
}

}  // namespace plotix
