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
};

}  // namespace plotix
