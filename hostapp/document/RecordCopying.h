#pragma once

#include "records/store/RecordStore.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

/// Records of one agent copied from one store into another, with their neighbours. A free function; any thread.
namespace plotix {

/// First and last time, seconds since 1970-01-01 UTC; infinite where it is open.
using CopiedSpan = std::pair<double, double>;

struct RecordCopy {
    RowId agent = 0, toAgent = 0;
    std::map<RowId, RowId> properties;  ///< recorded ones, and what they are in the other store
    std::vector<CopiedSpan> spans;      ///< in any order; they may overlap
    std::optional<double> from = {};    ///< records before this time are there already
};

/// Copies what lies in the spans, bounds included, and of each property the last value before and the first one after
/// each span, so that its line enters and leaves as it did. Elements come over bit for bit, invalid ones as such, and
/// what came late or was corrected is noted there too. A few million values are in memory at a time; each such part is
/// a transaction of its own. Answers how many records there are; nothing when `progress` stopped it. Throws
/// ReportableError.
std::optional<std::size_t> copyRecords(RecordStore& from, RecordStore& to, const RecordCopy& what,
                                       const ArchiveProgress& progress = {});

}  // namespace plotix
