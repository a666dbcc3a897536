#include "hostapp/window/SiteEditor.h"

#include "base/ReportableError.h"
#include "hostapp/document/ForeignProperty.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/window/ConflictNotice.h"
#include "hostapp/window/WorkProgress.h"
#include "hostapp/window/computing/ComputedPropertyDialog.h"
#include "hostapp/window/computing/JoinDialog.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMessageBox>

#include <algorithm>

namespace plotix {

namespace {

const QString kShownProperties = QStringLiteral("properties");  // in what can be changed of a trend: their keys

QString nameOf(const SiteAgent& agent, const SiteProperty* property)
{
    return property ? property->name() : agent.name();
}

/// The keys of an agent's properties by these names.
QStringList keysNamed(const SiteAgent& agent, const std::vector<ComputedProperty>& named)
{
    QStringList keys;
    for (const auto& property : agent.siteProperties())
        if (std::any_of(named.begin(), named.end(), [&](const auto& each) { return each.name == property->name(); }))
            keys << property->propertyName();
    return keys;
}

QString worded(double seconds)
{
    return QLocale().toString(QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds * 1000)),
                              QLocale::ShortFormat);
}

}  // namespace

SiteEditor::SiteEditor(Surroundings around, QObject* parent) : QObject(parent), m_around(std::move(around)) {}

QString SiteEditor::site() const
{
    return m_around.site.siteDocument()->path();
}

EditCommand::Result SiteEditor::apply(const QString& text, const std::function<void(const EditProgress&)>& work)
{
    if (m_isEditing)
        return EditCommand::Result::NotDone;
    emit beginning();
    m_isEditing = true;
    m_changed.reset();
    auto result = EditCommand::Result::NotDone;
    QString failure;
    try {
        workWithProgress(text, m_around.windowInFront(), work);
        result = EditCommand::Result::Done;
        takeIn();
    } catch (const EditCancelled&) {
        emit told(tr("Cancelled; nothing was changed."));
    } catch (const ChangedMeanwhile& changed) {
        m_changed = changed;
    } catch (const std::exception& error) {
        failure = QString::fromUtf8(error.what());
    }
    m_isEditing = false;
    if (!failure.isEmpty())
        alert(tr("Nothing was changed"), failure);
    emit ended();
    return result;
}

void SiteEditor::takeIn()
{
    try {
        m_around.site.siteDocument()->reload();
        m_around.site.takeInChanges();
    } catch (const ReportableError& error) {
        alert(tr("The site could not be read again"), error.message());
    }
}

EditCommand::Result SiteEditor::undo(const QString& text, qint64 step)
{
    auto otherwise = EditCommand::Result::NotDone;
    const QString reason = tr("The site was changed since, by an import or another program.");
    const EditCommand::Result result = apply(text, [&, site = site()](const EditProgress& progress) {
        const std::vector<EditStep> steps = editSteps(site);
        if (steps.empty() || steps.back().id != step) {
            otherwise = EditCommand::Result::Never;
            throw ReportableError(reason);
        }
        undoLastEdit(site, progress);
    });
    return result == EditCommand::Result::Done ? result : otherwise;
}

std::optional<ChangedMeanwhile> SiteEditor::edit(const QString& text, Work work)
{
    const auto outcome = std::make_shared<EditOutcome>();
    const auto again = [this, text, outcome, work = std::move(work)] {
        return apply(text, [&](const EditProgress& progress) { *outcome = work(progress); });
    };
    if (again() != EditCommand::Result::Done)
        return m_changed;
    m_around.undoStack.push(
        new EditCommand(text, m_around.undoStack, again, [this, text, outcome] { return undo(text, outcome->step); }));
    tellFormulas(*outcome);
    return std::nullopt;
}

void SiteEditor::tellFormulas(const EditOutcome& outcome)
{
    const QStringList followed(outcome.followed.begin(), outcome.followed.end());
    if (!followed.isEmpty())
        emit told(tr("Formulas have the new name in them: %1").arg(followed.join(QStringLiteral(", "))));
    QStringList lines;
    for (const auto& [name, sentence] : outcome.broken)
        lines << tr("“%1”: %2").arg(name, sentence);
    if (!lines.isEmpty())
        alert(tr("%n computed propert(ies) can be computed no longer", nullptr, static_cast<int>(lines.size())),
              lines.join(QLatin1Char('\n')) + QLatin1Char('\n') +
                  tr("Undo brings back what they name; Edit Computed Property… changes the formula."),
              KTVAlert::Style::Informational);
}

