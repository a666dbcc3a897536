#pragma once

#include "hostapp/document/AnnotationEditor.h"
#include "hostapp/site/WorkingSite.h"

#include <QtCore/QObject>

#include <functional>

/// Asks a window's user for limits, and has what is answered stored by the window's editor, which makes it undoable.
///
/// The window *owns* it; it *borrows* what is around it, which outlives it. It is the document's editor while it lives.
/// Main thread only.
namespace plotix {

class SiteEditor;

class AnnotationAsking : public QObject, public AnnotationEditor {
    Q_OBJECT
public:
    struct Surroundings {
        WorkingSite& site;
        SiteEditor& editor;
        std::function<QWidget*()> windowInFront;  ///< where it asks
    };
    explicit AnnotationAsking(Surroundings around, QObject* parent = nullptr);
    ~AnnotationAsking() override;

    void editLimits(const SiteAgent& agent, const QString& propertyName) override;

private:
    QString site() const;

    Surroundings m_around;
};

}  // namespace plotix
