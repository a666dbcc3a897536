#pragma once

#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

/// Puts numbers behind bytes and takes them off again: whole ones of any count of bits, least significant bit first,
/// and values as they are, little endian.
///
/// Values that own or borrow their bytes; one thread.
namespace plotix {

class BytesWriter {
public:
    explicit BytesWriter(std::size_t usual) { bytes.reserve(usual); }

    template <class T>
    void put(const T& value)
    {
        putBytes(std::as_bytes(std::span(&value, 1)));
    }
    void putBytes(std::span<const std::byte> more)
    {
        if (more.empty())
            return;
        const std::size_t size = bytes.size();
        bytes.resize(size + more.size());
        std::memcpy(bytes.data() + size, more.data(), more.size());
    }

    /// Requires: `bits` < 57; the number has no more.
    void putBits(std::uint64_t number, unsigned bits)
    {
        m_waiting |= number << m_count;
        m_count += bits;
        for (; m_count >= 8; m_count -= 8, m_waiting >>= 8)
            bytes.push_back(static_cast<std::byte>(m_waiting));
    }
    /// To the end of the byte.
    void finishBits()
    {
        if (m_count > 0)
            bytes.push_back(static_cast<std::byte>(m_waiting));
        m_waiting = m_count = 0;
    }

    std::vector<std::byte> bytes;

private:
    std::uint64_t m_waiting = 0;
    unsigned m_count = 0;
};

/// Bytes that are missing read as zero, and `isWhole` tells.
class BytesReader {
public:
    explicit BytesReader(std::span<const std::byte> bytes) : m_left(bytes) {}

    template <class T>
    T take()
    {
        T value{};
        const std::span<const std::byte> from = takeBytes(sizeof value);
        if (!from.empty())
            std::memcpy(&value, from.data(), sizeof value);
        return value;
    }
    std::span<const std::byte> takeBytes(std::size_t size)
    {
        if (size > m_left.size()) {
            m_isWhole = false;
            return {};
        }
        const std::span<const std::byte> taken = m_left.first(size);
        m_left = m_left.subspan(size);
        return taken;
    }
    std::uint64_t takeBits(unsigned bits)
    {
        for (; m_count < bits; m_count += 8)
            m_waiting |= std::uint64_t{take<std::uint8_t>()} << m_count;
        const std::uint64_t number = m_waiting & ((std::uint64_t{1} << bits) - 1);
        m_waiting >>= bits;
        m_count -= bits;
        return number;
    }
    void finishBits() { m_waiting = m_count = 0; }

    std::size_t left() const { return m_left.size(); }
    bool isWhole() const { return m_isWhole; }

private:
    std::span<const std::byte> m_left;
    std::uint64_t m_waiting = 0;
    unsigned m_count = 0;
    bool m_isWhole = true;
};

}  // namespace plotix