void SiteEditor::askAndCompute(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property)
{
    const std::shared_ptr<SiteDocument> document = m_around.site.siteDocument();
    ComputedPropertyDialog::About about{document->records(), document->formulaDirectory(), agent->id()};
    if (property)
        about.property = property->description();
    ComputedPropertyDialog dialog(about, m_around.windowInFront());
    std::optional<SiteProperty::Description> before = about.property;
    while (dialog.exec() == QDialog::Accepted) {
        const ComputedProperty wanted = dialog.property();
        const auto changed = edit(
            before ? tr("Change the formula of “%1”").arg(wanted.name) : tr("Compute “%1”").arg(wanted.name),
            [site = site(), owner = agent->id(), wanted, before](const EditProgress&) {
                return before ? changeComputed(site, owner, wanted, *before) : computeProperty(site, owner, wanted);
            });
        if (!changed)
            return;
        const auto* theirs = std::get_if<SiteProperty::Description>(&changed->theirs());
        before = theirs ? std::optional(*theirs) : std::nullopt;
        showConflict(dialog, *changed);
    }
}

// Steps that were made before one that fails are taken back: it is all or none.
void SiteEditor::addToTrend(const KTVPlugInPtr& trend, const std::vector<std::shared_ptr<SiteProperty>>& properties)
{
    const std::shared_ptr<SiteDocument> document = m_around.site.siteDocument();
    const auto agent =
        trend && trend->agent() ? document->agentWithIdentifier(trend->agent()->uniqueIdentifier()) : nullptr;
    if (!agent)
        return;
    const QStringList shown = changeableState(trend.get()).value(kShownProperties).toStringList();
    std::vector<ComputedProperty> wanted;
    QStringList names, keys;
    for (const auto& property : properties) {
        const auto foreign = foreignProperty(*document->formulaDirectory(), agent->id(), property->description().id);
        const QString key = foreign ? foreign->key.value_or(QString()) : property->propertyName();
        if (shown.contains(key))
            continue;
        names << (foreign ? foreign->wanted.name : property->name());
        if (key.isEmpty())
            wanted.push_back(foreign->wanted);
        else
            keys << key;
    }
    if (names.isEmpty()) {
        emit told(tr("The trend shows that already."));
        return;
    }
    if (!askedHowToJoin(wanted))
        return;
    const QString text = tr("Add “%1” to the trend").arg(names.join(QStringLiteral("”, “")));
    const auto steps = std::make_shared<std::vector<qint64>>();
    const auto make = [this, steps, wanted, site = site(), owner = agent->id()](const EditProgress& progress) {
        steps->clear();
        try {
            for (const ComputedProperty& each : wanted)
                steps->push_back(computeProperty(site, owner, each).step);
        } catch (...) {
            for (; !steps->empty(); steps->pop_back())
                undoLastEdit(site, progress);
            throw;
        }
    };
    const auto again = [=, this] {
        const auto result = wanted.empty() ? EditCommand::Result::Done : apply(text, make);
        if (result == EditCommand::Result::Done)
            show(trend, keys + keysNamed(*agent, wanted), true);
        return result;
    };
    const auto back = [=, this] {
        show(trend, keys + keysNamed(*agent, wanted), false);
        auto result = EditCommand::Result::Done;
        while (!steps->empty() && result == EditCommand::Result::Done) {
            result = undo(text, steps->back());
            if (result == EditCommand::Result::Done)
                steps->pop_back();
        }
        if (result != EditCommand::Result::Done)
            show(trend, keys + keysNamed(*agent, wanted), true);
        return result;
    };
    if (again() == EditCommand::Result::Done)
        m_around.undoStack.push(new EditCommand(text, m_around.undoStack, again, back));
}

/// Only what is made is asked about. False: the user thought better of it.
bool SiteEditor::askedHowToJoin(std::vector<ComputedProperty>& wanted)
{
    if (wanted.empty())
        return true;
    QStringList names;
    for (const ComputedProperty& each : wanted)
        names << each.name;
    JoinDialog dialog(names, m_around.windowInFront());
    if (dialog.exec() != QDialog::Accepted)
        return false;
    for (ComputedProperty& each : wanted)
        each.formula.join = dialog.join();
    return true;
}

void SiteEditor::show(const KTVPlugInPtr& trend, const QStringList& keys, bool isShown)
{
    QVariantMap state = changeableState(trend.get());
    QStringList shown = state.value(kShownProperties).toStringList();
    for (const QString& key : keys) {
        shown.removeAll(key);
        if (isShown)
            shown << key;
    }
    state.insert(kShownProperties, shown);
    changeTo(trend.get(), state);
    emit trendChanged();
}

