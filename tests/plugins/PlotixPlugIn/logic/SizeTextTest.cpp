#include "plugins/PlotixPlugIn/logic/SizeText.h"

#include <gtest/gtest.h>

using plotix::sizeFromString;
using plotix::stringFromSize;

namespace {

struct SizeTextRow {
    const char* name;
    QSizeF size;
    const char* text;
};

class SizeTextForm : public testing::TestWithParam<SizeTextRow> {};

TEST_P(SizeTextForm, IsWrittenInBraces)
{
    EXPECT_EQ(stringFromSize(GetParam().size), QLatin1String(GetParam().text));
}

TEST_P(SizeTextForm, ReadsBackToTheSameSize)
{
    const QSizeF read = sizeFromString(QLatin1String(GetParam().text));
    EXPECT_EQ(read.width(), GetParam().size.width());
    EXPECT_EQ(read.height(), GetParam().size.height());
}

INSTANTIATE_TEST_SUITE_P(Sizes, SizeTextForm,
                         testing::Values(SizeTextRow{"Usual", {640, 480}, "{640, 480}"},
                                         SizeTextRow{"Zero", {0, 0}, "{0, 0}"},
                                         SizeTextRow{"RoundHundredThousand", {100000, 1000000}, "{100000, 1000000}"},
                                         SizeTextRow{"Fraction", {0.1, 320.5}, "{0.1, 320.5}"},
                                         SizeTextRow{"Negative", {-1, -2.25}, "{-1, -2.25}"}),
                         [](const auto& row) { return row.param.name; });

class UnreadableSizeText : public testing::TestWithParam<const char*> {};

TEST_P(UnreadableSizeText, AnswersZeroByZero)
{
    EXPECT_EQ(sizeFromString(QLatin1String(GetParam())), QSizeF(0, 0));
}

INSTANTIATE_TEST_SUITE_P(Texts, UnreadableSizeText,
                         testing::Values("", "{", "{}", "640, 480", "{640}", "{640, 480, 2}", "{wide, 480}",
                                         "{640; 480}"));

TEST(SizeText, ToleratesOtherBlanks)
{
    EXPECT_EQ(sizeFromString(QStringLiteral(" {640,480 } ")), QSizeF(640, 480));
}

TEST(SizeText, KeepsTheLargestAndTheSmallestNumbers)
{
    const QSizeF size(1.7976931348623157e308, 5e-324);
    const QSizeF read = sizeFromString(stringFromSize(size));
    EXPECT_EQ(read.width(), size.width());
    EXPECT_EQ(read.height(), size.height());
}

}  // namespace
