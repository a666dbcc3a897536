#include "plugins/PlotixPlugIn/FrozenNames.h"

#include "plugins/PlotixPlugIn/InfoTableModel.h"

#include <QtGui/QContextMenuEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

#include <algorithm>

FrozenNames::FrozenNames(QTableView& table) : QTableView(&table), m_table(table)
{
    setModel(table.model());
    QItemSelectionModel* ownSelection = selectionModel();
    setSelectionModel(table.selectionModel());
    delete ownSelection;
    setItemDelegate(table.itemDelegate());
    setSelectionBehavior(table.selectionBehavior());
    setSelectionMode(table.selectionMode());
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(table.alternatingRowColors());
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setFocusPolicy(Qt::ClickFocus);
    setFocusProxy(&table);
    setAccessibleName(model()->headerData(InfoTableModel::Property, Qt::Horizontal).toString());
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &FrozenNames::showMenu);
    connect(table.verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(), &QScrollBar::setValue);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, table.verticalScrollBar(), &QScrollBar::setValue);
    connect(table.horizontalScrollBar(), &QScrollBar::valueChanged, this, &FrozenNames::follow);
    hide();
}

void FrozenNames::follow()
{
    const int columns = model()->columnCount();
    const bool isPassed =
        columns > InfoTableModel::kColumnCount && m_table.columnViewportPosition(InfoTableModel::Property) < 0;
    if (!isPassed) {
        hide();
        return;
    }
    constexpr int kMostOfTheView = 2;  // the other half is for what is scrolled
    const QRect area = m_table.viewport()->geometry();
    const int width = std::min(m_table.columnWidth(InfoTableModel::Property), area.width() / kMostOfTheView);
    for (int column = 0; column < columns; ++column)
        setColumnHidden(column, column != InfoTableModel::Property);
    setColumnWidth(InfoTableModel::Property, width);
    verticalHeader()->setDefaultSectionSize(m_table.verticalHeader()->defaultSectionSize());
    const int top = m_table.horizontalHeader()->y();
    horizontalHeader()->setFixedHeight(m_table.horizontalHeader()->height());
    setGeometry(area.left(), top, width, area.bottom() + 1 - top);
    show();
    raise();
    verticalScrollBar()->setValue(m_table.verticalScrollBar()->value());
}

void FrozenNames::showMenu(const QPoint& position)
{
    const QPoint global = viewport()->mapToGlobal(position);
    QContextMenuEvent wish(QContextMenuEvent::Mouse, m_table.viewport()->mapFromGlobal(global), global);
    QApplication::sendEvent(m_table.viewport(), &wish);
}
