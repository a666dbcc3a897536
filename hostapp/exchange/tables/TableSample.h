#pragma once

#include "hostapp/exchange/ImportFinding.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Tables of texts, whatever the format they come from: their rows, and the first ones of them, from which the rest is
/// understood. Values; any thread.
namespace plotix {

/// One row as its format gives it.
struct TextRecord {
    qint64 line = 0;                       ///< number of the line the record begins on, from 1
    std::vector<std::string_view> fields;  ///< valid until the next row is asked for
};

/// The first rows of a file, kept whole.
struct TableSample {
    struct Row {
        qint64 line = 0;
        std::vector<std::string> fields;
    };
    std::vector<Row> rows;
    char delimiter = ',';  ///< of text; other formats: 0
};

inline constexpr std::size_t kSampleRows = 400;

/// What a cell looks like by itself.
enum class CellKind { Gap, Number, Date, Clock, State, Text };
CellKind kindOf(std::string_view field);

/// Whether a header has one of the words, which are a regular expression; any case. Each expression is made once.
bool hasWord(const QString& header, const char* words);

/// Whether a field reads as a number or a time.
bool readsAsValue(std::string_view field);

/// The most frequent number of fields in a row; of equally frequent ones the largest; 0 without rows.
std::size_t usualLength(std::span<const TableSample::Row> rows);

}  // namespace plotix
