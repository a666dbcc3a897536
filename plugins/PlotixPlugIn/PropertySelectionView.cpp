#include "plugins/PlotixPlugIn/PropertySelectionView.h"

#include "plugins/PlotixPlugIn/ColorSwatchDelegate.h"
#include "plugins/PlotixPlugIn/PropertySelectionModel.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QHeaderView>

#include <algorithm>

namespace {

constexpr int kRowHeight = 24;   // pixels
constexpr int kColorWidth = 64;  // pixels
constexpr int kUnitWidth = 88;   // pixels

Qt::CheckState tickOf(const QModelIndex& row)
{
    return static_cast<Qt::CheckState>(
        row.siblingAtColumn(PropertySelectionModel::Name).data(Qt::CheckStateRole).toInt());
}

}  // namespace

PropertySelectionView::PropertySelectionView(QWidget* parent) : QTableView(parent)
{
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setAlternatingRowColors(true);
    setItemDelegateForColumn(PropertySelectionModel::Color, new ColorSwatchDelegate(this));
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(kRowHeight);
    horizontalHeader()->setHighlightSections(false);
}

void PropertySelectionView::setModel(QAbstractItemModel* model)
{
    QTableView::setModel(model);
    QHeaderView* header = horizontalHeader();
    header->setSectionResizeMode(PropertySelectionModel::Name, QHeaderView::Stretch);
    header->setSectionResizeMode(PropertySelectionModel::Color, QHeaderView::Fixed);
    header->setSectionResizeMode(PropertySelectionModel::Unit, QHeaderView::Fixed);
    setColumnWidth(PropertySelectionModel::Color, kColorWidth);
    setColumnWidth(PropertySelectionModel::Unit, kUnitWidth);
}

void PropertySelectionView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier)
        tickSelectedRows();
    else
        QTableView::keyPressEvent(event);
}

void PropertySelectionView::tickSelectedRows()
{
    const QModelIndexList rows = selectionModel()->selectedRows(PropertySelectionModel::Name);
    const bool anyUnticked =
        std::any_of(rows.begin(), rows.end(), [](const QModelIndex& row) { return tickOf(row) == Qt::Unchecked; });
    for (const QModelIndex& row : rows)
        model()->setData(row, anyUnticked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
}

void PropertySelectionView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTableView::mouseDoubleClickEvent(event);
    const QPoint position = event->position().toPoint();
    const QModelIndex index = indexAt(position);
    // The box itself takes each of the two clicks on its own.
    if (index.isValid() && event->button() == Qt::LeftButton && !isOnTickBox(index, position))
        model()->setData(index, tickOf(index) == Qt::Checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

bool PropertySelectionView::isOnTickBox(const QModelIndex& index, const QPoint& position) const
{
    if (!index.flags().testFlag(Qt::ItemIsUserCheckable))
        return false;
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    option.features |= QStyleOptionViewItem::HasCheckIndicator;
    return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).contains(position);
}

void PropertySelectionView::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    // So that Space has a row to tick; a click selects its own.
    if (event->reason() != Qt::MouseFocusReason && selectionModel() && !selectionModel()->hasSelection())
        selectRow(std::max(currentIndex().row(), 0));
}
