#pragma once

#include "hostapp/exchange/CellWords.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Reads numbers as text files have them. Pure; any thread.
namespace plotix {

/// A column has one decimal mark, unknown until the first number with one.
enum class DecimalMark { Unknown, Point, Comma };

enum class FieldKind { Number, Missing, Text };

/// Reads a number exactly: the double nearest to the digits, infinities and -0 included. `value` is set for Number
/// only. Learns an unknown `mark`; with a known one, a number that does not go with it is Text.
///
/// Digits may stand in groups of three, apart by the other mark, blanks (also narrow and no-break ones) or apostrophes:
/// 1.234.577,5 and 1 234,5 and 1'234.5. A single mark before three digits may be either (see `markIn`): it is taken as
/// the decimal mark unless `mark` says that it is the other. The sign may be a true minus, stand behind the digits, or
/// be a pair of parentheses. ="12.5", as spreadsheets are made to keep texts, is 12.5. Hex numbers and numbers beyond
/// the range of a double are Text.
FieldKind readNumber(std::string_view field, DecimalMark& mark, double& value);

/// What one field says about the decimal mark.
enum class MarkIn {
    Nothing,      ///< no number, or one without a mark
    Point,        ///< 1.5 and 1,234.5 and 1,234,567
    Comma,        ///< 1,5 and 1.234,5 and 1.234.567
    EitherPoint,  ///< 1.234
    EitherComma,  ///< 1,234
};
MarkIn markIn(std::string_view field);

/// What the fields of a column, or of a file, say about the decimal mark together.
struct DecimalEvidence {
    std::size_t points = 0, commas = 0, eitherPoints = 0, eitherCommas = 0;

    void add(std::string_view field);
    void add(const DecimalEvidence& other);
    /// The mark that more fields prove; Unknown where none does.
    DecimalMark proven() const;
    bool isOpen() const { return points + commas == 0 && eitherPoints + eitherCommas > 0; }
};

/// "21,5 °C" → "21,5" and "°C"; an empty unit where the field is not a number and then letters or signs.
struct NumberWithUnit {
    std::string_view number, unit;
};
NumberWithUnit splitUnitOff(std::string_view field);

/// Whether the field consists of digits, at least one.
bool isWholeNumber(std::string_view field);

}  // namespace plotix
