#include "hostapp/window/AnnotationAsking.h"

#include "hostapp/core/PersonName.h"
#include "hostapp/document/AnnotationEditing.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/TrendZone.h"
#include "hostapp/window/ConflictNotice.h"
#include "hostapp/window/SiteEditor.h"
#include "hostapp/window/annotating/LimitsDialog.h"
#include "hostapp/window/annotating/NoteDialog.h"
#include "hostapp/window/annotating/NotesWindow.h"

#include <QtCore/QDateTime>

#include <algorithm>

namespace plotix {

AnnotationAsking::AnnotationAsking(Surroundings around, QObject* parent) : QObject(parent), m_around(std::move(around))
{
    m_around.site.siteDocument()->setAnnotationEditor(this);
}

AnnotationAsking::~AnnotationAsking()
{
    delete m_notes;
    m_around.site.siteDocument()->setAnnotationEditor(nullptr);
}

QString AnnotationAsking::site() const
{
    return m_around.site.siteDocument()->path();
}

void AnnotationAsking::editLimits(const SiteAgent& agent, const QString& propertyName)
{
    const KTVPropertyPtr found = agent.properties().objectForKey(propertyName);
    const auto property = std::dynamic_pointer_cast<SiteProperty>(found);
    if (!property)
        return;
    const qint64 id = property->description().id;
    std::vector<SiteLimit> before = m_around.site.siteDocument()->limits();
    std::erase_if(before, [id](const SiteLimit& limit) { return limit.property != id; });
    LimitsDialog dialog(property->name(), property->unit(), before, m_around.windowInFront());
    while (dialog.exec() == QDialog::Accepted && dialog.limits() != before) {
        const auto changed =
            m_around.editor.edit(tr("Limits of %1").arg(property->name()),
                                 [site = site(), id, before, wanted = dialog.limits()](const EditProgress&) {
                                     return replaceLimits(site, id, before, wanted);
                                 });
        if (!changed)
            return;
        before = std::get<std::vector<SiteLimit>>(changed->theirs());
        showConflict(dialog, *changed);
    }
}

void AnnotationAsking::addNote(const SiteAgent& agent, double from, double to, const QStringList& propertyNames)
{
    SiteNote note;
    note.from = from;
    note.to = to;
    note.author = personName();
    for (const auto& property : agent.siteProperties())
        if (propertyNames.contains(property->propertyName()))
            note.properties.push_back(property->description().id);
    askForNote(note);
}

void AnnotationAsking::addNote()
{
    const auto shown = shownRange(m_around.trendInFront().get());
    const double now = static_cast<double>(QDateTime::currentSecsSinceEpoch());
    SiteNote note;
    note.from = note.to = shown ? (shown->first + shown->second) / 2 : now;
    note.author = personName();
    askForNote(note);
}

void AnnotationAsking::openNote(qint64 identifier)
{
    const std::vector<SiteNote> notes = m_around.site.siteDocument()->notes();
    for (const SiteNote& note : notes)
        if (note.id == identifier)
            return askForNote(note);
}

void AnnotationAsking::askForNote(const SiteNote& before)
{
    NoteDialog::Properties properties;
    const auto& agents = m_around.site.siteDocument()->agents();
    for (const auto& agent : agents)
        for (const auto& property : agent->siteProperties())
            properties.emplace_back(property->description().id,
                                    agents.size() > 1 ? QStringLiteral("%1: %2").arg(agent->name(), property->name())
                                                      : property->name());
    QWidget* over = m_notes && m_notes->isActiveWindow() ? m_notes.data() : m_around.windowInFront();
    NoteDialog dialog(before, properties, over, zoneOfTrend(m_around.trendInFront().get()));
    SiteNote seen = before;
    while (dialog.exec() == QDialog::Accepted && dialog.note() != before) {
        SiteNote wanted = dialog.note();
        wanted.id = seen.id;
        setPersonName(wanted.author);
        const auto changed =
            m_around.editor.edit(seen.id == 0 ? tr("Note “%1”").arg(shortText(wanted.text))
                                              : tr("Change note “%1”").arg(shortText(wanted.text)),
                                 [site = site(), seen, wanted](const EditProgress&) {
                                     return seen.id == 0 ? writeNote(site, wanted) : rewriteNote(site, seen, wanted);
                                 });
        if (!changed)
            return;
        const auto* theirs = std::get_if<SiteNote>(&changed->theirs());
        seen = theirs ? *theirs : SiteNote();
        showConflict(dialog, *changed);
    }
}

void AnnotationAsking::removeNotes(const std::vector<qint64>& notes)
{
    if (notes.empty())
        return;
    m_around.editor.edit(tr("Delete %n note(s)", nullptr, static_cast<int>(notes.size())),
                         [site = site(), notes](const EditProgress&) { return plotix::removeNotes(site, notes); });
}

void AnnotationAsking::showNotes()
{
    if (!m_notes) {
        m_notes = new NotesWindow(m_around.site.siteDocument(), m_around.windowInFront());
        m_notes->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_notes, &NotesWindow::goToWanted, this, &AnnotationAsking::goTo);
        connect(m_notes, &NotesWindow::openWanted, this, &AnnotationAsking::openNote);
        connect(m_notes, &NotesWindow::addWanted, this, [this] { addNote(); });
        connect(m_notes, &NotesWindow::removeWanted, this, &AnnotationAsking::removeNotes);
    }
    m_notes->sayBy(zoneOfTrend(m_around.trendInFront().get()));
    m_notes->show();
    m_notes->raise();
    m_notes->activateWindow();
}

/// A span that fits is shown in the middle of as much as was shown before; a longer one with some room beside it.
void AnnotationAsking::goTo(double from, double to)
{
    const KTVPlugInPtr trend = m_around.trendInFront();
    const auto shown = shownRange(trend.get());
    if (!shown)
        return;
    constexpr double kRoom = 1.2;
    const double length = std::max(shown->second - shown->first, (to - from) * kRoom);
    const double middle = (from + to) / 2;
    showRange(trend.get(), middle - length / 2, middle + length / 2);
}

}  // namespace plotix
