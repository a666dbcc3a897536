#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/formulas/FormulaProblem.h"

#include <QtCore/QAbstractItemModel>

#include <optional>
#include <set>

/// The agents of a site and, under each, the properties it offers: tick box, colour, name; unit in the second column.
///
/// Dragging properties writes their keys, per agent under the agent's unique identifier. *Shares* the document. Main
/// thread only.
namespace plotix {

class PropertyListModel : public QAbstractItemModel {
    Q_OBJECT
public:
    enum Column { NameColumn, UnitColumn, ColumnCount };

    explicit PropertyListModel(std::shared_ptr<SiteDocument> document, QObject* parent = nullptr);

    /// Null for an agent's row, or no row.
    std::shared_ptr<SiteProperty> propertyAt(const QModelIndex& index) const;
    std::shared_ptr<SiteAgent> agentAt(const QModelIndex& index) const;  ///< of an agent's or a property's row

    std::shared_ptr<SiteAgent> agentOf(const SiteProperty& property) const;  ///< null when it is not listed
    std::vector<std::shared_ptr<SiteAgent>> agents() const;

    /// What is ticked, per agent with at least one tick, in the document's order.
    struct Ticked {
        std::shared_ptr<SiteAgent> agent;
        KTVPropertyList properties;
    };
    std::vector<Ticked> ticked() const;
    void untickAll();

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

signals:
    void tickedChanged();

private:
    struct Group {
        std::shared_ptr<SiteAgent> agent;
        std::vector<std::shared_ptr<SiteProperty>> properties;  // those offered
    };
    void rebuild();
    void fillGroups();
    void propertyDidChange(const SiteProperty& property);
    std::optional<FormulaProblem> problemOf(const SiteProperty& property) const;  // of a computed one
    QString computedToolTip(const SiteProperty& property) const;
    QVariant propertyData(const SiteProperty& property, int column, int role) const;

    std::shared_ptr<SiteDocument> m_document;
    std::vector<Group> m_groups;
    std::set<std::shared_ptr<SiteProperty>> m_ticked;
};

}  // namespace plotix
