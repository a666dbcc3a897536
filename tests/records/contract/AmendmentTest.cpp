#include "records/store/Amendment.h"

#include "tests/records/RandomBlocks.h"
#include "tests/records/contract/RecordStoreContract.h"

#include <array>

namespace {

using plotix::Amendment;
using plotix::RecordBlock;
using Kind = plotix::Amendment::Kind;

constexpr double kLong = 1e6;  // when, unless a test says otherwise: later than all records

/// What is late and what corrects something, noted where a writer asks for it.
class AmendmentTest : public RecordStoreContract {
protected:
    void storeAt(double now, const RecordBlock& records)
    {
        const auto writer = opened()->begin();
        writer->noteAmendments(now);
        writer->store(agent, records);
        writer->commit();
    }
    void remove(double from, double to)
    {
        const auto writer = opened()->begin();
        writer->remove(agent, std::array{air}, from, to);
        writer->commit();
    }
    std::vector<Amendment> of(plotix::RowId property) { return opened()->amendments(agent, std::array{property}); }
    Amendment late(double from, double to, double now = kLong) const { return {air, Kind::Late, from, to, now, now}; }
    Amendment corrected(double from, double to, double now = kLong) const
    {
        return {air, Kind::Corrected, from, to, now, now};
    }
    using Found = std::vector<Amendment>;
};

TEST_P(AmendmentTest, RecordsInOrderAreNone)
{
    storeAt(kLong, ramp(air, 0, 100));
    storeAt(kLong, ramp(air, 100, 20'000));
    EXPECT_EQ(of(air), Found{});
}

TEST_P(AmendmentTest, WhatIsPutBetweenIsLate)
{
    store(block({0, 10, 20}, {column(air, {1, 2, 3})}));
    storeAt(kLong, block({12, 14}, {column(air, {5, 6})}));
    EXPECT_EQ(of(air), Found{late(12, 14)});
}

TEST_P(AmendmentTest, NothingIsNotedWhereNobodyAskedForIt)
{
    store(block({0, 10, 20}, {column(air, {1, 2, 3})}));
    store(block({10, 14}, {column(air, {5, 6})}));
    EXPECT_EQ(of(air), Found{});
}

TEST_P(AmendmentTest, HistoryFromBeforeTheFirstValueIsNotLate)
{
    store(block({100, 110}, {column(air, {1, 2})}));
    storeAt(kLong, block({0, 50}, {column(air, {5, 6})}));
    EXPECT_EQ(of(air), Found{});
}

TEST_P(AmendmentTest, APropertyWithoutValuesGetsItsHistoryInPeace)
{
    store(ramp(wind, 0, 1000));
    storeAt(kLong, ramp(air, 0, 900));
    storeAt(kLong, ramp(air, 1000, 10));
    EXPECT_EQ(of(air), Found{});
}

TEST_P(AmendmentTest, AnotherValueCorrects)
{
    store(ramp(air, 0, 10));
    storeAt(kLong, block({4, 5}, {column(air, {40, 50})}));
    EXPECT_EQ(of(air), Found{corrected(4, 5)});
}

TEST_P(AmendmentTest, TheLastValueCanBeCorrectedToo)
{
    store(ramp(air, 0, 10));
    storeAt(kLong, block({9, 10}, {column(air, {90, 100})}));
    EXPECT_EQ(of(air), Found{corrected(9, 9)});
}

TEST_P(AmendmentTest, AValueThatIsNoLongerValidIsCorrected)
{
    store(ramp(air, 0, 10));
    storeAt(kLong, block({4}, {column(air, {std::nullopt})}));
    EXPECT_EQ(of(air), Found{corrected(4, 4)});
}

TEST_P(AmendmentTest, TheSameAgainCorrectsNothing)
{
    store(ramp(air, 0, 20'000));
    storeAt(kLong, ramp(air, 0, 20'000));
    EXPECT_EQ(of(air), Found{});
}

TEST_P(AmendmentTest, WhatStaysBetweenPartsStretches)
{
    store(ramp(air, 0, 10));
    storeAt(kLong, block({2, 3, 4}, {column(air, {20, 3, 40})}));
    EXPECT_EQ(of(air), (Found{corrected(2, 2), corrected(4, 4)}));
}

TEST_P(AmendmentTest, LateAndCorrectedAreTwo)
{
    store(block({0, 10, 20}, {column(air, {1, 2, 3})}));
    storeAt(kLong, block({5, 10, 15}, {column(air, {5, 6, 7})}));
    EXPECT_EQ(of(air), (Found{late(5, 5), corrected(10, 10), late(15, 15)}));
}

TEST_P(AmendmentTest, ATransactionIsComparedWithWhatWasBeforeIt)
{
    const auto writer = opened()->begin();
    writer->noteAmendments(kLong);
    writer->store(agent, ramp(air, 100, 10));
    writer->store(agent, ramp(air, 0, 10));
    writer->store(agent, ramp(air, 50, 10));
    writer->store(agent, block({105}, {column(air, {7})}));
    writer->commit();
    EXPECT_EQ(of(air), Found{});
}

TEST_P(AmendmentTest, WhatIsRolledBackIsNotNoted)
{
    store(ramp(air, 0, 10));
    {
        const auto writer = opened()->begin();
        writer->noteAmendments(kLong);
        writer->store(agent, block({4}, {column(air, {40})}));
    }
    EXPECT_EQ(of(air), Found{});
}

TEST_P(AmendmentTest, EveryPropertyHasItsOwn)
{
    store(block({0, 10, 20}, {column(air, {1, 2, 3}), column(wind, {1, std::nullopt, 3})}));
    storeAt(kLong, block({10}, {column(wind, {2})}));
    EXPECT_EQ(of(air), Found{});
    EXPECT_EQ(of(wind), (Found{{wind, Kind::Corrected, 10, 10, kLong, kLong}}));
}

TEST_P(AmendmentTest, ALaterCorrectionTakesThePlaceOfOneWithinIt)
{
    store(ramp(air, 0, 10));
    for (int second = 0; second < 5; ++second)
        storeAt(kLong + 1000.0 * second, block({4}, {column(air, {100.0 + second})}));
    EXPECT_EQ(of(air), Found{corrected(4, 4, kLong + 4000)});
}

TEST_P(AmendmentTest, WhatIsAlwaysAsLateIsOneStretch)
{
    store(block({0, 1000}, {column(air, {1, 2})}));
    for (double time = 10; time < 20; ++time)
        storeAt(time + 2000, block({time}, {column(air, {5})}));
    EXPECT_EQ(of(air), (Found{{air, Kind::Late, 10, 19, 2010, 2019}}));
}

TEST_P(AmendmentTest, WhatIsLateByAnotherDelayIsAnotherStretch)
{
    store(block({0, 1000}, {column(air, {1, 2})}));
    storeAt(2010, block({10}, {column(air, {5})}));
    storeAt(9011, block({11}, {column(air, {5})}));
    EXPECT_EQ(of(air), (Found{late(10, 10, 2010), late(11, 11, 9011)}));
}

TEST_P(AmendmentTest, ARecordBetweenPartsStretchesOfTwoWriters)
{
    store(ramp(air, 0, 10));
    storeAt(kLong, block({2}, {column(air, {20})}));
    storeAt(kLong, block({4}, {column(air, {40})}));
    EXPECT_EQ(of(air).size(), 2U);
}

TEST_P(AmendmentTest, WhatIsTakenOutIsNoLongerAmended)
{
    store(block({0, 1000}, {column(air, {1, 2})}));
    storeAt(kLong, ramp(air, 100, 100));
    remove(120, 139);
    const Found left = of(air);
    ASSERT_EQ(left.size(), 2U);
    EXPECT_LT(left[0].to, 120);
    EXPECT_GT(left[1].from, 139);
    EXPECT_EQ(left[1].to, 199);
}

TEST_P(AmendmentTest, OneThatCameFromElsewhereIsKept)
{
    const Amendment known{air, Kind::Corrected, 3, 5, 100, 200};
    const auto writer = opened()->begin();
    writer->store(agent, ramp(air, 0, 10));
    writer->addAmendment(agent, known);
    writer->commit();
    EXPECT_EQ(of(air), Found{known});
}

TEST_P(AmendmentTest, ASpanAnswersWhatItShares)
{
    store(ramp(air, 0, 100));
    storeAt(kLong, block({10, 50}, {column(air, {-1, -1})}));
    EXPECT_EQ(opened()->amendments(agent, std::array{air}, 11, 50), Found{corrected(50, 50)});
    EXPECT_EQ(opened()->amendments(agent, std::array{air}, 11, 49), Found{});
}

TEST_P(AmendmentTest, CompactingKeepsThemAndDropsThoseOfWhatGoes)
{
    store(ramp(air, 0, 40'000));
    storeAt(kLong, block({10, 30'000}, {column(air, {-1, -1})}));
    opened()->compact({});
    EXPECT_EQ(of(air), (Found{corrected(10, 10), corrected(30'000, 30'000)}));
    opened()->compact({.dropBefore = 20'000});
    EXPECT_EQ(of(air), Found{corrected(30'000, 30'000)});
    EXPECT_TRUE(opened()->verify().isSound());
}

TEST_P(AmendmentTest, AnAppenderNotesThemWithTheTimeOfItsClock)
{
    double now = 500;
    const auto appender = opened()->appender();
    appender->noteAmendments([&] { return now; });
    for (const double time : {1.0, 2.0, 10.0})
        appender->append(agent, block({time}, {column(air, {time})}));
    now = 600;
    appender->append(agent, block({5}, {column(air, {5})}));
    now = 700;
    appender->append(agent, block({2}, {column(air, {22})}));
    EXPECT_EQ(of(air), (Found{corrected(2, 2, 700), late(5, 5, 600)}));
}

TEST_P(AmendmentTest, AnAppenderKnowsWhatItStoredItself)
{
    const auto appender = opened()->appender();
    appender->noteAmendments([] { return kLong; });
    appender->append(agent, block({1, 10}, {column(air, {1, 2})}));
    appender->append(agent, block({5}, {column(air, {5})}));
    appender->append(agent, block({20}, {column(air, {5})}));
    appender->append(agent, block({15}, {column(air, {5})}));
    EXPECT_EQ(of(air), (Found{late(5, 5), late(15, 15)}));
}

TEST_P(AmendmentTest, WhatIsLateBetweenPartsWhatIsCorrected)
{
    store(block({0, 10, 20, 30}, {column(air, {1, 2, 3, 4})}));
    storeAt(kLong, block({10, 15}, {column(air, {22, 5})}));
    storeAt(kLong, block({20}, {column(air, {33})}));
    EXPECT_EQ(of(air), (Found{corrected(10, 10), late(15, 15), corrected(20, 20)}));
}

HELD_BY_EVERY_STORE(AmendmentTest);

/// Random blocks: the stores agree with a map that is looked at before each is stored.
class RandomAmendmentTest : public StoreFixture, public testing::WithParamInterface<std::tuple<StoreKind, unsigned>> {
protected:
    RandomAmendmentTest() : StoreFixture(std::get<StoreKind>(GetParam())), random(std::get<unsigned>(GetParam())) {}

    RecordBlock something(std::size_t most)
    {
        std::map<double, double> made;
        for (std::size_t i = 1 + random.below(most); i > 0; --i)
            made[static_cast<double>(random.below(60'000))] = static_cast<double>(random.below(5));
        std::vector<double> stamps;
        Values elements;
        for (const auto& [time, value] : made) {
            stamps.push_back(time);
            elements.emplace_back();
            if (value < kNone)
                elements.back() = value;
        }
        return block(stamps, {column(air, elements)});
    }
    /// An element as one number, whatever an invalid one holds.
    static double told(const RecordBlock& fresh, std::size_t i)
    {
        return fresh.columns[0].validity.isValid(i) ? fresh.columns[0].values[i] : kNone;
    }
    /// Whether each record of the block is late, corrected or neither.
    std::map<double, std::optional<Kind>> judged(const RecordBlock& fresh) const
    {
        std::map<double, std::optional<Kind>> kinds;
        double first = 1e9, last = -1e9;
        for (const auto& [time, value] : reference)
            if (value != kNone) {
                first = std::min(first, time);
                last = std::max(last, time);
            }
        for (std::size_t i = 0; i < fresh.times.size(); ++i) {
            const double time = fresh.times[i];
            const auto old = reference.find(time);
            kinds.emplace(time, std::nullopt);
            if (old != reference.end() && old->second != told(fresh, i))
                kinds[time] = Kind::Corrected;
            else if (old == reference.end() && time > first && time < last)
                kinds[time] = Kind::Late;
        }
        return kinds;
    }
    void take(const RecordBlock& fresh)
    {
        for (std::size_t i = 0; i < fresh.times.size(); ++i)
            reference[fresh.times[i]] = told(fresh, i);
    }
    /// Those that happened at `now`, which covers a record of the block where that is of the kind.
    void expectNoted(const std::map<double, std::optional<Kind>>& kinds, double now)
    {
        const std::vector<Amendment> noted = opened()->amendments(agent, std::array{air});
        for (const auto& [time, kind] : kinds)
            for (const Kind each : {Kind::Late, Kind::Corrected}) {
                const bool isNoted = std::any_of(noted.begin(), noted.end(), [&, at = time](const Amendment& one) {
                    return one.kind == each && one.last == now && one.from <= at && at <= one.to;
                });
                ASSERT_EQ(isNoted, kind == each) << time;
            }
    }

    RandomBlocks random;
    static constexpr double kNone = 4;   // stands for what is not valid
    std::map<double, double> reference;  // values by time
};

TEST_P(RandomAmendmentTest, EveryRecordIsJudgedRight)
{
    // So far apart that no stretch goes on where one from before ended.
    double now = 1e6;
    for (int round = 0; round < 8; ++round, now += 100'000) {
        const RecordBlock fresh = something(round % 3 == 0 ? 20'000 : 40);
        const auto kinds = judged(fresh);
        const auto writer = opened()->begin();
        writer->noteAmendments(now);
        writer->store(agent, fresh);
        writer->commit();
        ASSERT_NO_FATAL_FAILURE(expectNoted(kinds, now)) << round;
        take(fresh);
    }
}

INSTANTIATE_TEST_SUITE_P(Stores, RandomAmendmentTest,
                         testing::Combine(testing::ValuesIn(storesUnderTest()), testing::Range(1U, 3U)),
                         [](const auto& each) {
                             return std::get<StoreKind>(each.param).name +
                                    std::to_string(std::get<unsigned>(each.param));
                         });

}  // namespace
