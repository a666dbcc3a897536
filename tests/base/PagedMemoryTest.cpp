#include "base/CoresAllowed.h"
#include "base/PagedReading.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

using plotix::PageCache;
using plotix::PagedArray;
using plotix::PagedMemory;

/// Element i is worth 3 × i, and a word of 64 elements is worth the element it begins with.
class Threefold : public PagedMemory {
public:
    Threefold(std::shared_ptr<PageCache> cache, std::size_t elements)
        : PagedMemory(std::move(cache), elements),
          m_values(reserve<double>()),
          m_words(reserve<std::uint64_t>(64)),
          m_broken(false)
    {
    }
    PagedArray<double> values() const { return {shared_from_this(), m_values, elements()}; }
    PagedArray<std::uint64_t> words() const { return {shared_from_this(), m_words, (elements() + 63) / 64, 64}; }

    std::size_t filled() const { return m_filled; }  ///< elements, again and again
    int fills() const { return m_fills; }
    void breakDown(bool broken) { m_broken = broken; }
    void readPastPages() { m_readsPast = true; }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        for (std::size_t i = first; i < end; ++i)
            m_values[i] = m_broken ? -1 : 3 * static_cast<double>(i);
        for (std::size_t word = first / 64; word < (end + 63) / 64; ++word)
            m_words[word] = word * 64;
        m_filled += end - first;
        ++m_fills;
        return !m_broken;
    }
    std::optional<bool> readPast(std::size_t first, std::size_t end, const Show& show) const override
    {
        if (!m_readsPast)
            return std::nullopt;
        for (; first < end; first += 64) {
            const std::uint64_t bits = first;
            double values[64];
            for (std::size_t i = 0; i < 64; ++i)
                values[i] = m_broken ? -1 : 3 * static_cast<double>(first + i);
            show({first, std::span<const double>(values, std::min<std::size_t>(64, end - first)), &bits});
        }
        return !m_broken;
    }
    double* m_values;
    std::uint64_t* m_words;
    std::atomic<bool> m_broken;
    bool m_readsPast = false;
    mutable std::atomic<std::size_t> m_filled = 0;
    mutable std::atomic<int> m_fills = 0;
};

class PagedMemoryTest : public testing::Test {
protected:
    static constexpr std::size_t kPage = PagedMemory::kPage;
    static constexpr std::size_t kPageBytes = kPage * 8 + kPage / 8;

    std::shared_ptr<PageCache> m_cache = std::make_shared<PageCache>(2 * kPageBytes);
    std::shared_ptr<Threefold> m_memory = std::make_shared<Threefold>(m_cache, 10 * kPage + 7);
    PagedArray<double> m_values = m_memory->values();

    double lookAt(std::size_t element) const { return m_values.valueAt(element); }
};

TEST_F(PagedMemoryTest, EveryHoldOfAStandInCounts)
{
    lookAt(0);
    EXPECT_EQ(m_memory->standInsHeld(), 0U);
    m_memory->breakDown(true);
    const PagedMemory::Hold one = m_values.hold(kPage, kPage + 1), other = m_values.hold(kPage, kPage + 1);
    EXPECT_EQ(m_memory->standInsHeld(), 2U);
    m_memory->breakDown(false);
    lookAt(3 * kPage);
    EXPECT_EQ(m_memory->standInsHeld(), 2U);
}

TEST_F(PagedMemoryTest, APageIsUnreadUntilItIsReadAtALaterLook)
{
    m_memory->breakDown(true);
    lookAt(0);
    lookAt(3 * kPage);
    lookAt(0);
    EXPECT_EQ(m_memory->pagesUnread(), 2U);
    m_memory->breakDown(false);
    lookAt(0);
    EXPECT_EQ(m_memory->pagesUnread(), 1U);
}

TEST_F(PagedMemoryTest, AValueIsThereWhereSomebodyLooks)
{
    EXPECT_EQ(lookAt(5), 15);
    EXPECT_EQ(lookAt(10 * kPage + 6), 3.0 * (10 * kPage + 6));
    EXPECT_EQ(m_memory->words().valueAt(2), 128U);
}

TEST_F(PagedMemoryTest, OnlyWhatIsLookedAtIsFilled)
{
    const PagedMemory::Hold held = m_values.hold(kPage - 1, kPage + 1);
    EXPECT_EQ(m_memory->filled(), 2 * kPage);
    EXPECT_EQ(m_cache->inUse(), 2 * kPageBytes);
}

TEST_F(PagedMemoryTest, NeighbouringPagesAreFilledTogether)
{
    const PagedMemory::Hold held = m_values.holdAll();
    EXPECT_EQ(m_memory->fills(), 1);
    EXPECT_EQ(m_memory->filled(), m_values.size());
}

TEST_F(PagedMemoryTest, WhatWasLookedAtIsKeptForTheNextLook)
{
    lookAt(5);
    lookAt(6);
    EXPECT_EQ(m_memory->fills(), 1);
}

