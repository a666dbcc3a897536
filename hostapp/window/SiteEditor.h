#pragma once

#include "hostapp/document/ChangedMeanwhile.h"
#include "hostapp/document/EditJournal.h"
#include "hostapp/document/EditProgress.h"
#include "hostapp/site/WorkingSite.h"
#include "hostapp/window/EditCommand.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"

#include <QtCore/QObject>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

class QUndoStack;

/// Cleans a site up as its window's user asks for it: agents and properties renamed, merged and deleted, values taken
/// out, an import undone.
///
/// The work is done on a thread of its own over the site's file, all or nothing, while the window waits, showing after
/// a moment how far it has come; the user may cancel. What is on screen is stored before (`beginning`), so that views
/// keep what was done to them, and shown anew afterwards (`ended`). The journal in the file undoes; the undo stack only
/// says which step is meant. A step that is not the last one any more, since another program or an import changed the
/// site, is not undone.
///
/// The window *owns* it; it *borrows* what is around it, which outlives it. Main thread only.
namespace plotix {

struct ComputedProperty;

class SiteEditor : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        WorkingSite& site;
        QUndoStack& undoStack;
        KTVUserInterface& userInterface;              ///< tells what failed
        std::function<QWidget*()> windowInFront;      ///< where it asks
        std::function<KTVPlugInPtr()> selectedTrend;  ///< whose span is meant; may answer null
    };
    explicit SiteEditor(Surroundings around, QObject* parent = nullptr);

    /// While the window waits for a change, which nothing else may write beside or end the window.
    bool isEditing() const { return m_isEditing; }

    // Of a property, or, with a null one, of its agent; `into`: the number of the other one.
    void askAndRename(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property);
    void mergeInto(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property, qint64 into);
    void remove(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property);

    /// Makes a computed property of the agent, or, given one, changes it.
    void askAndCompute(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property);

    /// Shows these properties in a trend, all or none. Those of other agents than the trend's become computed ones of
    /// its agent, "Power (Unit B)", unless it has them already: then it asks how they are joined. One step on the undo
    /// stack.
    void addToTrend(const KTVPlugInPtr& trend, const std::vector<std::shared_ptr<SiteProperty>>& properties);

    /// Takes out the property's values in the span that the selected trend shows.
    void askAndRemoveShown(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property);

    void askAndUndoImport();

    using Work = std::function<EditOutcome(const EditProgress&)>;
    /// Does it, and puts it on the undo stack. Answers what somebody else made of it meanwhile, where that is why
    /// nothing was stored; everything else that fails is told.
    std::optional<ChangedMeanwhile> edit(const QString& text, Work work);

signals:
    void beginning();
    void ended();
    void trendChanged();                ///< what a trend shows, by a step that is on the undo stack
    void told(const QString& message);  ///< briefly, for a status bar

private:
    void rename(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property,
                const QString& name);
    EditCommand::Result apply(const QString& text, const std::function<void(const EditProgress&)>& work);
    EditCommand::Result undo(const QString& text, qint64 step);
    bool askedHowToJoin(std::vector<ComputedProperty>& wanted);
    void show(const KTVPlugInPtr& trend, const QStringList& keys, bool isShown);
    void tellFormulas(const EditOutcome& outcome);  // that name what is gone, or have another name in them now
    void takeIn();
    void alert(const QString& message, const QString& text, KTVAlert::Style style = KTVAlert::Style::Critical);
    bool agreed(const QString& title, const QString& question);
    QString site() const;

    Surroundings m_around;
    bool m_isEditing = false;
    std::optional<ChangedMeanwhile> m_changed;  // by somebody else, where the last work found that
};

}  // namespace plotix
