#pragma once

#include <QtWidgets/QStyledItemDelegate>

/// Rows of the window's lists: a little taller than the text, with space to the right edge. Main thread only.
namespace plotix {

class ListRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit ListRowDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace plotix
