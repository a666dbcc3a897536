#include "plugins/PlotixPlugIn/reading/statistics/FigureTexts.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using plotix::FigureTexts;

class FigureTextsTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_all = qgetenv("LC_ALL");
        qputenv("LC_ALL", "en_US");
    }
    void TearDown() override { qputenv("LC_ALL", m_all); }

private:
    QByteArray m_all;
};

TEST_F(FigureTextsTest, DaysAreSaidToTheMinute)
{
    const FigureTexts texts;
    EXPECT_EQ(texts.duration(2 * 86'400 + 14 * 60 + 20), "2 d 0 h 14 min");
    EXPECT_EQ(texts.duration(86'399.9), "1 d 0 h 0 min");
    EXPECT_EQ(texts.duration(3 * 3'600 + 12 * 60), "3 h 12 min");
}

TEST_F(FigureTextsTest, WhatDoesNotExistIsADash)
{
    const FigureTexts texts;
    EXPECT_EQ(texts.duration(std::nan("")), "–");
    EXPECT_EQ(texts.amount(std::nan(""), QStringLiteral("kWh")), "–");
    EXPECT_EQ(texts.value(std::nan(""), {}), "–");
}

TEST_F(FigureTextsTest, OnlyAllIsAHundredPerCentAndOnlyNothingIsNone)
{
    const FigureTexts texts;
    EXPECT_EQ(texts.share(1), "100\u00A0%");
    EXPECT_EQ(texts.share(0.99999), "99\u00A0%");
    EXPECT_EQ(texts.share(0.00001), "1\u00A0%");
    EXPECT_EQ(texts.share(0), "0\u00A0%");
    EXPECT_EQ(texts.share(std::nan("")), "–");
}

TEST_F(FigureTextsTest, AmountsHaveFiveDigitsAndTheirUnit)
{
    const FigureTexts texts;
    EXPECT_EQ(texts.amount(1234.56, QStringLiteral("kWh")), "1,234.6\u00A0kWh");
    EXPECT_EQ(texts.amount(0.0012345678, {}), "0.0012346");
    EXPECT_EQ(texts.amount(1'234'567, {}), "1,234,567");
    EXPECT_EQ(texts.amount(0, QStringLiteral("L")), "0\u00A0L");
}

TEST_F(FigureTextsTest, ValuesHaveTheDigitsOfTheirLine)
{
    plotix::LineFigures line;
    line.minimum = 19.8;
    line.maximum = 23.4;
    EXPECT_EQ(FigureTexts().value(21.53724, line), "21.54");
    EXPECT_EQ(FigureTexts().value(0.123456, line, 1), "0.123");
}

TEST_F(FigureTextsTest, AShortTimeHasItsYearOnlyInALongSpan)
{
    const FigureTexts texts;
    EXPECT_FALSE(texts.shortMoment(1'357'041'600, 86'400).contains("2013"));
    EXPECT_TRUE(texts.shortMoment(1'357'041'600, 400 * 86'400.0).contains("2013"));
}

TEST_F(FigureTextsTest, TimesHaveSecondsOnlyWhereTheyTell)
{
    const FigureTexts texts;
    EXPECT_FALSE(texts.moment(1'357'041'600).contains(QStringLiteral(":00:00")));
    EXPECT_TRUE(texts.moment(1'357'041'605).contains(QStringLiteral(":05")));
    EXPECT_EQ(texts.moment(std::nan("")), "–");
}

}  // namespace
