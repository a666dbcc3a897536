#include "plugins/PlotixPlugIn/reading/statistics/FigureKeeper.h"

#include "tests/support/fakehost/FakeHost.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace plotix;

class FigureKeeperTest : public testing::Test {
protected:
    static FigureLine lineOf(const QString& key, std::size_t records)
    {
        std::vector<double> times(records), values(records);
        for (std::size_t i = 0; i < records; ++i) {
            times[i] = static_cast<double>(i);
            values[i] = std::fmod(static_cast<double>(i) * 7, 101);
        }
        KTVRecordColumn::Descriptor description;
        description.archivedUnit = description.unit = QStringLiteral("degC");
        return {key, SharedArray<double>::fromVector(std::move(times)),
                std::make_shared<KTVRecordColumn>(description, SharedArray<double>::fromVector(std::move(values)),
                                                  ValidityBitmap(), std::make_shared<fakehost::FakeUnitModel>()),
                5};
    }
    void waitUntilDone()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !keeper.isWorking(); }, 20'000));
    }

    const QString key = QStringLiteral("airTemperature");
    static constexpr std::size_t kMany = 1'000'000;
    FigureKeeper keeper;
};

TEST_F(FigureKeeperTest, AFewRecordsAreThereAtOnce)
{
    keeper.setLines({lineOf(key, 1000)});
    keeper.ask({.span = TimeSpan{0, 999}, .shares = {0.5}, .limits = {}});
    EXPECT_FALSE(keeper.isWorking());
    EXPECT_EQ(keeper.figures(key)->points, 1000);
    EXPECT_TRUE(keeper.percentile(key, 0.5));
}

TEST_F(FigureKeeperTest, ManyAreWorkedOutBesideAndToldOf)
{
    QSignalSpy told(&keeper, &FigureKeeper::changed);
    keeper.setLines({lineOf(key, kMany)});
    keeper.ask({.span = TimeSpan{0, 1e9}, .shares = {0.5}, .limits = {}});
    EXPECT_TRUE(keeper.isWorking());
    EXPECT_FALSE(keeper.figures(key));
    waitUntilDone();
    EXPECT_EQ(keeper.figures(key)->points, static_cast<std::int64_t>(kMany));
    EXPECT_EQ(keeper.percentile(key, 0.5), 50);
    EXPECT_GE(told.count(), 2);
}

TEST_F(FigureKeeperTest, AnotherSpanOfManyRecordsIsThereAtOnceButForItsPercentiles)
{
    keeper.setLines({lineOf(key, kMany)});
    keeper.ask({.span = TimeSpan{0, 1e9}, .shares = {0.5}, .limits = {}});
    waitUntilDone();
    keeper.ask({.span = TimeSpan{0, 900'000}, .shares = {0.5}, .limits = {}});
    EXPECT_EQ(keeper.figures(key)->points, 900'001);
    EXPECT_FALSE(keeper.percentile(key, 0.5));
    waitUntilDone();
    EXPECT_TRUE(keeper.percentile(key, 0.5));
}

TEST_F(FigureKeeperTest, TheLastQuestionIsAnswered)
{
    keeper.setLines({lineOf(key, kMany)});
    for (int to = 500'000; to < 520'000; to += 1000)
        keeper.ask({.span = TimeSpan{0, static_cast<double>(to)}, .shares = {0.5}, .limits = {}});
    waitUntilDone();
    EXPECT_EQ(keeper.figures(key)->points, 519'001);
    EXPECT_TRUE(keeper.percentile(key, 0.5));
}

TEST_F(FigureKeeperTest, WhatIsCancelledIsLeftOutUntilSomethingElseIsAsked)
{
    keeper.setLines({lineOf(key, kMany)});
    keeper.ask({.span = TimeSpan{0, 1e9}, .shares = {0.5}, .limits = {}});
    keeper.cancel();
    EXPECT_FALSE(keeper.isWorking());
    EXPECT_FALSE(keeper.figures(key));
    keeper.ask({.span = TimeSpan{0, 10}, .shares = {}, .limits = {}});
    waitUntilDone();
    EXPECT_EQ(keeper.figures(key)->points, 11);
}

TEST_F(FigureKeeperTest, FinishesHereAndNow)
{
    keeper.setLines({lineOf(key, kMany)});
    keeper.ask({.span = TimeSpan{0, 1e9}, .shares = {0.25}, .limits = {{key, {.high = 60, .low = {}}}}});
    keeper.finish();
    EXPECT_FALSE(keeper.isWorking());
    EXPECT_EQ(keeper.percentile(key, 0.25), 25);
    EXPECT_GT(keeper.aboveHigh(key)->heldAbove, 0);
}

TEST_F(FigureKeeperTest, ItsEndStopsTheWork)
{
    auto shortLived = std::make_unique<FigureKeeper>();
    shortLived->setLines({lineOf(key, kMany)});
    shortLived->ask({.span = TimeSpan{0, 1e9}, .shares = {0.5}, .limits = {}});
    shortLived.reset();
    fakehost::FakeHost::drainMainQueue();
}

TEST_F(FigureKeeperTest, AnotherUnitGivesOtherFigures)
{
    const FigureLine line = lineOf(key, 100);
    keeper.setLines({line});
    keeper.ask({.span = TimeSpan{0, 99}, .shares = {}, .limits = {}});
    const double celsius = keeper.figures(key)->mean;
    line.column->setUnit(QStringLiteral("K"));
    keeper.setLines({line});
    EXPECT_NEAR(keeper.figures(key)->mean, celsius + 273.15, 1e-9);
}

TEST_F(FigureKeeperTest, TheLatestRecordIsTheLinesOwnWhateverTheSpan)
{
    keeper.setLines({lineOf(key, 100)});
    keeper.ask({.span = TimeSpan{0, 5}, .shares = {}, .limits = {}});
    EXPECT_EQ(keeper.latest(key)->time, 99);
}

TEST_F(FigureKeeperTest, RecordsThatCarryOnAreShownAsTheyWereUntilTheyAreSummedUp)
{
    keeper.setLines({lineOf(key, kMany)});
    keeper.ask({.span = TimeSpan{0, 1e9}, .shares = {}, .limits = {}});
    waitUntilDone();
    keeper.setLines({lineOf(key, kMany + 10)});
    EXPECT_TRUE(keeper.isWorking());
    EXPECT_EQ(keeper.figures(key)->points, static_cast<std::int64_t>(kMany));
    waitUntilDone();
    EXPECT_EQ(keeper.figures(key)->points, static_cast<std::int64_t>(kMany) + 10);
}

TEST_F(FigureKeeperTest, WithoutASpanThereAreNoFigures)
{
    keeper.setLines({lineOf(key, 100)});
    EXPECT_FALSE(keeper.figures(key));
    EXPECT_FALSE(keeper.figures(QStringLiteral("pressure")));
}

}  // namespace
