#include "records/clickhouse/Replication.h"
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
    static std::optional<Replication> learnt(const Numbers& tables, const Numbers& replicas = {})
    {
        return Replication::learnt(ServerAddress::parsed("clickhouse://db/works/line"), [&](const std::string& asked) {
            return row(asked.find("system.replicas") == std::string::npos ? tables : replicas);
        });
    }
};

TEST_F(ReplicationTest, OneServerNeedsNoAgreement)
{
    const std::optional<Replication> one = learnt({1, 0});
    ASSERT_TRUE(one);
    EXPECT_FALSE(one->isThere);
    EXPECT_EQ(one->settings, "");
}

TEST_F(ReplicationTest, AMajorityOfTheReplicasHasWhatCounts)
{
    EXPECT_NE(learnt({1, 1}, {3, 0})->settings.find("insert_quorum=2&"), std::string::npos);
    EXPECT_NE(learnt({1, 1}, {4, 0})->settings.find("insert_quorum=3&"), std::string::npos);
    EXPECT_NE(learnt({1, 1}, {5, 0})->settings.find("insert_quorum=3&"), std::string::npos);
}

TEST_F(ReplicationTest, WhatIsReadHasEverythingThatCounts)
{
    EXPECT_NE(learnt({1, 1}, {3, 0})->settings.find("select_sequential_consistency=1"), std::string::npos);
}

TEST_F(ReplicationTest, NewerServersAreToldToTakeOneInsertAfterTheOther)
{
    EXPECT_EQ(learnt({1, 1}, {3, 0})->settings.find("insert_quorum_parallel"), std::string::npos);
    EXPECT_NE(learnt({1, 1}, {3, 1})->settings.find("insert_quorum_parallel=0"), std::string::npos);
}

TEST_F(ReplicationTest, NothingIsLearntWithoutTablesOrWithoutAKeeper)
{
    EXPECT_FALSE(learnt({0, 0}));
    EXPECT_FALSE(learnt({1, 1}, {0, 0}));
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
