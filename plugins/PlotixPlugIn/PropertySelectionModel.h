#pragma once

#include "plugins/PlotixPlugIn/SelectableProperty.h"

#include <QtCore/QAbstractTableModel>

/// The setup sheet's property list as its table reads it: tick box and name, colour, unit.
///
/// The rows are the arranged objects of the array controller, which it *borrows* and forgets when that is destroyed.
/// Names, units and colours are read anew whenever the table paints. The table view *owns* it. Main thread only.
class PropertySelectionModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Name, Color, Unit, ColumnCount };

    explicit PropertySelectionModel(QObject* parent = nullptr);

    void setArrayController(SelectablePropertiesArrayController* controller);  ///< null: no rows

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /// Ticks by Qt::CheckStateRole, whatever the column.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    SelectablePropertyPtr rowAt(const QModelIndex& index) const;  ///< null outside the rows

    SelectablePropertiesArrayController* m_controller = nullptr;
};
