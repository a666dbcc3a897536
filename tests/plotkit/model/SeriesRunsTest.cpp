#include "plotkit/model/CPTSeriesRuns.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <thread>
#include <utility>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

/// Random numbers, told in pieces of random lengths; some runs are empty, and sometimes many after another.
class TestedNumbers : public CPTRunSource {
public:
    explicit TestedNumbers(std::size_t count)
    {
        std::mt19937 random(7);
        std::normal_distribution<float> value;
        std::size_t emptyUpTo = 0;
        for (std::size_t run = 0; run < count; ++run) {
            if (random() % 50 == 0)
                emptyUpTo = run + random() % 40;
            const float level = value(random);
            const bool isEmpty = run < emptyUpTo;
            least.push_back(isEmpty ? kInfinity : level);
            greatest.push_back(isEmpty ? -kInfinity : level + 1);
            first.push_back(isEmpty || random() % 4 == 0 ? kNone : level + 0.5F);
        }
        for (std::size_t begin = 0; begin < count; begin += 1 + random() % 3000)
            begins.push_back(begin);
        begins.push_back(count);
    }

    void inPieces(std::size_t from, std::size_t end, const Take& take) const override
    {
        ++looks;
        if (whileTold)
            std::exchange(whileTold, nullptr)();
        for (std::size_t piece = 0; piece + 1 < begins.size(); ++piece)
            if (begins[piece] < end && begins[piece + 1] > from)
                take({least.data() + begins[piece], greatest.data() + begins[piece], first.data() + begins[piece],
                      begins[piece], begins[piece + 1] - begins[piece]});
    }

    std::vector<float> least, greatest, first;
    std::vector<std::size_t> begins;
    mutable std::atomic<std::size_t> looks = 0;
    mutable std::function<void()> whileTold;  ///< done once, while it is asked
};

class SeriesRunsTest : public testing::Test {
protected:
    static constexpr std::size_t kMany = 50'001;

    void make(std::size_t count)
    {
        numbers = std::make_shared<TestedNumbers>(count);
        const auto times = std::make_shared<plotix::TimeRuns>();
        for (std::size_t run = 0; run < count; ++run) {
            times->begin.push_back(run * 10);
            times->first.push_back(static_cast<double>(run));
            times->last.push_back(static_cast<double>(run) + 0.5);
        }
        times->begin.push_back(count * 10);
        runs = std::make_unique<CPTSeriesRuns>(times, numbers, count * 10);
        looksOfMaking = numbers->looks;
    }
    std::size_t looksSinceMade() const { return numbers->looks - looksOfMaking; }

    CPTMinMax extremesOf(std::size_t first, std::size_t end) const
    {
        CPTMinMax pair = plotkit::emptyMinMax();
        for (std::size_t run = first; run < end; ++run)
            pair = plotkit::joined(pair, {numbers->least[run], numbers->greatest[run]});
        return pair;
    }
    void expectExtremes(std::size_t first, std::size_t end) const
    {
        const CPTMinMax found = runs->minMax(first, end), expected = extremesOf(first, end);
        ASSERT_EQ(found.min, expected.min) << first << " to " << end;
        ASSERT_EQ(found.max, expected.max) << first << " to " << end;
    }
    void expectNumbersOf(std::size_t run) const
    {
        ASSERT_EQ(runs->minMaxOf(run).min, numbers->least[run]) << run;
        ASSERT_EQ(runs->minMaxOf(run).max, numbers->greatest[run]) << run;
        ASSERT_EQ(std::isnan(runs->firstValue(run)), std::isnan(numbers->first[run])) << run;
        if (!std::isnan(numbers->first[run])) {
            ASSERT_EQ(runs->firstValue(run), numbers->first[run]) << run;
        }
    }

    std::shared_ptr<TestedNumbers> numbers;
    std::unique_ptr<CPTSeriesRuns> runs;
    std::size_t looksOfMaking = 0;
    std::mt19937 random{11};
};

TEST_F(SeriesRunsTest, ManyRunsAreNotKeptUntilSomebodyLooks)
{
    make(kMany);
    EXPECT_EQ(runs->bytesOfRuns(), 0U);
    runs->minMaxOf(kMany / 2);
    EXPECT_GT(runs->bytesOfRuns(), 0U);
    EXPECT_LT(runs->bytesOfRuns(), kMany * 3 * sizeof(float) / 10);
}