TEST_F(PagedMemoryTest, TheOnesLookedAtLongestAgoGoFirst)
{
    for (const std::size_t page : {0, 1, 0, 2})
        lookAt(page * kPage);
    EXPECT_EQ(m_cache->inUse(), 2 * kPageBytes);
    const int fills = m_memory->fills();
    lookAt(0);
    EXPECT_EQ(m_memory->fills(), fills);
    EXPECT_EQ(lookAt(kPage), 3.0 * kPage);
    EXPECT_EQ(m_memory->fills(), fills + 1);
}

TEST_F(PagedMemoryTest, HeldPagesStayWhateverTheBudget)
{
    const PagedMemory::Hold held = m_values.hold(0, 3 * kPage);
    m_cache->setBudget(0);
    lookAt(5 * kPage);
    EXPECT_EQ(m_cache->inUse(), 3 * kPageBytes);
    EXPECT_EQ(m_values[2 * kPage], 6.0 * kPage);
}

TEST_F(PagedMemoryTest, WithoutBudgetNothingStays)
{
    m_cache->setBudget(0);
    EXPECT_EQ(lookAt(5), 15);
    EXPECT_EQ(m_cache->inUse(), 0U);
    EXPECT_EQ(lookAt(5), 15);
}

TEST_F(PagedMemoryTest, AMemoryThatGoesGivesItsPagesBack)
{
    lookAt(5);
    m_values = {};
    m_memory.reset();
    EXPECT_EQ(m_cache->inUse(), 0U);
}

TEST_F(PagedMemoryTest, AHoldKeepsTheMemory)
{
    const double* data = m_values.data();
    const PagedMemory::Hold held = m_values.hold(0, 10);
    m_values = {};
    m_memory.reset();
    EXPECT_EQ(data[5], 15);
}

TEST_F(PagedMemoryTest, WhatCouldNotBeReadIsTriedAgain)
{
    m_memory->breakDown(true);
    EXPECT_EQ(lookAt(5), -1);
    EXPECT_EQ(m_cache->inUse(), 0U);
    m_memory->breakDown(false);
    EXPECT_EQ(lookAt(5), 15);
}

TEST_F(PagedMemoryTest, WhatIsNotThereIsNotHeldWithoutWaiting)
{
    PagedMemory::Hold held;
    EXPECT_FALSE(m_memory->holdIfThere(0, 1, held));
    lookAt(0);
    EXPECT_TRUE(m_memory->holdIfThere(0, 1, held));
    m_cache->setBudget(0);
    EXPECT_EQ(m_values[1], 3);
}

/// Enough pages for several threads, and for whole huge pages of the system.
class LongPagedMemoryTest : public PagedMemoryTest {
protected:
    static constexpr std::size_t kPages = 70;

    LongPagedMemoryTest()
    {
        m_cache->setBudget(kPages * kPageBytes);
        m_memory = std::make_shared<Threefold>(m_cache, kPages * kPage);
        m_values = m_memory->values();
    }
    void expectRight(std::size_t firstPage, std::size_t endPage) const
    {
        std::size_t wrong = 0;
        for (std::size_t i = firstPage * kPage; i < endPage * kPage; ++i)
            wrong += m_values[i] != 3 * static_cast<double>(i) ? 1 : 0;
        EXPECT_EQ(wrong, 0U);
    }
};

TEST_F(LongPagedMemoryTest, ManyPagesAreSharedOutAmongThreads)
{
    const PagedMemory::Hold held = m_values.holdAll();
    EXPECT_EQ(m_memory->filled(), m_values.size());
    EXPECT_GT(m_memory->fills(), plotix::coresAllowed() > 1 ? 1 : 0);
    expectRight(0, kPages);
}

TEST_F(LongPagedMemoryTest, WhatIsHeldStaysWhereAllAroundItIsFilledAnew)
{
    const PagedMemory::Hold held = m_values.hold(21 * kPage, 22 * kPage);
    const_cast<double*>(m_values.data())[21 * kPage] = -5;  // as nobody else would write it
    const PagedMemory::Hold all = m_values.holdAll();
    EXPECT_EQ(m_values[21 * kPage], -5);
    expectRight(0, 21);
    expectRight(22, kPages);
}

TEST_F(LongPagedMemoryTest, WhatWasLetGoIsRightWhenItIsFilledAnew)
{
    static_cast<void>(m_values.holdAll());
    for (const std::size_t budget : {kPages / 2, std::size_t{3}, std::size_t{0}}) {
        m_cache->setBudget(budget * kPageBytes);
        EXPECT_EQ(m_cache->inUse(), budget * kPageBytes);
        const PagedMemory::Hold some = m_values.hold(5 * kPage, 50 * kPage);
        expectRight(5, 50);
        const PagedMemory::Hold all = m_values.holdAll();
        expectRight(0, kPages);
    }
}

