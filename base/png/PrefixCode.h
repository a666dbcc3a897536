#pragma once

#include <QtCore/QtGlobal>

#include <span>

/// Prefix codes for deflate: how long each symbol's code is, and its bits. Values in, values out; any thread.
namespace plotix {

/// One symbol's code as it is written: lowest bit first.
struct PrefixBits {
    quint16 bits = 0;
    quint16 length = 0;  ///< 0: the symbol does not occur
};

/// The shortest codes for symbols with these counts, none longer than `longest` bits; longer ones are shortened at the
/// least cost that a single pass finds. Symbols that do not occur get none; a single symbol gets one bit.
///
/// Lengths: Moffat and Katajainen, "In-Place Calculation of Minimum-Redundancy Codes", 1995. Bits: RFC 1951, 3.2.2.
/// Requires: `codes` as long as `counts`, at most 2^longest symbols, longest <= 15, counts that sum to below 2^32.
void makePrefixCode(std::span<const quint32> counts, int longest, std::span<PrefixBits> codes);

}  // namespace plotix
