#pragma once

#include <QtWidgets/QTableView>

/// The setup sheet's table of properties: Space ticks every selected row, a double click the row under the pointer.
///
/// Tab leaves the table, Return goes on to the window, whose default button takes it. The sheet *owns* it. Main thread
/// only.
class PropertySelectionView : public QTableView {
    Q_OBJECT
public:
    explicit PropertySelectionView(QWidget* parent = nullptr);

    void setModel(QAbstractItemModel* model) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    bool isOnTickBox(const QModelIndex& index, const QPoint& position) const;
    void tickSelectedRows();
};
