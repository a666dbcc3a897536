#pragma once

#include "records/store/RecordStore.h"

#include <QtCore/QString>

#include <functional>
#include <memory>

/// Which store keeps the records of a site. All code that needs records asks a RecordStore; RecordKeeping.cpp alone
/// decides which one: the site's own file, or the server that a desk's file names.
namespace plotix {

class Database;

struct RecordKeeping {
    /// Opens the records of the site at this path, whose document may be closed or damaged.
    std::function<std::shared_ptr<RecordStore>(const QString& site)> open;
    /// Begins storing records together with agents and properties, in the transaction begun on the site's file.
    std::function<std::unique_ptr<RecordTransaction>(Database& site)> join;
};

/// The one in use. Any thread.
const RecordKeeping& recordKeeping();

/// The records of a site without its document, so that they can be compacted and verified even if it cannot be opened.
std::shared_ptr<RecordStore> recordsOfSite(const QString& path);

}  // namespace plotix
