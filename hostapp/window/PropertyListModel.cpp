#include "hostapp/window/PropertyListModel.h"

#include "hostapp/formulas/FormulaPlan.h"
#include "plugins/PlotixPlugIn/host/KTVDragData.h"
#include "plugins/PlotixPlugIn/host/PlainToolTip.h"

#include <QtCore/QMimeData>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtGui/QPixmap>

namespace plotix {

namespace {

// An agent's row has the internal id 0, a property's row the number of its agent, counted from 1.
constexpr quintptr kAgentRow = 0;

/// Red that can be read on the list's ground.
QColor brokenColor()
{
    constexpr int kMiddle = 128;
    const bool isDark = QGuiApplication::palette().color(QPalette::Base).lightness() < kMiddle;
    return isDark ? QColor(0xFF, 0x70, 0x70) : QColor(0xB0, 0x10, 0x10);
}

QIcon swatch(const QColor& colour)
{
    constexpr int kSide = 12;  // points
    constexpr double kDensity = 2;
    QPixmap pixmap(static_cast<int>(kSide * kDensity), static_cast<int>(kSide * kDensity));
    pixmap.setDevicePixelRatio(kDensity);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour.lighter(130), 1));
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(0.5, 0.5, kSide - 1, kSide - 1), 3, 3);
    painter.end();
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected);  // untinted: the colour must be the same in a selected row
    return icon;
}

}  // namespace

PropertyListModel::PropertyListModel(std::shared_ptr<SiteDocument> document, QObject* parent)
    : QAbstractItemModel(parent), m_document(std::move(document))
{
    fillGroups();
    connect(m_document.get(), &SiteDocument::agentsChanged, this, &PropertyListModel::rebuild);
}

void PropertyListModel::rebuild()
{
    beginResetModel();
    fillGroups();
    endResetModel();
    emit tickedChanged();
}

void PropertyListModel::fillGroups()
{
    m_groups.clear();
    for (const auto& agent : m_document->agents()) {
        disconnect(agent.get(), nullptr, this, nullptr);
        connect(agent.get(), &SiteAgent::propertiesChanged, this, &PropertyListModel::rebuild);
        Group group{agent, {}};
        for (const auto& property : agent->siteProperties()) {
            disconnect(property.get(), nullptr, this, nullptr);
            connect(property.get(), &SiteProperty::changed, this,
                    [this, changed = property.get()] { propertyDidChange(*changed); });
            if (property->visible())
                group.properties.push_back(property);
        }
        m_groups.push_back(std::move(group));
    }
}

void PropertyListModel::propertyDidChange(const SiteProperty& property)
{
    for (int agent = 0; agent < rowCount(); ++agent)
        for (int row = 0; row < rowCount(index(agent, 0)); ++row)
            if (const QModelIndex first = index(row, NameColumn, index(agent, 0)); propertyAt(first).get() == &property)
                emit dataChanged(first, first.siblingAtColumn(UnitColumn));
}

std::shared_ptr<SiteProperty> PropertyListModel::propertyAt(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == kAgentRow)
        return nullptr;
    return m_groups[index.internalId() - 1].properties[static_cast<std::size_t>(index.row())];
}

std::shared_ptr<SiteAgent> PropertyListModel::agentAt(const QModelIndex& index) const
{
    if (!index.isValid())
        return nullptr;
    const std::size_t group = index.internalId() == kAgentRow ? static_cast<std::size_t>(index.row())
                                                              : static_cast<std::size_t>(index.internalId() - 1);
    return m_groups[group].agent;
}

std::shared_ptr<SiteAgent> PropertyListModel::agentOf(const SiteProperty& property) const
{
    for (const Group& group : m_groups)
        for (const auto& each : group.properties)
            if (each.get() == &property)
                return group.agent;
    return nullptr;
}

std::vector<std::shared_ptr<SiteAgent>> PropertyListModel::agents() const
{
    std::vector<std::shared_ptr<SiteAgent>> agents;
    for (const Group& group : m_groups)
        agents.push_back(group.agent);
    return agents;
}

std::vector<PropertyListModel::Ticked> PropertyListModel::ticked() const
{
    std::vector<Ticked> answer;
    for (const Group& group : m_groups) {
        Ticked ticked{group.agent, {}};
        for (const auto& property : group.properties)
            if (m_ticked.count(property) != 0)
                ticked.properties.push_back(property);
        if (!ticked.properties.empty())
            answer.push_back(std::move(ticked));
    }
    return answer;
}

void PropertyListModel::untickAll()
{
    m_ticked.clear();
    for (int row = 0; row < rowCount(); ++row)
        if (const int count = rowCount(index(row, 0)); count > 0)
            emit dataChanged(index(0, 0, index(row, 0)), index(count - 1, 0, index(row, 0)));
    emit tickedChanged();
}

QModelIndex PropertyListModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kAgentRow);
}

