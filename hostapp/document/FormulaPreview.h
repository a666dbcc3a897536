#pragma once

#include "hostapp/formulas/FormulaDirectory.h"
#include "records/store/RecordStore.h"

#include <memory>
#include <utility>
#include <vector>

/// What a formula that is being written comes to, before anything is stored. Free function; any thread.
namespace plotix {

struct FormulaPreview {
    QString unit;
    std::vector<std::pair<double, double>> last;  ///< times in seconds since 1970-01-01 UTC, and values; oldest first
    QString failure;                              ///< why there are none; for people
};

/// The last `most` values. `property`: the computed one whose formula it becomes, or 0. Looks back as far as needed, in
/// steps, as long as `progress` says so. Requires: the formula can be worked out.
FormulaPreview previewOf(const std::shared_ptr<RecordStore>& records,
                         const std::shared_ptr<const FormulaDirectory>& directory, RowId agent,
                         const PropertyFormula& formula, RowId property, std::size_t most,
                         const ArchiveProgress& progress = {});

}  // namespace plotix
