#pragma once

#include "records/store/RecordBlock.h"

#include <QtCore/QByteArray>

#include <vector>

/// Records as bytes, as the document keeps them to undo what changed them. `docs/formats.md` has the grammar.
///
/// Free functions; any thread.
namespace plotix {

/// In pieces of at most 16,384 records, in order. Requires: times strictly ascending.
std::vector<QByteArray> keptBytes(const RecordBlock& block);

/// A piece; columns without any element are not there. Throws ReportableError for bytes that are damaged.
RecordBlock keptRecords(const QByteArray& bytes);

}  // namespace plotix
