#include "hostapp/core/Units.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <thread>

namespace {

class UnitsTest : public testing::Test {
protected:
    double convert(double value, const char* from, const char* to) const
    {
        return units->convert(value, QString::fromUtf8(from), QString::fromUtf8(to));
    }
    std::string normalised(const char* text) const
    {
        return units->normalise(QString::fromUtf8(text)).value_or("(nothing)").toStdString();
    }
    std::string symbol(const char* text) const { return units->symbolForUnit(QString::fromUtf8(text)).toStdString(); }

    std::shared_ptr<const plotix::Units> units = plotix::Units::shared();
};

TEST_F(UnitsTest, TemperaturesConvertToTheDigit)
{
    EXPECT_EQ(convert(100, "°C", "°F"), 212);
    EXPECT_EQ(convert(32, "°F", "°C"), 0);
    EXPECT_EQ(convert(0, "°C", "K"), 273.15);
    EXPECT_EQ(convert(0, "°C", "°F"), 32);
}

TEST_F(UnitsTest, PressuresSpeedsAndLengthsConvert)
{
    EXPECT_EQ(convert(1013.25, "hPa", "mbar"), 1013.25);
    EXPECT_EQ(convert(1, "hPa", "Pa"), 100);
    EXPECT_DOUBLE_EQ(convert(10, "m/s", "km/h"), 36);
    EXPECT_NEAR(convert(1, "mph", "m/s"), 0.44704, 1e-12);
    EXPECT_NEAR(convert(1, "kn", "km/h"), 1.852, 1e-12);
    EXPECT_NEAR(convert(1, "in", "mm"), 25.4, 1e-12);
    EXPECT_NEAR(convert(29.92, "inHg", "hPa"), 1013.2, 0.1);
}

TEST_F(UnitsTest, UnitsThatUdunitsLacksConvert)
{
    EXPECT_DOUBLE_EQ(convert(1, "kWh", "MJ"), 3.6);
    EXPECT_DOUBLE_EQ(convert(1, "%", "ppm"), 10000);
    EXPECT_DOUBLE_EQ(convert(1, "klx", "lux"), 1000);
    EXPECT_DOUBLE_EQ(convert(547e6, "B/s", "MB/s"), 547);
    EXPECT_DOUBLE_EQ(convert(1, "Gbit/s", "MB/s"), 125);
}

TEST_F(UnitsTest, ThereAndBackIsTheSameToTheLastDigits)
{
    for (const char* other : {"°F", "K"})
        EXPECT_NEAR(convert(convert(-17.3, "°C", other), other, "°C"), -17.3, 1e-12) << other;
    for (const char* other : {"Pa", "kPa", "bar", "mmHg", "inHg", "psi", "atm"})
        EXPECT_NEAR(convert(convert(987.6, "hPa", other), other, "hPa"), 987.6, 1e-9) << other;
}

TEST_F(UnitsTest, EveryListedUnitIsKnownAndConvertsWithinItsMenu)
{
    for (const char* unit : {"°C", "hPa", "m/s", "%", "lux", "W/m²", "mm", "mm/h", "W", "kWh", "V", "A", "Hz", "°",
                             "kg", "µg/m³", "s", "L", "L/min"}) {
        const QStringList menu = units->compatibleUnits(QString::fromUtf8(unit));
        EXPECT_GE(menu.size(), 2) << unit;
        for (const QString& other : menu)
            EXPECT_TRUE(units->areCompatible(QString::fromUtf8(unit), other)) << unit << " " << other.toStdString();
    }
}

struct Spelling {
    const char* name;
    const char* text;
    const char* canonical;
};

class SpellingTest : public UnitsTest, public testing::WithParamInterface<Spelling> {};

TEST_P(SpellingTest, IsUnderstood)
{
    EXPECT_EQ(normalised(GetParam().text), GetParam().canonical);
}

INSTANTIATE_TEST_SUITE_P(Texts, SpellingTest,
                         testing::Values(Spelling{"Degree", "°C", "°C"}, Spelling{"OrdinalSign", "ºC", "°C"},
                                         Spelling{"Letter", "C", "°C"}, Spelling{"Words", "deg C", "°C"},
                                         Spelling{"Udunits", "degC", "°C"}, Spelling{"LowerCase", "celsius", "°C"},
                                         Spelling{"Fahrenheit", "F", "°F"}, Spelling{"Percent", "percent", "%"},
                                         Spelling{"Lux", "lx", "lux"}, Spelling{"LuxItself", "lux", "lux"},
                                         Spelling{"Mph", "mph", "mph"}, Spelling{"UpperCaseMph", "MPH", "mph"},
                                         Spelling{"Kmh", "kmh", "km/h"}, Spelling{"KiloWattHour", "kWh", "kWh"},
                                         Spelling{"Blanks", "  m / s ", "m / s"}, Spelling{"Square", "W/m2", "W/m²"},
                                         Spelling{"MicroGram", "ug/m3", "µg/m³"}, Spelling{"GreekMu", "μg/m³", "µg/m³"},
                                         Spelling{"Inches", "inches", "in"},
                                         Spelling{"OthersStayAsWritten", "kg m-2 s-1", "kg m-2 s-1"},
                                         Spelling{"Nonsense", "bananas", "(nothing)"},
                                         Spelling{"Empty", "", "(nothing)"}, Spelling{"Number", "2", "(nothing)"},
                                         Spelling{"Remark", "raw, uncorrected", "(nothing)"}),
                         [](const testing::TestParamInfo<Spelling>& row) { return row.param.name; });

TEST_F(UnitsTest, SymbolsAreTheUsualOnes)
{
    EXPECT_EQ(symbol("degC"), "°C");
    EXPECT_EQ(symbol("ppm"), "ppm");
    EXPECT_EQ(symbol("W m-2"), "W/m²");
}

TEST_F(UnitsTest, IntegralsHaveTheUnitThatPeopleExpect)
{
    const std::vector<std::array<const char*, 2>> expected{
        {"W", "Wh"},    {"kW", "kWh"},  {"MW", "MWh"},    {"m3/h", "m³"}, {"L/min", "L"},
        {"L/h", "L"},   {"mm/h", "mm"}, {"m/s", "m"},     {"km/h", "km"}, {"MB/s", "MB"},
        {"°C", "°C·h"}, {"%", "%·h"},   {"ppm", "ppm·h"}, {"°", "°·h"},   {"furlong?", "furlong?·h"},
        {"", "h"}};
    for (const auto& [unit, symbol] : expected)
        EXPECT_EQ(units->integralOf(QString::fromUtf8(unit)).symbol, QString::fromUtf8(symbol)) << unit;
}

TEST_F(UnitsTest, IntegralsAreScaledToTheirUnit)
{
    EXPECT_DOUBLE_EQ(units->integralOf(QStringLiteral("kW")).scale * 7200, 2);
    EXPECT_DOUBLE_EQ(units->integralOf(QStringLiteral("L/min")).scale * 120, 2);
    EXPECT_DOUBLE_EQ(units->integralOf(QStringLiteral("m/s")).scale * 2, 2);
}

TEST_F(UnitsTest, UnknownTextIsKeptAndConvertsIntoNothing)
{
    EXPECT_EQ(symbol("bananas"), "bananas");
    EXPECT_EQ(convert(5, "bananas", "m"), 5);
    EXPECT_TRUE(units->mapBetween("bananas", "m").isIdentity);
    EXPECT_FALSE(units->areCompatible("bananas", "bananas"));
    EXPECT_EQ(units->compatibleUnits("bananas"), QStringList{"bananas"});
    EXPECT_EQ(units->compatibleUnits(""), QStringList{});
}

TEST_F(UnitsTest, IncompatibleUnitsAnswerTheIdentity)
{
    EXPECT_EQ(convert(5, "hPa", "m/s"), 5);
    EXPECT_TRUE(units->mapBetween("hPa", "m/s").isIdentity);
}

TEST_F(UnitsTest, MenusHoldOneQuantityOnly)
{
    EXPECT_EQ(units->compatibleUnits("hPa").first(), "hPa");
    EXPECT_TRUE(units->compatibleUnits("degF").contains("°C"));
    EXPECT_FALSE(units->compatibleUnits("%").contains("rad"));
    EXPECT_TRUE(units->compatibleUnits("dam").contains("km"));
    EXPECT_EQ(units->compatibleUnits("dam").first(), "dam");
}

TEST_F(UnitsTest, MapsThatAreNoStraightLineConvertOneByOne)
{
    const auto map = units->mapBetween("mW", "lg(re 1 mW)");
    EXPECT_FALSE(map.isLinear);
    EXPECT_FALSE(map.isIdentity);
    EXPECT_NEAR(convert(1000, "mW", "lg(re 1 mW)"), 3, 1e-12);
}

TEST_F(UnitsTest, ConvertsAColumnInPlace)
{
    double values[] = {0, 100, -40};
    units->convertValues("°C", "°F", values, values, 3);
    EXPECT_EQ(values[0], 32);
    EXPECT_EQ(values[1], 212);
    EXPECT_EQ(values[2], -40);
}

TEST_F(UnitsTest, SeveralThreadsMayAskAtOnce)
{
    const plotix::Units fresh;
    std::vector<std::thread> threads;
    std::atomic<int> right = 0;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int i = 0; i < 50; ++i)
                right += fresh.convert(i, "hPa", "Pa") == 100.0 * i && fresh.normalise("degC") == QString("°C");
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, 200);
}

}  // namespace
