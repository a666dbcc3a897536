#include "TrendViewFixture.h"

// Values that are not valid, and snapshots that differ from their column: in the plots and in the table.

namespace {

class TrendInvalidValues : public TrendViewFixture {
protected:
    CPTPointSeriesPtr series() { return trend().binders()->at("airTemperature")->arrangedObjects(); }
    const InfoTableRow& row(std::size_t index = 0) { return *trend().infoTableArray()->at(index); }
    /// Three records, the middle one to be chosen.
    fakehost::RecordBuilder first(double value)
    {
        return records().at(kFrom).value("airTemperature", value).at(kFrom + 60);
    }
    KTVRecordDictionaryPtr withANumberBeneathAnInvalidBit()
    {
        return first(20).invalid("airTemperature", 99).at(kTo).value("airTemperature", 22).build();
    }
    KTVRecordDictionaryPtr withAnInvalidSnapshot()
    {
        return first(20)
            .differing("airTemperature", {.unit = "degC", .value = 99, .valid = false})
            .at(kTo)
            .value("airTemperature", 22)
            .build();
    }
};

TEST_F(TrendInvalidValues, NumberBeneathAnInvalidBitIsNotPlotted)
{
    openTrend();
    answer(withANumberBeneathAnInvalidBit());
    ASSERT_EQ(series()->count(), 2U);
    EXPECT_EQ(series()->pointAt(1).y, 22);
}

TEST_F(TrendInvalidValues, NorWhenItIsConverted)
{
    property("airTemperature")->setUnit("degF");
    openTrend();
    answer(withANumberBeneathAnInvalidBit());
    ASSERT_EQ(series()->count(), 2U);
    EXPECT_NEAR(series()->pointAt(1).y, 71.6, 1e-4);
}

TEST_F(TrendInvalidValues, NumberBeneathAnInvalidBitIsNotCounted)
{
    openTrend();
    answer(withANumberBeneathAnInvalidBit());
    EXPECT_EQ(row().points, 2);
    EXPECT_EQ(row().maximum, 22);
}

TEST_F(TrendInvalidValues, InvalidSnapshotThatDiffersIsNotPlotted)
{
    openTrend();
    answer(withAnInvalidSnapshot());
    ASSERT_EQ(series()->count(), 2U);
    EXPECT_EQ(series()->pointAt(1).y, 22);
}

TEST_F(TrendInvalidValues, InvalidSnapshotThatDiffersIsNotCounted)
{
    openTrend();
    answer(withAnInvalidSnapshot());
    EXPECT_EQ(row().points, 2);
    EXPECT_EQ(row().maximum, 22);
}

TEST_F(TrendInvalidValues, FirstValidSymbolNamesTheUnit)
{
    openTrend();
    answer(records()
               .at(kFrom)
               .differing("airTemperature", {.unit = "degF", .value = 68})
               .at(kTo)
               .value("airTemperature", 20));
    EXPECT_EQ(row().unit, "°F");
}

TEST_F(TrendInvalidValues, LaterSymbolsDoNot)
{
    openTrend();
    answer(first(20).differing("airTemperature", {.unit = "degF", .value = 68}));
    EXPECT_EQ(row().unit, "°C");
}

TEST_F(TrendInvalidValues, InvalidSymbolDoesNotNameTheUnit)
{
    openTrend();
    answer(records()
               .at(kFrom)
               .differing("airTemperature", {.unit = "degF", .value = 68, .valid = false})
               .at(kTo)
               .value("airTemperature", 20));
    EXPECT_EQ(row().unit, "°C");
}

TEST_F(TrendInvalidValues, NewRowHasThePropertysColourAndNotTheSnapshots)
{
    openTrend();
    answer(records().at(kFrom).coloured("airTemperature", 20, Qt::cyan).at(kTo).value("airTemperature", 21));
    EXPECT_EQ(row().color, QColor(Qt::red));
}

}  // namespace
