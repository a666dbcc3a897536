#include "plugins/PlotixPlugIn/ColorSwatchDelegate.h"

#include "plotkit/render/LineSample.h"
#include "plugins/PlotixPlugIn/InfoTableModel.h"

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

namespace {
constexpr QSizeF kLargestSwatch{28, 12};
constexpr QSizeF kLargestSample{44, 16};
constexpr double kCornerRadius = 3;
}  // namespace

void ColorSwatchDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.icon = {};
    cell.features &= ~QStyleOptionViewItem::HasDecoration;
    const QStyle* style = cell.widget ? cell.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);

    using PlotPointer = std::shared_ptr<const CPTScatterPlot>;
    if (const auto plot = index.data(InfoTableModel::kPlotRole).value<PlotPointer>()) {
        QRectF sample({}, kLargestSample.boundedTo(option.rect.adjusted(4, 2, -4, -2).size()));
        sample.moveCenter(option.rect.toRectF().center());
        plotkit::paintLineSample(*painter, sample, *plot);
        return;
    }
    const auto color = index.data(Qt::DecorationRole).value<QColor>();
    if (!color.isValid())
        return;
    QRectF swatch({}, kLargestSwatch.boundedTo(option.rect.adjusted(4, 3, -4, -3).size()));
    swatch.moveCenter(option.rect.toRectF().center());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QColor border = cell.palette.color(QPalette::Text);
    border.setAlphaF(0.35F);  // keeps a swatch in the background's colour visible
    painter->setPen(border);
    painter->setBrush(color);
    painter->drawRoundedRect(swatch, kCornerRadius, kCornerRadius);
    painter->restore();
}
