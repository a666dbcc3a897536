#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"
#include "plugins/PlotixPlugIn/host/KTVRecordDictionary.h"
#include "tests/support/fakehost/FakeProperty.h"
#include "tests/support/fakehost/FakeUnitModel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

using fakehost::FakeProperty;
using fakehost::FakeUnitModel;
using plotix::SharedArray;
using plotix::ValidityBitmap;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class RecordColumnTest : public testing::Test {
protected:
    void make(std::vector<double> values, const char* unit, ValidityBitmap validity = {})
    {
        column = std::make_shared<KTVRecordColumn>(
            description(unit), SharedArray<double>::fromVector(std::move(values)), std::move(validity), units);
    }
    static KTVRecordColumn::Descriptor description(const char* unit)
    {
        KTVRecordColumn::Descriptor made;
        made.name = QStringLiteral("Air Temperature");
        made.propertyName = QStringLiteral("airTemperature");
        made.archivedUnit = made.unit = QLatin1String(unit);
        made.color = Qt::blue;
        made.type = 7;
        return made;
    }
    std::vector<double> all() const
    {
        std::vector<double> values(column->size());
        column->copyUnitValues(0, values);
        return values;
    }

    std::shared_ptr<const FakeUnitModel> units = std::make_shared<FakeUnitModel>();
    std::shared_ptr<KTVRecordColumn> column;
};

TEST_F(RecordColumnTest, GivesArchivedValuesInTheArchivedUnit)
{
    make({20.1, -3}, "degC");
    EXPECT_EQ(all(), (std::vector<double>{20.1, -3}));
    EXPECT_EQ(column->unitValue(0), 20.1);
}

TEST_F(RecordColumnTest, ConvertsByALinearMap)
{
    make({100, -40}, "degC");
    column->setUnit(QStringLiteral("degF"));
    EXPECT_NEAR(column->unitValue(0), 212, 1e-10);
    EXPECT_NEAR(column->unitValue(1), -40, 1e-10);
    EXPECT_EQ(column->unitSymbol(), QStringLiteral("°F"));
}

TEST_F(RecordColumnTest, ConvertsByAMapThatIsNotLinear)
{
    make({0, 1, 3}, "bel");
    column->setUnit(QStringLiteral("ratio"));
    EXPECT_DOUBLE_EQ(column->unitValue(1), 10);
    EXPECT_DOUBLE_EQ(all()[2], 1000);
}

TEST_F(RecordColumnTest, CopiesAPartOfTheValues)
{
    make({1, 2, 3, 4}, "hPa");
    column->setUnit(QStringLiteral("Pa"));
    std::vector<double> part(2);
    column->copyUnitValues(1, part);
    EXPECT_EQ(part, (std::vector<double>{200, 300}));
    column->copyUnitValues(4, {});
}

TEST_F(RecordColumnTest, ChangingTheUnitBackAndForthDriftsByNothing)
{
    const std::vector<double> values{20.1, 1.0 / 3, -273.15, 1e300};
    make(values, "degC");
    for (int time = 0; time < 1000; ++time) {
        column->setUnit(QStringLiteral("degF"));
        column->setUnit(QStringLiteral("K"));
        column->setUnit(QStringLiteral("degC"));
    }
    EXPECT_EQ(std::memcmp(all().data(), values.data(), values.size() * sizeof(double)), 0);
}

TEST_F(RecordColumnTest, StartsInAUnitOtherThanTheArchivedOne)
{
    auto made = description("degC");
    made.unit = QStringLiteral("K");
    const KTVRecordColumn shown(made, SharedArray<double>::fromVector({0}), {}, units);
    EXPECT_DOUBLE_EQ(shown.unitValue(0), 273.15);
}

TEST_F(RecordColumnTest, WithoutAUnitModelNothingIsConverted)
{
    KTVRecordColumn plain(description("degC"), SharedArray<double>::fromVector({20}), {}, nullptr);
    plain.setUnit(QStringLiteral("degF"));
    EXPECT_EQ(plain.unitValue(0), 20);
    EXPECT_EQ(plain.unitSymbol(), QStringLiteral("degF"));
}

TEST_F(RecordColumnTest, UnitsThatDoNotConvertKeepTheValues)
{
    make({20}, "degC");
    column->setUnit(QStringLiteral("hPa"));
    EXPECT_EQ(column->unitValue(0), 20);
    EXPECT_EQ(column->unit(), QStringLiteral("hPa"));
}

TEST_F(RecordColumnTest, ANaNIsNeverValid)
{
    make({1, kNaN}, "degC");
    EXPECT_TRUE(column->isValid(0));
    EXPECT_FALSE(column->isValid(1));
    EXPECT_FALSE(column->snapshotAt(1)->isValid());
}

