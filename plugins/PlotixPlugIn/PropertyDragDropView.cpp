#include "plugins/PlotixPlugIn/PropertyDragDropView.h"

#include "plugins/PlotixPlugIn/host/KTVDragData.h"

#include <QtCore/QMimeData>
#include <QtGui/QDropEvent>

PropertyDragDropView::PropertyDragDropView(QWidget* parent) : QWidget(parent) {}

void PropertyDragDropView::setDelegate(PropertyDropProtocol* delegate)
{
    m_delegate = delegate;
    m_registeredDraggedTypes = delegate ? QStringList(delegate->dragType()) : QStringList();
    setAcceptDrops(delegate != nullptr);
}

bool PropertyDragDropView::acceptsData(const QMimeData* mimeData) const
{
    return mimeData && m_delegate && mimeData->hasFormat(m_registeredDraggedTypes.value(0));
}

Qt::DropActions PropertyDragDropView::draggingEntered(const QMimeData* /*mimeData*/) const
{
    return Qt::CopyAction;
}

Qt::DropActions PropertyDragDropView::draggingUpdated(const QMimeData* /*mimeData*/) const
{
    return Qt::CopyAction;
}

bool PropertyDragDropView::performDragOperation(const QMimeData* /*mimeData*/) const
{
    return true;
}

void PropertyDragDropView::concludeDragOperation(const QMimeData* mimeData)
{
    if (!mimeData || !m_delegate)
        return;
    const QByteArray bytes = mimeData->data(m_delegate->dragType());
    m_delegate->addProperties(propertyNamesFromDragData(bytes).value_or(QStringList()));
}

void PropertyDragDropView::dragEnterEvent(QDragEnterEvent* event)
{
    if (!acceptsData(event->mimeData()))
        return;
    event->setDropAction(static_cast<Qt::DropAction>(draggingEntered(event->mimeData()).toInt()));
    event->accept();
}

void PropertyDragDropView::dragMoveEvent(QDragMoveEvent* event)
{
    if (!acceptsData(event->mimeData()))
        return;
    event->setDropAction(static_cast<Qt::DropAction>(draggingUpdated(event->mimeData()).toInt()));
    event->accept();
}

void PropertyDragDropView::dropEvent(QDropEvent* event)
{
    if (!acceptsData(event->mimeData()) || !performDragOperation(event->mimeData()))
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    concludeDragOperation(event->mimeData());
}
