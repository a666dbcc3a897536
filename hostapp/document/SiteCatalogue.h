#pragma once

#include "hostapp/core/SiteProperty.h"
#include "hostapp/document/ArchivedPlugIn.h"
#include "hostapp/document/SiteAnnotations.h"
#include "records/store/StoreServer.h"

#include <map>
#include <memory>
#include <vector>

/// Everything that belongs to a site but its records, as it goes from one place to another. Values; any one thread.
namespace plotix {

struct SiteCatalogue {
    struct Agent {
        qint64 id = 0;
        QString identifier, name;
        std::vector<SiteProperty::Description> properties;  ///< in the order they were added; computed ones too
        QByteArray attached{};  ///< the table that has its records, see AttachedTable; empty: they are the site's own
    };
    QString name, location;
    QByteArray zone;            ///< as the site's setting has it; empty: none was chosen
    std::vector<Agent> agents;  ///< in the order they were added
    std::vector<SiteLimit> limits;
    std::vector<SiteNote> notes;
    std::vector<ArchivedPlugIn> plugIns;  ///< in list order

    bool owns(RowId agent, RowId property) const;

    /// Of the file. Throws ReportableError.
    static SiteCatalogue ofFile(const QString& path);
    /// The same, in the caller's transaction.
    static SiteCatalogue of(Database& database);
    /// Makes a file of it, with the same ids. Throws ReportableError; then there is none.
    void makeFile(const QString& path) const;
    /// The same of a file whose making was interrupted.
    void completeFile(const QString& path) const;
    /// Makes the file's agents, properties, limits and notes these, in one transaction. What its user chose of how a
    /// property is shown stays, and so do trends; nothing done before can be undone. Throws ReportableError.
    void updateFile(const QString& path) const;
    /// The same, in the caller's transaction.
    void updateIn(Database& database) const;
    /// Unit, colour and visibility of the properties that the other one has too.
    void takeLooks(const SiteCatalogue& other);

    /// Numbers of agents, properties, limits and notes that were ever given on the server are not given again.
    static void keepNumbers(Database& database, const std::map<std::uint8_t, RowId>& highest);
    /// Whether a row is of a kind that this version knows.
    static bool knows(const StoreServer::Row& row);

    /// Of the rows on a server; what a later version wrote there and nobody knows here is passed over. Throws
    /// ReportableError for rows that cannot be read.
    static SiteCatalogue ofRows(const std::vector<StoreServer::Row>& rows);
    std::vector<StoreServer::Row> rows() const;
    /// The same rows, as they take the place of those before: what a later version wrote into one of these, and nobody
    /// knows here, is in them too.
    std::vector<StoreServer::Row> rowsInsteadOf(const std::vector<StoreServer::Row>& before) const;
};

/// The records on a server of what the catalogue has.
std::shared_ptr<RecordStore> recordsOf(StoreServer& server, const SiteCatalogue& catalogue);

}  // namespace plotix
