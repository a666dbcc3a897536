#pragma once

#include "plugins/PlotixPlugIn/PropertyDetailsTableView.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtWidgets/QMenu>

#include <memory>

/// The menu of a graph: what the host offers for the trend, and which lines are shown.
///
/// The host's items are the actions of the graph's root view. A line is shown and hidden through the statistics table,
/// so that its row says the same. The right button opens the menu, or the menu key while the graph has the focus. It
/// makes no menu where there is nothing to offer. The graph *owns* it; the table is *weak*. Main thread only.
class LineMenu : public QObject {
    Q_OBJECT
public:
    LineMenu(QWidget* graph, QWidget* rootView, PropertyDetailsTableView* table, QList<QAction*> reading);

    /// A new menu; null where there is nothing to offer. The caller owns it.
    std::unique_ptr<QMenu> makeMenu();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addLines(QMenu& menu);

    QPointer<QWidget> m_rootView;
    QPointer<PropertyDetailsTableView> m_table;
    QList<QAction*> m_reading;  // borrowed from the trend, which outlives the graph
};
