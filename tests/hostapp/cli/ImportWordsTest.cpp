#include "hostapp/cli/ImportWords.h"

#include <gtest/gtest.h>

namespace plotix {

namespace {

using What = ImportFinding::What;

struct WordsCase {
    const char* name;
    ImportFinding finding;
    QString text;
};

class PrintedFinding : public testing::TestWithParam<WordsCase> {};

TEST_P(PrintedFinding, NamesThePlaceAndTheOption)
{
    EXPECT_EQ(printedText(GetParam().finding), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Findings, PrintedFinding,
    testing::Values(
        WordsCase{"CannotBeOpened",
                  {.what = What::CannotBeOpened, .text = "No such file or directory"},
                  "cannot be read: No such file or directory"},
        WordsCase{"ReadingFailed", {.what = What::ReadingFailed, .text = "broken"}, "reading failed: broken"},
        WordsCase{"QualityOfOne",
                  {.what = What::QualityRecognised, .text = "TI-101", .columns = {"TI-101 Status"}, .found = 1},
                  "“TI-101 Status” says which values of “TI-101” are bad; they are kept and marked as invalid. If that "
                  "is not meant, say --ignore-quality."},
        WordsCase{"QualityOfSeveral",
                  {.what = What::QualityRecognised, .columns = {"a Status", "b Status"}, .found = 2},
                  "“a Status”, “b Status” say which values of 2 columns are bad; they are kept and marked as invalid. "
                  "If that is not meant, say --ignore-quality."},
        WordsCase{"QualityHasNoWords",
                  {.what = What::QualityHasNoWords, .column = "Status", .text = "0"},
                  "column “Status” does not say which values are bad in words or numbers that are known, but such as "
                  "“0”; say which of them do with --bad WORD,…"},
        WordsCase{"QualityNotSure",
                  {.what = What::QualityNotSure, .column = "Status", .text = "Lab"},
                  "“Status” seems to say which values are bad, but not what “Lab” means; its values are taken as good. "
                  "If it does, say --quality \"Status=COLUMN\", with --bad WORD,… for the words that do."},
        WordsCase{"QualityNotAssigned",
                  {.what = What::QualityNotAssigned, .column = "Status"},
                  "“Status” seems to say which values are bad, but not of which column; they are taken as good. If it "
                  "does, say --quality \"Status=COLUMN\"."},
        WordsCase{"QualityWordsUnknown",
                  {.what = What::QualityWordsUnknown, .line = 3, .column = "Status", .text = "Lab", .found = 2},
                  "line 3, column “Status”: “Lab” says neither good nor bad (2 times); such values are taken as good. "
                  "If it means bad, say all such words with --bad WORD,…"},
        WordsCase{"NotText",
                  {.what = What::NotText},
                  "this is neither text nor a spreadsheet that can be read; export it as CSV or .xlsx"},
        WordsCase{"PackedFiles",
                  {.what = What::PackedFiles},
                  "this is an archive of files; unpack it and import the files in it"},
        WordsCase{
            "RowsAreDays",
            {.what = What::RowsAreDays, .column = "23:00", .text = "00:00", .found = 24},
            "Each row is a day, and 24 columns are times of day, from 00:00 to 23:00: each becomes a record of its "
            "own; if they are quantities, say --arrangement columns."},
        WordsCase{"DecimalMarkUnknown",
                  {.what = What::DecimalMarkUnknown, .line = 2, .column = "a", .text = "1.234"},
                  "line 2, column “a”: “1.234” may have thousands or decimals, and no number in the file tells which; "
                  "say which sign stands before the decimals with --decimal comma or --decimal point"},
        WordsCase{"ManyRowsAtOneTime",
                  {.what = What::ManyRowsAtOneTime, .found = 500, .expected = 494},
                  "494 of 500 rows have the time of another row, with other values; name the column of the time of day "
                  "too, as --time Date+Time, or keep the last row of each time with --keep-last"},
        WordsCase{
            "ManyRowsOfStations",
            {.what = What::ManyRowsAtOneTime, .text = "North", .columns = {"station"}, .found = 20, .expected = 10},
            "10 of 20 rows have the time of another row, with other values; they differ in “station”: take those "
            "of one with --where \"station=North\""},
        WordsCase{"ManyDevices",
                  {.what = What::ManyDevices, .column = "Raum", .text = "Dach", .found = 2},
                  "the rows of 2 devices or places, named in “Raum”, alternate; take those of one with --where "
                  "\"Raum=Dach\", or join all of them in one line with --keep-last"},
        WordsCase{
            "UnitsDisagree",
            {.what = What::UnitsDisagree, .column = "P (kW)", .text = "°C", .archivedUnit = "kW"},
            "column “P (kW)” is in kW, but its cells are in °C; if the cells are right, say --unit \"P (kW)=°C\""},
        WordsCase{
            "UnitsNotKnown",
            {.what = What::UnitsNotKnown, .line = 2, .columns = {"kvar", "NTU"}},
            "line 2: units that are not known stand in this line: kvar, NTU; the numbers are stored without them"},
        WordsCase{"NumbersOfMicroseconds",
                  {.what = What::TimesAreNumbers, .column = "ts", .text = "us"},
                  "The numbers in “ts” are read as microseconds since 1970."},
        WordsCase{"NumbersOfSeconds",
                  {.what = What::TimesAreNumbers, .column = "time", .text = "s"},
                  "The numbers in “time” are read as seconds since 1970."},
        WordsCase{
            "NumbersAreNoTimes",
            {.what = What::NumbersAreNoTimes, .column = "Elapsed [s]", .text = "s"},
            "the numbers in “Elapsed [s]” are no seconds since 1970: they would lie before 1990 or more than ten "
            "years ahead; if they count from the start of a run, there is no start in the file: add a column with "
            "dates and times, and name it with --time"},
        WordsCase{"TimesNotInZone",
                  {.what = What::TimesNotInZone,
                   .text = "+01:00",
                   .causes = {{.what = What::NotInZone,
                               .line = 3,
                               .column = "Zeit",
                               .text = "31.03.2024 02:00",
                               .columns = {"Europe/Berlin"}}}},
                  "line 3, column “Zeit”: “31.03.2024 02:00” does not exist in Europe/Berlin, where clocks were put "
                  "forward; the recorder probably keeps standard time: say --time-zone +01:00, or pass over such rows "
                  "with --skip-bad-rows"},
        WordsCase{"Folder", {.what = What::Folder}, "this is a folder; give a file in it"},
        WordsCase{"NotATable",
                  {.what = What::NotATable, .text = "JSON"},
                  "this is JSON, no table with a row in each line; export the measurements as CSV or .xlsx"},
        WordsCase{"UnclosedQuotation",
                  {.what = What::UnclosedQuotation, .line = 2},
                  "line 2: a quotation mark opened here is never closed"},
        WordsCase{"EmptyFile", {.what = What::EmptyFile}, "the file is empty"},
        WordsCase{"NoRowsBelowHeader", {.what = What::NoRowsBelowHeader}, "the file has a header and no rows"},
        WordsCase{"HeaderTooShort",
                  {.what = What::HeaderTooShort, .line = 2, .found = 3, .expected = 2},
                  "line 2: the header names 2 columns and the rows have 3, and the extra column neither counts the "
                  "rows nor is empty; complete the header"},
        WordsCase{"HeaderDoesNotMatch",
                  {.what = What::HeaderDoesNotMatch, .line = 2, .found = 4, .expected = 2},
                  "line 2: the row has 4 columns where the header names 2"},
        WordsCase{"NoTimeColumn",
                  {.what = What::NoTimeColumn, .columns = {"a", "b"}},
                  "no column looks like times; name one with --time (columns: a, b)"},
        WordsCase{"NoTimesInColumn",
                  {.what = What::NoTimesInColumn, .column = "b", .columns = {"a", "b"}},
                  "column “b” holds no times; name another with --time (columns: a, b)"},
        WordsCase{"NoNumbers",
                  {.what = What::NoNumbers, .column = "time", .columns = {"time", "a"}},
                  "no column holds numbers besides the time in “time” (columns: time, a)"},
        WordsCase{"NoRowWanted", {.what = What::NoRowWanted}, "no row has the texts asked for with --where"},
        WordsCase{"DateOrderUnknown",
                  {.what = What::DateOrderUnknown},
                  "no date in the file tells the day from the month; say which comes first with --date-order dmy or "
                  "--date-order mdy"},
        WordsCase{"DateOrderContradicts",
                  {.what = What::DateOrderContradicts},
                  "some dates have the day first and others the month; say which is meant with --date-order dmy or "
                  "--date-order mdy"}),
    [](const auto& row) { return row.param.name; });

ImportFinding unknownColumn(ImportOption option)
{
    return {.what = What::UnknownColumn, .text = "b", .columns = {"time", "a"}, .option = option};
}

INSTANTIATE_TEST_SUITE_P(
    Options, PrintedFinding,
    testing::Values(
        WordsCase{"Time", unknownColumn(ImportOption::TimeColumn),
                  "--time names the column “b”, which is not there (columns: time, a)"},
        WordsCase{"Where", unknownColumn(ImportOption::Where),
                  "--where names the column “b”, which is not there (columns: time, a)"},
        WordsCase{"Only", unknownColumn(ImportOption::Only),
                  "--only names the column “b”, which is not there (columns: time, a)"},
        WordsCase{"Unit", unknownColumn(ImportOption::Unit),
                  "--unit names the column “b”, which is not there (columns: time, a)"},
        WordsCase{"Name", unknownColumn(ImportOption::Name),
                  "--name names the column “b”, which is not there (columns: time, a)"},
        WordsCase{"UnknownUnit",
                  {.what = What::UnknownUnit, .column = "a", .text = "bananas"},
                  "“bananas”, given with --unit for the column “a”, is no unit that is known; write it like °C, hPa, "
                  "m/s, % or mph"},
        WordsCase{"UnknownTimeZone",
                  {.what = What::UnknownTimeZone, .text = "Nowhere"},
                  "“Nowhere” is no time zone; give a name such as Europe/Berlin, or an offset such as +02:00"},
        WordsCase{"UnusableTimeZone",
                  {.what = What::UnusableTimeZone, .text = "Nowhere"},
                  "the time zone “Nowhere” cannot be used"},
        WordsCase{"IncompatibleUnits",
                  {.what = What::IncompatibleUnits, .column = "T (hPa)", .text = "hPa", .archivedUnit = "°C"},
                  "column “T (hPa)” is in hPa, but the agent's property of that name is in °C; give it another name "
                  "with --name"},
        WordsCase{"NoUnit",
                  {.what = What::IncompatibleUnits, .column = "T (hPa)", .text = "hPa"},
                  "column “T (hPa)” is in hPa, but the agent's property of that name is in no unit; give it another "
                  "name with --name"}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    RowsAndNotes, PrintedFinding,
    testing::Values(
        WordsCase{"NoNumber",
                  {.what = What::NoNumber, .line = 3, .column = "a", .text = "x"},
                  "line 3, column “a”: “x” is no number"},
        WordsCase{
            "NoTime", {.what = What::NoTime, .line = 3, .column = "time"}, "line 3, column “time”: “” is no time"},
        WordsCase{"TextLikeAPlace",
                  {.what = What::NoNumber, .line = 3, .column = "a", .text = "%2"},
                  "line 3, column “a”: “%2” is no number"},
        WordsCase{"RowUnlikeHeader",
                  {.what = What::RowUnlikeHeader, .line = 4, .text = "2015-01-03 1 2", .found = 3, .expected = 2},
                  "line 4: the row has 3 columns where the header stands for 2: “2015-01-03 1 2”"},
        WordsCase{"RowUnlikeOthers",
                  {.what = What::RowUnlikeOthers, .line = 4, .text = "1", .found = 1, .expected = 2},
                  "line 4: the row has 1 columns where the rows before have 2: “1”"},
        WordsCase{
            "NoRowRead",
            {.what = What::NoRowRead, .causes = {{.what = What::NoTime, .line = 2, .column = "time", .text = "soon"}}},
            "no row could be read: line 2, column “time”: “soon” is no time"},
        WordsCase{"ColumnsHaveNoNames",
                  {.what = What::ColumnsHaveNoNames, .found = 3},
                  "The file has no header; its columns are called Column 1 to Column 3."},
        WordsCase{"RowNumbersHaveNoName",
                  {.what = What::RowNumbersHaveNoName},
                  "The first column has no name; it counts the rows and is left out."},
        WordsCase{"HeaderLacksRowNumbers",
                  {.what = What::HeaderLacksRowNumbers, .columns = {"date", "T"}, .found = 3, .expected = 2},
                  "The header names 2 columns and the rows have 3: the first column, which has no name, counts the "
                  "rows and is left out; the names (date, T) belong to columns 2 to 3."},
        WordsCase{"HeaderLacksEmptyLast",
                  {.what = What::HeaderLacksEmptyLast, .found = 3, .expected = 2},
                  "The header names 2 columns and the rows have 3: the last column is always empty and is left out."},
        WordsCase{"DatesHaveDayFirst", {.what = What::DatesHaveDayFirst}, "Dates are read with the day first."},
        WordsCase{"DatesHaveMonthFirst", {.what = What::DatesHaveMonthFirst}, "Dates are read with the month first."}),
    [](const auto& row) { return row.param.name; });

TEST(PrintedSummary, SaysWhatWasStoredAndWhatWasLeftOut)
{
    ImportSummary summary;
    summary.file = "/home/data.csv";
    summary.site = "/home/site.plotix";
    summary.agent = "EWR";
    summary.createdSite = true;
    summary.records = 1200;
    summary.first = 1420070400;
    summary.last = 1420156800;
    summary.otherRows = 1;
    summary.unorderedTimes = 2;
    summary.repeatedTimes = 3;
    summary.badRows = 4;
    summary.firstBadRow = ImportFinding{.what = What::NoNumber, .line = 3, .column = "a", .text = "x"};
    summary.columns = {{"Temp (°C)", "Temp", "temp", "°C", 1}, {"rh", "rh", "rh", "", 2000}};
    summary.leftOut = {"note", "empty"};
    summary.notes = {{.what = What::DatesHaveDayFirst}};
    EXPECT_EQ(printedText(summary), "Dates are read with the day first.\n"
                                    "1,200 records from data.csv stored for EWR in site.plotix (new), "
                                    "2015-01-01 00:00:00 UTC to 2015-01-02 00:00:00 UTC.\n"
                                    "  temp: Temp (°C), 1 value\n"
                                    "  rh: rh, 2,000 values\n"
                                    "1 row with another text in the --where column passed over.\n"
                                    "2 rows earlier than the row before; sorted by time.\n"
                                    "3 rows at a time that comes again later; of each column the last number "
                                    "was kept.\n"
                                    "4 rows that cannot be read passed over, the first: line 3, column “a”: “x” is no "
                                    "number.\n"
                                    "Left out, without a number or with hardly one: note, empty.\n");
}

}  // namespace

}  // namespace plotix
