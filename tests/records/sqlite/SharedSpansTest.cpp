#include "base/PageCache.h"
#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <cmath>
#include <cstring>
#include <random>
#include <thread>

namespace {

using plotix::PageCache;
using plotix::RecordColumns;

constexpr std::size_t kChunk = 16384;

/// An agent with eighty chunks, the first 64 of them in an outline, asked for columns again and again in one store.
class SharedSpansTest : public ArchiveFixture {
protected:
    static constexpr std::size_t kRecords = 80 * kChunk;
    using Bound = std::optional<double>;

    SharedSpansTest() { store(records(0, kRecords)); }

    plotix::RecordBlock records(std::size_t first, std::size_t count)
    {
        std::vector<double> stamps(count);
        Values some(count), others(count);
        for (std::size_t i = 0; i < count; ++i) {
            stamps[i] = static_cast<double>(first + i);
            if ((first + i) % 5000 < 4000)
                some[i] = static_cast<double>(random() % 1000);
            others[i] = static_cast<double>((first + i) / 700);
        }
        return block(stamps, {column(air, some), column(wind, others)});
    }
    RecordColumns columns(Bound from = {}, Bound to = {}) { return columnsOf({air, wind}, from, to); }
    RecordColumns columnsOf(const std::vector<plotix::RowId>& properties, Bound from = {}, Bound to = {})
    {
        return *asked->columns(agent, properties, from, to, cache);
    }
    /// As nobody who shares would be answered.
    RecordColumns fresh(Bound from = {}, Bound to = {})
    {
        return *opened()->columns(agent, std::vector{air, wind}, from, to, cache);
    }
    /// Nothing of the chunks in the outline can be found out any more.
    void damageOutlined()
    {
        run("UPDATE outlined SET data = x'00'");
        run("UPDATE segment SET data = x'00' WHERE id / 1048576 <= 64");
        run("DELETE FROM run WHERE id / 1048576 <= 64");
        run("UPDATE summary SET whole = NULL WHERE id / 1048576 <= 64");
    }

