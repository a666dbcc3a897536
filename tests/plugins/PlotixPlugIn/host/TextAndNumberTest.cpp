#include "plugins/PlotixPlugIn/host/KTVConverter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

struct NameRow {
    const char* name;
    const char* text;
    const char* key;
};

class CamelCaseName : public testing::TestWithParam<NameRow> {};

TEST_P(CamelCaseName, OfTheNameIsTheKey)
{
    EXPECT_EQ(camelCaseString(QString::fromUtf8(GetParam().text)), QString::fromUtf8(GetParam().key));
}

TEST_P(CamelCaseName, OfAKeyIsTheKeyItself)
{
    const QString key = QString::fromUtf8(GetParam().key);
    EXPECT_EQ(camelCaseString(key), key);
}

INSTANTIATE_TEST_SUITE_P(Names, CamelCaseName,
                         testing::Values(NameRow{"TwoWords", "Air Temperature", "airTemperature"},
                                         NameRow{"Underscore", "wind_dir", "windDir"},
                                         NameRow{"CapitalsAndDigit", "CO2", "co2"},
                                         NameRow{"CapitalsLater", "Indoor CO2", "indoorCO2"},
                                         NameRow{"OneWord", "pressure", "pressure"},
                                         NameRow{"Punctuation", "  Wind (gust), max. ", "windGustMax"},
                                         NameRow{"DigitFirst", "2 m temperature", "2MTemperature"},
                                         NameRow{"Umlaut", "Äußere Höhe", "äußereHöhe"},
                                         NameRow{"CamelAlready", "airTemperature", "airTemperature"},
                                         NameRow{"NumberAtTheEnd", "Probe 12", "probe12"}, NameRow{"Empty", "", ""},
                                         NameRow{"NothingUsable", " -_%", ""}),
                         [](const auto& row) { return row.param.name; });

TEST(CamelCase, AnAccentTypedApartDoesNotSplitItsWord)
{
    EXPECT_EQ(camelCaseString(QStringLiteral("cafe\u0301 noir")),
              QStringLiteral("café").normalized(QString::NormalizationForm_C) + QStringLiteral("Noir"));
}

struct RoundingRow {
    const char* name;
    double value;
    int nearest;
    double rounded;
};

class RoundingValue : public testing::TestWithParam<RoundingRow> {};

TEST_P(RoundingValue, KeepsFourSignificantDigits)
{
    EXPECT_EQ(KTVConverter::roundValue(GetParam().value, GetParam().nearest), GetParam().rounded);
}

TEST_P(RoundingValue, IsTheSameForNegativeValues)
{
    EXPECT_EQ(KTVConverter::roundValue(-GetParam().value, GetParam().nearest), -GetParam().rounded);
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(Values, RoundingValue,
                         testing::Values(RoundingRow{"TwoDigitsBefore", 54.83274, 10, 54.83},
                                         RoundingRow{"FourDigitsBefore", 1013.2534, 10, 1013.3},
                                         RoundingRow{"Small", 0.00482531, 10, 0.004825}, RoundingRow{"Whole", 4, 10, 4},
                                         RoundingRow{"Zero", 0, 10, 0}, RoundingRow{"Large", 123456.789, 10, 123456.8},
                                         RoundingRow{"CarriesOver", 9.99996, 10, 10},
                                         RoundingRow{"ByOne", 1013.6, 1, 1014},
                                         RoundingRow{"ByOneHasFourDigits", 54.83274, 1, 54.83},
                                         RoundingRow{"ByFour", 2000.3, 4, 2000.25},
                                         RoundingRow{"NotBelowOne", 54.83274, 0, 54.83274},
                                         RoundingRow{"NegativeStep", 54.83274, -10, 54.83274},
                                         RoundingRow{"Infinity", kInfinity, 10, kInfinity},
                                         RoundingRow{"Largest", 1.7976931348623157e308, 10, 1.7976931348623157e308}),
                         [](const auto& row) { return row.param.name; });

TEST(Rounding, ANaNStaysANaN)
{
    EXPECT_TRUE(std::isnan(KTVConverter::roundValue(std::nan(""), 10)));
}

}  // namespace
