#pragma once

#include <QtWidgets/QStyledItemDelegate>

/// The cells of the statistics table: no mark on the current one, since only whole rows count here; times that a click
/// goes to in the colour of links; shares of a whole as a bar beside their number. Its parent *owns* it. Main thread
/// only.
class FigureDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
