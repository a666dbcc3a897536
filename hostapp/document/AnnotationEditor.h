#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Who asks people for limits and notes: a window with dialogs. A document *borrows* the one of its window, which takes
/// itself away before it ends; without a window there is none. Main thread only.
namespace plotix {

class SiteAgent;

class AnnotationEditor {
public:
    virtual ~AnnotationEditor() = default;
    virtual void editLimits(const SiteAgent& agent, const QString& propertyName) = 0;
    /// Of a time, or of a span; without names about all properties.
    virtual void addNote(const SiteAgent& agent, double from, double to, const QStringList& propertyNames) = 0;
    virtual void openNote(qint64 identifier) = 0;
    virtual void showNotes() = 0;
};

}  // namespace plotix
