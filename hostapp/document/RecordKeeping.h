#pragma once

#include "records/store/RecordStore.h"
#include "storage/DatabaseSchema.h"

#include <QtCore/QString>

#include <functional>
#include <memory>

/// Which store keeps the records of sites. Everything that has to do with records asks a RecordStore; which one that
/// is, is decided in RecordKeeping.cpp, in one line, and nowhere else.
///
/// Another store is a folder beside `records/sqlite/` and another value here.
namespace plotix {

class Database;

struct RecordKeeping {
    /// Tables of the store inside the site's own file; none for a store that is elsewhere.
    SchemaPart tables;
    /// The records of the site at this path, which need not be open as a document, nor sound.
    std::function<std::shared_ptr<RecordStore>(const QString& site)> open;
    /// Records that are stored together with agents and properties, in the transaction begun on the site's file.
    std::function<std::unique_ptr<RecordTransaction>(Database& site)> join;
};

/// The one in use. Any thread.
const RecordKeeping& recordKeeping();

/// The records of a site without its document: to look after them also where the document cannot be opened.
std::shared_ptr<RecordStore> recordsOfSite(const QString& path);

}  // namespace plotix
