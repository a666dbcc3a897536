#pragma once

#include <string_view>

/// Reads numbers as text files have them. Pure; any thread.
namespace plotix {

/// A file has one decimal mark, unknown until the first number with one.
enum class DecimalMark { Unknown, Point, Comma };

enum class FieldKind { Number, Missing, Text };

/// Whether a field stands for "no value": nothing, or NA, N/A, NaN, null or - in any case.
bool isMissing(std::string_view field);

/// Reads a number exactly: the double nearest to the digits, infinities and -0 included. `value` is set for Number
/// only. Learns an unknown `mark`; with a known one, a number with the other mark is Text. Thousands separators, hex
/// numbers and numbers beyond the range of a double are Text too.
FieldKind readNumber(std::string_view field, DecimalMark& mark, double& value);

/// Whether the field consists of digits, at least one.
bool isWholeNumber(std::string_view field);

}  // namespace plotix
