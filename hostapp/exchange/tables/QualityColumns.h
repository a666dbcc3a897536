#pragma once

#include "hostapp/exchange/QualityWords.h"
#include "hostapp/exchange/tables/TableShape.h"

#include <optional>

/// Columns that say of the values beside them whether they are good. Pure; any thread.
namespace plotix {

struct QualityColumn {
    std::size_t field = 0;
    std::vector<std::size_t> values;  ///< the fields whose values it judges
    bool isOfRow = false;             ///< all that have no column of their own
};

struct QualityColumns {
    std::vector<QualityColumn> columns;
    std::vector<ImportFinding> notes;  ///< those that may be some, and are not taken for it
};

/// The fields that header and texts make columns of quality: a word such as "Status", alone or with a name, above texts
/// of one QualityCode. One that stands empty in the sample is none.
std::vector<std::size_t> qualityFieldsOf(const TableSample& sample, const TableShape& shape);

/// Fields with such a header that stand empty in the sample.
std::vector<std::size_t> emptyQualityFieldsOf(const TableSample& sample, const TableShape& shape);

/// Which of them judges what: the value whose name its header has; the one it stands right behind, when its header has
/// no name; or, when it is the only such one and stands first or last, all values of the row. `values` are the fields
/// of values; where rows name their quantity that is one.
QualityColumns qualityColumnsOf(const TableSample& sample, const TableShape& shape,
                                const std::vector<std::size_t>& values);

/// How a column of quality that the user named is written; nothing where its texts say nothing. One that stands empty
/// in the sample has words.
std::optional<QualityCode> codeOfQuality(const TableSample& sample, const TableShape& shape, std::size_t field);

/// The fields of the sample with numbers, and hardly texts.
std::vector<std::size_t> numberFieldsOf(const TableSample& sample, const TableShape& shape);

/// The texts of a field in the sample, each once, without gaps; nothing where there are too many for words.
std::vector<std::string> textsOf(const TableSample& sample, const TableShape& shape, std::size_t field);

}  // namespace plotix
