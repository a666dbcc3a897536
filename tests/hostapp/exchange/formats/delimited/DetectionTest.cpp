#include "hostapp/exchange/formats/delimited/Detection.h"

#include "hostapp/exchange/ColumnHeader.h"
#include "hostapp/exchange/ImportPlan.h"
#include "hostapp/exchange/tables/TimeColumns.h"
#include "tests/hostapp/exchange/FindingPrinter.h"

#include <gtest/gtest.h>

namespace plotix {

namespace {

using What = ImportFinding::What;

TableShape shape(const QByteArray& text)
{
    return shapeOf(takeSample(text, true));
}

struct DelimiterCase {
    const char* name;
    QByteArray text;
    char delimiter;
};

class Delimiter : public testing::TestWithParam<DelimiterCase> {};

TEST_P(Delimiter, IsFound)
{
    EXPECT_EQ(takeSample(GetParam().text, true).format.delimiter, GetParam().delimiter);
}

INSTANTIATE_TEST_SUITE_P(
    Files, Delimiter,
    testing::Values(DelimiterCase{"Comma", "time,a\n2015-01-01,1\n2015-01-02,2\n", ','},
                    DelimiterCase{"Semicolon", "time;a\n2015-01-01;1\n2015-01-02;2\n", ';'},
                    DelimiterCase{"SemicolonWithDecimalCommas", "Zeit;a;b\n2015-01-01;1,5;2,5\n2015-01-02;1,5;2,5\n",
                                  ';'},
                    DelimiterCase{"Tab", "time\ta\n2015-01-01\t1,5\n", '\t'},
                    DelimiterCase{"Bar", "time|a|b\n2015-01-01|1|x, y\n", '|'},
                    DelimiterCase{"QuotedDecimalCommas", "time,a\n2015-01-01,\"1,5\"\n2015-01-02,\"2,5\"\n", ','},
                    DelimiterCase{"SemicolonsInATextColumn", "time,a,note\n2015-01-01,1,x; y; z; w\n", ','}),
    [](const auto& row) { return row.param.name; });

TEST(Sample, DropsARecordThatItsEndMayHaveCut)
{
    EXPECT_EQ(takeSample("time,a\n2015-01-01,1\n2015-01-", false).rows.size(), 2U);
    EXPECT_EQ(takeSample("time,a\n2015-01-01,1\n2015-01-02,2", true).rows.size(), 3U);
}

TEST(Sample, RefusesWhatIsNoText)
{
    EXPECT_EQ(findingOf([&] { takeSample(QByteArray("a\0b", 3), true); }), ImportFinding{.what = What::NotText});
    EXPECT_EQ(findingOf([&] { takeSample("\xD0\xCF\x11\xE0 old", true); }),
              ImportFinding{.what = What::OldSpreadsheet});
}

TEST(Sample, TakesTheDelimiterThatIsSaid)
{
    EXPECT_EQ(takeSample("sep=|\na,b|c,d\n1,2|3,4\n", true).format.delimiter, '|');
    EXPECT_EQ(takeSample("time,a;b\n2015-01-01,1;2\n", true, QStringLiteral(";")).format.delimiter, ';');
    EXPECT_EQ(findingOf([&] { takeSample("a\n", true, QStringLiteral("ab")); }),
              (ImportFinding{.what = What::UnusableDelimiter, .text = "ab"}));
}

TEST(Sample, BlanksPartFieldsWhereNothingElseDoes)
{
    const TextSample sample = takeSample("Date Time T\n2015-01-01  12:00  5.5\n2015-01-01  13:00 -5.5\n", true);
    EXPECT_EQ(sample.format.fewestBlanks, 1);
    EXPECT_EQ(sample.rows[1].fields, (std::vector<std::string>{"2015-01-01", "12:00", "5.5"}));
    EXPECT_EQ(takeSample("Date  T in  T out\n2015-01-01  5.5  6\n2015-01-02  5  6\n", true).format.fewestBlanks, 2);
}

struct HeaderCase {
    const char* name;
    QByteArray text;
    bool hasHeader;
    QStringList headers;
};

class Header : public testing::TestWithParam<HeaderCase> {};

TEST_P(Header, IsFound)
{
    const TableShape found = shape(GetParam().text);
    EXPECT_EQ(found.hasHeader, GetParam().hasHeader);
    EXPECT_EQ(found.headers, GetParam().headers);
}

INSTANTIATE_TEST_SUITE_P(
    Files, Header,
    testing::Values(HeaderCase{"Plain", "time,a\n2015-01-01,1\n", true, {"time", "a"}},
                    HeaderCase{"None", "2015-01-01,1\n2015-01-02,2\n", false, {"Column 1", "Column 2"}},
                    HeaderCase{"NoneWithTextColumn",
                               "EWR,2015-01-01,1\nEWR,2015-01-02,2\n",
                               false,
                               {"Column 1", "Column 2", "Column 3"}},
                    HeaderCase{"NoneWithNumbersOnly", "1422973140,1\n1422973141,2\n", false, {"Column 1", "Column 2"}},
                    HeaderCase{"NumbersAsNames", "time,2013,2014\n2015-01-01,1,2\n", true, {"time", "2013", "2014"}},
                    HeaderCase{"Latin1",
                               "time,T (\xB0"
                               "C)\n2015-01-01,1\n",
                               true,
                               {"time", "T (°C)"}},
                    HeaderCase{"FirstValuesMissing", "time,a\n2015-01-01,NA\n", true, {"time", "a"}}),
    [](const auto& row) { return row.param.name; });

TEST(ShortHeader, LeavesTheRowNumbersWithoutAName)
{
    const TableShape found =
        shape("\"date\",\"T\"\n\"140\",\"2015-02-02 14:19:00\",23.7\n\"141\",\"2015-02-02 14:19:59\",23.8\n");
    EXPECT_EQ(found.headers, (QStringList{"Column 1", "date", "T"}));
    EXPECT_EQ(found.rowNumbers, 0U);
    EXPECT_EQ(found.notes,
              (std::vector<ImportFinding>{
                  {.what = What::HeaderLacksRowNumbers, .columns = {"date", "T"}, .found = 3, .expected = 2}}));
}

TEST(ShortHeader, MayMeanThatRowsEndInADelimiter)
{
    const TableShape found = shape("time,a\n2015-01-01,1,\n2015-01-02,2,\n");
    EXPECT_EQ(found.headers, (QStringList{"time", "a", "Column 3"}));
    EXPECT_FALSE(found.rowNumbers);
    EXPECT_EQ(found.notes,
              (std::vector<ImportFinding>{{.what = What::HeaderLacksEmptyLast, .found = 3, .expected = 2}}));
}

TEST(ShortHeader, IsRefusedWhereTheExtraColumnMeansSomething)
{
    EXPECT_EQ(findingOf([] { shape("time,a\n2015-01-01,1,2\n2015-01-02,2,3\n"); }),
              (ImportFinding{.what = What::HeaderTooShort, .line = 2, .found = 3, .expected = 2}));
    EXPECT_EQ(findingOf([] { shape("time,a\n2015-01-01,1,2,3\n"); }),
              (ImportFinding{.what = What::HeaderDoesNotMatch, .line = 2, .found = 4, .expected = 2}));
    EXPECT_EQ(findingOf([] { shape("time,a,b\n2015-01-01,1\n2015-01-02,1\n"); }),
              (ImportFinding{.what = What::HeaderDoesNotMatch, .line = 2, .found = 2, .expected = 3}));
}

TEST(UnnamedFirstColumn, IsLeftOutWhereItCountsTheRows)
{
    EXPECT_EQ(shape("\"\",time,a\n1,2015-01-01,5\n2,2015-01-02,6\n").rowNumbers, 0U);
    EXPECT_EQ(shape("\"\",time,a\n1,2015-01-01,5\n2,2015-01-02,6\n").notes,
              (std::vector<ImportFinding>{{.what = What::RowNumbersHaveNoName}}));
    EXPECT_FALSE(shape(",time,a\n1.5,2015-01-01,5\n2.5,2015-01-02,6\n").rowNumbers);
}

TEST(Tables, NeedRows)
{
    EXPECT_EQ(findingOf([] { shape(""); }), ImportFinding{.what = What::EmptyFile});
    EXPECT_EQ(findingOf([] { shape("time,a\n"); }), ImportFinding{.what = What::NoRowsBelowHeader});
}

struct UnitCase {
    const char* name;
    QString header, text, unit;
};

class HeaderUnit : public testing::TestWithParam<UnitCase> {};

TEST_P(HeaderUnit, IsSplitOff)
{
    const ColumnHeader split = splitHeader(GetParam().header);
    EXPECT_EQ(split.name, GetParam().text);
    EXPECT_EQ(split.unit, GetParam().unit);
}

INSTANTIATE_TEST_SUITE_P(
    Headers, HeaderUnit,
    testing::Values(
        UnitCase{"Round", "Temperature (°C)", "Temperature", "°C"},
        UnitCase{"Square", "Pressure [hPa]", "Pressure", "hPa"}, UnitCase{"Alias", "Wind (mph)", "Wind", "mph"},
        UnitCase{"Percent", "Humidity(%)", "Humidity", "%"}, UnitCase{"None", "Humidity", "Humidity", ""},
        UnitCase{"NoUnitInside", "Rain (last hour)", "Rain (last hour)", ""},
        UnitCase{"Empty", "Level (m) ()", "Level (m)", ""}, UnitCase{"TwoPairs", "Air (roof) (°C)", "Air (roof)", "°C"},
        UnitCase{"Comma", "Flow temperature, °C", "Flow temperature", "°C"},
        UnitCase{"CommaAndSensor", "Temp, °F (S/N: 1234)", "Temp", "°F"}, UnitCase{"Blank", "Power kW", "Power", "kW"},
        UnitCase{"BlankAndSign", "Temp °C", "Temp", "°C"}, UnitCase{"In", "Leistung in kW", "Leistung", "kW"},
        UnitCase{"LetterOfTheName", "Zone A", "Zone A", ""},
        UnitCase{"PlaceBehindComma", "Temp, north", "Temp, north", ""}, UnitCase{"UnitAlone", "(°C)", "(°C)", ""}),
    [](const auto& row) { return row.param.name; });

struct TimeColumnCase {
    const char* name;
    QByteArray text;
    std::size_t field;
    TimeLayout layout;
    bool needsDateOrder;
};

class TimeColumnDetection : public testing::TestWithParam<TimeColumnCase> {};

TEST_P(TimeColumnDetection, FindsColumnAndLayout)
{
    const TextSample sample = takeSample(GetParam().text, true);
    const TimeColumns found = timeColumnsOf(sample, shapeOf(sample), {});
    EXPECT_EQ(found.fields, std::vector{GetParam().field});
    EXPECT_EQ(found.layout, GetParam().layout);
    EXPECT_EQ(found.needsDateOrder, GetParam().needsDateOrder);
}

INSTANTIATE_TEST_SUITE_P(
    Files, TimeColumnDetection,
    testing::Values(
        TimeColumnCase{"Iso", "a,time\n1,2015-01-01T00:00:00Z\n", 1, TimeLayout::YearFirst, false},
        TimeColumnCase{"WithoutName", "a,x\n1,2015-01-01 12:00\n", 1, TimeLayout::YearFirst, false},
        TimeColumnCase{"NamedBeforeOthers", "x,time\n2015-01-01,2015-01-01 12:00\n", 1, TimeLayout::YearFirst, false},
        TimeColumnCase{"EpochSeconds", "timestamp,a\n1422973140,1\n", 0, TimeLayout::EpochSeconds, false},
        TimeColumnCase{"EpochMilliseconds", "a,epoch\n1,1422973140250\n", 1, TimeLayout::EpochMilliseconds, false},
        TimeColumnCase{"EpochByUnit", "time (s),a\n1e300,1\n", 0, TimeLayout::EpochSeconds, false},
        TimeColumnCase{"EpochWithoutHeader", "1422973140,1\n1422973141,2\n", 0, TimeLayout::EpochSeconds, false},
        TimeColumnCase{"EpochMicroseconds", "ts,a\n1422973140250000,1\n", 0, TimeLayout::EpochMicroseconds, false},
        TimeColumnCase{"EpochNanoseconds", "ts,a\n1422973140250000000,1\n", 0, TimeLayout::EpochNanoseconds, false},
        TimeColumnCase{"HoursInDigits", "MESS_DATUM,a\n2024010203,1\n", 0, TimeLayout::CompactDigits, false},
        TimeColumnCase{"MinutesInDigits", "time,a\n202401020304,1\n", 0, TimeLayout::CompactDigits, false},
        TimeColumnCase{"DaysOfASpreadsheet", "Date,a\n45292.25,1\n", 0, TimeLayout::SpreadsheetDays, false},
        TimeColumnCase{"BeginningBeforeEnd", "end,begin,a\n2015-01-01 13:00,2015-01-01 12:00,1\n", 1,
                       TimeLayout::YearFirst, false},
        TimeColumnCase{"DatesBeforeNumbers", "time,x\n1422973140,2015-01-01\n", 1, TimeLayout::YearFirst, false},
        TimeColumnCase{"Undecided", "date,a\n3/4/2015,1\n", 0, TimeLayout::DayFirst, true},
        TimeColumnCase{"OneBadField", "time,a\n2015-01-01,1\nsoon,2\n2015-01-03,3\n", 0, TimeLayout::YearFirst, false}),
    [](const auto& row) { return row.param.name; });

struct JoinedCase {
    const char* name;
    QByteArray text;
    TimeColumns::Form form;
    std::vector<std::size_t> fields;
};

class JoinedTimes : public testing::TestWithParam<JoinedCase> {};

TEST_P(JoinedTimes, AreFound)
{
    const TextSample sample = takeSample(GetParam().text, true);
    const TimeColumns found = timeColumnsOf(sample, shapeOf(sample), {});
    EXPECT_EQ(found.form, GetParam().form);
    EXPECT_EQ(found.fields, GetParam().fields);
}

INSTANTIATE_TEST_SUITE_P(
    Files, JoinedTimes,
    testing::Values(
        JoinedCase{"DateAndClock", "Datum;x;Uhrzeit\n01.02.2024;1;12:00\n", TimeColumns::Form::DateAndClock, {0, 2}},
        JoinedCase{"ClockFirst", "Time;Date;x\n12:00;2024-02-01;1\n", TimeColumns::Form::DateAndClock, {1, 0}},
        JoinedCase{
            "DateAtMidnight", "Date;Time;x\n2024-02-01 00:00:00;12:00;1\n", TimeColumns::Form::DateAndClock, {0, 1}},
        JoinedCase{"Hours", "Date,Hour,x\n2024-02-01,0,1\n2024-02-01,1,1\n", TimeColumns::Form::DateAndClock, {0, 1}},
        JoinedCase{"Digits", "DATE,TIME,x\n20240201,0015,1\n", TimeColumns::Form::DateAndClock, {0, 1}},
        JoinedCase{"DateWithItsTime", "date,clock,x\n2024-02-01 12:15,13:00,1\n", TimeColumns::Form::Single, {0}},
        JoinedCase{"Parts", "year,month,day,hour,x\n2024,2,1,5,1\n", TimeColumns::Form::Parts, {0, 1, 2, 3}}),
    [](const auto& row) { return row.param.name; });

TEST(StatedZones, AreFoundInHeadersAndAboveTheTable)
{
    EXPECT_EQ(zoneIn(QStringLiteral("Time (UTC)")), QStringLiteral("UTC+00:00"));
    EXPECT_EQ(zoneIn(QStringLiteral("Date Time, GMT+01:00")), QStringLiteral("UTC+01:00"));
    EXPECT_EQ(zoneIn(QStringLiteral("Zeit [MEZ]")), QStringLiteral("UTC+01:00"));
    EXPECT_EQ(zoneIn(QStringLiteral("MTU (CET/CEST)")), QStringLiteral("Europe/Berlin"));
    EXPECT_EQ(zoneIn(QStringLiteral("timestamp_utc")), QStringLiteral("UTC+00:00"));
    EXPECT_EQ(zoneIn(QStringLiteral("DATE TIME")), QString());
    EXPECT_EQ(shape("Time zone;UTC\nZeit;a\n2024-01-01;1\n2024-01-02;1\n").statedZone, QStringLiteral("UTC+00:00"));
}

TEST(TimeColumns, AreAskedForWhereNoneIsFound)
{
    const TextSample sample = takeSample("a,runtime\n1,2\n", true);
    EXPECT_EQ(findingOf([&] { timeColumnsOf(sample, shapeOf(sample), {}); }),
              (ImportFinding{.what = What::NoTimeColumn, .columns = {"a", "runtime"}}));
}

TEST(TimeColumns, AreRefusedWhereTheyHoldNone)
{
    const TextSample sample = takeSample("time,name\n2015-01-01,x\n", true);
    EXPECT_EQ(findingOf([&] { timeColumnsOf(sample, shapeOf(sample), {1}); }),
              (ImportFinding{.what = What::NoTimesInColumn, .column = "name", .columns = {"time", "name"}}));
}

struct OrderCase {
    const char* name;
    std::vector<const char*> dates;
    std::optional<TimeLayout> layout;
    std::optional<What> what{};  ///< is wrong
};

class DateOrderDecision : public testing::TestWithParam<OrderCase> {};

TEST_P(DateOrderDecision, ComesFromAllDates)
{
    DateOrderEvidence evidence;
    for (const char* date : GetParam().dates)
        evidence.add(splitDateAndTime(date).value());
    if (GetParam().layout) {
        EXPECT_EQ(decidedLayout(evidence), GetParam().layout);
        return;
    }
    EXPECT_EQ(findingOf([&] { decidedLayout(evidence); }), ImportFinding{.what = GetParam().what.value()});
}

INSTANTIATE_TEST_SUITE_P(
    Files, DateOrderDecision,
    testing::Values(OrderCase{"DayAboveTwelve", {"3/4/2015", "13/4/2015"}, TimeLayout::DayFirst},
                    OrderCase{"MonthFirst", {"3/4/2015", "3/14/2015"}, TimeLayout::MonthFirst},
                    OrderCase{"Dots", {"3.4.2015"}, TimeLayout::DayFirst},
                    OrderCase{"RunningOnFromDayToDay",
                              {"1/2/2024 0:00", "1/2/2024 8:00", "1/2/2024 16:00", "2/2/2024 0:00", "2/2/2024 8:00",
                               "2/2/2024 16:00"},
                              TimeLayout::DayFirst},
                    OrderCase{"DaysOnly", {"1/2/2024", "2/2/2024", "3/2/2024"}, std::nullopt, What::DateOrderUnknown},
                    OrderCase{"YearsOfTwoDigits", {"15/1/24", "16/1/24"}, std::nullopt, What::DateOrderUnknown},
                    OrderCase{"YearOfTwoDigitsFirst", {"24-01-31", "24-02-30"}, std::nullopt, What::DateOrderUnknown},
                    OrderCase{"YearTooLargeForADay", {"45-01-31"}, TimeLayout::ShortYearFirst},
                    OrderCase{"Silent", {"3/4/2015", "4/4/2015"}, std::nullopt, What::DateOrderUnknown},
                    OrderCase{"Contradicting", {"13/4/2015", "4/13/2015"}, std::nullopt, What::DateOrderContradicts}),
    [](const auto& row) { return row.param.name; });

TEST(ColumnNames, AreFoundAsPeopleWriteThem)
{
    const std::vector<SourceColumn> found = columnsOf(shape("time,Air Temperature (°C),a\n2015-01-01,1,2\n"));
    for (const char* text : {"Air Temperature (°C)", "Air Temperature", "air temperature", "airTemperature"})
        EXPECT_EQ(columnNamed(QString::fromUtf8(text), found), 1U) << text;
    EXPECT_FALSE(columnNamed(QStringLiteral("pressure"), found));
    EXPECT_FALSE(columnNamed(QString(), found));
}

}  // namespace

}  // namespace plotix
