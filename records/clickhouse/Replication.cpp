#include "records/clickhouse/Replication.h"

#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/SiteTables.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace plotix {

namespace {

constexpr int kAgreeingTime = 10'000;  // milliseconds that a server waits for the others

std::vector<std::uint64_t> numbersIn(const std::vector<std::byte>& rows)
{
    std::vector<std::uint64_t> numbers;
    for (rowbinary::Reader row(rows); !row.isAtEnd();)
        numbers.push_back(row.number<std::uint64_t>());
    return numbers;
}

}  // namespace

Replication::Found Replication::foundOn(const ServerAddress& address, const Ask& ask)
{
    const QString table = SiteTables(address).bareName("chunk");
    const auto asked = [&](const char* statement) {
        return numbersIn(ask(QString::fromLatin1(statement).arg(address.database, table).toStdString()));
    };
    const std::vector<std::uint64_t> tables =
        asked("SELECT count(), countIf(engine LIKE 'Replicated%') FROM system.tables "
              "WHERE database = '%1' AND name = '%2' FORMAT RowBinary");
    if (tables.size() != 2 || tables[0] == 0)
        return {};
    if (tables[1] == 0)
        return {Tables::Single};
    const std::vector<std::uint64_t> replicas = asked("SELECT toUInt64(max(total_replicas)) FROM system.replicas "
                                                      "WHERE database = '%1' AND table = '%2' FORMAT RowBinary");
    if (replicas.size() != 1 || replicas[0] == 0)
        return {Tables::Unknown};
    const std::vector<std::uint64_t> setting =
        numbersIn(ask("SELECT count() FROM system.settings WHERE name = 'insert_quorum_parallel' FORMAT RowBinary"));
    return {Tables::Known, replicas[0], !setting.empty() && setting[0] > 0};
}

Replication Replication::among(const Found& found, std::size_t hosts)
{
    const std::uint64_t replicas = std::max<std::uint64_t>(found.replicas, hosts);
    QString settings = QStringLiteral("&select_sequential_consistency=1");
    if (replicas > 1)
        settings +=
            QStringLiteral("&insert_quorum=%1&insert_quorum_timeout=%2").arg(replicas / 2 + 1).arg(kAgreeingTime);
    // Several at once, and what is read may lack some.
    if (found.storesSeveralAtOnce)
        settings += QStringLiteral("&insert_quorum_parallel=0");
    return {true, settings.toStdString()};
}

int errorCodeOf(const std::string& message)
{
    constexpr std::string_view kBefore = "Code: ";
    int code = 0;
    if (const std::size_t at = message.find(kBefore); at != std::string::npos)
        std::from_chars(message.data() + at + kBefore.size(), message.data() + message.size(), code);
    return code;
}

bool passes(int errorCode)
{
    constexpr std::array kCodes = {
        60,   // this host has no such table, as one that was set up anew
        81,   // nor the database
        75,   // its disk is full: others may have room
        243,  // as before, noticed earlier
        225,  // no keeper
        242,  // the table cannot be written: its replica has lost the keeper
        254,  // no replica that has the part lives
        285,  // too few replicas live
        286,  // the insert before is not on enough of them yet
        289,  // this replica lacks what counts
        319,  // whether the insert is on enough of them is not known
        999,  // what the keeper answers
    };
    return std::find(kCodes.begin(), kCodes.end(), errorCode) != kCodes.end();
}

}  // namespace plotix
