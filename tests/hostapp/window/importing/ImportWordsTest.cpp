#include "hostapp/window/importing/ImportWords.h"
#include "hostapp/core/Localization.h"

#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

namespace {

using plotix::ImportFinding;
using plotix::ImportOption;
using plotix::shownText;
using What = plotix::ImportFinding::What;

struct ShownCase {
    const char* name;
    ImportFinding finding;
    QString text;
};

class ShownFinding : public testing::TestWithParam<ShownCase> {};

TEST_P(ShownFinding, NamesThePlaceAndTheDialogsField)
{
    EXPECT_EQ(shownText(GetParam().finding), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, ShownFinding,
    testing::Values(
        ShownCase{"NoTimeColumn",
                  {.what = What::NoTimeColumn, .columns = {"a", "b"}},
                  "no column looks like times; name one under Time column (columns: a, b)"},
        ShownCase{"NoTimesInColumn",
                  {.what = What::NoTimesInColumn, .column = "b", .columns = {"a", "b"}},
                  "column “b” holds no times; name another under Time column (columns: a, b)"},
        ShownCase{"QualityHasNoWords",
                  {.what = What::QualityHasNoWords, .column = "Status", .text = "0"},
                  "column “Status” does not say which values are bad in words or numbers that are known, but such as "
                  "“0”; enter those that do under Bad words"},
        ShownCase{"QualityRecognised",
                  {.what = What::QualityRecognised, .text = "TI-101", .columns = {"TI-101 Status"}, .found = 1},
                  "Which values of “TI-101” are bad is read in “TI-101 Status”; they are kept and marked as invalid."},
        ShownCase{
            "ManyQualities",
            {.what = What::QualityRecognised, .columns = {"a", "b", "c", "d"}, .found = 4},
            "Which values of 4 column(s) are bad is read in “a”, “b”, “c” and others; they are kept and marked as "
            "invalid."},
        ShownCase{"QualityNotAssigned",
                  {.what = What::QualityNotAssigned, .column = "Status"},
                  "“Status” seems to say which values are bad, but not of which column; they are taken as good. If it "
                  "does, enter it under Quality."},
        ShownCase{"NoRowWanted", {.what = What::NoRowWanted}, "no row has the text asked for under Rows"},
        ShownCase{"DateOrderUnknown",
                  {.what = What::DateOrderUnknown},
                  "no date in the file tells the day from the month; choose which comes first under Dates"},
        ShownCase{"DateOrderContradicts",
                  {.what = What::DateOrderContradicts},
                  "some dates have the day first and others the month; choose which is meant under Dates"},
        ShownCase{"TimesNotInZone",
                  {.what = What::TimesNotInZone,
                   .text = "+01:00",
                   .causes = {{.what = What::NotInZone,
                               .line = 3,
                               .column = "Zeit",
                               .text = "31.03.2024 02:00",
                               .columns = {"Europe/Berlin"}}}},
                  "line 3, column “Zeit”: “31.03.2024 02:00” does not exist in Europe/Berlin, where clocks were put "
                  "forward; the recorder probably keeps standard time: enter +01:00 under Time zone, or tick Skip rows "
                  "without a time to pass over such rows"},
        ShownCase{
            "NumbersAreNoTimes",
            {.what = What::NumbersAreNoTimes, .column = "Elapsed [s]", .text = "s"},
            "the numbers in “Elapsed [s]” are no seconds since 1970: they would lie before 1990 or more than ten "
            "years ahead; if they count from the start of a run, there is no start in the file: add a column with "
            "dates and times, and name it under Time column"},
        ShownCase{"UnknownTime",
                  {.what = What::UnknownColumn, .text = "b", .columns = {"a"}, .option = ImportOption::TimeColumn},
                  "Time column names the column “b”, which is not there (columns: a)"},
        ShownCase{"UnknownRows",
                  {.what = What::UnknownColumn, .text = "b", .columns = {"a"}, .option = ImportOption::Where},
                  "Rows names the column “b”, which is not there (columns: a)"},
        ShownCase{"IncompatibleUnits",
                  {.what = What::IncompatibleUnits, .column = "T", .text = "hPa"},
                  "column “T” is in hPa, but the agent's property of that name is in no unit; import into another "
                  "agent"}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Rows, ShownFinding,
    testing::Values(
        ShownCase{"NoNumber",
                  {.what = What::NoNumber, .line = 3, .column = "a", .text = "x"},
                  "line 3, column “a”: “x” is no number"},
        ShownCase{
            "NoTime", {.what = What::NoTime, .line = 3, .column = "time"}, "line 3, column “time”: “” is no time"},
        ShownCase{"RowUnlikeHeader",
                  {.what = What::RowUnlikeHeader, .line = 4, .text = "2015-01-03 1 2", .found = 3, .expected = 2},
                  "line 4: the row has 3 columns where the header stands for 2: “2015-01-03 1 2”"},
        ShownCase{"RowUnlikeOthers",
                  {.what = What::RowUnlikeOthers, .line = 4, .text = "1", .found = 1, .expected = 2},
                  "line 4: the row has 1 columns where the rows before have 2: “1”"},
        ShownCase{"UnclosedQuotation",
                  {.what = What::UnclosedQuotation, .line = 2},
                  "line 2: a quotation mark opened here is never closed"},
        ShownCase{"HeaderTooShort",
                  {.what = What::HeaderTooShort, .line = 2, .found = 3, .expected = 2},
                  "line 2: the header names 2 columns and the rows have 3, and the extra column neither counts the "
                  "rows nor is empty; complete the header"},
        ShownCase{"HeaderLacksRowNumbers",
                  {.what = What::HeaderLacksRowNumbers, .columns = {"date", "T"}, .found = 3, .expected = 2},
                  "The header names 2 columns and the rows have 3: the first column, which has no name, counts the "
                  "rows and is left out; the names (date, T) belong to columns 2 to 3."},
        ShownCase{
            "NoRowRead",
            {.what = What::NoRowRead, .causes = {{.what = What::NoTime, .line = 2, .column = "time", .text = "soon"}}},
            "no row could be read: line 2, column “time”: “soon” is no time"}),
    [](const auto& row) { return row.param.name; });

TEST(ShownFindings, AllHaveWords)
{
    for (int what = 0; what <= static_cast<int>(What::ShortRows); ++what)
        EXPECT_FALSE(shownText({.what = static_cast<What>(what)}).isEmpty()) << what;
}

TEST(ShownSummary, SaysWhatWasStoredAndWhatWasLeftOut)
{
    const auto english = plotix::textsOf("en");  // says which of one row, two rows
    QCoreApplication::installTranslator(english.get());
    plotix::ImportSummary summary;
    summary.file = "/home/data.csv";
    summary.site = "/home/site.plotix";
    summary.agent = "EWR";
    summary.records = 1;
    summary.first = 1420070400;
    summary.last = 1420156800;
    summary.otherRows = 1200;
    summary.badRows = 1;
    summary.firstBadRow = ImportFinding{.what = What::NoNumber, .line = 3, .column = "a", .text = "x"};
    summary.columns = {{"Temp (°C)", "Temp", "temp", "°C", 1}};
    summary.leftOut = {"note"};
    summary.notes = {{.what = What::DatesHaveDayFirst}};
    EXPECT_EQ(shownText(summary),
              "1 record from data.csv stored for EWR in site.plotix, 1 Jan 2015 00:00:00 UTC to "
              "2 Jan 2015 00:00:00 UTC.\n"
              "  temp: Temp (°C), 1 value\n"
              "1,200 rows with another text in the column passed over.\n"
              "1 row that cannot be read passed over, the first: line 3, column “a”: “x” is no number.\n"
              "Left out, without a number or with hardly one: note.\n"
              "Dates are read with the day first.\n");
}

TEST(ShownSummary, CountsInGermanToo)
{
    const auto german = plotix::textsOf("de");
    QCoreApplication::installTranslator(german.get());
    plotix::ImportSummary summary;
    summary.unorderedTimes = 1;
    summary.repeatedTimes = 2;
    const QString text = shownText(summary);
    EXPECT_TRUE(text.contains("1 Zeile früher als die Zeile davor")) << text.toStdString();
    EXPECT_TRUE(text.contains("2 Zeilen mit einer Zeit, die später wiederkommt")) << text.toStdString();
}

}  // namespace