    std::mt19937 random{12};
    std::shared_ptr<PageCache> cache = std::make_shared<PageCache>();
    std::shared_ptr<plotix::RecordStore> asked = opened();
};

TEST_F(SharedSpansTest, WhatIsAskedForOnceMoreIsTheSameMemory)
{
    const RecordColumns one = columns(), other = columns();
    EXPECT_EQ(one.times.data(), other.times.data());
    EXPECT_EQ(one.runs, other.runs);
    EXPECT_EQ(one.columns[0].values.memory(), other.columns[0].values.memory());
    EXPECT_EQ(one.columns[1].runs, other.columns[1].runs);
}

TEST_F(SharedSpansTest, OfOtherPropertiesWhatIsTheSameIsShared)
{
    const RecordColumns one = columns(), other = columnsOf({wind});
    EXPECT_EQ(one.times.data(), other.times.data());
    EXPECT_EQ(one.runs, other.runs);
    EXPECT_EQ(one.columns[1].values.data(), other.columns[0].values.data());
}

TEST_F(SharedSpansTest, TwoWhoAskAtOnceShareToo)
{
    std::vector<RecordColumns> answers(4);
    std::vector<std::thread> threads;
    for (RecordColumns& answer : answers)
        threads.emplace_back([this, &answer] { answer = columns(); });
    for (std::thread& thread : threads)
        thread.join();
    for (const RecordColumns& answer : answers) {
        EXPECT_EQ(answer.times.data(), answers[0].times.data());
        EXPECT_EQ(answer.columns[0].runs, answers[0].columns[0].runs);
    }
}

TEST_F(SharedSpansTest, InAnotherCacheNothingIsShared)
{
    const RecordColumns one = columns();
    cache = std::make_shared<PageCache>();
    EXPECT_NE(columns().times.data(), one.times.data());
}

TEST_F(SharedSpansTest, NothingIsKeptOfWhatNobodyShows)
{
    std::weak_ptr<const plotix::TimeRuns> shown = columns().runs;
    EXPECT_TRUE(shown.expired());
    damageOutlined();
    EXPECT_THROW(columns(), plotix::ReportableError);
}

TEST_F(SharedSpansTest, ARangeThatWasMovedTakesOverWhatIsKnownOfItsChunks)
{
    const RecordColumns shown = columns({}, 70.0 * kChunk - 1);
    const RecordColumns wanted = fresh({}, 75.0 * kChunk - 1);
    damageOutlined();
    EXPECT_THROW(fresh({}, 75.0 * kChunk - 1), plotix::ReportableError);
    const RecordColumns moved = columns({}, 75.0 * kChunk - 1);
    EXPECT_EQ(*moved.runs, *wanted.runs);
    EXPECT_EQ(moved.columns[1].runs->unpacked().least, wanted.columns[1].runs->unpacked().least);
}

TEST_F(SharedSpansTest, WhatCouldNotBeReadIsTriedAgain)
{
    const RecordColumns shown = columns();
    run("UPDATE segment SET data = x'00' WHERE id / 1048576 = 5");
    EXPECT_TRUE(std::isnan(shown.columns[0].values.valueAt(4 * kChunk)));
    const RecordColumns again = columns();
    EXPECT_EQ(again.failure->message(), std::nullopt);
    EXPECT_NE(again.columns[0].values.memory(), shown.columns[0].values.memory());
}

TEST_F(SharedSpansTest, EverybodyWhoSharesIsToldWhatCouldNotBeRead)
{
    const RecordColumns one = columns(), other = columns();
    QStringList heard;
    const auto first = std::make_shared<int>(), second = std::make_shared<int>();
    one.failure->addListener(first, [&](const QString&) { heard << "one"; });
    other.failure->addListener(second, [&](const QString&) { heard << "other"; });
    run("UPDATE segment SET data = x'00' WHERE id / 1048576 = 5");
    EXPECT_TRUE(std::isnan(one.columns[0].values.valueAt(4 * kChunk)));
    EXPECT_EQ(heard, (QStringList{"one", "other"}));
}

TEST_F(SharedSpansTest, WhoeverListensTwiceOrNoLongerIsToldOnceOrNot)
{
    const RecordColumns shown = columns();
    QStringList heard;
    const auto owner = std::make_shared<int>();
    for (int fetch = 0; fetch < 3; ++fetch)
        shown.failure->addListener(owner, [&](const QString&) { heard << "owner"; });
    shown.failure->addListener(std::make_shared<int>(), [&](const QString&) { heard << "gone"; });
    run("UPDATE segment SET data = x'00' WHERE id / 1048576 = 5");
    EXPECT_TRUE(std::isnan(shown.columns[0].values.valueAt(4 * kChunk)));
    EXPECT_EQ(heard, QStringList("owner"));
}

TEST_F(SharedSpansTest, RecordsThatCameMeanwhileAreNotInTheAnswerBefore)
{
    const RecordColumns before = columns();
    opened()->appender()->append(agent, records(kRecords, 1));
    const RecordColumns after = columns();
    EXPECT_EQ(before.times.size(), kRecords);
    EXPECT_EQ(after.times.size(), kRecords + 1);
    EXPECT_EQ(after.times.valueAt(kRecords), kRecords);
}

/// Answers in one store while records are stored, taken back and compacted, by it and by others.
class SharedSpansRandomTest : public SharedSpansTest, public testing::WithParamInterface<unsigned> {
protected:
    struct Shown {
        RecordColumns told;
        plotix::RecordBlock wanted;
    };

    SharedSpansRandomTest() { random.seed(GetParam()); }
    std::size_t any(std::size_t count) { return random() % count; }
    std::shared_ptr<plotix::RecordStore> anyStore() { return any(2) == 0 ? asked : opened(); }

