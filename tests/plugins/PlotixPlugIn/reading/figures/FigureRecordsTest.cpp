#include "plugins/PlotixPlugIn/reading/figures/FigureRecords.h"

#include "plugins/PlotixPlugIn/host/KTVRecordDictionary.h"
#include "tests/support/fakehost/FakeHost.h"
#include "tests/support/fakehost/RecordBuilder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using plotix::FigureRecords;
using plotix::SharedArray;

class FigureRecordsTest : public testing::Test {
protected:
    FigureRecords recordsOf(const KTVRecordDictionaryPtr& dictionary)
    {
        return {*dictionary->time(), *dictionary->columnForKey(key)};
    }
    fakehost::RecordBuilder recording() { return {std::weak_ptr<fakehost::FakeAgent>(), units}; }
    std::vector<double> valuesOf(const FigureRecords& records)
    {
        const auto points = records.points(0, records.size(), buffer);
        return {points.values.begin(), points.values.end()};
    }

    const QString key = QStringLiteral("airTemperature");
    std::shared_ptr<const fakehost::FakeUnitModel> units = std::make_shared<fakehost::FakeUnitModel>();
    FigureRecords::Buffer buffer;
};

TEST_F(FigureRecordsTest, AreReadWhereTheyStand)
{
    const auto dictionary = recording().times({0, 60}).column(key, {1, 2}).build();
    const FigureRecords records = recordsOf(dictionary);
    EXPECT_EQ(records.points(0, 2, buffer).values.data(), dictionary->columnForKey(key)->archivedValues().data());
}

TEST_F(FigureRecordsTest, LeaveOutWhatIsInvalidOrNoNumber)
{
    const FigureRecords records = recordsOf(recording()
                                                .at(0)
                                                .value(key, 1)
                                                .at(60)
                                                .invalid(key, 99)
                                                .at(120)
                                                .value(key, std::nan(""))
                                                .at(180)
                                                .value(key, 4)
                                                .build());
    EXPECT_EQ(valuesOf(records), (std::vector<double>{1, 4}));
    EXPECT_EQ(records.points(0, 4, buffer).times[1], 180);
}

TEST_F(FigureRecordsTest, CountWhatDiffersFromItsColumnAsWhatItIs)
{
    const FigureRecords records =
        recordsOf(recording().at(0).value(key, 1).at(60).notAProperty(key).at(120).neverPlotted(key, 3).build());
    EXPECT_EQ(valuesOf(records), (std::vector<double>{1, 3}));
}

TEST_F(FigureRecordsTest, KeepTheUnitThatWasShownWhenTheyWereMade)
{
    KTVRecordColumn::Descriptor description;
    description.archivedUnit = QStringLiteral("degC");
    description.unit = QStringLiteral("K");
    const auto column = std::make_shared<KTVRecordColumn>(description, SharedArray<double>::fromVector({0, 100}),
                                                          plotix::ValidityBitmap(), units);
    const FigureRecords records(SharedArray<double>::fromVector({0, 60}), *column);
    column->setUnit(QStringLiteral("degC"));
    EXPECT_EQ(valuesOf(records), (std::vector<double>{273.15, 373.15}));
}

TEST_F(FigureRecordsTest, EndWithTheShorterOfTimesAndValues)
{
    const FigureRecords records =
        recordsOf(recording().times({0, 60, 120}).column(key, {1, 2, 3}).shortened(key, 2).build());
    EXPECT_EQ(records.size(), 2U);
}

TEST_F(FigureRecordsTest, OfTimesInDisorderAreSorted)
{
    const std::vector<double> times{60, 0, std::nan(""), 30, 30};
    const auto order = plotix::sortingOrder(times);
    ASSERT_TRUE(order);
    EXPECT_EQ(*order, (std::vector<std::size_t>{1, 3, 4, 0}));
    const FigureRecords records(SharedArray<double>::fromVector(times),
                                SharedArray<double>::fromVector({6, 0, 9, 3, 4}));
    const FigureRecords sorted = records.arranged(*order, SharedArray<double>::fromVector({0, 30, 30, 60}));
    EXPECT_EQ(valuesOf(sorted), (std::vector<double>{0, 3, 4, 6}));
}

TEST_F(FigureRecordsTest, TimesInOrderAreNotSorted)
{
    EXPECT_FALSE(plotix::sortingOrder(std::vector<double>{}));
    EXPECT_FALSE(plotix::sortingOrder(std::vector<double>{1, 1, 2}));
    EXPECT_TRUE(plotix::sortingOrder(std::vector<double>{std::nan("")}));
}

}  // namespace
