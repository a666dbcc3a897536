#pragma once

#include "hostapp/exchange/ImportPreview.h"

#include <QtCore/QAbstractTableModel>

#include <map>
#include <optional>
#include <vector>

/// The columns of a file as a table to choose from: whether each is taken, its name and unit, and what it is or why it
/// is left out. A row for each column of the file.
///
/// What the user changed stays with the column's header when the file is read anew, and comes back when a column of
/// that header does. The import dialog *owns* it. Main thread only.
namespace plotix {

class ColumnChoices : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Part { Header, Name, Unit, Meaning, kParts };

    using QAbstractTableModel::QAbstractTableModel;

    void setPreview(const ImportPreview& preview);
    void setOptions(const ImportOptions& options);

    /// Adds what the user chose for the columns that are there; as long as none is known, for all.
    void addTo(ImportOptions& options) const;

    /// The column that options call so; -1 for none.
    int rowOf(const QString& column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void changed();  ///< by the user

private:
    struct Choice {
        std::optional<bool> isTaken{};
        std::optional<QString> name{}, unit{};
    };

    bool isTaken(std::size_t row) const;
    QString text(std::size_t row, int part) const;
    QString meaningOf(const ImportPreview::Column& column) const;
    const Choice* choiceOf(std::size_t row) const;
    void choose(const QModelIndex& index, const QVariant& value);

    std::vector<ImportPreview::Column> m_columns;
    std::vector<QString> m_keys;  ///< what options call them: headers, or places where two have the same
    bool m_isJudged = false;      ///< rows were read, so that it is known which hold numbers
    bool m_areNamed = false;      ///< each row names its quantity; these are behind the file's own columns
    std::map<QString, Choice> m_choices;
};

}  // namespace plotix