TEST_F(RecordColumnTest, TheBitmapDecidesWhatElseIsValid)
{
    make({1, 2}, "degC", ValidityBitmap(SharedArray<std::uint64_t>::fromVector({0b10})));
    EXPECT_FALSE(column->isValid(0));
    EXPECT_TRUE(column->isValid(1));
    EXPECT_TRUE(std::isnan(column->snapshotAt(0)->unitValue()));
}

TEST_F(RecordColumnTest, AnEmptyColumnIsFine)
{
    make({}, "degC");
    column->setUnit(QStringLiteral("degF"));
    EXPECT_EQ(column->size(), 0U);
    EXPECT_TRUE(all().empty());
}

TEST_F(RecordColumnTest, ASnapshotCarriesTheDescriptorAndItsOwnValue)
{
    make({20.1, 21.5}, "degC");
    const KTVPropertyPtr snapshot = column->snapshotAt(1);
    EXPECT_EQ(snapshot->name(), QStringLiteral("Air Temperature"));
    EXPECT_EQ(snapshot->propertyName(), QStringLiteral("airTemperature"));
    EXPECT_EQ(snapshot->unitValue(), 21.5);
    EXPECT_EQ(snapshot->unitSymbol(), QStringLiteral("°C"));
    EXPECT_EQ(snapshot->color(), QColor(Qt::blue));
    EXPECT_EQ(snapshot->type(), 7U);
    EXPECT_TRUE(snapshot->visible());
}

TEST_F(RecordColumnTest, ASnapshotKeepsItsColumnAlive)
{
    make({20.1}, "degC");
    const KTVPropertyPtr snapshot = column->snapshotAt(0);
    column.reset();
    EXPECT_EQ(snapshot->unitValue(), 20.1);
}

// Callers convert element by element; were each one its own, a column of millions would cost an object per value.
TEST_F(RecordColumnTest, ASnapshotsUnitIsTheColumns)
{
    make({0, 100}, "degC");
    column->snapshotAt(0)->setUnit(QStringLiteral("K"));
    EXPECT_EQ(column->unit(), QStringLiteral("K"));
    EXPECT_DOUBLE_EQ(column->snapshotAt(1)->unitValue(), 373.15);
}

TEST_F(RecordColumnTest, AnExceptionStandsInForItsElement)
{
    make({1, 2}, "degC");
    const auto odd = std::make_shared<FakeProperty>(
        FakeProperty::Description{.name = "Odd", .unit = "degC", .type = kPropertyTypeNeverPlotted, .value = 5}, units);
    column->setException(1, odd);
    EXPECT_EQ(column->snapshotAt(1), odd);
    EXPECT_NE(column->snapshotAt(0), odd);
}

TEST_F(RecordColumnTest, AnElementThatIsNoPropertyIsNull)
{
    make({1, 2}, "degC");
    column->setException(0, nullptr);
    EXPECT_EQ(column->snapshotAt(0), nullptr);
    column->setUnit(QStringLiteral("K"));
    EXPECT_EQ(column->exceptions().size(), 1U);
}

TEST_F(RecordColumnTest, ChangingTheUnitReachesTheExceptions)
{
    make({1, 2}, "degC");
    column->setException(
        1, std::make_shared<FakeProperty>(FakeProperty::Description{.name = "Odd", .unit = "degC", .value = 0}, units));
    column->setUnit(QStringLiteral("K"));
    EXPECT_DOUBLE_EQ(column->snapshotAt(1)->unitValue(), 273.15);
}

TEST(RecordDictionaryTest, HasNoTimeAtFirst)
{
    const KTVRecordDictionary records;
    EXPECT_FALSE(records.time().has_value());
    EXPECT_EQ(records.columnForKey(QStringLiteral("pressure")), nullptr);
}

TEST(RecordDictionaryTest, KeepsItsKeysInTheOrderTheyWereSet)
{
    KTVRecordDictionary records;
    for (const char* key : {"pressure", "airTemperature", "humidity", "airTemperature"})
        records.setColumn(QLatin1String(key), nullptr);
    ASSERT_EQ(records.columns().size(), 3U);
    EXPECT_EQ(records.columns()[0].first, QStringLiteral("pressure"));
    EXPECT_EQ(records.columns()[1].first, QStringLiteral("airTemperature"));
    EXPECT_EQ(records.columns()[2].first, QStringLiteral("humidity"));
}

TEST(RecordDictionaryTest, AnEqualKeyReplacesTheColumn)
{
    const auto make = [] {
        return std::make_shared<KTVRecordColumn>(KTVRecordColumn::Descriptor(), SharedArray<double>(), ValidityBitmap(),
                                                 nullptr);
    };
    const auto first = make(), second = make();
    KTVRecordDictionary records;
    records.setColumn(QStringLiteral("pressure"), first);
    records.setColumn(QStringLiteral("pressure"), second);
    EXPECT_EQ(records.columnForKey(QStringLiteral("pressure")), second);
}

}  // namespace
