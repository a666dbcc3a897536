#include "tests/hostapp/exchange/formats/ImportFixture.h"

#include <cmath>
#include <limits>

namespace plotix {

namespace {

using What = ImportFinding::What;

class ImportedCellsTest : public ImportFixture {};

TEST_F(ImportedCellsTest, KeepsEveryBitOfExoticNumbers)
{
    import("time,a\n2015-01-01,-0\n2015-01-02,5e-324\n2015-01-03,inf\n2015-01-04,-1.7976931348623157e308\n");
    const Numbers numbers = values(QStringLiteral("a"));
    EXPECT_TRUE(std::signbit(numbers[0].value()));
    EXPECT_EQ(numbers[1], 5e-324);
    EXPECT_EQ(numbers[2], std::numeric_limits<double>::infinity());
    EXPECT_EQ(numbers[3], -std::numeric_limits<double>::max());
}

TEST_F(ImportedCellsTest, ReadsDecimalCommas)
{
    import("Zeit;Temperatur (°C)\n01.02.2015 12:00;21,5\n02.02.2015 12:00;-0,25\n");
    EXPECT_EQ(values(QStringLiteral("temperatur")), (Numbers{21.5, -0.25}));
}

TEST_F(ImportedCellsTest, NumbersWithTheOtherMarkAreBadCells)
{
    const ImportSummary summary = import("time;a\n2015-01-01;1,5\n2015-01-02;1.5\n2015-01-03;2,5\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1.5, {}, 2.5}));
    EXPECT_EQ(summary.columns[0].bad, 1U);
}

TEST_F(ImportedCellsTest, ThousandsAndDecimalsAreNeverGuessed)
{
    const QByteArray text = "Zeit;a\n01.02.2015 12:00;1.234\n01.02.2015 13:00;2.345\n";
    EXPECT_EQ(failure(text),
              (ImportFinding{.what = What::DecimalMarkUnknown, .line = 2, .column = "a", .text = "1.234"}));
    m_options.decimal = DecimalSign::Comma;
    import(text);
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1234, 2345}));
    m_options.decimal = DecimalSign::Point;
    m_options.agentName = QStringLiteral("point");
    EXPECT_EQ(import(text).columns.front().highest, 2.345);
}

TEST_F(ImportedCellsTest, TheDecimalMarkMayBeProvenFarBelow)
{
    QByteArray text = "Zeit;a\n";
    for (int row = 0; row < 9000; ++row)
        text += "01.02.2015 12:00;1.234\n";
    import(text + "01.02.2015 13:00;2,5\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1234, 2.5}));
}

TEST_F(ImportedCellsTest, AMarkThatComesLateAndMayBeEitherIsAskedFor)
{
    QByteArray text = "Zeit;a\n";
    for (int row = 0; row < 900; ++row)
        text += "01.02.2015 12:00;7\n";
    EXPECT_EQ(failure(text + "01.02.2015 13:00;1.234\n").value().what, What::DecimalMarkUnknown);
    EXPECT_EQ(import(text + "01.02.2015 13:00;1.234\n01.02.2015 14:00;2,5\n").columns.front().highest, 1234);
}

TEST_F(ImportedCellsTest, AMarkProvenInOneColumnCountsInAll)
{
    import("Zeit;a;b\n01.02.2015 12:00;1.234;7\n01.02.2015 13:00;2.345;0,5\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1234, 2345}));
    QByteArray text = "Zeit;c;d\n";
    for (int minute = 10; minute < 60; ++minute)
        for (int second = 10; second < 60; ++second)
            text += "01.02.2016 12:" + QByteArray::number(minute) + ':' + QByteArray::number(second) + ";7;8\n";
    m_options.agentName = QStringLiteral("late");
    const ImportSummary late = import(text + "01.02.2016 13:00:00;0.5;8\n01.02.2016 13:00:01;7;1,234\n");
    EXPECT_EQ(late.columns[1].highest, 1234);
}

TEST_F(ImportedCellsTest, ALowestValueFarBelowAllOthersIsAGapAndOneAmongThemIsNot)
{
    import("time,a,b\n2015-01-01,1,-300\n2015-01-02,-999,-999\n2015-01-03,3,-400\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, {}, 3}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{-300, -999, -400}));
}

TEST_F(ImportedCellsTest, WordsForStatesAreOneAndZero)
{
    const ImportSummary summary = import("time,pump\n2015-01-01,ON\n2015-01-02,off\n2015-01-03,\n");
    EXPECT_EQ(values(QStringLiteral("pump")), (Numbers{1, 0, {}}));
    EXPECT_EQ(summary.notes, (std::vector<ImportFinding>{
                                 {.what = What::StatesAreNumbers, .line = 2, .column = "pump", .text = "ON"}}));
}

TEST_F(ImportedCellsTest, WordsForStatesAmongOtherNumbersAreBadCells)
{
    const ImportSummary summary = import("time,power\n2015-01-01,12.5\n2015-01-02,off\n2015-01-03,1\n");
    EXPECT_EQ(values(QStringLiteral("power")), (Numbers{12.5, {}, 1}));
    EXPECT_EQ(summary.columns[0].bad, 1U);
}

TEST_F(ImportedCellsTest, ABadCellLosesTheCellAndIsCountedInItsColumn)
{
    const ImportSummary summary = import("time,a,b\n2015-01-01,1,2\n2015-01-02,x,3\n2015-01-03,\"4\n5\",6\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, {}, {}}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{2, 3, 6}));
    EXPECT_EQ(summary.badRows, 0U);
    EXPECT_EQ(summary.columns[0].bad, 2U);
    EXPECT_EQ(summary.columns[0].firstBad,
              (ImportFinding{.what = What::NoNumber, .line = 3, .column = "a", .text = "x"}));
    EXPECT_EQ(summary.columns[1].bad, 0U);
}

TEST_F(ImportedCellsTest, ALongTextIsShownShortened)
{
    const ImportSummary summary =
        import("time,a\n2015-01-01,1\n2015-01-02,a text of more than forty characters in all\n");
    EXPECT_EQ(summary.columns[0].firstBad->text, QString::fromUtf8("a text of more than forty characters in…"));
}

}  // namespace

}  // namespace plotix
