#include "records/clickhouse/YoungInsert.h"

#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerStamps.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <cmath>

namespace plotix {

void YoungInsert::store(ServerConnection& server, const SiteTables& tables, RowId agent,
                        std::span<const RecordsView> blocks, std::uint64_t batch)
{
    double first = HUGE_VAL, last = -HUGE_VAL;
    for (const RecordsView& block : blocks) {
        if (block.size == 0)
            continue;
        first = std::min(first, block.times[0]);
        last = std::max(last, block.times[block.size - 1]);
    }
    if (!(first <= last))
        return;
    // What is stored later counts, whatever the clocks of others say.
    const std::vector<std::byte> latest =
        server.ask("SELECT max(version) FROM " + tables.young() + " WHERE agent = " + std::to_string(agent) +
                   " AND time >= " + sqlNumber(first) + " AND time <= " + sqlNumber(last) + " FORMAT RowBinary");
    stamps::saw(rowbinary::Reader(latest).number<std::uint64_t>());
    rowbinary::Writer rows;
    const std::uint64_t number = ++m_number, version = stamps::version();
    const std::uint32_t day = stamps::day();
    std::uint32_t place = 0;
    std::vector<RowId> properties;
    std::vector<double> values;
    std::vector<std::uint8_t> valid;
    for (const RecordsView& block : blocks)
        for (std::size_t i = 0; i < block.size; ++i) {
            properties.clear();
            values.clear();
            valid.clear();
            for (const RecordsView::Column& column : block.columns) {
                properties.push_back(column.property);
                values.push_back(column.values[i]);
                valid.push_back(static_cast<std::uint8_t>(bits::get(column.valid, column.firstValid + i, 1)));
            }
            rows.add(agent).add(block.times[i]).add(m_writer).add(number).add(place++).add(version).add(batch).add(day);
            rows.addList(std::span<const RowId>(properties)).addList(std::span<const double>(values));
            rows.addList(std::span<const std::uint8_t>(valid));
        }
    server.insert("INSERT INTO " + tables.young() +
                      " (agent, time, writer, number, place, version, batch, day, properties, values, valid) "
                      "FORMAT RowBinary",
                  rows.bytes());
}

}  // namespace plotix
