#include "records/clickhouse/YoungInsert.h"

#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerStamps.h"
#include "records/columns/ValidityBits.h"

namespace plotix {

void YoungInsert::store(RowId agent, std::span<const RecordsView> blocks, std::uint64_t batch)
{
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
    if (!rows.isEmpty())
        m_server.insert("INSERT INTO " + m_tables.young() +
                            " (agent, time, writer, number, place, version, batch, day, properties, values, valid) "
                            "FORMAT RowBinary",
                        rows.bytes());
}

}  // namespace plotix
