#include "hostapp/exchange/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace plotix {

namespace {

struct NumberCase {
    const char* name;
    const char* text;
    DecimalMark mark;
    FieldKind kind;
    double value;
};

class NumberText : public testing::TestWithParam<NumberCase> {};

TEST_P(NumberText, IsRead)
{
    DecimalMark mark = GetParam().mark;
    double value = 0;
    ASSERT_EQ(readNumber(GetParam().text, mark, value), GetParam().kind);
    if (GetParam().kind == FieldKind::Number) {
        EXPECT_EQ(value, GetParam().value);
    }
}

constexpr auto kUnknown = DecimalMark::Unknown;
constexpr auto kNumber = FieldKind::Number;
constexpr auto kText = FieldKind::Text;
constexpr auto kMissing = FieldKind::Missing;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    Fields, NumberText,
    testing::Values(
        NumberCase{"Whole", "42", kUnknown, kNumber, 42}, NumberCase{"Negative", "-3.5", kUnknown, kNumber, -3.5},
        NumberCase{"Plus", "+3.5", kUnknown, kNumber, 3.5}, NumberCase{"PlusMinus", "+-3", kUnknown, kText, 0},
        NumberCase{"Exponent", "1e-3", kUnknown, kNumber, 0.001},
        NumberCase{"ManyDigits", "10.357019999999999", kUnknown, kNumber, 10.357019999999999},
        NumberCase{"Denormal", "5e-324", kUnknown, kNumber, 5e-324},
        NumberCase{"Infinity", "inf", kUnknown, kNumber, kInfinity},
        NumberCase{"NegativeInfinity", "-inf", kUnknown, kNumber, -kInfinity},
        NumberCase{"Comma", "12,5", kUnknown, kNumber, 12.5},
        NumberCase{"NegativeComma", "-0,25", kUnknown, kNumber, -0.25},
        NumberCase{"CommaInAPointFile", "12,5", DecimalMark::Point, kText, 0},
        NumberCase{"PointInACommaFile", "12.5", DecimalMark::Comma, kText, 0},
        NumberCase{"WholeInACommaFile", "12", DecimalMark::Comma, kNumber, 12},
        NumberCase{"ThousandsWithCommas", "1,234.5", kUnknown, kNumber, 1234.5},
        NumberCase{"ThousandsWithPoints", "1.234.577,5", kUnknown, kNumber, 1234577.5},
        NumberCase{"ThousandsWithBlanks", "1 234,5", kUnknown, kNumber, 1234.5},
        NumberCase{"ThousandsWithNarrowBlanks",
                   "1\xE2\x80\xAF"
                   "234,5",
                   kUnknown, kNumber, 1234.5},
        NumberCase{"ThousandsWithBlanksInLatin1",
                   "1\xA0"
                   "234,5",
                   kUnknown, kNumber, 1234.5},
        NumberCase{"ThousandsWithApostrophes", "1'234.5", kUnknown, kNumber, 1234.5},
        NumberCase{"WholeThousands", "1.234.567", kUnknown, kNumber, 1234567},
        NumberCase{"ThousandsWhereTheCommaIsDecimal", "1.234", DecimalMark::Comma, kNumber, 1234},
        NumberCase{"ThousandsWhereThePointIsDecimal", "1,234", DecimalMark::Point, kNumber, 1234},
        NumberCase{"GroupsOfTwo", "1.23.456,5", kUnknown, kText, 0},
        NumberCase{"TrueMinus",
                   "\xE2\x88\x92"
                   "5.2",
                   kUnknown, kNumber, -5.2},
        NumberCase{"MinusBehind", "5,2-", kUnknown, kNumber, -5.2},
        NumberCase{"InParentheses", "(5.2)", kUnknown, kNumber, -5.2},
        NumberCase{"AsSpreadsheetsKeepTexts", "=\"12.5\"", kUnknown, kNumber, 12.5},
        NumberCase{"TwoCommas", "1,2,3", kUnknown, kText, 0}, NumberCase{"WithUnit", "12 °C", kUnknown, kText, 0},
        NumberCase{"TooLarge", "1e999", kUnknown, kText, 0}, NumberCase{"Date", "2015-02-03", kUnknown, kText, 0},
        NumberCase{"Hex", "0x10", kUnknown, kText, 0}, NumberCase{"Word", "EWR", kUnknown, kText, 0},
        NumberCase{"Plus_alone", "+", kUnknown, kText, 0}, NumberCase{"Empty", "", kUnknown, kMissing, 0},
        NumberCase{"NA", "NA", kUnknown, kMissing, 0}, NumberCase{"NotAvailable", "n/a", kUnknown, kMissing, 0},
        NumberCase{"NaN", "NaN", kUnknown, kMissing, 0}, NumberCase{"NaNInLowerCase", "nan", kUnknown, kMissing, 0},
        NumberCase{"Null", "NULL", kUnknown, kMissing, 0}, NumberCase{"Dash", "-", kUnknown, kMissing, 0},
        NumberCase{"TwoDashes", "--", kUnknown, kMissing, 0},
        NumberCase{"SpreadsheetError", "#DIV/0!", kUnknown, kMissing, 0},
        NumberCase{"SpreadsheetErrorInGerman", "#NV", kUnknown, kMissing, 0},
        NumberCase{"Bad", "Bad", kUnknown, kMissing, 0}, NumberCase{"Fault", "st\xF6rung", kUnknown, kMissing, 0}),
    [](const auto& row) { return row.param.name; });

