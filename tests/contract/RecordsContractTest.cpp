#include "tests/contract/HostUnderTest.h"

#include <cmath>
#include <cstring>

namespace contract {
namespace {

using plotix::Date;

std::vector<double> timesOf(const KTVRecordDictionary& records)
{
    if (!records.time())
        return {};
    const auto span = records.time()->span();
    return {span.begin(), span.end()};
}

bool isSameBits(double one, double other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

TEST_P(HostContract, AFetchIsAnsweredOnce)
{
    const Answer answer = fetch(host->agent()->properties().objects(), Date{kTimes.front()}, Date{kTimes.back()});
    EXPECT_EQ(answer.completions, 1);
    EXPECT_NE(answer.records, nullptr);
    EXPECT_FALSE(answer.error);
}

TEST_P(HostContract, EveryColumnIsAsLongAsTheTimes)
{
    const auto records = fetchEverything();
    EXPECT_EQ(timesOf(*records), (std::vector<double>{kTimes.begin(), kTimes.end()}));
    ASSERT_EQ(records->columns().size(), 2U);
    for (const auto& [key, column] : records->columns())
        EXPECT_EQ(column->size(), kTimes.size()) << key.toStdString();
}

TEST_P(HostContract, ValuesComeBackBitForBit)
{
    const auto records = fetchEverything();
    const auto column = records->columnForKey(QStringLiteral("airTemperature"));
    ASSERT_NE(column, nullptr);
    for (const std::size_t index : {0U, 2U, 3U})
        EXPECT_TRUE(isSameBits(column->unitValue(index), kTemperatures[index])) << index;
}

TEST_P(HostContract, ASnapshotWithoutAValueIsInvalid)
{
    const auto column = fetchEverything()->columnForKey(QStringLiteral("airTemperature"));
    ASSERT_NE(column, nullptr);
    EXPECT_TRUE(column->snapshotAt(0)->isValid());
    EXPECT_FALSE(column->snapshotAt(1)->isValid());
}

TEST_P(HostContract, ASnapshotSpeaksForItsProperty)
{
    const auto column = fetchEverything()->columnForKey(QStringLiteral("airTemperature"));
    ASSERT_NE(column, nullptr);
    const KTVPropertyPtr snapshot = column->snapshotAt(0);
    EXPECT_EQ(snapshot->name(), temperature()->name());
    EXPECT_EQ(snapshot->propertyName(), temperature()->propertyName());
    EXPECT_EQ(snapshot->unit(), temperature()->unit());
    EXPECT_EQ(snapshot->color(), temperature()->color());
}

TEST_P(HostContract, BothBoundsAreInclusive)
{
    const Answer answer = fetch(host->agent()->properties().objects(), Date{kTimes[1]}, Date{kTimes[2]});
    ASSERT_NE(answer.records, nullptr);
    EXPECT_EQ(timesOf(*answer.records), (std::vector<double>{kTimes[1], kTimes[2]}));
}

TEST_P(HostContract, ABoundJustInsideLeavesARecordOut)
{
    const double after = std::nextafter(kTimes[1], 2e9), before = std::nextafter(kTimes[2], 0.0);
    const Answer answer = fetch(host->agent()->properties().objects(), Date{after}, Date{before});
    ASSERT_NE(answer.records, nullptr);
    EXPECT_TRUE(timesOf(*answer.records).empty());
}

TEST_P(HostContract, EqualBoundsGiveTheOneRecordBetweenThem)
{
    const Answer answer = fetch(host->agent()->properties().objects(), Date{kTimes[2]}, Date{kTimes[2]});
    ASSERT_NE(answer.records, nullptr);
    EXPECT_EQ(timesOf(*answer.records), std::vector<double>{kTimes[2]});
}

TEST_P(HostContract, AbsentBoundsAreOpen)
{
    const Answer answer = fetch(host->agent()->properties().objects(), std::nullopt, std::nullopt);
    ASSERT_NE(answer.records, nullptr);
    EXPECT_EQ(timesOf(*answer.records).size(), kTimes.size());
}

TEST_P(HostContract, ARangeWithoutRecordsHasTimesAndColumnsWithoutElements)
{
    const Answer answer = fetch(host->agent()->properties().objects(), Date{0}, Date{1});
    ASSERT_NE(answer.records, nullptr);
    ASSERT_TRUE(answer.records->time().has_value());
    EXPECT_TRUE(answer.records->time()->isEmpty());
    for (const auto& [key, column] : answer.records->columns())
        EXPECT_EQ(column->size(), 0U) << key.toStdString();
}

TEST_P(HostContract, OnlyThePropertiesAskedForAreAnsweredInTheirOrder)
{
    const auto one = fetch(KTVPropertyList{property("pressure")}, Date{kTimes.front()}, Date{kTimes.back()});
    ASSERT_NE(one.records, nullptr);
    ASSERT_EQ(one.records->columns().size(), 1U);
    const auto both =
        fetch(KTVPropertyList{property("pressure"), temperature()}, Date{kTimes.front()}, Date{kTimes.back()});
    ASSERT_NE(both.records, nullptr);
    ASSERT_EQ(both.records->columns().size(), 2U);
    EXPECT_EQ(both.records->columns()[0].first, QStringLiteral("pressure"));
}

TEST_P(HostContract, AnEmptyPropertyListIsAnsweredWithoutTime)
{
    const Answer answer = fetch(KTVPropertyList{}, Date{kTimes.front()}, Date{kTimes.back()});
    ASSERT_NE(answer.records, nullptr);
    EXPECT_FALSE(answer.records->time().has_value());
    EXPECT_TRUE(answer.records->columns().empty());
    EXPECT_FALSE(answer.error);
}

TEST_P(HostContract, AbsentPropertiesCountAsNone)
{
    const Answer answer = fetch(std::nullopt, Date{kTimes.front()}, Date{kTimes.back()});
    ASSERT_NE(answer.records, nullptr);
    EXPECT_FALSE(answer.records->time().has_value());
}

TEST_P(HostContract, ColumnsLeaveInTheUnitShown)
{
    temperature()->setUnit(QStringLiteral("K"));
    const auto column = fetchEverything()->columnForKey(QStringLiteral("airTemperature"));
    ASSERT_NE(column, nullptr);
    EXPECT_EQ(column->unit(), QStringLiteral("K"));
    EXPECT_DOUBLE_EQ(column->unitValue(0), 20.1 + 273.15);
    EXPECT_EQ(column->archivedValues()[0], 20.1);
}

TEST_P(HostContract, AColumnConvertsItselfAndBackWithoutDrift)
{
    const auto column = fetchEverything()->columnForKey(QStringLiteral("airTemperature"));
    ASSERT_NE(column, nullptr);
    const QString unit = column->unit();
    column->setUnit(QStringLiteral("degF"));
    EXPECT_NEAR(column->unitValue(0), 68.18, 1e-9);
    column->setUnit(unit);
    EXPECT_TRUE(isSameBits(column->unitValue(0), kTemperatures[0]));
}

TEST_P(HostContract, AColumnsUnitLeavesThePropertysAlone)
{
    const QString unit = temperature()->unit();
    fetchEverything()->columnForKey(QStringLiteral("airTemperature"))->setUnit(QStringLiteral("K"));
    EXPECT_EQ(temperature()->unit(), unit);
}

}  // namespace
}  // namespace contract
