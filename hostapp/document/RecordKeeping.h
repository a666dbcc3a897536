#pragma once

#include "records/store/RecordStore.h"
#include "records/store/StoreServer.h"
#include "storage/DatabaseSchema.h"

#include <QtCore/QString>

#include <functional>
#include <memory>

/// Which store keeps the records of sites. All code that needs records asks a RecordStore; one line in
/// RecordKeeping.cpp decides which one.
///
/// Another store is a folder beside `records/sqlite/` and another value here.
namespace plotix {

class Database;

struct RecordKeeping {
    /// The store's tables inside the site's own file; none for a store that is elsewhere.
    SchemaPart tables;
    /// Opens the records of the site at this path, whose document may be closed or damaged.
    std::function<std::shared_ptr<RecordStore>(const QString& site)> open;
    /// Begins storing records together with agents and properties, in the transaction begun on the site's file.
    std::function<std::unique_ptr<RecordTransaction>(Database& site)> join;
};

/// The one in use. Any thread.
const RecordKeeping& recordKeeping();

/// The records of a site without its document, so that they can be compacted and verified even if it cannot be opened.
std::shared_ptr<RecordStore> recordsOfSite(const QString& path);

/// The server that an address such as `clickhouse://host/database/site` names. Nobody is asked yet. Throws
/// ReportableError for what is no address.
std::shared_ptr<StoreServer> storeServer(const QString& address);

}  // namespace plotix
