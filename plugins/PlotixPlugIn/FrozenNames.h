#pragma once

#include <QtWidgets/QTableView>

/// The names of the statistics table, kept in sight at its left edge while the table is scrolled past them.
///
/// A view of the same rows and the same selection above the table, there only while figures stand beyond the table's
/// own columns. The table *owns* it, has the keys, and shows the menu. Main thread only.
class FrozenNames : public QTableView {
    Q_OBJECT
public:
    explicit FrozenNames(QTableView& table);

    /// To be called when the table has other columns, widths or delegates, or another size.
    void follow();

private:
    void showMenu(const QPoint& position);

    QTableView& m_table;
};
