#include "plugins/PlotixPlugIn/FigureDelegate.h"

#include "plugins/PlotixPlugIn/InfoTableModel.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace {

constexpr double kBarHeight = 7, kLongestBar = 54;  // points
constexpr double kBesideBar = 8, kTextWidth = 46;
const QColor kCovered(0x7f, 0xb0, 0x69);

}  // namespace

void FigureDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->state.setFlag(QStyle::State_HasFocus, false);
    if (index.data(InfoTableModel::kGoesToTime).toBool())
        option->palette.setColor(QPalette::Text, option->palette.color(QPalette::Link));
}

void FigureDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    const QVariant share = index.data(InfoTableModel::kShare);
    if (!share.isValid())
        return;
    const double right = option.rect.right() - kTextWidth - kBesideBar;
    const double length = std::min(kLongestBar, right - option.rect.left() - kBesideBar);
    if (length <= 0)
        return;
    const QRectF whole(right - length, option.rect.toRectF().center().y() - kBarHeight / 2, length, kBarHeight);
    QRectF covered = whole;
    covered.setWidth(length * std::clamp(share.toDouble(), 0.0, 1.0));
    QColor rest = option.palette.color(QPalette::Text);
    rest.setAlphaF(0.2F);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(rest);
    painter->drawRoundedRect(whole, kBarHeight / 2, kBarHeight / 2);
    painter->setClipRect(covered);
    painter->setBrush(kCovered);
    painter->drawRoundedRect(whole, kBarHeight / 2, kBarHeight / 2);
    painter->restore();
}
