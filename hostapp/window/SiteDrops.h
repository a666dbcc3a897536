#pragma once

#include "hostapp/window/SiteWindowController.h"

#include <QtCore/QObject>

#include <functional>
#include <vector>

class QDropEvent;
class QListView;
class QMimeData;

namespace plotix {

class SiteEditor;

/// What is dragged onto a site window: files, and properties that a trend of another source shall show.
///
/// It watches the window and answers its drags. The window *owns* it; it *borrows* what surrounds it, and must end
/// before that. Main thread only.
class SiteDrops : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        QWidget* window;  ///< takes the drops
        SiteWindowController& controller;
        SiteEditor& editor;
        QListView* trendList;
        std::function<std::vector<KTVPlugInPtr>()> trendsOnScreen;
    };
    explicit SiteDrops(const Surroundings& surroundings);

signals:
    /// Posted: a dialog inside the drop would hold the program the files come from.
    void filesDropped(const QStringList& files);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What a drag brings to be shown in a trend of another agent; none on a site that may only be looked at.
    std::vector<std::shared_ptr<SiteProperty>> propertiesIn(const QMimeData* dragged) const;
    bool takes(const QMimeData* dragged) const;
    void drop(QDropEvent& event);
    void dropProperties(const QDropEvent& event);

    Surroundings m_around;
};

}  // namespace plotix
