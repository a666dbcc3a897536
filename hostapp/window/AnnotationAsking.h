#pragma once

#include "hostapp/document/AnnotationEditor.h"
#include "hostapp/site/WorkingSite.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <functional>

/// Asks a window's user for limits and notes, and has what is answered stored by the window's editor, which makes it
/// undoable.
///
/// The window *owns* it; it *borrows* what is around it, which outlives it. It is the document's editor while it lives.
/// Main thread only.
namespace plotix {

class NotesWindow;
class SiteEditor;

class AnnotationAsking : public QObject, public AnnotationEditor {
    Q_OBJECT
public:
    struct Surroundings {
        WorkingSite& site;
        SiteEditor& editor;
        std::function<QWidget*()> windowInFront;     ///< where it asks
        std::function<KTVPlugInPtr()> trendInFront;  ///< which goes to a note's time; may answer null
    };
    explicit AnnotationAsking(Surroundings around, QObject* parent = nullptr);
    ~AnnotationAsking() override;

    void editLimits(const SiteAgent& agent, const QString& propertyName) override;
    void addNote(const SiteAgent& agent, double from, double to, const QStringList& propertyNames) override;
    void openNote(qint64 identifier) override;
    void showNotes() override;
    void addNote();  ///< of the middle of what the trend in front shows, else of now
    void removeNotes(const std::vector<qint64>& notes);
    void goTo(double from, double to);  ///< has the trend in front show a note's time

private:
    QString site() const;
    void askForNote(const SiteNote& note);

    Surroundings m_around;
    QPointer<NotesWindow> m_notes;
};

}  // namespace plotix
