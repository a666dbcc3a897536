#pragma once

#include "hostapp/document/SiteDocument.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QTimeZone>

/// The notes of a site as a table, one a row; follows the document, which it *shares*. Main thread only.
namespace plotix {

class NotesModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Time, End, Text, Properties, Author, Modified, ColumnCount };
    static constexpr int kSortRole = Qt::UserRole;

    explicit NotesModel(std::shared_ptr<SiteDocument> document, QObject* parent = nullptr);

    /// Times are by the clocks of `zone`, which the titles then name; an invalid one is the user's.
    void sayBy(const QTimeZone& zone);
    const SiteNote& noteAt(int row) const { return m_notes[static_cast<std::size_t>(row)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void take();
    QString momentText(double seconds) const;
    QString propertiesText(const SiteNote& note) const;

    std::shared_ptr<SiteDocument> m_document;
    std::vector<SiteNote> m_notes;
    QTimeZone m_zone;
};

}  // namespace plotix