QModelIndex PropertyListModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == kAgentRow)
        return {};
    return createIndex(static_cast<int>(index.internalId()) - 1, 0, kAgentRow);
}

int PropertyListModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return static_cast<int>(m_groups.size());
    if (parent.internalId() != kAgentRow || parent.column() != 0)
        return 0;
    return static_cast<int>(m_groups[static_cast<std::size_t>(parent.row())].properties.size());
}

int PropertyListModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

QVariant PropertyListModel::data(const QModelIndex& index, int role) const
{
    if (const auto property = propertyAt(index))
        return propertyData(*property, index.column(), role);
    const auto agent = agentAt(index);
    if (!agent || index.column() != NameColumn)
        return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
        return agent->name();
    if (role == Qt::FontRole) {
        QFont font = QGuiApplication::font();
        font.setBold(true);
        return font;
    }
    return {};
}

QVariant PropertyListModel::propertyData(const SiteProperty& property, int column, int role) const
{
    const QString symbol = property.unitSymbol();
    if (role == Qt::ToolTipRole && property.isComputed())
        return plainToolTip(computedToolTip(property));
    if (role == Qt::FontRole && property.isComputed() && column == NameColumn) {
        QFont font = QGuiApplication::font();
        font.setItalic(true);
        return font;
    }
    if (role == Qt::ForegroundRole && column == NameColumn && property.isComputed() && problemOf(property))
        return brokenColor();
    if (role == Qt::AccessibleTextRole && property.isComputed() && column == NameColumn) {
        const std::optional<FormulaProblem> problem = problemOf(property);
        return problem ? tr("%1, cannot be computed: %2").arg(property.name(), sentenceOf(*problem))
                       : tr("%1, computed").arg(property.name());
    }
    if (role == Qt::ToolTipRole)
        return plainToolTip(tr("%1%2\nDrag it onto a trend, or tick it and choose New Trend.\nDouble-click to change "
                               "colour or unit.")
                                .arg(property.name(), symbol.isEmpty() ? QString() : tr(" in %1").arg(symbol)));
    if (column == UnitColumn) {
        if (role == Qt::DisplayRole)
            return symbol;
        if (role == Qt::ForegroundRole)
            return QGuiApplication::palette().color(QPalette::PlaceholderText);
        if (role == Qt::TextAlignmentRole)
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        return {};
    }
    switch (role) {
    case Qt::DisplayRole: return property.name();
    case Qt::DecorationRole: return swatch(property.color());
    case Qt::CheckStateRole: {
        const auto ticked = std::find_if(m_ticked.begin(), m_ticked.end(),
                                         [&property](const auto& one) { return one.get() == &property; });
        return ticked == m_ticked.end() ? Qt::Unchecked : Qt::Checked;
    }
    default: return {};
    }
}

std::optional<FormulaProblem> PropertyListModel::problemOf(const SiteProperty& property) const
{
    return planProperty(*m_document->formulaDirectory(), property.description().id).problem;
}

QString PropertyListModel::computedToolTip(const SiteProperty& property) const
{
    const std::optional<FormulaProblem> problem = problemOf(property);
    const QString formula =
        tr("%1 = %2").arg(property.name(), property.description().formula.value_or(PropertyFormula{}).text);
    return problem ? tr("%1\nIt cannot be computed: %2").arg(formula, sentenceOf(*problem))
                   : tr("%1\nDrag it onto a trend, or tick it and choose New Trend.").arg(formula);
}

bool PropertyListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const auto property = propertyAt(index);
    if (!property || role != Qt::CheckStateRole || index.column() != NameColumn)
        return false;
    if (value.toInt() == Qt::Checked)
        m_ticked.insert(property);
    else
        m_ticked.erase(property);
    emit dataChanged(index, index, {Qt::CheckStateRole});
    emit tickedChanged();
    return true;
}

Qt::ItemFlags PropertyListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    if (!propertyAt(index))
        return Qt::ItemIsEnabled;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
    return index.column() == NameColumn ? flags | Qt::ItemIsUserCheckable : flags;
}

QVariant PropertyListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == NameColumn ? tr("Property") : tr("Unit");
}

QStringList PropertyListModel::mimeTypes() const
{
    QStringList types;
    for (const Group& group : m_groups)
        types << group.agent->uniqueIdentifier();
    return types;
}

QMimeData* PropertyListModel::mimeData(const QModelIndexList& indexes) const
{
    auto* data = new QMimeData;
    for (const Group& group : m_groups) {
        QStringList keys;
        for (const QModelIndex& index : indexes)
            if (const auto property = propertyAt(index); property && agentAt(index) == group.agent)
                if (!keys.contains(property->propertyName()))  // one index comes for each column of a row
                    keys << property->propertyName();
        if (!keys.isEmpty())
            data->setData(group.agent->uniqueIdentifier(), dragDataFromPropertyNames(keys));
    }
    return data;
}

}  // namespace plotix
