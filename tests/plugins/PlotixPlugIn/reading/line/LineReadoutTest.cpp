#include "plugins/PlotixPlugIn/reading/line/LineReadout.h"

#include "plotkit/render/GraphText.h"
#include "tests/plotkit/model/SeriesBuilding.h"

#include <gtest/gtest.h>

// What the value line says of lines that stand in lanes, and of records that are far.

namespace {

using namespace plotix;

/// Two lines of a record an hour in two lanes, the second without records from hour 10 to 20.
class LineReadoutTest : public testing::Test {
protected:
    static constexpr double kHour = 3'600;

    LineReadoutTest()
    {
        graph.defaultPlotSpace()->setXRange({0, 30 * kHour});
        for (const bool isLower : {false, true}) {
            const auto space = std::make_shared<CPTXYPlotSpace>();
            CPTStrip strip;
            strip.top = isLower ? 0.5 : 0;
            strip.bottom = isLower ? 1 : 0.5;
            space->setStrip(strip);
            space->followXOf(graph.allPlotSpaces().front());
            space->setYRange({0, 30});
            graph.addPlotSpace(space);
            addLine(space, isLower);
        }
    }

    void addLine(const CPTXYPlotSpacePtr& space, bool hasGap)
    {
        std::vector<double> times;
        std::vector<float> values;
        for (int hour = 0; hour <= 30; ++hour)
            if (!hasGap || hour <= 10 || hour >= 20) {
                times.push_back(hour * kHour);
                values.push_back(static_cast<float>(hour));
            }
        plots.push_back(plotkit_test::plotOf(times, values));
        const CPTScatterPlotPtr plot = plots.back().plot;
        plot->setPlotSpace(space);
        graph.addPlot(plot);
        ReadLine line;
        line.key = line.name = hasGap ? QStringLiteral("gappy") : QStringLiteral("whole");
        lines.push_back({line, plot, lineRecords(plot->series(), nullptr, longestJoin)});
    }
    plotkit::GraphGeometry geometry() { return plotkit::geometryOfGraph(graph, {0, 0, 640, 480}, plotkit::sizeOfText); }
    ReadAt at(double hour) { return readAt(lines, hour * kHour, geometry(), texts, QStringLiteral("gappy")); }

    double longestJoin = 20 * kHour;
    CPTXYGraph graph;
    std::vector<plotkit_test::BoundPlot> plots;
    std::vector<TrendLine> lines;
    ValueTexts texts;
};

TEST_F(LineReadoutTest, EachDotStandsInTheLaneOfItsLine)
{
    const ReadAt read = at(5);
    const plotkit::GraphGeometry where = geometry();
    ASSERT_EQ(read.dots.size(), 2U);
    for (std::size_t index = 0; index < 2; ++index) {
        const CPTXYPlotSpace& space = graph.plotSpaceOf(*lines[index].plot);
        EXPECT_TRUE(where.areaOf(space).contains(read.dots[index].place)) << index;
        EXPECT_EQ(read.dots[index].place, where.pointForValue(space, {5 * kHour, 5}));
    }
    EXPECT_LT(read.dots[0].place.y(), read.dots[1].place.y());
}

TEST_F(LineReadoutTest, ARecordFartherThanUsualIsGivenWithItsDistance)
{
    const ReadAt read = at(13);
    EXPECT_EQ(read.readout.rows[0].note, "");
    EXPECT_EQ(read.readout.rows[1].value, "10");
    EXPECT_EQ(read.readout.rows[1].note, "3 h before");
}

TEST_F(LineReadoutTest, ARecordThatIsFarInThePictureIsGivenWithItsDistanceToo)
{
    EXPECT_EQ(at(5.2).readout.rows[0].note, "") << "some minutes can be overlooked, since records stand an hour apart";
    EXPECT_EQ(at(5.5).readout.rows[0].note, "30 min before");
    graph.defaultPlotSpace()->setXRange({5 * kHour, kHour});
    EXPECT_EQ(at(5.5).readout.rows[0].note, "30 min before");
}

TEST_F(LineReadoutTest, ARecordNextToATimeInAGapIsNeverPassedOffAsOfThatTime)
{
    lines[1].records.longestJoin = 5 * kHour;
    graph.defaultPlotSpace()->setXRange({0, 3'000 * kHour});  // a point of the picture is hours
    EXPECT_EQ(at(13).readout.rows[1].note, "3 h before");
    EXPECT_EQ(at(17).readout.rows[1].note, "3 h later");
}

TEST_F(LineReadoutTest, InAGapThereIsNeitherValueNorDot)
{
    lines[1].records.longestJoin = 5 * kHour;
    const ReadAt read = at(13);
    EXPECT_EQ(read.dots.size(), 1U);
    EXPECT_EQ(read.readout.rows[1].value, "not recorded");
    EXPECT_TRUE(read.readout.rows[1].isFaint);
}

TEST_F(LineReadoutTest, ADotOfALogarithmicLaneStandsAtThePowerOfItsValue)
{
    const CPTXYPlotSpacePtr space = graph.allPlotSpaces()[1];
    space->setYScaleType(CPTScaleType::Logarithmic);
    space->setYRange({0, 2});
    EXPECT_EQ(at(10).dots[0].place, geometry().pointForValue(*space, {10 * kHour, 1}));
}

TEST_F(LineReadoutTest, ADotOutsideItsLaneIsNotDrawn)
{
    graph.allPlotSpaces()[1]->setYRange({100, 10});
    EXPECT_EQ(at(5).dots.size(), 1U);
    EXPECT_EQ(at(5).readout.rows[0].value, "5") << "its value is read all the same";
}

TEST_F(LineReadoutTest, TheLineThatTheKeysFollowIsSaid)
{
    EXPECT_FALSE(at(5).readout.rows[0].isChosen);
    EXPECT_TRUE(at(5).readout.rows[1].isChosen);
}

TEST_F(LineReadoutTest, ARecordThatCameLateSaysWhen)
{
    lines[0].amendments =
        plotix::AmendedRecords({{KTVAmendment::Kind::Late, 4 * kHour, 6 * kHour, 40 * kHour, 40 * kHour}});
    EXPECT_EQ(at(5).readout.rows[0].note, QStringLiteral("arrived late, ") + texts.moment(40 * kHour, 60));
    EXPECT_EQ(at(7).readout.rows[0].note, QString());
    EXPECT_EQ(at(5).readout.rows[1].note, QString());
}

TEST_F(LineReadoutTest, ARecordThatWasCorrectedSaysWhen)
{
    lines[0].amendments =
        plotix::AmendedRecords({{KTVAmendment::Kind::Late, 4 * kHour, 6 * kHour, 40 * kHour, 40 * kHour},
                                {KTVAmendment::Kind::Corrected, 5 * kHour, 5 * kHour, 41 * kHour, 41 * kHour}});
    EXPECT_EQ(at(5).readout.rows[0].note, QStringLiteral("corrected ") + texts.moment(41 * kHour, 60));
}

}  // namespace
