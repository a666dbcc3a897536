#pragma once

#include <QtWidgets/QStyledItemDelegate>

/// Draws a cell's colour as a rounded swatch in the cell's middle, or a piece of its line where the model tells of a
/// plot; with neither the cell stays empty.
///
/// The colour is the cell's decoration. The table view *owns* it. Main thread only.
class ColorSwatchDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
