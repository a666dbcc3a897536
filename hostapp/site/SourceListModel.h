#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"
#include "plugins/PlotixPlugIn/host/KTVSourceListItem.h"

#include <QtCore/QAbstractListModel>

#include <memory>
#include <mutex>
#include <vector>

/// The trend views of one site, in order, as a list with icons and titles.
namespace plotix {

/// One line of the list. Immutable: a renamed plug-in gets a new item. *Shares* the plug-in; any thread may read.
class SourceListItem : public KTVSourceListItem {
public:
    SourceListItem(KTVPlugInPtr plugIn, QString title) : m_plugIn(std::move(plugIn)), m_title(std::move(title)) {}
    /// On another thread the plug-in is released through the main queue: destroying it may destroy widgets.
    ~SourceListItem() override;

    KTVPlugInPtr representedObject() const override { return m_plugIn; }
    QString title() const override { return m_title; }

private:
    KTVPlugInPtr m_plugIn;
    QString m_title;
};

/// *Shares* its plug-ins. Main thread only, except `items`, which answers a published copy on any thread.
class SourceListModel : public QAbstractListModel {
    Q_OBJECT
public:
    using Items = std::vector<KTVSourceListItemPtr>;

    explicit SourceListModel(QObject* parent = nullptr);
    ~SourceListModel() override;

    void append(const KTVPlugInPtr& plugIn);
    void insert(int row, const KTVPlugInPtr& plugIn);  ///< a row outside the list becomes the nearest one
    void remove(const KTVPlugIn* plugIn);              ///< one that is not listed: nothing happens
    void removeAll();
    void move(int from, int to);  ///< the row is then at `to`; rows outside the list: nothing happens

    Items items() const;
    KTVPlugInPtr plugInAt(int row) const;                         ///< null outside the list
    int rowOf(const KTVPlugIn* plugIn) const;                     ///< -1 when it is not listed
    KTVSourceListItemPtr itemFor(const KTVPlugIn* plugIn) const;  ///< null when it is not listed

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Renames by Qt::EditRole; an empty title, or a plug-in that is not renamable, is refused.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// Called at the end of a drag inside the list. One row at a time; emits `moved`.
    bool moveRows(const QModelIndex& sourceParent, int sourceRow, int count, const QModelIndex& destinationParent,
                  int destinationChild) override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    /// A drop is a move inside the list; drags from other lists are refused.
    bool dropMimeData(const QMimeData*, Qt::DropAction, int, int, const QModelIndex&) override { return false; }

signals:
    // Sent after the user edited the list, so that it can be undone.
    void renamed(const KTVPlugInPtr& plugIn, const QString& before, const QString& after);
    void moved(const KTVPlugInPtr& plugIn, int from, int to);

private:
    void titleDidChange(const KTVPlugIn* plugIn);
    void publish(Items items);

    Items m_items;               // main thread only
    mutable std::mutex m_mutex;  // guards m_published
    Items m_published;           // what other threads see
};

/// The title the list shows: the plug-in's own, or its class's name while it has none.
QString titleOf(const KTVPlugIn& plugIn);

}  // namespace plotix
