#pragma once

#include "records/sqlite/Chunk.h"
#include "records/store/RecordBlock.h"
#include "storage/Database.h"

/// What is said of a column whose checksum is another one than when it was stored: whose values of which time they are,
/// so that whoever reads can leave them out.
///
/// Free functions; borrow the connection on its own thread.
namespace plotix {

/// "the values of “air” from … to … UTC have changed since they were stored".
QString changedColumn(const Database& database, RowId property, const Chunk& chunk);

/// Throws ReportableError: restore it from a copy; everything else can still be read.
[[noreturn]] void failAsChanged(const Database& database, RowId property, const Chunk& chunk);

}  // namespace plotix
