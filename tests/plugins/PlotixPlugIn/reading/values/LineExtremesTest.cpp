#include "plugins/PlotixPlugIn/reading/values/LineExtremes.h"

#include "tests/plugins/PlotixPlugIn/reading/values/RecordedLine.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;
using plotix_test::arbitraryLine;
using plotix_test::RecordedLine;

using Element = std::optional<std::size_t>;

/// Extremes found by going through all points for every point, straight from what the header says.
class SlowExtremes {
public:
    SlowExtremes(const RecordedLine& line, bool upsideDown, ExtremeSize size) : m_size(size)
    {
        for (std::size_t element = 0; element < line.times.size(); ++element)
            if (line.isRecord(element))
                m_points.push_back(
                    {element, line.times[element],
                     (upsideDown ? -1 : 1) * static_cast<double>(static_cast<float>(line.values[element]))});
    }

    std::vector<std::size_t> all() const
    {
        std::vector<std::size_t> found;
        for (std::size_t index = 0; index < m_points.size(); ++index)
            if (falls(index, -1) && falls(index, 1) && isHighestAround(index))
                found.push_back(m_points[index].element);
        return found;
    }

private:
    struct Point {
        std::size_t element;
        double time, height;
    };

    bool falls(std::size_t from, int step) const
    {
        const double top = m_points[from].height;
        for (std::size_t index = from + static_cast<std::size_t>(step); index < m_points.size();
             index += static_cast<std::size_t>(step)) {
            const double height = m_points[index].height;
            if (height < top && top - height >= m_size.prominence)
                return true;
            if (height > top || (step < 0 && height == top))
                return false;
        }
        return false;
    }
    bool isHighestAround(std::size_t at) const
    {
        for (std::size_t index = 0; index < m_points.size(); ++index) {
            const Point& other = m_points[index];
            const bool isHigher =
                other.height > m_points[at].height || (other.height == m_points[at].height && index < at);
            if (isHigher && other.time >= m_points[at].time - m_size.reach &&
                other.time <= m_points[at].time + m_size.reach)
                return false;
        }
        return true;
    }

    ExtremeSize m_size;
    std::vector<Point> m_points;
};

RecordedLine lineOf(const std::vector<double>& values)
{
    RecordedLine line;
    for (const double value : values)
        line.add(static_cast<double>(line.times.size()), value);
    return line;
}

Element maximumAfter(const std::vector<double>& values, double time, ExtremeSize size)
{
    return extremeAfter(*lineOf(values).records().series, time, Extreme::Maximum, size);
}

TEST(LineExtremesTest, TheEndsOfALineAreNoExtremes)
{
    EXPECT_EQ(maximumAfter({9, 1, 5, 2, 8}, -1, {1, 0}), 2U);
    EXPECT_EQ(maximumAfter({1, 2, 3}, -1, {1, 0}), std::nullopt);
    EXPECT_EQ(maximumAfter({}, 0, {1, 0}), std::nullopt);
}

TEST(LineExtremesTest, SmallTurnsDoNotCount)
{
    EXPECT_EQ(maximumAfter({0, 5, 4.5, 6, 0}, -1, {1, 0}), 3U);
    EXPECT_EQ(maximumAfter({0, 5, 4.5, 6, 0}, -1, {0.5, 0}), 1U);
}

TEST(LineExtremesTest, APlateauCountsOnceAtItsBeginning)
{
    EXPECT_EQ(maximumAfter({0, 5, 5, 5, 0}, -1, {1, 0}), 1U);
    EXPECT_EQ(maximumAfter({0, 5, 5, 5, 0}, 1, {1, 0}), std::nullopt);
}

TEST(LineExtremesTest, OfACrowdTheHighestCounts)
{
    EXPECT_EQ(maximumAfter({0, 5, 0, 6, 0, 4, 0, 0, 3, 0}, -1, {1, 2}), 3U);
    EXPECT_EQ(maximumAfter({0, 5, 0, 6, 0, 4, 0, 0, 3, 0}, 3, {1, 2}), 8U) << "4 lies within reach of 6";
}

TEST(LineExtremesTest, EitherKindIsTheNearerOne)
{
    const auto series = lineOf({0, 5, 1, 7, 0}).records().series;
    EXPECT_EQ(extremeAfter(*series, 1, Extreme::Either, {1, 0}), 2U);
    EXPECT_EQ(extremeBefore(*series, 2, Extreme::Either, {1, 0}), 1U);
    EXPECT_EQ(extremeBefore(*series, 1, Extreme::Either, {1, 0}), std::nullopt);
}

TEST(LineExtremesTest, TimesThatRunBackwardsHaveNone)
{
    const auto series = (RecordedLine{{0, 2, 1}, {0, 5, 0}}).records().series;
    EXPECT_EQ(extremeAfter(*series, -1, Extreme::Either, {1, 0}), std::nullopt);
}

TEST(LineExtremesTest, SteppingFindsWhatGoingThroughAllPointsFinds)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        const std::size_t count = seed % 3 == 0 ? 2'300 : 400;
        const RecordedLine line = arbitraryLine(seed, count);
        const auto series = line.records().series;
        const ExtremeSize size{0.3 * (seed % 7), seed % 5 == 0 ? 0.0 : 3.0 * (seed % 5)};
        for (const Extreme kind : {Extreme::Maximum, Extreme::Minimum}) {
            const std::vector<std::size_t> all = SlowExtremes(line, kind == Extreme::Minimum, size).all();
            std::vector<std::size_t> forward, backward;
            for (Element at = extremeAfter(*series, -1e9, kind, size); at;
                 at = extremeAfter(*series, line.times[*at], kind, size))
                forward.push_back(*at);
            for (Element at = extremeBefore(*series, 1e9, kind, size); at;
                 at = extremeBefore(*series, line.times[*at], kind, size))
                backward.insert(backward.begin(), *at);
            ASSERT_EQ(forward, all) << seed;
            ASSERT_EQ(backward, all) << seed;
        }
    }
}

TEST(LineExtremesTest, FromAnyTimeTheNextOneIsFound)
{
    for (unsigned seed = 100; seed < 110; ++seed) {
        const RecordedLine line = arbitraryLine(seed, 600);
        const auto series = line.records().series;
        const ExtremeSize size{1, 2};
        const std::vector<std::size_t> all = SlowExtremes(line, false, size).all();
        for (double time = -1; time < line.times.back() + 1; time += 1.5) {
            Element next, previous;
            for (const std::size_t element : all) {
                next = !next && line.times[element] > time ? element : next;
                previous = line.times[element] < time ? element : previous;
            }
            ASSERT_EQ(extremeAfter(*series, time, Extreme::Maximum, size), next) << seed << " " << time;
            ASSERT_EQ(extremeBefore(*series, time, Extreme::Maximum, size), previous) << seed << " " << time;
        }
    }
}

}  // namespace
