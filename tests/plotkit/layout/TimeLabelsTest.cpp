#include "plotkit/layout/GraphLayout.h"
#include "plotkit/model/CPTTickFormatters.h"
#include "tests/plotkit/layout/RuledText.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace plotkit;

struct Place {
    const char* zone;
    const char* moment;  ///< near which the spans lie
};

void PrintTo(const Place& place, std::ostream* out)
{
    *out << place.zone;
}

/// Labels of a time axis of usual width, around moments at which clocks are changed.
class TimeLabelsTest : public testing::TestWithParam<Place> {
protected:
    TimeLabelsTest()
    {
        graph.setLabelRoom(CPTLabelRoom::Grows);
        CPTXYAxis& axis = *graph.axisSet()->xAxis();
        axis.setAxisConstraints(CPTConstraints{0});
        axis.setLabelingPolicy(CPTAxisLabelingPolicy::Calendar);
        axis.setTimeZone(zone);
        axis.setLabelFormatter(std::make_shared<CPTTickTimeFormatter>(CPTClock{zone, CPTHourForm::TwentyFour}));
    }
    std::vector<AxisLabel> labels(double length)
    {
        graph.defaultPlotSpace()->setXRange({middle - length / 2, length});
        return layOutGraph(graph, QRectF(0, 0, 800, 400), sizeOfText).xAxis().labels;
    }

    const QTimeZone zone{GetParam().zone};
    const double middle =
        static_cast<double>(QDateTime::fromString(QLatin1String(GetParam().moment), Qt::ISODate).toSecsSinceEpoch());
    CPTXYGraph graph;
};

TEST_P(TimeLabelsTest, AreSeveralTellMomentsApartAndDoNotOverlap)
{
    constexpr double kShortest = 0.01, kCentury = 3.2e9;  // seconds
    for (double length = kShortest; length < kCentury; length *= 2.3) {
        SCOPED_TRACE(length);
        const std::vector<AxisLabel> all = labels(length);
        EXPECT_GE(all.size(), 2U);
        EXPECT_LE(all.size(), 20U);
        std::set<QString> texts;
        for (std::size_t index = 0; index < all.size(); ++index) {
            EXPECT_TRUE(texts.insert(all[index].text).second) << all[index].text.toStdString();
            const double free = index > 0 ? all[index - 1].box.right() : 0;
            EXPECT_LT(free, all[index].box.left()) << all[index].text.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Zones, TimeLabelsTest,
    testing::Values(Place{"Europe/Berlin", "2024-03-31T01:00:00Z"}, Place{"Europe/Berlin", "2024-10-27T01:00:00Z"},
                    Place{"America/St_Johns", "2006-10-29T02:31:00Z"}, Place{"Asia/Kathmandu", "2024-07-01T00:00:00Z"},
                    Place{"Pacific/Apia", "2011-12-30T10:00:00Z"}, Place{"UTC", "2024-01-01T00:00:00Z"}));

}  // namespace
