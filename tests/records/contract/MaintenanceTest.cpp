#include "tests/records/contract/RecordStoreContract.h"

namespace {

using plotix::CompactionResult;
using plotix::VerificationResult;

/// Compacting and verifying, as far as every store has them.
class MaintenanceTest : public RecordStoreContract {
protected:
    MaintenanceTest()
    {
        store(ramp(air, 0, 20'000));
        opened()->appender()->append(agent, block({30'000, 30'001}, {column(wind, {1, std::nullopt})}));
    }
};

TEST_P(MaintenanceTest, CompactingKeepsEveryRecord)
{
    const auto before = times();
    const CompactionResult result = opened()->compact({});
    EXPECT_EQ(result.records, 20'002U);
    EXPECT_EQ(result.dropped, 0U);
    EXPECT_EQ(times(), before);
    EXPECT_EQ(values(wind, 30'000), (Values{1, std::nullopt}));
}

TEST_P(MaintenanceTest, OldRecordsAreDroppedOfEveryAgent)
{
    const plotix::RowId other = addAgent();
    storeFor(other, ramp(addProperty(other), 0, 10));
    const CompactionResult result = opened()->compact({15'000, true});
    EXPECT_EQ(result.dropped, 15'010U);
    EXPECT_EQ(result.records, 5'002U);
    EXPECT_EQ(extent()->first, 15'000);
    EXPECT_FALSE(opened()->extent(other));
}

TEST_P(MaintenanceTest, ACompactionThatIsStoppedAtOnceLeavesEverything)
{
    const CompactionResult result = opened()->compact({15'000, true}, [](double) { return false; });
    EXPECT_TRUE(result.stopped);
    EXPECT_EQ(count(), 20'002U);
}

TEST_P(MaintenanceTest, VerifyingCountsRecordsAndValidValues)
{
    std::vector<double> told;
    const VerificationResult result = opened()->verify([&](double fraction) {
        told.push_back(fraction);
        return true;
    });
    EXPECT_TRUE(result.isSound()) << result.findings.join('\n').toStdString();
    EXPECT_EQ(result.records, 20'002U);
    EXPECT_EQ(result.values, 20'001U);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_EQ(told.back(), 1);
}

TEST_P(MaintenanceTest, VerifyingCanBeStopped)
{
    const VerificationResult result = opened()->verify([](double) { return false; });
    EXPECT_TRUE(result.stopped);
    EXPECT_FALSE(result.isSound());
}

HELD_BY_EVERY_STORE(MaintenanceTest);

}  // namespace
