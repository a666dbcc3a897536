#include "plugins/PlotixPlugIn/InfoTableModel.h"

#include "plugins/PlotixPlugIn/FiguredRow.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/PlainToolTip.h"
#include "plugins/PlotixPlugIn/logic/ColorText.h"
#include "plugins/PlotixPlugIn/logic/NumberText.h"

#include <cmath>

namespace {

struct ColumnDescription {
    const char* identifier;  // stored: never change
    const char* title;
    Qt::AlignmentFlag alignment;
};

constexpr ColumnDescription kColumns[InfoTableModel::kColumnCount] = {
    {"show", QT_TRANSLATE_NOOP("Plotix", "Show"), Qt::AlignHCenter},
    {"color", QT_TRANSLATE_NOOP("Plotix", "Color"), Qt::AlignHCenter},
    {"tableName", QT_TRANSLATE_NOOP("Plotix", "Property"), Qt::AlignLeft},
    {"unit", QT_TRANSLATE_NOOP("Plotix", "Unit"), Qt::AlignLeft},
    {"minimum", QT_TRANSLATE_NOOP("Plotix", "Minimum"), Qt::AlignRight},
    {"maximum", QT_TRANSLATE_NOOP("Plotix", "Maximum"), Qt::AlignRight},
    {"average", QT_TRANSLATE_NOOP("Plotix", "Average"), Qt::AlignRight},
    {"points", QT_TRANSLATE_NOOP("Plotix", "No. of Points"), Qt::AlignRight},
};

QString displayText(const InfoTableRow& row, int column)
{
    switch (column) {
    case InfoTableModel::Property: return row.tableName;
    case InfoTableModel::Unit: return row.unit;
    case InfoTableModel::Minimum: return plotix::numberText(row.minimum);
    case InfoTableModel::Maximum: return plotix::numberText(row.maximum);
    case InfoTableModel::Average: return plotix::numberText(row.average);
    case InfoTableModel::Points: return QString::number(row.points);
    default: return {};
    }
}

/// The same in the user's locale, with the digits that the row's range is worth. A line without values has no extremes
/// and no average, rather than zeros that nobody measured.
QString readableText(const InfoTableRow& row, int column, const plotix::ReadableNumbers& numbers)
{
    const bool isFigure =
        column == InfoTableModel::Minimum || column == InfoTableModel::Maximum || column == InfoTableModel::Average;
    if (isFigure && row.points == 0)
        return QStringLiteral("–");
    const plotix::ReadableNumbers::Texts texts = numbers.statistics(row.minimum, row.maximum, row.average);
    switch (column) {
    case InfoTableModel::Minimum: return texts.minimum;
    case InfoTableModel::Maximum: return texts.maximum;
    case InfoTableModel::Average: return texts.average;
    case InfoTableModel::Points: return numbers.count(row.points);
    default: return displayText(row, column);
    }
}

QString accessibleText(const InfoTableRow& row, int column, const QString& displayed)
{
    switch (column) {
    case InfoTableModel::Show:
        return KTVBundle::mainBundle()->localizedString(row.show
                                                            ? QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "shown"))
                                                            : QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "hidden")));
    case InfoTableModel::Color: return plotix::colorText(row.color);
    default: return displayed;
    }
}

QVariant figureHeader(const plotix::TableFigures::Column& column, int role)
{
    if (role == Qt::DisplayRole)
        return column.title;
    return role == Qt::TextAlignmentRole ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
}

/// A NaN stands before every number, so that sorting is always a strict order.
template <class Number>
bool isLess(Number left, Number right)
{
    return std::isnan(left) ? !std::isnan(right) : left < right;
}

bool isLess(const InfoTableRow& left, const InfoTableRow& right, int column)
{
    switch (column) {
    case InfoTableModel::Show: return left.show < right.show;
    case InfoTableModel::Color: return left.color.rgba64() < right.color.rgba64();
    case InfoTableModel::Property: return QString::localeAwareCompare(left.tableName, right.tableName) < 0;
    case InfoTableModel::Unit: return QString::localeAwareCompare(left.unit, right.unit) < 0;
    case InfoTableModel::Minimum: return isLess(left.minimum, right.minimum);
    case InfoTableModel::Maximum: return isLess(left.maximum, right.maximum);
    case InfoTableModel::Average: return isLess(left.average, right.average);
    default: return left.points < right.points;
    }
}

}  // namespace

InfoTableModel::InfoTableModel(QObject* parent) : QAbstractTableModel(parent) {}

void InfoTableModel::setArrayController(InfoTableArrayController* controller)
{
    disconnect(m_arrangedConnection);
    disconnect(m_destroyedConnection);
    m_controller = controller;
    if (m_controller) {
        m_arrangedConnection = connect(m_controller->changes(), &KTVArrayControllerSignals::arrangedObjectsChanged,
                                       this, &InfoTableModel::followController);
        m_destroyedConnection =
            connect(m_controller->changes(), &QObject::destroyed, this, &InfoTableModel::forgetController);
    }
    followController();
}

