#include "base/RecordTimes.h"

#include "tests/support/paging/PagedRecords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using plotix::PageCache;
using plotix::PagedMemory;
using plotix::RecordTimes;
using plotix::SharedArray;
using plotix::TimeRuns;

/// Times about a second apart, some of them equal, some far apart; more than two pages of them.
class RecordTimesTest : public testing::Test {
protected:
    RecordTimesTest()
    {
        double time = 1e9;
        for (std::size_t index = 0; index < 2 * PagedMemory::kPage + 77; ++index) {
            time += m_random() % 5 == 0 ? 0 : m_random() % 100 == 0 ? 1000 : 1;
            m_times.push_back(time);
        }
    }
    RecordTimes paged(bool hasRuns)
    {
        KTVRecordDictionary records;
        records.setTime(SharedArray<double>::fromVector(m_times));
        const RecordTimes paged = *plotix_test::paged(records, m_cache, m_random)->time();
        return hasRuns ? paged : RecordTimes(static_cast<const plotix::PagedArray<double>&>(paged));
    }
    void expectPlaces(const RecordTimes& times, double time, std::size_t count)
    {
        const auto end = m_times.begin() + static_cast<std::ptrdiff_t>(count);
        EXPECT_EQ(times.firstNotEarlier(time, count),
                  static_cast<std::size_t>(std::lower_bound(m_times.begin(), end, time) - m_times.begin()));
        EXPECT_EQ(times.firstLater(time, count),
                  static_cast<std::size_t>(std::upper_bound(m_times.begin(), end, time) - m_times.begin()));
    }
    void expectAllPlaces(const RecordTimes& times)
    {
        const double outside[] = {-HUGE_VAL, 0, 1e9, m_times.back(), m_times.back() + 1, HUGE_VAL, std::nan("")};
        for (const double time : outside)
            for (const std::size_t count : {m_times.size(), m_times.size() - 3, std::size_t{1}, std::size_t{0}})
                expectPlaces(times, time, count);
        for (int looked = 0; looked < 300; ++looked) {
            const double time = m_times[m_random() % m_times.size()] + (m_random() % 2 == 0 ? 0 : 0.5);
            expectPlaces(times, time, m_times.size());
            expectPlaces(times, time, m_random() % m_times.size());
        }
    }

    std::mt19937 m_random{11};
    std::vector<double> m_times;
    std::shared_ptr<PageCache> m_cache = std::make_shared<PageCache>(0);
};

TEST_F(RecordTimesTest, PlacesInMemoryAreThoseOfABinarySearch)
{
    expectAllPlaces(SharedArray<double>::fromVector(m_times));
}

TEST_F(RecordTimesTest, PlacesFoundByRunsAreTheSame)
{
    for (int cut = 0; cut < 5; ++cut)
        expectAllPlaces(paged(true));
}

TEST_F(RecordTimesTest, PlacesOfPagesWithoutRunsAreTheSame)
{
    expectAllPlaces(paged(false));
}

TEST_F(RecordTimesTest, TheEndsAreKnown)
{
    for (const RecordTimes& times :
         {paged(true), paged(false), RecordTimes(SharedArray<double>::fromVector(m_times))}) {
        EXPECT_EQ(times.front(), m_times.front());
        EXPECT_EQ(times.back(), m_times.back());
    }
}

TEST_F(RecordTimesTest, LookingATimeUpReadsOnePageAtMost)
{
    const RecordTimes times = paged(true);
    m_cache->setBudget(PageCache::kDefaultBudget);
    times.firstLater(m_times[100] + 0.5, times.size());
    EXPECT_LE(m_cache->inUse(), PagedMemory::kPage * sizeof(double));
}

}  // namespace
