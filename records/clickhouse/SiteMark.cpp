#include "records/clickhouse/SiteMark.h"

#include "records/clickhouse/RowBinary.h"

namespace plotix {

SiteMark SiteMark::askedOf(ServerConnection& server, const SiteTables& tables)
{
    enum Figure : std::uint8_t { Batches, Parts, Rows };
    const auto selected = [](Figure figure, const std::string& what) {
        std::string row = "SELECT toUInt8(";
        row += std::to_string(figure);
        return row + "), " + what;
    };
    std::string statement = selected(Batches, "uniqExact(batch) FROM " + tables.batches());
    // Parts are never changed, and their names never given twice; sizes tell a table that was made anew.
    statement += " UNION ALL " + selected(Parts, "sum(cityHash64(table, name, rows, bytes_on_disk, "
                                                 "toUInt64(modification_time))) FROM system.parts WHERE active AND " +
                                                     tables.among("table", "batch|chunk|young|amendment"));
    // A replica may have a part that does not count yet, since too few others do: its rows are not shown.
    if (server.isReplicated())
        for (const std::string& table : {tables.chunks(), tables.young(), tables.amendments()})
            statement += " UNION ALL " + selected(Rows, "count() FROM " + table);
    const std::vector<std::byte> answer = server.ask(statement + " FORMAT RowBinary");
    SiteMark mark;
    for (rowbinary::Reader row(answer); !row.isAtEnd();) {
        const auto figure = row.number<std::uint8_t>();
        const auto value = row.number<std::uint64_t>();
        (figure == Batches ? mark.batches : figure == Parts ? mark.parts : mark.rows) += value;
    }
    return mark;
}

}  // namespace plotix
