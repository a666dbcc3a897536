#include "plugins/PlotixPlugIn/reading/trend/ReadableNumbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using plotix::ReadableNumbers;

class ReadableNumbersTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_all = qgetenv("LC_ALL");
        qputenv("LC_ALL", "en_US");
    }
    void TearDown() override { qputenv("LC_ALL", m_all); }
    static QStringList texts(float minimum, float maximum, float average)
    {
        const ReadableNumbers::Texts texts = ReadableNumbers().statistics(minimum, maximum, average);
        return {texts.minimum, texts.maximum, texts.average};
    }

private:
    QByteArray m_all;
};

TEST_F(ReadableNumbersTest, DecimalsAreWhatTheRangeIsWorth)
{
    EXPECT_EQ(texts(19.8F, 23.4F, 21.53724F), (QStringList{"19.8", "23.4", "21.54"}));
    EXPECT_EQ(texts(0.123F, 987.654F, 400.5F), (QStringList{"0.1", "987.7", "400.5"}));
    EXPECT_EQ(texts(0, 100'000, 48'123.4F), (QStringList{"0", "100,000", "48,123"}));
    EXPECT_EQ(texts(1.7995F, 1.8005F, 1.8F), (QStringList{"1.7995", "1.8005", "1.800"}));
}

TEST_F(ReadableNumbersTest, AnAverageThatIsRoundInTheEndIsAsExactAsItsRow)
{
    EXPECT_EQ(texts(0, 9.68F, 4).at(2), "4.00");
    EXPECT_EQ(texts(-9.68F, 9.68F, 0).at(2), "0.00");
    EXPECT_EQ(texts(1006.04F, 1021.55F, 1013).at(2), "1,013.0") << "it was rounded to tenths";
    EXPECT_EQ(texts(3, 5, 4).at(2), "4");
}

TEST_F(ReadableNumbersTest, NoDigitIsWrittenThatWasRoundedAwayOrNeverMeasured)
{
    EXPECT_EQ(texts(20.5F, 24.40833F, 21.43F), (QStringList{"20.500", "24.408", "21.43"}));
    EXPECT_EQ(texts(84.92F, 93.92F, 90.68F), (QStringList{"84.92", "93.92", "90.68"}));
}

TEST_F(ReadableNumbersTest, AConstantIsWrittenExactly)
{
    EXPECT_EQ(texts(101'325, 101'325, 101'325), (QStringList{"101,325", "101,325", "101,325"}));
    EXPECT_EQ(texts(1.25F, 1.25F, 1.25F), (QStringList{"1.25", "1.25", "1.25"}));
}

TEST_F(ReadableNumbersTest, GermanNumbersHaveACommaAndPoints)
{
    qputenv("LC_ALL", "de_DE");
    EXPECT_EQ(texts(0, 12'345.5F, 6'000), (QStringList{"0", "12.346", "6.000"}));
    EXPECT_EQ(ReadableNumbers().count(1'234'567), "1.234.567");
}

TEST_F(ReadableNumbersTest, WhatIsNoNumberSaysSo)
{
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(texts(-infinity, infinity, std::nanf("")), (QStringList{"-inf", "inf", "nan"}));
    EXPECT_EQ(texts(0, 1e20F, 1e19F).at(1), "1e+20");
}

}  // namespace
