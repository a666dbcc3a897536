#pragma once

#include <QtCore/QtGlobal>

#include <bit>
#include <cstddef>

/// How deflate writes the length and the distance of a repeat. RFC 1951, 3.2.5. Pure; any thread.
namespace plotix {

/// A length or distance as deflate writes it: a symbol of its code, and extra bits behind that.
struct DeflateSymbol {
    std::size_t symbol;
    quint32 extra;
    int extraBits;
};

/// A match of 3 to 258 bytes.
inline DeflateSymbol lengthSymbol(std::size_t bytes)
{
    if (bytes == 258)
        return {285, 0, 0};
    const auto value = static_cast<quint32>(bytes - 3);
    if (value < 8)
        return {257 + value, 0, 0};
    const int extraBits = static_cast<int>(std::bit_width(value)) - 3;
    const quint32 group = 4 * static_cast<quint32>(extraBits + 1);
    return {257 + group + (value >> extraBits & 3U), value & ((1U << extraBits) - 1), extraBits};
}

/// A distance of 1 to 32768 bytes.
inline DeflateSymbol distanceSymbol(std::size_t bytes)
{
    const auto value = static_cast<quint32>(bytes - 1);
    if (value < 4)
        return {value, 0, 0};
    const int extraBits = static_cast<int>(std::bit_width(value)) - 2;
    const quint32 group = 2 * static_cast<quint32>(extraBits + 1);
    return {group + (value >> extraBits & 1U), value & ((1U << extraBits) - 1), extraBits};
}

inline int extraBitsOfDistance(std::size_t symbol)
{
    return symbol < 4 ? 0 : static_cast<int>(symbol / 2) - 1;
}

}  // namespace plotix
