// The columns that figures add to the statistics table: their widths, their menu, and what a click on them does.
//
// Rules of this room:
//  1. A column that comes stands right behind the name and its unit, behind those before it in the figures' order, and
//  is scrolled
//     into view. One that comes or goes leaves the others as they are. One that rows were sorted by and that goes
//     leaves them in the order of the properties.
//  2. Nothing in these columns is cut: they become as wide as title and cells need, never narrower by themselves. What
//     a hand has made narrower stays so.
//  3. While the table is scrolled past the names, these are shown at its edge.
//  4. Every choice of the header's menu is in the rows' menu too, where keys reach it.

#include "plugins/PlotixPlugIn/PropertyDetailsTableView.h"

#include "plugins/PlotixPlugIn/FrozenNames.h"
#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

#include <QtCore/QScopedValueRollback>

#include <algorithm>

namespace {

QString text(const char* key)
{
    return KTVBundle::mainBundle()->localizedString(QLatin1String(key));
}

}  // namespace

void PropertyDetailsTableView::setFigures(plotix::TableFigures* figures)
{
    m_model->setFigures(figures);
    if (figures)
        connect(figures, &plotix::TableFigures::cellMeant, this, &PropertyDetailsTableView::showCell);
}

void PropertyDetailsTableView::showCell(const QString& propertyName, const QString& identifier)
{
    for (int row = 0; row < m_model->rowCount(); ++row)
        if (const InfoTableRowPtr object = m_model->rowAt(row); object && object->propertyName == propertyName) {
            selectRow(row);
            horizontalScrollBar()->setValue(0);  // as much as can be seen from the names on
            scrollTo(m_model->index(row, m_model->columnNamed(identifier)));
            return;
        }
}

void PropertyDetailsTableView::placeFigure(int column)
{
    QHeaderView* header = horizontalHeader();
    const auto moveBehind = [header, column](int before) {
        const int present = header->visualIndex(column);
        header->moveSection(present, present > before ? before + 1 : before);
    };
    if (m_model->isBehindOwn(column)) {
        const bool isFirst = !m_model->isBehindOwn(column - 1);
        return moveBehind(header->visualIndex(isFirst ? int(InfoTableModel::Points) : column - 1));
    }
    const int name = header->visualIndex(InfoTableModel::Property);
    const int unit = header->visualIndex(InfoTableModel::Unit);
    const bool isFirst = column == InfoTableModel::kColumnCount;
    moveBehind(!isFirst ? header->visualIndex(column - 1) : unit == name + 1 ? unit : name);
}

void PropertyDetailsTableView::fitFigures()
{
    const QScopedValueRollback filling(m_filling, true);
    bool hasGrown = false;
    for (int column = InfoTableModel::kColumnCount; column < m_model->columnCount(); ++column) {
        int& own = m_ownWidths[static_cast<std::size_t>(column)];
        const int wanted = std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
        if (wanted <= own || m_sizedByHand.contains(m_model->identifierAt(column)))
            continue;
        own = wanted;
        setColumnWidth(column, wanted);
        hasGrown = true;
    }
    if (hasGrown)
        fillWidth();
}

void PropertyDetailsTableView::setUpFigures()
{
    QHeaderView* header = horizontalHeader();
    connect(m_model, &QAbstractItemModel::columnsInserted, this, [this](const QModelIndex&, int first, int last) {
        for (int column = first; column <= last; ++column) {
            const int width = m_model->firstWidthOf(column);
            m_ownWidths.insert(m_ownWidths.begin() + column, width);
            const QScopedValueRollback filling(m_filling, true);
            setColumnWidth(column, width);
            placeFigure(column);
        }
        fitFigures();
        fillWidth();
        if (m_model->rowCount() > 0 && !m_model->isBehindOwn(last))
            scrollTo(m_model->index(std::max(0, rowAt(0)), last));  // what was just chosen is seen
    });
    connect(m_model, &QAbstractItemModel::columnsAboutToBeRemoved, this,
            [this, header](const QModelIndex&, int first, int last) {
                for (int column = first; column <= last; ++column)
                    m_sizedByHand.removeAll(m_model->identifierAt(column));
                const int sorted = header->sortIndicatorSection();
                if (sorted >= first && sorted <= last)
                    header->setSortIndicator(-1, Qt::AscendingOrder);
            });
    connect(m_model, &QAbstractItemModel::columnsRemoved, this, [this](const QModelIndex&, int first, int last) {
        m_ownWidths.erase(m_ownWidths.begin() + first, m_ownWidths.begin() + last + 1);
        fillWidth();
    });
    connect(m_model, &QAbstractItemModel::dataChanged, this, &PropertyDetailsTableView::fitFigures);
    header->setResizeContentsPrecision(0);  // the rows in sight
    m_frozenNames = new FrozenNames(*this);
    for (const auto changed : {&QHeaderView::sectionResized, &QHeaderView::sectionMoved})
        connect(header, changed, m_frozenNames, &FrozenNames::follow);
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
