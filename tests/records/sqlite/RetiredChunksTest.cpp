#include "tests/records/sqlite/LongColumnsFixture.h"

#include <QtCore/QFile>

#include <optional>

namespace {

using plotix::PageCache;
using plotix::PagedMemory;
using plotix::RecordColumns;

/// What is removed stays in the file as long as somebody reads it as it was, and no longer.
class RetiredChunksTest : public LongColumnsFixture {
protected:
    RetiredChunksTest() { store(ramp(air, 0, kRecords)); }

    RecordColumns columns() { return columnsOf({air}); }
    static void expectAsTheyWere(const RecordColumns& told)
    {
        const PagedMemory::Hold held = told.columns[0].values.holdAll();
        std::size_t wrong = 0;
        for (std::size_t i = 0; i < kRecords; ++i)
            wrong += told.columns[0].values[i] != static_cast<double>(i) ? 1 : 0;
        EXPECT_EQ(wrong, 0U);
        EXPECT_EQ(told.failure->message(), std::nullopt);
    }
    void correct(double time) { store(block({time}, {column(air, {-1})})); }
    void removeAll()
    {
        const auto writer = opened()->begin();
        writer->remove(agent, std::vector{air}, {}, {});
        writer->commit();
    }
    qint64 retired() { return ask("SELECT count(*) FROM retired"); }
    qint64 segments() { return ask("SELECT count(*) FROM segment"); }
    bool isMarked() { return QFile::exists(file() + "-readers"); }
};

TEST_F(RetiredChunksTest, ALateRecordLeavesWhatSomebodyReads)
{
    const RecordColumns told = columns();
    correct(5);
    correct(6);
    correct(7);
    expectAsTheyWere(told);
}

TEST_F(RetiredChunksTest, OnlyWhatSomebodyReadsIsKept)
{
    const RecordColumns told = columns();
    for (int time = 0; time < 10; ++time)
        correct(time);
    EXPECT_EQ(retired(), 2) << "the chunk that is read, and what the last transaction replaced";
}

TEST_F(RetiredChunksTest, WhoeverReadsLaterNeedsNoEarlierState)
{
    std::optional<RecordColumns> told = columns();
    for (int time = 0; time < 10; ++time) {
        correct(time);
        told = columns();
    }
    EXPECT_LE(retired(), 2);
}

TEST_F(RetiredChunksTest, WhenNobodyReadsThemTheyGoWithTheNextTransaction)
{
    std::optional<RecordColumns> told = columns();
    removeAll();
    EXPECT_EQ(segments(), 12);
    told.reset();
    store(ramp(air, 0, 2000));
    EXPECT_EQ(segments(), 2);
    EXPECT_EQ(retired(), 0);
}

TEST_F(RetiredChunksTest, CompactingFreesThemAtOnce)
{
    removeAll();
    EXPECT_GT(retired(), 0);
    opened()->compact({});
    EXPECT_EQ(retired(), 0);
    EXPECT_EQ(segments(), 0);
}

TEST_F(RetiredChunksTest, CompactingLeavesWhatSomebodyReads)
{
    const RecordColumns told = columns();
    removeAll();
    opened()->compact({});
    expectAsTheyWere(told);
}

TEST_F(RetiredChunksTest, WhatATransactionMadeItselfIsNotKept)
{
    const RecordColumns told = columns();
    const auto writer = opened()->begin();
    for (int time = 0; time < 10; ++time)
        writer->store(agent, block({static_cast<double>(time)}, {column(air, {-1})}));
    writer->commit();
    EXPECT_EQ(retired(), 1);
}

TEST_F(RetiredChunksTest, NobodyElseSeesThem)
{
    const RecordColumns told = columns();
    removeAll();
    EXPECT_FALSE(extent());
    EXPECT_EQ(count(), 0U);
    EXPECT_TRUE(times().empty());
    EXPECT_TRUE(opened()->verify().isSound());
}

TEST_F(RetiredChunksTest, ARolledBackRemovalLeavesEverything)
{
    {
        const auto writer = opened()->begin();
        writer->remove(agent, std::vector{air}, {}, {});
        writer->prepare();
    }
    EXPECT_EQ(count(), kRecords);
    EXPECT_EQ(retired(), 0);
}

TEST_F(RetiredChunksTest, TheMarkGoesWithTheLastReader)
{
    std::optional<RecordColumns> one = columns();
    std::optional<RecordColumns> other = columns();
    one.reset();
    EXPECT_TRUE(isMarked());
    other.reset();
    EXPECT_FALSE(isMarked());
}

TEST_F(RetiredChunksTest, AMarkThatAProcessLeftBehindKeepsNothing)
{
    QFile left(file() + "-readers");
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    removeAll();
    correct(5);
    store(ramp(air, 0, 2000));
    EXPECT_EQ(retired(), 0);
}

TEST_F(RetiredChunksTest, AShortReadLeavesNoMark)
{
    const auto told = opened()->columns(agent, std::vector{air}, 5, 10, std::make_shared<PageCache>());
    EXPECT_TRUE(told->times.isResident());
    EXPECT_FALSE(isMarked());
}

}  // namespace
