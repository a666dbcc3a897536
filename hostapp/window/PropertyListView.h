#pragma once

#include "hostapp/core/SiteProperty.h"

#include <QtWidgets/QTreeView>

class QMenu;

/// The list of properties: ticks, drags, and where a property's unit and colour are changed. Main thread only.
namespace plotix {

class PropertyListModel;
class SiteAgent;

class PropertyListView : public QTreeView {
    Q_OBJECT
public:
    explicit PropertyListView(QWidget* parent = nullptr);

    /// *Borrows* the model.
    void setPropertyListModel(PropertyListModel* model);

    /// The property's unit menu and its colour; units it can be shown in are checkable, the current one checked.
    /// The caller owns the menu.
    QMenu* makeMenuFor(const std::shared_ptr<SiteProperty>& property);

    /// The agent of the current row; else the first one. Null when there is none.
    std::shared_ptr<SiteAgent> currentAgent() const;

    /// What can be done with an agent's properties as a whole. The caller owns the menu.
    QMenu* makeMenuForAgent(const QModelIndex& agent);

    /// Whether the menus offer what changes the site's agents and properties; not at first.
    void setEditable(bool isEditable) { m_isEditable = isEditable; }

signals:
    // Of a property, or, with a null one, of its agent; `into`: the number of the other one.
    void renameWanted(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property);
    void mergeWanted(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property,
                     qint64 into);
    /// A null property: a new computed one of the agent.
    void computeWanted(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property);
    void limitsWanted(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property);
    void deleteWanted(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property);
    void removeShownWanted(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property);
    /// To be shown in the trend in front, whosever trend it is.
    void addToTrendWanted(const std::shared_ptr<SiteProperty>& property);
    void trendWanted();  ///< of the properties ticked now

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    QPixmap dragPicture(const QModelIndexList& rows) const;  ///< their swatches and names, a line each
    bool isOnTickBox(const QPoint& position) const;
    void layOut();
    void addEditing(QMenu* menu, const std::shared_ptr<SiteAgent>& agent,
                    const std::shared_ptr<SiteProperty>& property);
    void addUnits(QMenu* menu, const std::shared_ptr<SiteProperty>& property);
    void pickColour(const std::shared_ptr<SiteProperty>& property);
    void itemDoubleClicked(const QModelIndex& index);

    PropertyListModel* m_model = nullptr;
    bool m_isEditable = false;
    bool m_tickingFast = false;  ///< a double click on a tick box is two ticks, nothing else
};

}  // namespace plotix