void InfoTableModel::forgetController()
{
    m_controller = nullptr;
    setRowCount(0);
}

void InfoTableModel::followController()
{
    m_isBehind = m_pauses > 0;
    if (m_isBehind)
        return;
    m_following = true;
    setRowCount(m_controller ? static_cast<int>(m_controller->arrangedObjects().size()) : 0);
    m_following = false;
    tellAllChanged();
}

void InfoTableModel::setRowCount(int count)
{
    if (count > m_rowCount) {
        beginInsertRows({}, m_rowCount, count - 1);
        m_rowCount = count;
        endInsertRows();
    } else if (count < m_rowCount) {
        beginRemoveRows({}, count, m_rowCount - 1);
        m_rowCount = count;
        endRemoveRows();
    }
}

QString InfoTableModel::identifierOfColumn(int column)
{
    return column >= 0 && column < kColumnCount ? QString::fromLatin1(kColumns[column].identifier) : QString();
}

int InfoTableModel::columnWithIdentifier(const QString& identifier)
{
    for (int column = 0; column < kColumnCount; ++column)
        if (identifier == QLatin1String(kColumns[column].identifier))
            return column;
    return -1;
}

InfoTableRowPtr InfoTableModel::rowAt(int row) const
{
    if (!m_controller || row < 0 || static_cast<std::size_t>(row) >= m_controller->arrangedObjects().size())
        return nullptr;
    return m_controller->arrangedObjects()[static_cast<std::size_t>(row)];
}

void InfoTableModel::setShow(int row, bool show)
{
    const InfoTableRowPtr object = rowAt(row);
    if (!object)
        return;
    object->show = show;  // in place and without sorting again: a row must not run away under the pointer
    emit dataChanged(index(row, Show), index(row, Show));
}

int InfoTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rowCount;
}

int InfoTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumnCount + static_cast<int>(m_figureColumns.size());
}

void InfoTableModel::tellAllChanged()
{
    if (m_rowCount > 0)
        emit dataChanged(index(0, 0), index(m_rowCount - 1, columnCount() - 1));
}

void InfoTableModel::setReadableNumbers(bool readable)
{
    if (readable == (m_numbers != nullptr))
        return;
    m_numbers = readable ? std::make_unique<plotix::ReadableNumbers>() : nullptr;
    tellAllChanged();
}

std::shared_ptr<const CPTScatterPlot> InfoTableModel::plotOf(const InfoTableRow& row) const
{
    return m_plotOf ? m_plotOf(row.propertyName) : nullptr;
}

void InfoTableModel::plotsChanged()
{
    if (m_rowCount > 0)
        emit dataChanged(index(0, Color), index(m_rowCount - 1, Color));
}

QString InfoTableModel::textAt(const InfoTableRow& row, int column) const
{
    const InfoTableRow shown = figuredRow(row, m_figures);
    return m_numbers ? readableText(shown, column, *m_numbers) : displayText(shown, column);
}

QVariant InfoTableModel::data(const QModelIndex& index, int role) const
{
    const InfoTableRowPtr row = rowAt(index.row());
    if (!row)
        return {};
    if (isFigure(index.column()))
        return figureData(*row, index.column(), role);
    switch (role) {
    case Qt::DisplayRole: return textAt(*row, index.column());
    case Qt::AccessibleTextRole: return accessibleText(*row, index.column(), textAt(*row, index.column()));
    case Qt::TextAlignmentRole: return QVariant(kColumns[index.column()].alignment | Qt::AlignVCenter);
    case Qt::DecorationRole: return index.column() == Color ? QVariant(row->color) : QVariant();
    case kPlotRole: return index.column() == Color ? QVariant::fromValue(plotOf(*row)) : QVariant();
    case Qt::ToolTipRole: return index.column() == Property ? QVariant(plainToolTip(row->tableName)) : QVariant();
    default: return {};
    }
}

QVariant InfoTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    if (isFigure(section))
        return figureHeader(m_figureColumns[static_cast<std::size_t>(section - kColumnCount)], role);
    if (role == Qt::DisplayRole)
        return KTVBundle::mainBundle()->localizedString(QLatin1String(kColumns[section].title));
    if (role == Qt::TextAlignmentRole)
        return QVariant(kColumns[section].alignment | Qt::AlignVCenter);
    return {};
}

void InfoTableModel::sort(int column, Qt::SortOrder order)
{
    if (!m_controller)
        return;
    if (column < 0 || column >= columnCount()) {
        m_controller->setSortOrder({});
        return;
    }
    if (isFigure(column)) {
        m_controller->setSortOrder(figureOrder(column, order));
        return;
    }
    m_controller->setSortOrder(
        [column, order, figures = m_figures](const InfoTableRowPtr& left, const InfoTableRowPtr& right) {
            const InfoTableRow one = figuredRow(*left, figures);
            const InfoTableRow other = figuredRow(*right, figures);
            return order == Qt::AscendingOrder ? isLess(one, other, column) : isLess(other, one, column);
        });
}
