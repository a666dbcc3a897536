#include "plugins/PlotixPlugIn/reading/comparing/EarlierRecords.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

// Ten records at the times 0 to 9, whose values are ten times their times.

namespace {

using plotix::EarlierStretch;

class EarlierRecordsTest : public testing::Test {
protected:
    KTVRecordDictionary records(std::vector<double> times = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}) const
    {
        std::vector<double> values;
        for (const double time : times)
            values.push_back(10 * time);
        values[4] = std::numeric_limits<double>::quiet_NaN();
        KTVRecordDictionary dictionary;
        dictionary.setTime(plotix::SharedArray<double>::fromVector(std::move(times)));
        dictionary.setColumn("a", std::make_shared<KTVRecordColumn>(KTVRecordColumn::Descriptor(),
                                                                    plotix::SharedArray<double>::fromVector(values),
                                                                    plotix::ValidityBitmap(), nullptr));
        return dictionary;
    }
    static KTVRecordDictionaryPtr beside(const KTVRecordDictionary& earlier,
                                         const std::vector<EarlierStretch>& stretches,
                                         const KTVRecordDictionary* present = nullptr)
    {
        return recordsBeside(earlier, stretches, present, [](const QString& key) { return key + "'"; });
    }
    static std::vector<double> timesOf(const KTVRecordDictionary& dictionary)
    {
        const auto times = dictionary.time()->span();
        return {times.begin(), times.end()};
    }
    static std::vector<double> valuesOf(const KTVRecordDictionary& dictionary)
    {
        std::vector<double> values;
        const auto column = dictionary.columnForKey("a'");
        for (std::size_t index = 0; index < column->size(); ++index)
            values.push_back(column->isValid(index) ? column->unitValue(index) : -1);
        return values;
    }
};

TEST_F(EarlierRecordsTest, OneShiftSharesTheColumns)
{
    const KTVRecordDictionary earlier = records();
    const auto shifted = beside(earlier, {{{0, 9}, 100}});
    EXPECT_EQ(shifted->columnForKey("a'"), earlier.columnForKey("a"));
    EXPECT_EQ(timesOf(*shifted).back(), 109);
}

TEST_F(EarlierRecordsTest, TimesMovedOntoThePresentOnesAreShared)
{
    const KTVRecordDictionary present = records({100, 101, 102, 103, 104, 105, 106, 107, 108, 109});
    EXPECT_EQ(beside(records(), {{{0, 9}, 100}}, &present)->time()->data(), present.time()->data());
    EXPECT_EQ(beside(records(), {{{0, 5}, 100}, {{5, 9}, 100}}, &present)->time()->data(), present.time()->data());
}

TEST_F(EarlierRecordsTest, OtherTimesThanThePresentOnesStayTheirOwn)
{
    const KTVRecordDictionary present = records({100, 101, 102, 103, 104, 105, 106, 107, 108, 109.5});
    const auto shifted = beside(records(), {{{0, 9}, 100}}, &present);
    EXPECT_EQ(timesOf(*shifted), (std::vector<double>{100, 101, 102, 103, 104, 105, 106, 107, 108, 109}));
}

TEST_F(EarlierRecordsTest, MoreTimesThanThePresentOnesStayTheirOwn)
{
    const KTVRecordDictionary present = records({100, 101, 102, 103, 104});
    EXPECT_EQ(timesOf(*beside(records(), {{{0, 9}, 100}}, &present)).size(), 10U);
}

TEST_F(EarlierRecordsTest, PiecesAreTakenOneByOne)
{
    const auto pieces = beside(records(), {{{0, 3}, 100}, {{5, 9}, 98}});
    EXPECT_EQ(timesOf(*pieces), (std::vector<double>{100, 101, 102, 103, 104, 105, 106, 107}));
    EXPECT_EQ(valuesOf(*pieces), (std::vector<double>{0, 10, 20, 50, 60, 70, 80, 90}));
}

TEST_F(EarlierRecordsTest, AnHourThatIsThereTwiceIsTakenTwice)
{
    const auto twice = beside(records(), {{{0, 3}, 100}, {{1, 4}, 102}});
    EXPECT_EQ(timesOf(*twice), (std::vector<double>{100, 101, 102, 103, 104, 105, 106}));
    EXPECT_EQ(valuesOf(*twice), (std::vector<double>{0, 10, 20, 10, 20, 30, -1}));
}

TEST_F(EarlierRecordsTest, WhatIsNoValueStaysNone)
{
    const auto piece = beside(records(), {{{3, 5}, 100}});
    EXPECT_EQ(valuesOf(*piece), (std::vector<double>{30, -1, 50}));
}

TEST_F(EarlierRecordsTest, TimesInAnyOrderAreTakenAsTheyCome)
{
    const auto piece = beside(records({9, 1, 2, 8, 3}), {{{1, 3}, 100}});
    EXPECT_EQ(timesOf(*piece), (std::vector<double>{101, 102, 103}));
}

TEST_F(EarlierRecordsTest, NoneInTheStretchesAreColumnsWithoutRecords)
{
    const auto nothing = beside(records(), {{{20, 30}, 100}});
    EXPECT_TRUE(timesOf(*nothing).empty());
    EXPECT_TRUE(valuesOf(*nothing).empty());
}

TEST_F(EarlierRecordsTest, WithoutStretchesOrTimesThereIsNothing)
{
    EXPECT_EQ(beside(records(), {}), nullptr);
    EXPECT_EQ(beside(KTVRecordDictionary(), {{{0, 9}, 100}}), nullptr);
}

}  // namespace
