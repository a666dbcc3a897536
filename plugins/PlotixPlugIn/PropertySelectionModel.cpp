#include "plugins/PlotixPlugIn/PropertySelectionModel.h"

#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/PlainToolTip.h"

namespace {

QString spokenRow(const SelectableProperty& row)
{
    return row.property()->name() + QLatin1Char(' ') + row.property()->unitSymbol();
}

}  // namespace

PropertySelectionModel::PropertySelectionModel(QObject* parent) : QAbstractTableModel(parent) {}

void PropertySelectionModel::setArrayController(SelectablePropertiesArrayController* controller)
{
    beginResetModel();
    if (m_controller)
        disconnect(m_controller->changes(), nullptr, this, nullptr);
    m_controller = controller;
    endResetModel();
    if (!controller)
        return;
    connect(controller->changes(), &KTVArrayControllerSignals::arrangedObjectsChanged, this, [this] {
        beginResetModel();
        endResetModel();
    });
    connect(controller->changes(), &QObject::destroyed, this, [this] {
        beginResetModel();
        m_controller = nullptr;
        endResetModel();
    });
}

SelectablePropertyPtr PropertySelectionModel::rowAt(const QModelIndex& index) const
{
    if (!m_controller || !index.isValid() || index.row() >= rowCount())
        return nullptr;
    return m_controller->arrangedObjects()[static_cast<std::size_t>(index.row())];
}

int PropertySelectionModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !m_controller ? 0 : static_cast<int>(m_controller->arrangedObjects().size());
}

int PropertySelectionModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(ColumnCount);
}

QVariant PropertySelectionModel::data(const QModelIndex& index, int role) const
{
    const SelectablePropertyPtr row = rowAt(index);
    if (!row)
        return {};
    const KTVProperty& property = *row->property();
    switch (index.column()) {
    case Name:
        if (role == Qt::DisplayRole)
            return property.name();
        if (role == Qt::ToolTipRole)
            return plainToolTip(property.name());
        if (role == Qt::CheckStateRole)
            return static_cast<int>(row->selected() ? Qt::Checked : Qt::Unchecked);
        return role == Qt::AccessibleTextRole ? spokenRow(*row) : QVariant();
    case Color: return role == Qt::DecorationRole ? QVariant(property.color()) : QVariant();
    case Unit: return role == Qt::DisplayRole ? property.unitSymbol() : QVariant();
    default: return {};
    }
}

QVariant PropertySelectionModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((section == Color ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    constexpr const char* kTitles[ColumnCount] = {QT_TRANSLATE_NOOP("Plotix", "Property"),
                                                  QT_TRANSLATE_NOOP("Plotix", "Color"),
                                                  QT_TRANSLATE_NOOP("Plotix", "Unit")};
    return KTVBundle::mainBundle()->localizedString(QLatin1String(kTitles[section]));
}

bool PropertySelectionModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const SelectablePropertyPtr row = rowAt(index);
    if (!row || role != Qt::CheckStateRole)
        return false;
    row->setSelected(value.toInt() == Qt::Checked);
    const QModelIndex ticked = index.siblingAtColumn(Name);
    emit dataChanged(ticked, ticked, {Qt::CheckStateRole});
    return true;
}

Qt::ItemFlags PropertySelectionModel::flags(const QModelIndex& index) const
{
    if (!rowAt(index))
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return index.column() == Name ? flags | Qt::ItemIsUserCheckable : flags;
}
