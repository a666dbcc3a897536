#pragma once

#include "hostapp/exchange/ImportPreview.h"

#include <QtCore/QAbstractTableModel>

/// The first rows of a file as the import understands them: local times with their zone, numbers in the user's locale,
/// a dash for a gap, and those marked as bad struck out. A column for the time and for each column that is taken.
///
/// The import dialog *owns* it. Main thread only.
namespace plotix {

class FirstRows : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    void setPreview(const ImportPreview& preview);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ImportPreview::Row> m_rows;
    QStringList m_titles;     ///< of the columns that are taken
    QStringList m_qualities;  ///< by the same: the headers of the columns that judge them
    bool m_hasFractions = false;
};

}  // namespace plotix