void SiteEditor::askAndRename(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property)
{
    const QString before = nameOf(*agent, property.get());
    bool wanted = false;
    const QString name = QInputDialog::getText(m_around.windowInFront(), tr("Rename “%1”").arg(before), tr("Name:"),
                                               QLineEdit::Normal, before, &wanted);
    if (!wanted || name.trimmed() == before)
        return;
    takeIn();  // what others changed while the question stood
    const QString theirs = nameOf(*agent, property.get());
    rename(agent, property, name);
    if (theirs != before && theirs != name.trimmed())
        emit told(tr("Another program had renamed “%1” to “%2” meanwhile; Undo brings that back.").arg(before, theirs));
}

void SiteEditor::rename(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property,
                        const QString& name)
{
    const std::optional<qint64> one = property ? std::optional(property->description().id) : std::nullopt;
    edit(tr("Rename to “%1”").arg(name.trimmed()), [site = site(), id = agent->id(), one, name](const EditProgress&) {
        return one ? renameProperty(site, *one, name) : renameAgent(site, id, name);
    });
}

void SiteEditor::mergeInto(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property,
                           qint64 into)
{
    const std::optional<qint64> one = property ? std::optional(property->description().id) : std::nullopt;
    const auto left = std::make_shared<std::size_t>(0);
    edit(tr("Merge “%1”").arg(nameOf(*agent, property.get())),
         [site = site(), id = agent->id(), one, into, left](const EditProgress& progress) {
             const EditOutcome outcome =
                 one ? mergeProperties(site, *one, into, progress) : mergeAgents(site, id, into, progress);
             *left = outcome.conflicts;
             return outcome;
         });
    if (*left > 0)
        alert(tr("%n value(s) were left out", nullptr, static_cast<int>(*left)),
              tr("Both had different values at the same time; those of the one that stays were kept. Undo brings all "
                 "back."),
              KTVAlert::Style::Informational);
}

void SiteEditor::remove(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property)
{
    const std::optional<qint64> one = property ? std::optional(property->description().id) : std::nullopt;
    edit(tr("Delete “%1”").arg(nameOf(*agent, property.get())),
         [site = site(), id = agent->id(), one](const EditProgress& progress) {
             return one ? deleteProperty(site, *one, progress) : deleteAgent(site, id, progress);
         });
}

void SiteEditor::askAndRemoveShown(const std::shared_ptr<SiteAgent>& agent,
                                   const std::shared_ptr<SiteProperty>& property)
{
    const auto span = shownRange(m_around.selectedTrend().get());
    if (!span) {
        alert(tr("Nothing was changed"), tr("Select a trend and zoom to the values that are wrong first."));
        return;
    }
    const QString question = tr("The values of “%1” from %2 to %3, the span that the trend shows, are taken out. "
                                "Undo brings them back.")
                                 .arg(property->name(), worded(span->first), worded(span->second));
    if (!agreed(tr("Remove Values"), question))
        return;
    edit(tr("Remove values of “%1”").arg(property->name()),
         [site = site(), id = agent->id(), one = property->description().id,
          span = *span](const EditProgress& progress) {
             return removeValues(site, id, {one}, span.first, span.second, progress);
         });
    sendAction(m_around.selectedTrend().get(), "refresh", this);
}

void SiteEditor::askAndUndoImport()
{
    std::vector<EditStep> steps;
    try {
        steps = editSteps(site());
    } catch (const ReportableError& error) {
        alert(tr("Nothing was changed"), error.message());
        return;
    }
    const auto import = std::find_if(steps.rbegin(), steps.rend(),
                                     [](const EditStep& step) { return step.kind == EditStep::Kind::Import; });
    if (import == steps.rend()) {
        alert(tr("Nothing was changed"), tr("There is no import that can be undone."));
        return;
    }
    const QString question =
        tr("The import of “%1” is undone: what it added goes, and what it replaced comes back.").arg(import->subject);
    if (agreed(tr("Undo Import"), question))
        apply(tr("Undo the import of “%1”").arg(import->subject),
              [site = site()](const EditProgress& progress) { undoLastImport(site, progress); });
}

bool SiteEditor::agreed(const QString& title, const QString& question)
{
    QMessageBox box(QMessageBox::Question, title, question, QMessageBox::Ok | QMessageBox::Cancel,
                    m_around.windowInFront());
    box.setTextFormat(Qt::PlainText);  // names stand in it
    return box.exec() == QMessageBox::Ok;
}

void SiteEditor::alert(const QString& message, const QString& text, KTVAlert::Style style)
{
    m_around.userInterface.beginSheet({message, text, style}, m_around.windowInFront(), {});
}

}  // namespace plotix
