// The columns that figures add to the statistics table: their widths, their menu, and what a click on them does.
//
// Rules of this room:
//  1. A column that comes or goes leaves the others as they are. One that rows were sorted by and that goes leaves them
//     in the order of the properties.
//  2. Every choice of the header's menu is in the rows' menu too, where keys reach it.

#include "plugins/PlotixPlugIn/PropertyDetailsTableView.h"

#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"

#include <QtWidgets/QHeaderView>

namespace {

QString text(const char* key)
{
    return KTVBundle::mainBundle()->localizedString(QLatin1String(key));
}

}  // namespace

void PropertyDetailsTableView::setFigures(plotix::TableFigures* figures)
{
    m_model->setFigures(figures);
}

void PropertyDetailsTableView::setUpFigures()
{
    QHeaderView* header = horizontalHeader();
    connect(m_model, &QAbstractItemModel::columnsInserted, this, [this](const QModelIndex&, int first, int last) {
        for (int column = first; column <= last; ++column) {
            const int width = m_model->firstWidthOf(column);
            m_ownWidths.insert(m_ownWidths.begin() + column, width);
            setColumnWidth(column, width);
        }
        fillWidth();
        if (m_model->rowCount() > 0)
            scrollTo(m_model->index(std::max(0, rowAt(0)), last));  // what was just chosen is seen
    });
    connect(m_model, &QAbstractItemModel::columnsAboutToBeRemoved, this,
            [header](const QModelIndex&, int first, int last) {
                const int sorted = header->sortIndicatorSection();
                if (sorted >= first && sorted <= last)
                    header->setSortIndicator(-1, Qt::AscendingOrder);
            });
    connect(m_model, &QAbstractItemModel::columnsRemoved, this, [this](const QModelIndex&, int first, int last) {
        m_ownWidths.erase(m_ownWidths.begin() + first, m_ownWidths.begin() + last + 1);
        fillWidth();
    });
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        const InfoTableRowPtr row = m_model->rowAt(index.row());
        if (row && m_model->figures() && index.column() >= InfoTableModel::kColumnCount)
            m_model->figures()->activate(row->propertyName, m_model->identifierAt(index.column()));
    });
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, &PropertyDetailsTableView::popUpHeaderMenu);
    viewport()->setMouseTracking(true);
    connect(this, &QAbstractItemView::entered, this, [this](const QModelIndex& index) {
        viewport()->setCursor(index.data(InfoTableModel::kGoesToTime).toBool() ? Qt::PointingHandCursor
                                                                               : Qt::ArrowCursor);
    });
}

void PropertyDetailsTableView::popUpHeaderMenu(const QPoint& position)
{
    if (!m_model->figures() || m_model->figures()->headerActions().empty())
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction* action : m_model->figures()->headerActions())
        menu->addAction(action);
    menu->popup(horizontalHeader()->mapToGlobal(position));
}

void PropertyDetailsTableView::addFigureItems(QMenu& menu)
{
    if (!m_model->figures() || m_model->figures()->headerActions().empty())
        return;
    menu.addSeparator();
    const bool hasRow = !selectedRowIndexes().empty();
    const auto addItem = [&](const char* title, const char* key, const char* identifier) {
        QAction* action = menu.addAction(text(title) + u'\t' + QLatin1String(key));
        action->setEnabled(hasRow);
        connect(action, &QAction::triggered, this, [this, identifier] { activateRow(QLatin1String(identifier)); });
    };
    addItem(QT_TRANSLATE_NOOP("Plotix", "Go to Maximum"), "Return", "maximumTime");
    addItem(QT_TRANSLATE_NOOP("Plotix", "Go to Minimum"), "Shift+Return", "minimumTime");
    QMenu* columns = menu.addMenu(text(QT_TRANSLATE_NOOP("Plotix", "Columns")));
    for (QAction* action : m_model->figures()->headerActions())
        columns->addAction(action);
}

void PropertyDetailsTableView::tellSelectedRow()
{
    if (!m_model->figures())
        return;
    const std::vector<std::size_t> selected = selectedRowIndexes();
    const InfoTableRowPtr row = selected.empty() ? nullptr : m_model->rowAt(static_cast<int>(selected.front()));
    m_model->figures()->select(row ? row->propertyName : QString());
}

void PropertyDetailsTableView::activateRow(const QString& identifier)
{
    const std::vector<std::size_t> selected = selectedRowIndexes();
    const InfoTableRowPtr row = selected.empty() ? nullptr : m_model->rowAt(static_cast<int>(selected.front()));
    if (row && m_model->figures())
        m_model->figures()->activate(row->propertyName, identifier);
}