TEST_F(SeriesRunsTest, FewRunsAreKeptAtOnce)
{
    make(3000);
    for (std::size_t run = 0; run < 3000; ++run)
        expectNumbersOf(run);
    EXPECT_EQ(looksSinceMade(), 0U);
}

TEST_F(SeriesRunsTest, RunsAreThoseOfTheirSource)
{
    make(kMany);
    for (std::size_t run = 0; run < kMany; ++run)
        expectNumbersOf(run);
}

TEST_F(SeriesRunsTest, RunsOnceLookedAtStay)
{
    make(kMany);
    runs->minMaxOf(100);
    runs->minMaxOf(101);
    EXPECT_EQ(looksSinceMade(), 1U);
}

TEST_F(SeriesRunsTest, ExtremesOfWholeGroupsNeedNoLook)
{
    make(kMany);
    constexpr std::size_t kGroup = CPTSeriesRuns::kGroup;
    for (int turn = 0; turn < 300; ++turn) {
        const std::size_t first = random() % (kMany / kGroup), end = first + random() % (kMany / kGroup - first);
        expectExtremes(first * kGroup, end * kGroup);
    }
    expectExtremes(0, kMany);
    EXPECT_EQ(looksSinceMade(), 0U);
}

TEST_F(SeriesRunsTest, ExtremesOfAnyRunsAreThoseOfTheSource)
{
    make(kMany);
    for (int turn = 0; turn < 3000; ++turn) {
        const std::size_t first = random() % kMany;
        expectExtremes(first, std::min(kMany, first + random() % (turn % 2 == 0 ? 40 : kMany)));
    }
}

TEST_F(SeriesRunsTest, FilledRunsAreFoundInBothDirections)
{
    make(kMany);
    const auto isFilled = [this](std::size_t run) { return numbers->least[run] <= numbers->greatest[run]; };
    std::size_t before = kMany;
    for (std::size_t run = 0; run < kMany; ++run) {
        std::size_t next = run;
        while (next < kMany && !isFilled(next))
            ++next;
        ASSERT_EQ(runs->filledFrom(run), next) << run;
        ASSERT_EQ(runs->filledBefore(run), before) << run;
        before = isFilled(run) ? run : before;
    }
}

TEST_F(SeriesRunsTest, BringingTakesARunAndThoseBesideIt)
{
    make(kMany);
    runs->bring(100);
    EXPECT_EQ(looksSinceMade(), 1U);
    expectNumbersOf(100);
    expectNumbersOf(101);
    runs->bring(101);
    EXPECT_EQ(looksSinceMade(), 1U);
}

TEST_F(SeriesRunsTest, WhatIsBroughtCountsAsKept)
{
    make(kMany);
    runs->bring(100);
    EXPECT_EQ(runs->bytesOfRuns(), CPTSeriesRuns::kBlock * 3 * sizeof(float));
}

TEST_F(SeriesRunsTest, ALookIsAnsweredWhileTheSameRunsAreBrought)
{
    make(kMany);
    numbers->whileTold = [this] { expectNumbersOf(100); };
    runs->bring(100);
    expectNumbersOf(100);
    EXPECT_EQ(looksSinceMade(), 2U);
}

TEST_F(SeriesRunsTest, SeveralThreadsMayLookAndBringAtOnce)
{
    make(kMany);
    std::vector<std::thread> threads;
    std::atomic<std::size_t> wrong = 0;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([this, &wrong, brings = thread % 2 == 0] {
            for (std::size_t run = 0; run < kMany; ++run) {
                if (brings)
                    runs->bring(run);
                wrong += runs->minMaxOf(run).min == numbers->least[run] ? 0 : 1;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0U);
    EXPECT_LE(looksSinceMade(), 3 * (kMany / 2048 + 1)) << "those who bring do so once, those who look once each";
}

TEST_F(SeriesRunsTest, ARunIsFoundByItsTimeWhateverWasGuessed)
{
    make(3000);
    for (int turn = 0; turn < 3000; ++turn) {
        const std::size_t from = random() % 2000, guess = random() % 4000;
        const double time = static_cast<double>(from) + static_cast<double>(random() % 8000) / 4;
        ASSERT_EQ(runs->runFromTime(time, from, guess), runs->runFromTime(time)) << time << " from " << guess;
    }
}

}  // namespace
