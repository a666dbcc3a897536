#include "hostapp/document/AnnotationEditing.h"

#include "base/Date.h"
#include "base/ReportableError.h"
#include "hostapp/document/ChangedMeanwhile.h"
#include "hostapp/document/SiteEdit.h"

#include <algorithm>

namespace plotix {

namespace {

using Kind = EditStep::Kind;

std::optional<SiteNote> findNote(const Database& database, qint64 id)
{
    for (const SiteNote& note : storedNotes(database))
        if (note.id == id)
            return note;
    return std::nullopt;
}

SiteNote storedNote(const Database& database, qint64 id)
{
    if (const std::optional<SiteNote> note = findNote(database, id))
        return *note;
    throw ReportableError(QStringLiteral("This note is not there any more."));
}

EditOutcome write(SiteEdit& edit, SiteNote note, qint64* made)
{
    note.modified = currentDate().seconds;
    note.created = note.id == 0 ? note.modified : storedNote(edit.database(), note.id).created;
    edit.begin(Kind::Notes, shortText(note.text));
    const qint64 id = storeNote(edit.database(), note);
    if (made)
        *made = id;
    return edit.finish();
}

}  // namespace

QString shortText(const QString& text, int most)
{
    const QString line = text.simplified();
    return line.size() <= most ? line : line.left(most - 1).trimmed() + QStringLiteral("…");
}

EditOutcome changeLimits(const QString& site, RowId id, const LimitChange& change)
{
    SiteEdit edit(site);
    const SiteStore::Agent agent = edit.agentOf(id);
    edit.begin(Kind::Limits, QStringLiteral("%1: %2").arg(agent.name, edit.property(id).name));
    std::vector<SiteLimit> before = storedLimits(edit.database());
    std::erase_if(before, [id](const SiteLimit& limit) { return limit.property != id; });
    std::vector<SiteLimit> wanted = before;
    change(wanted);
    for (const SiteLimit& limit : before)  // first: a name may go from one to another
        removeStoredLimit(edit.database(), limit.id);
    for (SiteLimit limit : wanted) {
        limit.property = id;
        storeLimit(edit.database(), limit);
    }
    return edit.finish();
}

EditOutcome replaceLimits(const QString& site, RowId property, const std::vector<SiteLimit>& before,
                          const std::vector<SiteLimit>& wanted)
{
    return changeLimits(site, property, [&](std::vector<SiteLimit>& limits) {
        if (limits != before)
            throw ChangedMeanwhile(limits);
        limits = wanted;
    });
}

EditOutcome writeNote(const QString& site, SiteNote note, qint64* made)
{
    SiteEdit edit(site);
    return write(edit, std::move(note), made);
}

EditOutcome rewriteNote(const QString& site, const SiteNote& before, const SiteNote& wanted)
{
    SiteEdit edit(site);
    const std::optional<SiteNote> theirs = findNote(edit.database(), before.id);
    if (!theirs)
        throw ChangedMeanwhile({});
    if (*theirs != before)
        throw ChangedMeanwhile(*theirs);
    return write(edit, wanted, nullptr);
}

EditOutcome removeNotes(const QString& site, const std::vector<qint64>& ids)
{
    SiteEdit edit(site);
    if (ids.empty())
        throw ReportableError(QStringLiteral("There is no note to delete."));
    edit.begin(Kind::Notes, shortText(storedNote(edit.database(), ids.front()).text));
    for (const qint64 id : ids)
        removeStoredNote(edit.database(), storedNote(edit.database(), id).id);
    return edit.finish();
}

}  // namespace plotix
