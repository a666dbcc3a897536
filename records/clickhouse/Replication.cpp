#include "records/clickhouse/Replication.h"

#include "records/clickhouse/RowBinary.h"

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

std::optional<Replication> Replication::learnt(const ServerAddress& address, const Ask& ask)
{
    const auto asked = [&](const char* statement) {
        return numbersIn(ask(QString::fromLatin1(statement).arg(address.database, address.site).toStdString()));
    };
    const std::vector<std::uint64_t> found =
        asked("SELECT count(), countIf(engine LIKE 'Replicated%') FROM system.tables "
              "WHERE database = '%1' AND name = '%2_chunk' FORMAT RowBinary");
    if (found.size() != 2 || found[0] == 0)
        return std::nullopt;
    if (found[1] == 0)
        return Replication();
    // How many there are, the server knows from the keeper alone: none where that is away.
    const std::vector<std::uint64_t> replicas =
        asked("SELECT toUInt64(max(total_replicas)), (SELECT count() FROM system.settings WHERE name = "
              "'insert_quorum_parallel') FROM system.replicas "
              "WHERE database = '%1' AND table = '%2_chunk' FORMAT RowBinary");
    if (replicas.size() != 2 || replicas[0] == 0)
        return std::nullopt;
    QString settings = QStringLiteral("&select_sequential_consistency=1");
    if (replicas[0] > 1)
        settings +=
            QStringLiteral("&insert_quorum=%1&insert_quorum_timeout=%2").arg(replicas[0] / 2 + 1).arg(kAgreeingTime);
    // Newer servers take several inserts at once unless they are told not to, and then what is read may lack some.
    if (replicas[1] > 0)
        settings += QStringLiteral("&insert_quorum_parallel=0");
    return Replication{true, settings.toStdString()};
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