TEST(DecimalMarkOfAFile, IsLearntFromTheFirstNumberThatHasOne)
{
    DecimalMark mark = DecimalMark::Unknown;
    double value = 0;
    readNumber("12", mark, value);
    EXPECT_EQ(mark, DecimalMark::Unknown);
    readNumber("12,5", mark, value);
    EXPECT_EQ(mark, DecimalMark::Comma);
    EXPECT_EQ(readNumber("12.5", mark, value), FieldKind::Text);
    EXPECT_EQ(mark, DecimalMark::Comma);
}

TEST(MarkIn, TellsWhatIsProvenAndWhatMayBeEither)
{
    EXPECT_EQ(markIn("1.5"), MarkIn::Point);
    EXPECT_EQ(markIn("1,5"), MarkIn::Comma);
    EXPECT_EQ(markIn("1.234"), MarkIn::EitherPoint);
    EXPECT_EQ(markIn("12,345"), MarkIn::EitherComma);
    EXPECT_EQ(markIn("0.123"), MarkIn::Point);
    EXPECT_EQ(markIn("1.234.567"), MarkIn::Comma);
    EXPECT_EQ(markIn("1.234,5"), MarkIn::Comma);
    EXPECT_EQ(markIn("1.2345"), MarkIn::Point);
    EXPECT_EQ(markIn("42"), MarkIn::Nothing);
    EXPECT_EQ(markIn("1.2.3"), MarkIn::Nothing);
}

TEST(UnitsInCells, AreSplitOff)
{
    EXPECT_EQ(splitUnitOff("21,5 °C").number, "21,5");
    EXPECT_EQ(splitUnitOff("21,5 °C").unit, "°C");
    EXPECT_EQ(splitUnitOff("1 234 m3/h").unit, "m3/h");
    EXPECT_EQ(splitUnitOff("45%").unit, "%");
    EXPECT_TRUE(splitUnitOff("45").unit.empty());
    EXPECT_TRUE(splitUnitOff("offen").unit.empty());
}

TEST(NegativeZero, KeepsItsSign)
{
    DecimalMark mark = DecimalMark::Unknown;
    double value = 1;
    ASSERT_EQ(readNumber("-0", mark, value), FieldKind::Number);
    EXPECT_TRUE(std::signbit(value));
}

TEST(WholeNumbers, AreDigitsOnly)
{
    EXPECT_TRUE(isWholeNumber("0140"));
    EXPECT_FALSE(isWholeNumber(""));
    EXPECT_FALSE(isWholeNumber("-1"));
    EXPECT_FALSE(isWholeNumber("1.5"));
}

}  // namespace

}  // namespace plotix
