#pragma once

#include "base/ReportableError.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <vector>

/// Rows as the server reads and writes them: numbers little-endian, one behind the other, texts and lists with their
/// length in front of them, seven bits a byte. One thread.
namespace plotix::rowbinary {

static_assert(std::endian::native == std::endian::little, "numbers are copied as they are");

class Writer {
public:
    template <class T>
    requires std::is_arithmetic_v<T> Writer& add(T value)
    {
        const auto* bytes = reinterpret_cast<const std::byte*>(&value);
        m_bytes.insert(m_bytes.end(), bytes, bytes + sizeof value);
        return *this;
    }
    Writer& addLength(std::uint64_t length)
    {
        for (; length >= 128; length >>= 7)
            m_bytes.push_back(static_cast<std::byte>(length | 128));
        m_bytes.push_back(static_cast<std::byte>(length));
        return *this;
    }
    Writer& addBytes(std::span<const std::byte> bytes)
    {
        addLength(bytes.size());
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
        return *this;
    }
    template <class T>
    Writer& addList(std::span<const T> values)
    {
        addLength(values.size());
        const auto bytes = std::as_bytes(values);
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
        return *this;
    }

    std::span<const std::byte> bytes() const { return m_bytes; }
    bool isEmpty() const { return m_bytes.empty(); }
    std::size_t size() const { return m_bytes.size(); }
    void clear() { m_bytes.clear(); }

private:
    std::vector<std::byte> m_bytes;
};

/// Fewer bytes than a row has.
struct TooShort : ReportableError {
    TooShort()
        : ReportableError(QStringLiteral("The server answers something else than it was asked: a row ends early."))
    {
    }
};

/// Throws TooShort. Borrows the bytes, and so do the bytes and lists it hands out.
class Reader {
public:
    explicit Reader(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    bool isAtEnd() const { return m_at == m_bytes.size(); }
    std::size_t at() const { return m_at; }

    template <class T>
    T number()
    {
        T value;
        std::memcpy(&value, take(sizeof value).data(), sizeof value);
        return value;
    }
    std::size_t length()
    {
        std::uint64_t length = 0;
        for (unsigned shift = 0;; shift += 7) {
            const auto byte = std::to_integer<std::uint64_t>(take(1)[0]);
            if (shift > 56)
                throw TooShort();
            length |= (byte & 127) << shift;
            if (byte < 128)
                return static_cast<std::size_t>(length);
        }
    }
    std::span<const std::byte> bytes() { return take(length()); }
    std::span<const std::byte> raw(std::size_t count) { return take(count); }
    std::string_view text()
    {
        const auto found = bytes();
        return {reinterpret_cast<const char*>(found.data()), found.size()};
    }
    template <class T>
    std::vector<T> list()
    {
        const std::size_t count = length();
        if (count > m_bytes.size() / sizeof(T))
            throw TooShort();
        std::vector<T> values(count);
        const auto found = take(count * sizeof(T));
        if (count > 0)
            std::memcpy(values.data(), found.data(), found.size());
        return values;
    }

private:
    std::span<const std::byte> take(std::size_t count)
    {
        if (count > m_bytes.size() - m_at)
            throw TooShort();
        const auto found = m_bytes.subspan(m_at, count);
        m_at += count;
        return found;
    }

    std::span<const std::byte> m_bytes;
    std::size_t m_at = 0;
};

}  // namespace plotix::rowbinary
