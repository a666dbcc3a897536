#include "hostapp/window/ListRowDelegate.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

#include <algorithm>

namespace plotix {

namespace {
constexpr int kExtraHeight = 8;  // points
constexpr int kRightSpace = 8;   // points
}  // namespace

QSize ListRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return {size.width() + kRightSpace, std::max(size.height(), option.fontMetrics.height() + kExtraHeight)};
}

void ListRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    // The background is drawn to the edge, so that a selection has no gap, and the contents end before it.
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    QStyleOptionViewItem narrower(option);
    narrower.rect.adjust(0, 0, -kRightSpace, 0);
    if (narrower.state.testFlag(QStyle::State_Selected))
        narrower.state.setFlag(QStyle::State_HasFocus, false);  // the selection shows where the focus is
    QStyledItemDelegate::paint(painter, narrower, index);
}

}  // namespace plotix
