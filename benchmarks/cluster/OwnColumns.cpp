#include "benchmarks/cluster/OwnColumns.h"

#include "records/clickhouse/RowBinary.h"

#include <cstring>
#include <stdexcept>

namespace plotix_bench {

namespace {

constexpr std::size_t kRowsAnInsert = 1'000'000;
constexpr const char* kType = "Float64";

void addLength(std::string& bytes, std::uint64_t length)
{
    for (; length >= 128; length >>= 7)
        bytes += static_cast<char>(length | 128);
    bytes += static_cast<char>(length);
}

void addText(std::string& bytes, const std::string& text)
{
    addLength(bytes, text.size());
    bytes += text;
}

constexpr const char* kNames[kStationProperties + 1] = {"t", "v1", "v2", "v3", "v4", "v5"};

/// Takes blocks of the Native format apart as they come: values go into their columns, and are copied once.
class NativeBlocks {
public:
    explicit NativeBlocks(std::size_t columns) : m_columns(columns)
    {
        for (std::vector<double>& each : m_columns)
            each.reserve(kStationRecords);
    }
    void take(std::span<const std::byte> bytes)
    {
        while (!bytes.empty())
            if (m_left > 0) {
                const std::size_t size = std::min(m_left, bytes.size());
                std::vector<double>& into = m_columns[m_column - 1];
                std::memcpy(reinterpret_cast<char*>(into.data() + into.size()) - m_left, bytes.data(), size);
                m_left -= size;
                bytes = bytes.subspan(size);
            } else {
                takeHead(bytes[0]);
                bytes = bytes.subspan(1);
            }
    }
    std::vector<std::vector<double>> columns() { return std::move(m_columns); }

private:
    void takeHead(std::byte byte)
    {
        m_head.push_back(byte);
        std::size_t at = 0;
        if (m_column == 0 || m_column == m_columns.size()) {
            std::uint64_t columns = 0, rows = 0;
            if (!length(at, columns) || !length(at, rows))
                return;
            m_rows = rows;
            m_column = 0;
            if (rows == 0) {
                m_head.clear();
                return;
            }
            if (!name(at) || !name(at))
                return;
        } else if (!name(at) || !name(at)) {
            return;
        }
        std::vector<double>& into = m_columns[m_column++];
        into.resize(into.size() + m_rows);
        m_left = m_rows * sizeof(double);
        m_head.clear();
    }
    bool length(std::size_t& at, std::uint64_t& value) const
    {
        value = 0;
        for (unsigned shift = 0; at < m_head.size(); shift += 7) {
            const auto byte = static_cast<std::uint64_t>(m_head[at++]);
            value |= (byte & 127) << shift;
            if (byte < 128)
                return true;
        }
        return false;
    }
    bool name(std::size_t& at) const
    {
        std::uint64_t size = 0;
        if (!length(at, size) || m_head.size() < at + size)
            return false;
        at += size;
        return true;
    }

    std::vector<std::vector<double>> m_columns;
    std::vector<std::byte> m_head;       // of a block or a column, as far as it has come
    std::size_t m_column = 0;            // columns of the block that were begun
    std::size_t m_rows = 0, m_left = 0;  // bytes of the column
};

}  // namespace

OwnColumns::OwnColumns(const plotix::ServerAddress& address)
    : m_table("plotix." + address.site.toStdString() + "_own"), m_server(address, {})
{
}

void OwnColumns::create()
{
    std::string columns;
    for (std::size_t column = 0; column <= kStationProperties; ++column) {
        columns += column == 0 ? "" : ", ";
        columns += kNames[column];
        columns += " Float64";
    }
    m_server.tell("CREATE DATABASE IF NOT EXISTS plotix");
    m_server.tell("CREATE TABLE " + m_table + " (" + columns + ") ENGINE = MergeTree PARTITION BY tuple() ORDER BY t");
}

void OwnColumns::store(const StationColumns& records)
{
    for (std::size_t first = 0; first < records.times.size(); first += kRowsAnInsert) {
        const std::size_t rows = std::min(kRowsAnInsert, records.times.size() - first);
        std::string block;
        block.reserve((kStationProperties + 1) * rows * sizeof(double) + 200);
        addLength(block, kStationProperties + 1);
        addLength(block, rows);
        for (std::size_t column = 0; column <= kStationProperties; ++column) {
            const std::vector<double>& values = column == 0 ? records.times : records.values[column - 1];
            addText(block, kNames[column]);
            addText(block, kType);
            block.append(reinterpret_cast<const char*>(values.data() + first), rows * sizeof(double));
        }
        m_server.insert("INSERT INTO " + m_table + " FORMAT Native", std::as_bytes(std::span(block)));
    }
}

std::vector<std::vector<double>> OwnColumns::read(std::size_t properties)
{
    std::string columns;
    for (std::size_t column = 0; column <= properties; ++column) {
        columns += column == 0 ? "" : ", ";
        columns += kNames[column];
    }
    NativeBlocks blocks(properties + 1);
    m_server.stream(
        "SELECT " + columns + " FROM " + m_table + " FORMAT Native", [] {},
        [&](std::span<const std::byte> bytes) {
            blocks.take(bytes);
            return true;
        });
    return blocks.columns();
}

double OwnColumns::bytes()
{
    const std::vector<std::byte> answer = m_server.ask(
        "SELECT toFloat64(sum(bytes_on_disk)) FROM system.parts WHERE active AND concat(database, '.', table) = '" +
        m_table + "' FORMAT RowBinary");
    double bytes = 0;
    std::memcpy(&bytes, answer.data(), sizeof bytes);
    return bytes;
}

}  // namespace plotix_bench
