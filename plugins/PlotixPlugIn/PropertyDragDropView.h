#pragma once

#include "plugins/PlotixPlugIn/PropertyDropProtocol.h"

#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

class QMimeData;

/// The view that properties are dropped on. Its parent *owns* it.
///
/// Takes exactly one type of drag data, the delegate's. The delegate is *weak*. Main thread only.
class PropertyDragDropView : public QWidget {
    Q_OBJECT
public:
    explicit PropertyDragDropView(QWidget* parent = nullptr);

    PropertyDropProtocol* delegate() const { return m_delegate.get(); }
    /// Keeps the delegate and accepts its drag type from then on. Null: nothing is accepted any more.
    void setDelegate(PropertyDropProtocol* delegate);
    const QStringList& registeredDraggedTypes() const { return m_registeredDraggedTypes; }

    /// What a drag of such data over the view would do: always copy.
    Qt::DropActions draggingEntered(const QMimeData* mimeData) const;
    Qt::DropActions draggingUpdated(const QMimeData* mimeData) const;
    bool performDragOperation(const QMimeData* mimeData) const;  ///< always true

    /// Hands the property keys in the data to the delegate; unreadable data hands over none.
    void concludeDragOperation(const QMimeData* mimeData);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    bool acceptsData(const QMimeData* mimeData) const;

    WeakReference<PropertyDropProtocol> m_delegate;
    QStringList m_registeredDraggedTypes;
};