    void changeSomething()
    {
        const std::shared_ptr<plotix::RecordStore> by = anyStore();
        const std::size_t kind = any(6), at = any(m_end);
        if (kind == 0) {
            by->compact({.dropBefore = any(2) == 0 ? Bound(static_cast<double>(any(kChunk))) : std::nullopt});
        } else if (kind <= 2) {
            const std::size_t count = 1 + any(kind == 1 ? 30 : 3 * kChunk);
            by->appender()->append(agent, records(m_end, count));
            m_end += count;
        } else {
            const auto transaction = by->begin();
            if (kind == 3)
                transaction->remove(agent, std::vector{any(2) == 0 ? air : wind}, static_cast<double>(at),
                                    static_cast<double>(at + any(kChunk)));
            else
                transaction->store(agent, records(at, 1 + any(kind == 4 ? 3 : 2 * kChunk)));
            transaction->commit();
        }
    }
    static void expectSame(const RecordColumns& told, const RecordColumns& wanted)
    {
        ASSERT_EQ(*told.runs, *wanted.runs);
        for (std::size_t c = 0; c < 2; ++c) {
            const RecordColumns::Column &mine = told.columns[c], &theirs = wanted.columns[c];
            EXPECT_EQ(mine.validity.isAllValid(), theirs.validity.isAllValid());
            EXPECT_EQ(mine.total->valid, theirs.total->valid);
            EXPECT_TRUE(mine.total->sum == theirs.total->sum);
            const plotix::ValueRuns one = mine.runs->unpacked(), other = theirs.runs->unpacked();
            EXPECT_EQ(one.least, other.least);
            EXPECT_EQ(one.greatest, other.greatest);
            EXPECT_TRUE(areSame(one.first, other.first));
        }
    }
    static void expectRecords(const RecordColumns& told, const plotix::RecordBlock& wanted)
    {
        ASSERT_EQ(told.times.size(), wanted.times.size());
        const auto times = told.times.holdAll();
        EXPECT_TRUE(areSame(told.times.span(), wanted.times.span()));
        for (std::size_t c = 0; c < 2; ++c) {
            const auto held = told.columns[c].values.holdAll();
            EXPECT_TRUE(areSame(told.columns[c].values.span(), wanted.columns[c].values.span()));
            std::size_t wrong = 0;
            for (std::size_t i = 0; i < wanted.times.size(); ++i)
                wrong += told.columns[c].validity.isValid(i) != wanted.columns[c].validity.isValid(i) ? 1 : 0;
            EXPECT_EQ(wrong, 0U);
        }
    }
    static bool areSame(std::span<const double> one, std::span<const double> other)
    {
        return one.size() == other.size() && std::memcmp(one.data(), other.data(), one.size_bytes()) == 0;
    }

    std::size_t m_end = kRecords;
    std::vector<Shown> m_shown;
};

TEST_P(SharedSpansRandomTest, AnAnswerIsThatOfAStoreThatKnowsNothing)
{
    for (int step = 0; step < 24; ++step) {
        const Bound from = any(3) == 0 ? std::nullopt : Bound(static_cast<double>(any(4 * kChunk)));
        const Bound to = any(3) == 0 ? std::nullopt : Bound(static_cast<double>(m_end - any(9 * kChunk)));
        m_shown.push_back({columns(from, to), read({air, wind}, from, to)});
        expectSame(m_shown.back().told, fresh(from, to));
        ASSERT_FALSE(HasFailure()) << "step " << step;
        if (m_shown.size() > 3)
            m_shown.erase(m_shown.begin() + static_cast<std::ptrdiff_t>(any(3)));
        for (std::size_t changes = any(3); changes > 0; --changes)
            changeSomething();
        const Shown& looked = m_shown[any(m_shown.size())];
        expectRecords(looked.told, looked.wanted);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SharedSpansRandomTest, testing::Values(1U, 2U, 3U));

}  // namespace
