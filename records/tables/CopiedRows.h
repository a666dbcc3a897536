#pragma once

#include "base/ReportableError.h"
#include "records/tables/TableDatabase.h"

#include <bit>
#include <cstring>
#include <limits>
#include <string_view>
#include <vector>

namespace plotix {

/// Rows of doubles in the binary form of COPY, as they come, handed out in columns. Borrows whoever takes them; one
/// thread. Throws ReportableError for what is no such row.
class CopiedRows {
public:
    static constexpr std::size_t kRowsAtOnce = 65536;

    CopiedRows(std::size_t columns, const TableDatabase::Take& take) : m_take(take), m_columns(columns)
    {
        for (std::vector<double>& column : m_columns)
            column.reserve(kRowsAtOnce);
    }

    /// What came at once: the first time a header, then a row, or the mark of the end. False: enough.
    bool add(std::span<const char> bytes)
    {
        if (!std::exchange(m_hasHeader, true)) {
            constexpr std::size_t kFixed = 19;  // a signature, flags, the length of what follows
            if (bytes.size() < kFixed || std::memcmp(bytes.data(), "PGCOPY\n\377\r\n", 11) != 0)
                fail();
            const std::size_t more = number<std::uint32_t>(bytes.subspan(15));
            if (more > bytes.size() - kFixed)
                fail();
            bytes = bytes.subspan(kFixed + more);
        }
        if (bytes.size() < 2)
            return bytes.empty() || (fail(), false);
        const auto fields = number<std::uint16_t>(bytes);
        if (fields == 0xffff)
            return true;
        if (fields != m_columns.size())
            fail();
        bytes = bytes.subspan(2);
        for (std::vector<double>& column : m_columns) {
            if (bytes.size() < 4)
                fail();
            const auto length = number<std::uint32_t>(bytes);
            bytes = bytes.subspan(4);
            if (length == 0xffffffff) {
                column.push_back(std::numeric_limits<double>::quiet_NaN());
                continue;
            }
            if (length != 8 || bytes.size() < 8)
                fail();
            column.push_back(std::bit_cast<double>(number<std::uint64_t>(bytes)));
            bytes = bytes.subspan(8);
        }
        return m_columns.front().size() < kRowsAtOnce || flush();
    }
    bool flush()
    {
        if (m_columns.front().empty())
            return true;
        const bool goesOn = m_take(m_columns);
        for (std::vector<double>& column : m_columns)
            column.clear();
        return goesOn;
    }

private:
    template <class T>
    static T number(std::span<const char> bytes)
    {
        T value;
        std::memcpy(&value, bytes.data(), sizeof value);
        if constexpr (sizeof value == 8)
            return __builtin_bswap64(value);
        else if constexpr (sizeof value == 4)
            return __builtin_bswap32(value);
        else
            return __builtin_bswap16(value);
    }
    [[noreturn]] static void fail()
    {
        throw ReportableError(QStringLiteral("The server answers something else than the columns it was asked for."));
    }

    static_assert(std::endian::native == std::endian::little, "the network's order is turned round");
    const TableDatabase::Take& m_take;
    std::vector<std::vector<double>> m_columns;
    bool m_hasHeader = false;
};

}  // namespace plotix
