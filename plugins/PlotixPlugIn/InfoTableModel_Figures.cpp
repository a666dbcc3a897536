// The columns that the figures add to the statistics table.
//
// Rules of this room:
//  1. They stand behind the table's own, in the order the figures give them, and come and go one by one: the others
//  keep
//     their places and widths.
//  2. A cell is asked for when it is shown; nothing of it is kept here.

#include "plugins/PlotixPlugIn/InfoTableModel.h"

#include "plugins/PlotixPlugIn/host/PlainToolTip.h"

#include <algorithm>
#include <cmath>

using plotix::TableFigures;

void InfoTableModel::setFigures(TableFigures* figures)
{
    m_figures = figures;
    if (figures) {
        connect(figures, &TableFigures::columnsChanged, this, &InfoTableModel::followColumns);
        connect(figures, &TableFigures::figuresChanged, this, &InfoTableModel::tellAllChanged);
    }
    followColumns();
}

void InfoTableModel::followColumns()
{
    const std::vector<TableFigures::Column> wanted = m_figures ? m_figures->columns() : decltype(m_figureColumns)();
    const auto placeIn = [](const auto& columns, const QString& identifier) {
        return std::find_if(columns.begin(), columns.end(),
                            [&](const TableFigures::Column& each) { return each.identifier == identifier; });
    };
    for (std::size_t index = m_figureColumns.size(); index-- > 0;) {
        if (placeIn(wanted, m_figureColumns[index].identifier) != wanted.end())
            continue;
        const int column = kColumnCount + static_cast<int>(index);
        beginRemoveColumns({}, column, column);
        m_figureColumns.erase(m_figureColumns.begin() + static_cast<std::ptrdiff_t>(index));
        endRemoveColumns();
    }
    for (std::size_t index = 0; index < wanted.size(); ++index) {
        if (placeIn(m_figureColumns, wanted[index].identifier) != m_figureColumns.end())
            continue;
        const int column = kColumnCount + static_cast<int>(index);
        beginInsertColumns({}, column, column);
        m_figureColumns.insert(m_figureColumns.begin() + static_cast<std::ptrdiff_t>(index), wanted[index]);
        endInsertColumns();
    }
    tellAllChanged();
}

bool InfoTableModel::isFigure(int column) const
{
    return column >= kColumnCount && column < columnCount();
}

QString InfoTableModel::identifierAt(int column) const
{
    return isFigure(column) ? m_figureColumns[static_cast<std::size_t>(column - kColumnCount)].identifier
                            : identifierOfColumn(column);
}

int InfoTableModel::columnNamed(const QString& identifier) const
{
    for (int column = kColumnCount; column < columnCount(); ++column)
        if (identifierAt(column) == identifier)
            return column;
    return columnWithIdentifier(identifier);
}

bool InfoTableModel::isBehindOwn(int column) const
{
    return isFigure(column) && m_figureColumns[static_cast<std::size_t>(column - kColumnCount)].isBehindOwn;
}

int InfoTableModel::firstWidthOf(int column) const
{
    return isFigure(column) ? m_figureColumns[static_cast<std::size_t>(column - kColumnCount)].width : 0;
}

QVariant InfoTableModel::figureData(const InfoTableRow& row, int column, int role) const
{
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    const TableFigures::Column& shown = m_figureColumns[static_cast<std::size_t>(column - kColumnCount)];
    const bool isAsked = role == Qt::DisplayRole || role == Qt::AccessibleTextRole || role == Qt::ToolTipRole ||
                         role == kShare || role == kGoesToTime;
    if (!isAsked || !m_figures)
        return {};
    const TableFigures::Cell cell = m_figures->cell(row.propertyName, shown.identifier);
    switch (role) {
    case Qt::ToolTipRole: return cell.hint.isEmpty() ? QVariant() : QVariant(plainToolTip(cell.hint));
    case kShare: return cell.share && std::isfinite(*cell.share) ? QVariant(*cell.share) : QVariant();
    case kGoesToTime: return shown.kind == TableFigures::Kind::Time && std::isfinite(cell.order);
    default: return cell.text;
    }
}

InfoTableArrayController::Order InfoTableModel::figureOrder(int column, Qt::SortOrder order) const
{
    return [figures = m_figures, identifier = identifierAt(column), order](const InfoTableRowPtr& left,
                                                                           const InfoTableRowPtr& right) {
        if (!figures)
            return false;
        const double one = figures->cell(left->propertyName, identifier).order;
        const double other = figures->cell(right->propertyName, identifier).order;
        const auto isLess = [](double less, double more) { return std::isnan(less) ? !std::isnan(more) : less < more; };
        return order == Qt::AscendingOrder ? isLess(one, other) : isLess(other, one);
    };
}
