#pragma once

#include <QtWidgets/QStyledItemDelegate>

/// Draws a cell's colour as a rounded swatch in its middle; an absent colour leaves the cell empty.
///
/// The colour is the cell's decoration. The table view *owns* it. Main thread only.
class ColorSwatchDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
