#pragma once

#include "plugins/PlotixPlugIn/InfoTableRow.h"
#include "plugins/PlotixPlugIn/WeakReference.h"

#include <QtCore/QPointer>
#include <QtCore/QVariantMap>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTableView>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

class FrozenNames;
class InfoTableModel;
class QCheckBox;
namespace plotix {
class TableFigures;
struct TableText;
}  // namespace plotix

/// What the details table asks of its delegate. Held *weakly*. Main thread only.
class PropertyDetailsTableViewDelegate : public WeaklyReferenced {
public:
    virtual bool respondsToMarkDeletedRows() const { return true; }
    virtual void markDeletedRows(const std::vector<std::size_t>& indexes) = 0;  ///< displayed positions, ascending
    virtual bool removeDeletedRows() = 0;
};

/// The statistics table: check box, colour, name, unit, minimum, maximum, average and number of points per row.
///
/// Shows the rows of an array controller (*borrowed*; forgotten when it is destroyed) in its arranged order; the
/// selections of both stay the same. A click on a header sorts through the controller. Each check box is a widget of
/// its own, so that Tab reaches it; it writes the row's "show", then `showClicked` is emitted. The table itself takes
/// every key and ignores it, unless it chooses lines. Its parent *owns* it. Main thread only.
class PropertyDetailsTableView : public QTableView {
    Q_OBJECT
public:
    explicit PropertyDetailsTableView(QWidget* parent = nullptr);
    ~PropertyDetailsTableView() override;

    PropertyDetailsTableViewDelegate* tableDelegate() const { return m_delegate.get(); }
    void setTableDelegate(PropertyDetailsTableViewDelegate* delegate) { m_delegate = delegate; }

    /// The rows to show; null shows none.
    void setArrayController(InfoTableArrayController* controller);
    InfoTableModel* infoTableModel() const { return m_model; }

    /// The displayed position of the row that holds `view`; -1 for a view of no row.
    int rowForView(const QWidget* view) const;
    /// The check box of a displayed row. Null when there is no such row.
    QCheckBox* checkBoxForRow(int row) const;
    std::vector<std::size_t> selectedRowIndexes() const;  ///< ascending

    /// Column order, widths, and the sorted column with its direction, as plain data. Widths are those chosen: where
    /// they leave space, the property's column is shown wider, which is not stored.
    QVariantMap dictionaryForAutosavingLayout() const;
    /// Applies such data; empty, unknown or damaged parts leave the layout as it is.
    void adjustLayoutForAutosavedDictionary(const QVariantMap& dictionary);

    /// What is shown beyond the rows; see InfoTableModel::setFigures. A click on a cell of theirs, or Return on the
    /// selected row (with Shift: its minimum), is theirs; the header gets a menu where they offer one.
    void setFigures(plotix::TableFigures* figures);

    /// Removes the selected rows through the delegate.
    void remove();

    /// Off at first. On: the menu can show only the selected rows' lines, or all; arrow keys, Home, End and Ctrl+A
    /// select rows, Space shows and hides their lines, "o" shows only theirs, "a" all, "l" opens what else can be done
    /// with them.
    void setChoosesLines(bool chooses) { m_choosesLines = chooses; }
    bool choosesLines() const { return m_choosesLines; }
    // Rows are displayed positions.
    void showLine(int row, bool shown);
    void showOnlyLine(int row);
    void showOnlySelectedLines();  ///< none selected: nothing happens
    void showAllLines();

    /// Puts the selected rows, or all while none is selected, on the clipboard as they are shown, with the titles of
    /// the columns: as text separated by tabs, and as HTML. Without rows the clipboard stays as it is.
    void copyRows() const;
    /// The lines that what is copied begins with; empty, as at first: none.
    void setCopiedHeading(std::function<QStringList()> heading) { m_copiedHeading = std::move(heading); }

    /// A new menu with the one item "Remove", for any event; the caller owns it. Choosing lines, more. A press of
    /// the right mouse button on a row that is not selected selects exactly that row first; outside every row it leaves
    /// the selection alone.
    std::unique_ptr<QMenu> menuForEvent(const QEvent* event);

signals:
    void showClicked(QWidget* sender);  ///< after the row's "show" was written; the sender is the check box
    /// A menu for these properties is being made: whoever can do something with their lines adds items.
    void lineMenuMade(QMenu& menu, const QStringList& propertyNames);
    /// The same for the menu of the rows themselves.
    void rowMenuMade(QMenu& menu, const QStringList& propertyNames);
    void lineChosen(int row, bool shown);  ///< after the row's "show" was written by a menu or a key of the table

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;  ///< with a line at the edge while it has the focus
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void setUpLook();
    void setUpHeader();
    void fillWidth();
    void columnWasResized(int column, int width);
    void selectRowUnder(const QPoint& position);
    void addLineItems(QMenu& menu);
    QStringList selectedNames() const;
    std::unique_ptr<QMenu> selectedLinesMenu();
    void openLinesMenu();
    plotix::TableText textOfRows(const std::vector<std::size_t>& rows) const;
    bool handleLineKey(QKeyEvent* event);
    void toggleSelectedLines();
    void setUpFigures();
    void showCell(const QString& propertyName, const QString& identifier);
    void placeFigure(int column);
    void fitFigures();
    void addFigureItems(QMenu& menu);
    void popUpHeaderMenu(const QPoint& position);
    void tellSelectedRow();
    void activateRow(const QString& identifier);
    void adjustCheckBoxes();
    void addCheckBox(int row);
    void takeSelectionFromController();
    void giveSelectionToController();

    InfoTableModel* m_model;                        // a child
    std::vector<QPointer<QCheckBox>> m_checkBoxes;  // in index widgets, one per row
    WeakReference<PropertyDetailsTableViewDelegate> m_delegate;
    bool m_synchronising = false;
    bool m_choosesLines = false;
    std::function<QStringList()> m_copiedHeading;
    std::vector<int> m_ownWidths;  // of the columns, points; without what fills the view
    bool m_filling = false;
    QStringList m_sizedByHand;             // identifiers of columns
    FrozenNames* m_frozenNames = nullptr;  // a child
};
