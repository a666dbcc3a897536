#include "plugins/PlotixPlugIn/reading/missing/KeptStretches.h"

#include "base/PageCache.h"
#include "plotkit/model/PagedSeries.h"
#include "tests/plugins/PlotixPlugIn/reading/values/RecordedLine.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

using namespace plotix;

/// Two lines with gaps, and a view of a hundred seconds over their thousand.
class KeptStretchesTest : public testing::Test {
protected:
    using Stretches = std::vector<MissingStretch>;

    KeptStretchesTest()
    {
        for (const unsigned seed : {3U, 4U})
            m_lines.push_back(plotix_test::arbitraryLine(seed, 1000).records(3));
    }
    const std::vector<Stretches>& look(double from, double length = 100, double least = 2.5)
    {
        return m_kept.within({from, from + length}, m_known, least, {&m_lines[0], &m_lines[1]});
    }
    void expectAsSearched(double from)
    {
        const std::vector<Stretches>& kept = look(from);
        for (std::size_t line = 0; line < m_lines.size(); ++line)
            EXPECT_EQ(kept[line], missingStretches(m_lines[line], {from, from + 100}, 2.5)) << from;
    }

    const TimeSpan m_known{-1000, 3000};
    std::vector<LineRecords> m_lines;
    KeptStretches m_kept;
};

/// A record a second, in pages that cannot be read for a while.
class ShakyPoints : public CPTPagedPoints {
public:
    ShakyPoints(std::shared_ptr<PageCache> cache, std::size_t elements) : CPTPagedPoints(std::move(cache), elements) {}

    static LineRecords line(const std::shared_ptr<const ShakyPoints>& points)
    {
        const std::size_t count = points->elements();
        std::vector<double> times(count);
        std::iota(times.begin(), times.end(), 0.0);
        const auto runs = std::make_shared<const TimeRuns>(TimeRuns{{0, count}, {0}, {times.back()}});
        const auto values = KeptRuns::of(ValueRuns{{1}, {1}, {1}});
        return {plotkit::pagedSeries(SharedArray<double>::fromVector(times), {runs, values, {}}, points, count),
                nullptr, 3};
    }
    bool fails = false;

private:
    bool writePoints(CPTPointWriter& into) const noexcept override
    {
        if (!fails)
            for (std::size_t element = into.first(); element < into.end(); ++element)
                into.setPoint(element, 1);
        return !fails;
    }
};

TEST_F(KeptStretchesTest, WhatCouldNotBeReadForAMomentIsNotKeptAsMissing)
{
    const auto points = std::make_shared<ShakyPoints>(std::make_shared<PageCache>(0), 1000);
    m_lines = {ShakyPoints::line(points), ShakyPoints::line(points)};
    points->fails = true;
    EXPECT_EQ(look(200)[0].size(), 1U);
    points->fails = false;
    EXPECT_EQ(look(200)[0].size(), 0U);
}

TEST_F(KeptStretchesTest, AreThoseThatASearchOfTheViewFinds)
{
    for (double from = -150; from < 1500; from += 7)
        expectAsSearched(from);
    for (double from = 1500; from > -150; from -= 11)
        expectAsSearched(from);
}

TEST_F(KeptStretchesTest, BehindTheLastRecordAPannedViewIsAsOneOfItsOwn)
{
    for (double from = 880; from < 915; from += 0.25)
        expectAsSearched(from);
}

TEST_F(KeptStretchesTest, AViewThatIsPannedIsSearchedOnceForManyMoves)
{
    look(200);
    for (double from = 201; from <= 251; ++from)
        look(from);
    EXPECT_EQ(m_kept.searches(), 2U);
    look(252);
    EXPECT_EQ(m_kept.searches(), 3U);
}

TEST_F(KeptStretchesTest, AZoomIsSearchedAnew)
{
    const Stretches all = look(200)[0];
    EXPECT_NE(look(200, 100, 8)[0].size(), all.size());
    EXPECT_EQ(m_kept.searches(), 2U);
}

TEST_F(KeptStretchesTest, AnotherLongestJoinIsSearchedAnew)
{
    look(200);
    m_lines[0].longestJoin = 10;
    look(200);
    EXPECT_EQ(m_kept.searches(), 2U);
}

TEST_F(KeptStretchesTest, NothingIsMissingWhereNothingIsKnown)
{
    look(200);
    EXPECT_EQ(look(4000, -1000), (std::vector<Stretches>(2)));
    EXPECT_EQ(m_kept.searches(), 1U);
}

TEST_F(KeptStretchesTest, ALineThatComesBackWhereNothingIsKnownIsAnsweredToo)
{
    look(2900);
    EXPECT_EQ(m_kept.within({4000, 3000}, m_known, 2.5, {&m_lines[0]}).size(), 1U);
    EXPECT_EQ(look(4000, -1000).size(), 2U);
}

TEST_F(KeptStretchesTest, NothingIsSearchedBeyondWhatIsKnown)
{
    const Stretches atEnd = look(2900)[0];
    ASSERT_EQ(atEnd.size(), 1U);
    EXPECT_EQ(atEnd[0].to, 3000);
}

}  // namespace
