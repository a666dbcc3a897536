#include "hostapp/window/SiteDrops.h"

#include "hostapp/window/SiteEditor.h"
#include "plugins/PlotixPlugIn/host/KTVDragData.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtCore/QTimer>
#include <QtGui/QDropEvent>
#include <QtWidgets/QListView>

namespace plotix {

namespace {

/// The local files of a drag; none when one of them is no file.
QStringList droppedFiles(const QMimeData* data)
{
    QStringList files;
    for (const QUrl& url : data->hasUrls() ? data->urls() : QList<QUrl>()) {
        if (!QFileInfo(url.toLocalFile()).isFile())
            return {};
        files << url.toLocalFile();
    }
    return files;
}

}  // namespace

SiteDrops::SiteDrops(const Surroundings& surroundings) : m_around(surroundings)
{
    m_around.window->setAcceptDrops(true);
    m_around.window->installEventFilter(this);
}

bool SiteDrops::takes(const QMimeData* dragged) const
{
    return !droppedFiles(dragged).isEmpty() || !propertiesIn(dragged).empty();
}

bool SiteDrops::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_around.window)
        return false;
    if (event->type() == QEvent::DragEnter) {
        auto& drag = static_cast<QDragEnterEvent&>(*event);
        if (takes(drag.mimeData()))
            drag.acceptProposedAction();
        else
            drag.ignore();
        return true;
    }
    if (event->type() != QEvent::Drop)
        return false;
    drop(static_cast<QDropEvent&>(*event));
    return true;
}

// Where a trend takes properties itself, since they are its own agent's, the window is not asked.
std::vector<std::shared_ptr<SiteProperty>> SiteDrops::propertiesIn(const QMimeData* dragged) const
{
    std::vector<std::shared_ptr<SiteProperty>> dropped;
    if (m_around.controller.siteDocument()->isReadOnly())
        return dropped;
    for (const auto& agent : m_around.controller.siteDocument()->agents()) {
        const auto keys = propertyNamesFromDragData(dragged->data(agent->uniqueIdentifier())).value_or(QStringList());
        for (const auto& property : agent->siteProperties())
            if (keys.contains(property->propertyName()))
                dropped.push_back(property);
    }
    return dropped;
}

void SiteDrops::dropProperties(const QDropEvent& event)
{
    const auto properties = propertiesIn(event.mimeData());
    const QPoint place = m_around.window->mapToGlobal(event.position().toPoint());
    QListView& list = *m_around.trendList;
    SiteEditor* const editor = &m_around.editor;
    const QPoint inList = list.viewport()->mapFromGlobal(place);
    const QModelIndex row = list.viewport()->rect().contains(inList) ? list.indexAt(inList) : QModelIndex();
    // Posted: the window waits for the site to be written, and the drag would wait with it.
    const auto add = [editor, &properties](const KTVPlugInPtr& trend) {
        QTimer::singleShot(0, editor, [editor, trend, properties] { editor->addToTrend(trend, properties); });
    };
    if (const KTVPlugInPtr trend = row.isValid() ? m_around.controller.sourceList().plugInAt(row.row()) : nullptr;
        trend && !properties.empty()) {
        list.setCurrentIndex(row);  // what becomes of it is seen
        return add(trend);
    }
    for (const KTVPlugInPtr& trend : m_around.trendsOnScreen()) {
        const QWidget* view = trend->view();
        if (!properties.empty() && view->window() == m_around.window &&
            view->rect().contains(view->mapFromGlobal(place)))
            add(trend);
    }
}

void SiteDrops::drop(QDropEvent& event)
{
    const QStringList files = droppedFiles(event.mimeData());
    if (files.isEmpty() && propertiesIn(event.mimeData()).empty())
        return;
    event.acceptProposedAction();
    if (files.isEmpty())
        return dropProperties(event);
    QTimer::singleShot(0, this, [this, files] { emit filesDropped(files); });
}

}  // namespace plotix