TEST_F(LongPagedMemoryTest, WhatCouldNotBeReadIsTriedAgainByAllThreads)
{
    m_memory->breakDown(true);
    static_cast<void>(m_values.holdAll());
    EXPECT_EQ(m_cache->inUse(), 0U);
    m_memory->breakDown(false);
    const PagedMemory::Hold held = m_values.holdAll();
    expectRight(0, kPages);
}

TEST_F(LongPagedMemoryTest, TwoThreadsThatFillTheSameWaitForEachOther)
{
    std::atomic<int> wrong = 0;
    const auto look = [&] {
        for (int round = 0; round < 5; ++round) {
            const PagedMemory::Hold held = m_values.hold(kPage, 60 * kPage);
            for (std::size_t page = 1; page < 60; ++page)
                wrong += m_values[page * kPage + 7] == 3.0 * static_cast<double>(page * kPage + 7) ? 0 : 1;
        }
    };
    m_cache->setBudget(20 * kPageBytes);
    std::thread other(look);
    look();
    other.join();
    EXPECT_EQ(wrong, 0);
}

/// What a column shows piece by piece.
class PagedPiecesTest : public PagedMemoryTest {
protected:
    struct Shown {
        std::vector<double> values;
        std::vector<std::uint64_t> words;
        bool isRead = false;
    };
    Shown shown(std::size_t first, std::size_t end) const
    {
        Shown all;
        all.isRead = plotix::inPieces(m_values, plotix::ValidityBitmap(m_memory->words()), first, end,
                                      [&](const PagedMemory::Piece& piece) {
                                          EXPECT_EQ(piece.first, first + all.values.size());
                                          all.values.insert(all.values.end(), piece.values.begin(), piece.values.end());
                                          for (std::size_t i = 0; i < piece.values.size(); i += 64)
                                              all.words.push_back(piece.valid[i / 64]);
                                      });
        return all;
    }
    void expectAll(std::size_t first, std::size_t end) const
    {
        const Shown all = shown(first, end);
        EXPECT_TRUE(all.isRead);
        ASSERT_EQ(all.values.size(), end - first);
        for (std::size_t i = 0; i < all.values.size(); ++i)
            ASSERT_EQ(all.values[i], 3 * static_cast<double>(first + i));
        for (std::size_t word = 0; word < all.words.size(); ++word)
            ASSERT_EQ(all.words[word], first + word * 64);
    }
};

TEST_F(PagedPiecesTest, AllElementsAreShownInOrder)
{
    expectAll(128, m_values.size());
}

TEST_F(PagedPiecesTest, WhatCanBeReadPastItsPagesEntersNone)
{
    m_memory->readPastPages();
    expectAll(128, m_values.size());
    EXPECT_EQ(m_cache->inUse(), 0U);
    EXPECT_EQ(m_memory->fills(), 0);
}

TEST_F(PagedPiecesTest, WhatIsInMemoryIsShownFromThere)
{
    m_memory->readPastPages();
    lookAt(3 * kPage);
    const_cast<double*>(m_values.data())[3 * kPage] = -5;  // as nobody else would write it
    EXPECT_EQ(shown(2 * kPage, 5 * kPage).values[kPage], -5);
    EXPECT_EQ(shown(2 * kPage, 5 * kPage).values[2 * kPage], 12.0 * kPage);
}

TEST_F(PagedPiecesTest, WhatStandsInIsShownAndTold)
{
    for (int way = 0; way < 2; ++way) {
        m_memory->breakDown(true);
        EXPECT_FALSE(shown(0, 2 * kPage).isRead);
        EXPECT_EQ(shown(0, 2 * kPage).values[5], -1);
        m_memory->breakDown(false);
        expectAll(0, 2 * kPage);
        m_cache->setBudget(0);
        m_memory->readPastPages();
    }
}

TEST_F(PagedMemoryTest, AnArrayInMemoryForGoodIsHeldAtNoCost)
{
    const PagedArray<double> values = plotix::SharedArray<double>::fromVector({1, 2, 3});
    EXPECT_TRUE(values.isResident());
    const PagedMemory::Hold held = values.holdAll();
    EXPECT_EQ(values[2], 3);
    EXPECT_EQ(values.valueAt(1), 2);
}

TEST_F(PagedMemoryTest, ManyThreadsReadTheSameWithLittleRoom)
{
    m_cache->setBudget(kPageBytes);
    std::atomic<int> wrong = 0;
    std::vector<std::thread> readers;
    for (unsigned seed = 1; seed <= 4; ++seed)
        readers.emplace_back([this, seed, &wrong] {
            for (std::size_t i = 0, at = seed; i < 300; ++i, at = (at * 48271) % m_values.size())
                wrong += lookAt(at) == 3 * static_cast<double>(at) ? 0 : 1;
        });
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(wrong, 0);
}

}  // namespace
