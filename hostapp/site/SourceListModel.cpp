#include "hostapp/site/SourceListModel.h"

#include "base/MainQueue.h"
#include "plugins/PlotixPlugIn/host/PlainToolTip.h"

#include <algorithm>

namespace plotix {

QString titleOf(const KTVPlugIn& plugIn)
{
    return plugIn.title().isEmpty() ? plugIn.name() : plugIn.title();
}

SourceListItem::~SourceListItem()
{
    if (!MainQueue::isMainThread())
        MainQueue::main().async([plugIn = std::move(m_plugIn)] {});
}

SourceListModel::SourceListModel(QObject* parent) : QAbstractListModel(parent) {}

SourceListModel::~SourceListModel() = default;

void SourceListModel::append(const KTVPlugInPtr& plugIn)
{
    insert(rowCount(), plugIn);
}

void SourceListModel::insert(int row, const KTVPlugInPtr& plugIn)
{
    row = std::clamp(row, 0, rowCount());
    beginInsertRows({}, row, row);
    m_items.insert(m_items.begin() + row, std::make_shared<SourceListItem>(plugIn, titleOf(*plugIn)));
    publish(m_items);
    endInsertRows();
    const KTVPlugIn* sender = plugIn.get();
    connect(sender, &KTVPlugIn::titleChanged, this, [this, sender] { titleDidChange(sender); });
}

void SourceListModel::remove(const KTVPlugIn* plugIn)
{
    const int row = rowOf(plugIn);
    if (row < 0)
        return;
    disconnect(plugIn, nullptr, this, nullptr);
    beginRemoveRows({}, row, row);
    const KTVSourceListItemPtr removed = m_items[static_cast<std::size_t>(row)];
    m_items.erase(m_items.begin() + row);
    publish(m_items);
    endRemoveRows();
}

void SourceListModel::removeAll()
{
    beginResetModel();
    for (const KTVSourceListItemPtr& item : m_items)
        disconnect(item->representedObject().get(), nullptr, this, nullptr);
    m_items.clear();
    publish({});
    endResetModel();
}

void SourceListModel::move(int from, int to)
{
    if (from == to || !plugInAt(from) || !plugInAt(to))
        return;
    // The toolkit counts the destination before the row is taken out.
    beginMoveRows({}, from, from, {}, to > from ? to + 1 : to);
    const KTVSourceListItemPtr item = m_items[static_cast<std::size_t>(from)];
    m_items.erase(m_items.begin() + from);
    m_items.insert(m_items.begin() + to, item);
    publish(m_items);
    endMoveRows();
}

bool SourceListModel::moveRows(const QModelIndex& sourceParent, int sourceRow, int count,
                               const QModelIndex& destinationParent, int destinationChild)
{
    const int to = destinationChild > sourceRow ? destinationChild - 1 : destinationChild;
    const KTVPlugInPtr plugIn = plugInAt(sourceRow);
    if (sourceParent.isValid() || destinationParent.isValid() || count != 1 || to == sourceRow || !plugIn ||
        !plugInAt(to))
        return false;
    move(sourceRow, to);
    emit moved(plugIn, sourceRow, to);
    return true;
}

SourceListModel::Items SourceListModel::items() const
{
    const std::lock_guard lock(m_mutex);
    return m_published;
}

KTVPlugInPtr SourceListModel::plugInAt(int row) const
{
    if (row < 0 || row >= static_cast<int>(m_items.size()))
        return nullptr;
    return m_items[static_cast<std::size_t>(row)]->representedObject();
}

int SourceListModel::rowOf(const KTVPlugIn* plugIn) const
{
    const auto found = std::find_if(m_items.begin(), m_items.end(), [plugIn](const KTVSourceListItemPtr& item) {
        return item->representedObject().get() == plugIn;
    });
    return found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
}

KTVSourceListItemPtr SourceListModel::itemFor(const KTVPlugIn* plugIn) const
{
    const int row = rowOf(plugIn);
    return row < 0 ? nullptr : m_items[static_cast<std::size_t>(row)];
}

int SourceListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

QVariant SourceListModel::data(const QModelIndex& index, int role) const
{
    const KTVPlugInPtr plugIn = plugInAt(index.row());
    if (!plugIn)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return titleOf(*plugIn);
    case Qt::ToolTipRole: return plainToolTip(titleOf(*plugIn));
    case Qt::DecorationRole: return plugIn->icon();
    case Qt::AccessibleTextRole: return tr("Trend %1").arg(titleOf(*plugIn));
    default: return {};
    }
}

bool SourceListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const KTVPlugInPtr plugIn = plugInAt(index.row());
    const QString title = value.toString().trimmed();
    if (!plugIn || role != Qt::EditRole || title.isEmpty() || !plugIn->isRenamable())
        return false;
    const QString before = titleOf(*plugIn);
    if (title == before)
        return true;
    plugIn->setTitle(title);
    emit renamed(plugIn, before, title);
    return true;
}

Qt::ItemFlags SourceListModel::flags(const QModelIndex& index) const
{
    const KTVPlugInPtr plugIn = plugInAt(index.row());
    if (!plugIn)
        return Qt::ItemIsDropEnabled;  // between the rows, never onto one
    const Qt::ItemFlags flags =
        Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
    return plugIn->isRenamable() ? flags | Qt::ItemIsEditable : flags;
}

void SourceListModel::titleDidChange(const KTVPlugIn* plugIn)
{
    const int row = rowOf(plugIn);
    if (row < 0)
        return;
    const KTVPlugInPtr shared = plugInAt(row);
    m_items[static_cast<std::size_t>(row)] = std::make_shared<SourceListItem>(shared, titleOf(*shared));
    publish(m_items);
    emit dataChanged(index(row), index(row));
}

void SourceListModel::publish(Items items)
{
    const std::lock_guard lock(m_mutex);
    m_published.swap(items);
}

}  // namespace plotix
