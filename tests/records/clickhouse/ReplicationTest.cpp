#include "records/clickhouse/Replication.h"
#include "base/ReportableError.h"
#include "records/clickhouse/ClickHouseServer.h"
#include "records/clickhouse/RowBinary.h"

#include <gtest/gtest.h>

namespace plotix {

namespace {

using Numbers = std::vector<std::uint64_t>;

/// A server that has so many tables, so many of them replicated, and knows so many replicas.
class ReplicationTest : public testing::Test {
protected:
    static std::vector<std::byte> row(const Numbers& numbers)
    {
        rowbinary::Writer written;
        for (const std::uint64_t number : numbers)
            written.add(number);
        return {written.bytes().begin(), written.bytes().end()};
    }
    static Replication::Found found(const Numbers& tables, const Numbers& replicas = {}, std::uint64_t setting = 0)
    {
        return Replication::foundOn(ServerAddress::parsed("clickhouse://db/works/line"), [&](const std::string& asked) {
            const auto isAbout = [&](const char* what) { return asked.find(what) != std::string::npos; };
            return row(isAbout("system.replicas") ? replicas : isAbout("system.settings") ? Numbers{setting} : tables);
        });
    }
    static std::string settings(std::uint64_t replicas, std::size_t hosts = 1, std::uint64_t setting = 0)
    {
        return Replication::among(found({1, 1}, {replicas}, setting), hosts).settings;
    }
};

TEST_F(ReplicationTest, TablesAreToldApart)
{
    using Tables = Replication::Tables;
    EXPECT_EQ(found({0, 0}).tables, Tables::None);
    EXPECT_EQ(found({1, 0}).tables, Tables::Single);
    EXPECT_EQ(found({1, 1}, {3}).tables, Tables::Known);
    EXPECT_EQ(found({1, 1}, {0}).tables, Tables::Unknown);
}

TEST_F(ReplicationTest, AMajorityOfTheReplicasHasWhatCounts)
{
    EXPECT_NE(settings(3).find("insert_quorum=2&"), std::string::npos);
    EXPECT_NE(settings(4).find("insert_quorum=3&"), std::string::npos);
    EXPECT_NE(settings(5).find("insert_quorum=3&"), std::string::npos);
}

TEST_F(ReplicationTest, ReplicasThatAreAboutToBeMadeCountAsWell)
{
    EXPECT_NE(settings(1, 3).find("insert_quorum=2&"), std::string::npos);
}

TEST_F(ReplicationTest, WhatIsReadHasEverythingThatCounts)
{
    EXPECT_NE(settings(3).find("select_sequential_consistency=1"), std::string::npos);
}

TEST_F(ReplicationTest, NewerServersAreToldToTakeOneInsertAfterTheOther)
{
    EXPECT_EQ(settings(3, 3, 0).find("insert_quorum_parallel"), std::string::npos);
    EXPECT_NE(settings(3, 3, 1).find("insert_quorum_parallel=0"), std::string::npos);
}

TEST_F(ReplicationTest, AnAnswerThatIsNoneIsAnErrorForPeople)
{
    const auto address = ServerAddress::parsed("clickhouse://web/works/line");
    const auto page = [](const std::string&) { return std::vector<std::byte>(5); };
    EXPECT_THROW(Replication::foundOn(address, page), ReportableError);
}

TEST_F(ReplicationTest, WhatPassesIsToldFromWhatStays)
{
    EXPECT_EQ(errorCodeOf("Code: 286, e.displayText() = DB::Exception: Quorum for previous write"), 286);
    EXPECT_EQ(errorCodeOf("Code: 62. DB::Exception: Syntax error"), 62);
    EXPECT_EQ(errorCodeOf("no code"), 0);
    EXPECT_TRUE(passes(286));
    EXPECT_FALSE(passes(62));
    EXPECT_FALSE(passes(0));
}

TEST_F(ReplicationTest, WhereOneHasNoRoomOthersMayHave)
{
    EXPECT_TRUE(passes(75));
    EXPECT_TRUE(passes(243));
}

TEST_F(ReplicationTest, EachHostIsAReplicaOfItsOwnName)
{
    const ClickHouseServer server(ServerAddress::parsed("clickhouse://one,two:9000/works/line"), {});
    const std::vector<StoreServer::Statements> all = server.creation();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[1].host, "two:9000");
    EXPECT_NE(all[1].statements[1].find("ReplicatedMergeTree('/plotix/works/line/about', 'two:9000')"),
              std::string::npos)
        << all[1].statements[1];
}

TEST_F(ReplicationTest, ASingleHostHasTablesOfItsOwn)
{
    const ClickHouseServer server(ServerAddress::parsed("clickhouse://one/works/line"), {});
    EXPECT_EQ(server.creation()[0].statements[1].find("Replicated"), std::string::npos);
}

}  // namespace

}  // namespace plotix
