#pragma once

#include "hostapp/exchange/formats/delimited/TextReader.h"
#include "hostapp/exchange/tables/TableSample.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

/// What the beginning of a text file says about how its lines are cut into fields.
///
/// Pure: bytes in, decisions out; any thread. Throws ImportFailure for a file that is no text.
namespace plotix {

/// The first records of a text file, kept whole, and how they were cut.
struct TextSample : TableSample {
    TextFormat format;
};

/// What may stand between two fields. Of these, times and numbers may contain the comma.
inline constexpr std::string_view kDelimiters = ",;\t|";

inline constexpr qsizetype kSampleBytes = 1 << 16;
inline constexpr qsizetype kLongestSample = 1
                                            << 24;  // for rows so long that fewer than some hundred bytes show nothing

/// Chooses line break and delimiter: the delimiter under which the most fields read as numbers, times or states in rows
/// of one length. Blanks part fields only where nothing else does; where names have single blanks in them, two and
/// more. A first line `sep=;` says which it is, and so does `said`. `isWhole` says that the bytes are the whole file;
/// otherwise the last record may be cut off and is dropped.
TextSample takeSample(const QByteArray& beginning, bool isWhole, const QString& said = {});

}  // namespace plotix
