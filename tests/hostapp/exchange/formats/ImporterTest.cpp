#include "base/ReportableError.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/exchange/formats/FileExchange.h"
#include "tests/hostapp/exchange/FindingPrinter.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace plotix {

namespace {

using What = ImportFinding::What;
using Numbers = std::vector<std::optional<double>>;

class ImporterTest : public testing::Test {
protected:
    QString write(const QByteArray& text)
    {
        const QString path = m_folder.filePath(QStringLiteral("data.csv"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }

    ImportSummary import(const QByteArray& text) { return importFile(write(text), site(), m_options); }

    /// Why an import failed, which it must.
    std::optional<ImportFinding> failure(const QByteArray& text)
    {
        return findingOf([&] { import(text); });
    }

    QString site() const { return m_folder.filePath(QStringLiteral("site.plotix")); }

    std::vector<double> times()
    {
        const RecordBlock block = read();
        return {block.times.span().begin(), block.times.span().end()};
    }

    Numbers values(const QString& key)
    {
        const RecordBlock block = read();
        Numbers numbers;
        for (std::size_t index = 0; index < m_keys.size(); ++index)
            if (m_keys[index] == key)
                for (std::size_t row = 0; row < block.times.size(); ++row)
                    numbers.push_back(block.columns[index].validity.isValid(row)
                                          ? std::optional(block.columns[index].values[row])
                                          : std::nullopt);
        return numbers;
    }

    ImportOptions m_options;
    QTemporaryDir m_folder;

private:
    RecordBlock read()
    {
        const auto document = SiteDocument::open(site());
        const auto agent = document->agents().front();
        std::vector<RowId> ids;
        m_keys.clear();
        for (const auto& property : agent->siteProperties()) {
            ids.push_back(property->description().id);
            m_keys.push_back(property->propertyName());
        }
        return plotix::recordsOfSite(site())->read(agent->id(), ids, {}, {}).value();
    }

    std::vector<QString> m_keys;
};

TEST_F(ImporterTest, StoresNumbersAndMissingValues)
{
    const ImportSummary summary =
        import("time,Temp (°C),rh\n2015-01-01T00:00:00Z,1.5,\n2015-01-01T00:01:00Z,NA,50\n2015-01-01T00:02:00Z,-,60\n");
    EXPECT_EQ(summary.records, 3U);
    EXPECT_EQ(summary.agent, QStringLiteral("data"));
    EXPECT_TRUE(summary.createdSite);
    EXPECT_TRUE(summary.firstImport);
    EXPECT_EQ(times(), (std::vector<double>{1420070400, 1420070460, 1420070520}));
    EXPECT_EQ(values(QStringLiteral("temp")), (Numbers{1.5, {}, {}}));
    EXPECT_EQ(values(QStringLiteral("rh")), (Numbers{{}, 50, 60}));
    EXPECT_EQ(summary.columns.front().unit, QStringLiteral("°C"));
    EXPECT_EQ(summary.columns.front().valid, 1U);
}

TEST_F(ImporterTest, TakesUnitsAndNamesFromTheOptions)
{
    m_options.agentName = QStringLiteral("EWR");
    m_options.units = {{QStringLiteral("temp"), QStringLiteral("degF")}};
    m_options.names = {{QStringLiteral("temp"), QStringLiteral("Air Temperature")}};
    const ImportSummary summary = import("time,temp\n2015-01-01T00:00:00Z,39.02\n");
    EXPECT_EQ(summary.agent, QStringLiteral("EWR"));
    EXPECT_EQ(summary.columns.front().propertyName, QStringLiteral("airTemperature"));
    EXPECT_EQ(summary.columns.front().unit, QStringLiteral("°F"));
    EXPECT_EQ(values(QStringLiteral("airTemperature")), (Numbers{39.02}));
}

TEST_F(ImporterTest, TakesOnlyTheRowsAndColumnsAskedFor)
{
    m_options.where = {{QStringLiteral("origin"), QStringLiteral("EWR")}};
    m_options.only = {QStringLiteral("b")};
    const ImportSummary summary =
        import("origin,time,a,b\nEWR,2015-01-01,1,2\nJFK,2015-01-01,3,4\nEWR,2015-01-02,5,6\n");
    EXPECT_EQ(summary.rows, 3U);
    EXPECT_EQ(summary.otherRows, 1U);
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{2, 6}));
    EXPECT_TRUE(values(QStringLiteral("a")).empty());
}

TEST_F(ImporterTest, BadFieldsInRowsThatAreNotAskedForDoNotMatter)
{
    m_options.where = {{QStringLiteral("origin"), QStringLiteral("EWR")}};
    EXPECT_EQ(import("origin,time,a\nEWR,2015-01-01,1\nJFK,never,oops\n").records, 1U);
}

TEST_F(ImporterTest, NamesColumnsWithoutASingleNumber)
{
    const ImportSummary summary = import("time,a,note,empty\n2015-01-01,1,dry,\n2015-01-02,2,wet,NA\n");
    EXPECT_EQ(summary.leftOut, (QStringList{"note", "empty"}));
    EXPECT_EQ(summary.columns.size(), 1U);
}

TEST_F(ImporterTest, SortsTimesAndKeepsTheLastOfRepeatedOnes)
{
    const ImportSummary summary = import("time,a\n2015-01-03,3\n2015-01-01,1\n2015-01-02,2\n2015-01-01,9\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{9, 2, 3}));
    EXPECT_EQ(summary.unorderedTimes, 2U);
    EXPECT_EQ(summary.repeatedTimes, 1U);
    EXPECT_EQ(summary.records, 3U);
}

TEST_F(ImporterTest, ReadsDecimalCommas)
{
    import("Zeit;Temperatur (°C)\n01.02.2015 12:00;21,5\n02.02.2015 12:00;-0,25\n");
    EXPECT_EQ(values(QStringLiteral("temperatur")), (Numbers{21.5, -0.25}));
}

TEST_F(ImporterTest, DecidesDayAndMonthOverTheWholeFile)
{
    QByteArray text = "date,a\n";
    for (int row = 0; row < 9000; ++row)  // far beyond the sample
        text += "3/4/2015 0:00,1\n";
    const ImportSummary summary = import(text + "3/14/2015 0:00,2\n");
    EXPECT_EQ(times(), (std::vector<double>{1425427200, 1426291200}));  // March
    EXPECT_EQ(summary.notes, std::vector{ImportFinding{.what = What::DatesHaveMonthFirst}});
}

TEST_F(ImporterTest, RefusesDatesThatStayAmbiguousUntilTheOrderIsSaid)
{
    EXPECT_EQ(failure("date,a\n3/4/2015,1\n"), ImportFinding{.what = What::DateOrderUnknown});
    m_options.dateOrder = DateOrder::DayFirst;
    import("date,a\n3/4/2015,1\n");
    EXPECT_EQ(times(), (std::vector<double>{1428019200}));  // April
}

TEST_F(ImporterTest, ReadsLocalTimesInTheZoneGiven)
{
    m_options.timeZone = QStringLiteral("America/New_York");
    import("time,a\n2015-01-01 00:00,1\n");
    EXPECT_EQ(times(), (std::vector<double>{1420088400}));
}

TEST_F(ImporterTest, MakesNamesUnique)
{
    const ImportSummary summary = import("time,temp,Temp,%\n2015-01-01,1,2,3\n");
    ASSERT_EQ(summary.columns.size(), 3U);
    EXPECT_EQ(summary.columns[1].propertyName, QStringLiteral("temp2"));
    EXPECT_EQ(summary.columns[2].propertyName, QStringLiteral("column4"));
}

TEST_F(ImporterTest, ConvertsIntoTheUnitThatIsThereAlready)
{
    import("time,T (°C)\n2015-01-01,0\n");
    const ImportSummary summary = import("time,T (°F)\n2015-01-02,212\n");
    EXPECT_FALSE(summary.firstImport);
    EXPECT_EQ(summary.columns.front().unit, QStringLiteral("°C"));
    EXPECT_NEAR(values(QStringLiteral("t"))[1].value(), 100, 1e-9);
    EXPECT_EQ(failure("time,T (hPa)\n2015-01-03,1000\n"), (ImportFinding{.what = What::IncompatibleUnits,
                                                                         .column = QStringLiteral("T (hPa)"),
                                                                         .text = QStringLiteral("hPa"),
                                                                         .archivedUnit = QStringLiteral("°C")}));
}

TEST_F(ImporterTest, ASecondAgentHasAFirstImportOfItsOwn)
{
    import("time,a\n2015-01-01,1\n");
    m_options.agentName = QStringLiteral("other");
    const ImportSummary summary = import("time,a\n2015-01-01,1\n");
    EXPECT_FALSE(summary.createdSite);
    EXPECT_TRUE(summary.firstImport);
}

TEST_F(ImporterTest, WhatIsWrongWithTheSiteIsToldWithTheFilesName)
{
    QFile noSite(site());
    ASSERT_TRUE(noSite.open(QIODevice::WriteOnly));
    noSite.write("no site");
    noSite.close();
    try {
        import("time,a\n2015-01-01,1\n");
        FAIL() << "nothing was thrown";
    } catch (const ReportableError& error) {
        EXPECT_TRUE(error.message().startsWith(QStringLiteral("data.csv: "))) << error.what();
    }
}

struct FailureCase {
    const char* name;
    QByteArray text;
    ImportFinding finding;
};

class FailedImport : public ImporterTest, public testing::WithParamInterface<FailureCase> {};

TEST_P(FailedImport, SaysWhereAndStoresNothing)
{
    EXPECT_EQ(failure(GetParam().text), GetParam().finding);
    EXPECT_FALSE(QFile::exists(site()));
}

INSTANTIATE_TEST_SUITE_P(
    Files, FailedImport,
    testing::Values(FailureCase{"NoNumbers",
                                "time,a\n2015-01-01,x\n",
                                {.what = What::NoNumbers, .column = "time", .columns = {"time", "a"}}},
                    FailureCase{"Empty", "", {.what = What::EmptyFile}},
                    FailureCase{"HeaderOnly", "time,a\n", {.what = What::NoRowsBelowHeader}},
                    FailureCase{"OpenQuote", "time,a\n2015-01-01,\"1\n", {.what = What::UnclosedQuotation, .line = 2}}),
    [](const auto& row) { return row.param.name; });

TEST_F(ImporterTest, AFailureLeavesAnExistingSiteAsItWas)
{
    import("time,a\n2015-01-01,1\n");
    failure("time,a,b\n2015-01-01,5,6\nsoon,x,7\nlater,x,7\n2015-01-02,1,2\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1}));
    EXPECT_TRUE(values(QStringLiteral("b")).empty());
}

TEST_F(ImporterTest, ABadCellLosesTheCellAndIsCountedInItsColumn)
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

TEST_F(ImporterTest, ALongTextIsShownShortened)
{
    const ImportSummary summary =
        import("time,a\n2015-01-01,1\n2015-01-02,a text of more than forty characters in all\n");
    EXPECT_EQ(summary.columns[0].firstBad->text, QString::fromUtf8("a text of more than forty characters in…"));
}

TEST_F(ImporterTest, AColumnOfTextsWithHardlyANumberIsLeftOutUnlessAskedFor)
{
    QByteArray text = "time,a,note\n2015-01-01 00:00,1,7\n";
    for (int row = 1; row < 20; ++row)
        text += "2015-01-01 00:" + QByteArray::number(row + 10) + ",1,dry\n";
    EXPECT_EQ(import(text).leftOut, (QStringList{"note"}));
    m_options.only = {QStringLiteral("note")};
    m_options.agentName = QStringLiteral("asked");
    EXPECT_EQ(import(text).columns.front().valid, 1U);
}

TEST_F(ImporterTest, WordsForStatesAreOneAndZero)
{
    const ImportSummary summary = import("time,pump\n2015-01-01,ON\n2015-01-02,off\n2015-01-03,\n");
    EXPECT_EQ(values(QStringLiteral("pump")), (Numbers{1, 0, {}}));
    EXPECT_EQ(summary.notes, (std::vector<ImportFinding>{
                                 {.what = What::StatesAreNumbers, .line = 2, .column = "pump", .text = "ON"}}));
}

TEST_F(ImporterTest, WordsForStatesAmongOtherNumbersAreBadCells)
{
    const ImportSummary summary = import("time,power\n2015-01-01,12.5\n2015-01-02,off\n2015-01-03,1\n");
    EXPECT_EQ(values(QStringLiteral("power")), (Numbers{12.5, {}, 1}));
    EXPECT_EQ(summary.columns[0].bad, 1U);
}

TEST_F(ImporterTest, ARowWithoutATimeIsPassedOverAndCounted)
{
    const ImportSummary summary =
        import("time,a\n2015-01-01,1\nsoon,2\n2015-01-03,3\n2015-01-04,4,5\n2015-01-05,5\n2015-01-06,5\n");
    EXPECT_EQ(summary.badRows, 2U);
    EXPECT_EQ(summary.firstBadRow,
              (ImportFinding{
                  .what = What::NoTime, .line = 3, .column = QStringLiteral("time"), .text = QStringLiteral("soon")}));
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, 3, 5, 5}));
}

TEST_F(ImporterTest, MoreThanAThirdOfRowsWithoutATimeIsRefusedUnlessTheyMayBe)
{
    const QByteArray text = "time,a\n2015-01-01,1\nsoon,2\nlater,3\n2015-01-04,4\n";
    const std::optional<ImportFinding> finding = failure(text);
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->what, What::TooManyBadRows);
    EXPECT_EQ(finding->found, 2U);
    EXPECT_EQ(finding->causes.front().text, QStringLiteral("soon"));
    m_options.skipBadRows = true;
    EXPECT_EQ(import(text).badRows, 2U);
}

TEST_F(ImporterTest, LinesBelowTheTableAreNoBadRows)
{
    const ImportSummary summary = import("time,a\n2015-01-01,1\n2015-01-02,2\nSum,3\nEnd\n");
    EXPECT_EQ(summary.badRows, 0U);
    EXPECT_EQ(summary.records, 2U);
    EXPECT_EQ(summary.notes,
              (std::vector<ImportFinding>{{.what = What::LinesBelowTable, .line = 4, .text = "Sum", .found = 2}}));
}

TEST_F(ImporterTest, AShortRowHasGaps)
{
    const ImportSummary summary = import("time,a,b\n2015-01-01,1,2\n2015-01-02\n2015-01-03,3\n2015-01-04,4,5\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, {}, 3, 4}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{2, {}, {}, 5}));
    EXPECT_EQ(summary.notes, (std::vector<ImportFinding>{{.what = What::ShortRows, .line = 3, .found = 2}}));
}

TEST_F(ImporterTest, NumbersWithTheOtherMarkAreBadCells)
{
    const ImportSummary summary = import("time;a\n2015-01-01;1,5\n2015-01-02;1.5\n2015-01-03;2,5\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1.5, {}, 2.5}));
    EXPECT_EQ(summary.columns[0].bad, 1U);
}

TEST_F(ImporterTest, ThousandsAndDecimalsAreNeverGuessed)
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

TEST_F(ImporterTest, TheDecimalMarkMayBeProvenFarBelow)
{
    QByteArray text = "Zeit;a\n";
    for (int row = 0; row < 9000; ++row)
        text += "01.02.2015 12:00;1.234\n";
    import(text + "01.02.2015 13:00;2,5\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1234, 2.5}));
}

TEST_F(ImporterTest, AMarkThatComesLateAndMayBeEitherIsAskedFor)
{
    QByteArray text = "Zeit;a\n";
    for (int row = 0; row < 900; ++row)
        text += "01.02.2015 12:00;7\n";
    EXPECT_EQ(failure(text + "01.02.2015 13:00;1.234\n").value().what, What::DecimalMarkUnknown);
    EXPECT_EQ(import(text + "01.02.2015 13:00;1.234\n01.02.2015 14:00;2,5\n").columns.front().highest, 1234);
}

TEST_F(ImporterTest, ManyRowsAtOneTimeAreRefusedUnlessTheLastIsKept)
{
    QByteArray text = "time,station,a\n";
    for (int row = 0; row < 20; ++row)
        text += "2015-01-01 00:" + QByteArray::number(10 + row / 2) + (row % 2 != 0 ? ",N,1,\n" : ",S,2,\n");
    text.replace(",\n", "\n");
    text.replace("time,station,a", "time,station,a,b");
    text.replace("1\n", "1,3\n");
    text.replace("2\n", "2,4\n");
    const std::optional<ImportFinding> finding = failure(text);
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->what, What::ManyRowsAtOneTime);
    EXPECT_EQ(finding->columns, (QStringList{"station"}));
    m_options.rowsAtOneTime = RowsAtOneTime::KeepLast;
    EXPECT_EQ(import(text).replacedRows, 10U);
}

TEST_F(ImporterTest, RowsAtOneTimeThatCompleteEachOtherBecomeOne)
{
    const ImportSummary summary = import("time,a,b\n2015-01-01,1,\n2015-01-01,,2\n2015-01-02,3,\n2015-01-02,,4\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, 3}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{2, 4}));
    EXPECT_EQ(summary.replacedRows, 0U);
}

TEST_F(ImporterTest, AnotherTableBelowTheFirstIsRefused)
{
    EXPECT_EQ(failure("time,a\n2015-01-01,1\ntime,b\n2015-01-02,2\n"),
              (ImportFinding{.what = What::AnotherHeader, .line = 3, .column = "time"}));
}

TEST_F(ImporterTest, DatesAndTimesOfDayAreJoinedAsTheUserSays)
{
    m_options.timeColumn = QStringLiteral("day+clock");
    import("clock,other,day,a\n12:00,2014-01-01,2015-01-01,1\n13:00,2014-01-01,2015-01-01,2\n");
    EXPECT_EQ(times(), (std::vector<double>{1420113600, 1420117200}));
}

TEST_F(ImporterTest, TheUsersZoneComesBeforeTheFiles)
{
    const QByteArray text = "Time (UTC),a\n2015-01-01 12:00,1\n";
    EXPECT_EQ(*import(text).first, 1420113600);
    m_options.timeZone = QStringLiteral("+02:00");
    m_options.agentName = QStringLiteral("other");
    EXPECT_EQ(*import(text).first, 1420106400);
}

TEST_F(ImporterTest, ThousandsOfColumnsWithOneNameTakeNoLongerThanOthers)
{
    QByteArray text = "time";
    for (int column = 0; column < 2000; ++column)
        text += ",Temp";
    text += "\n2015-01-01";
    for (int column = 0; column < 2000; ++column)
        text += ',' + QByteArray::number(column);
    const ImportSummary summary = import(text + '\n');
    ASSERT_EQ(summary.columns.size(), 2000U);
    EXPECT_EQ(summary.columns.back().name, QStringLiteral("Temp 2000"));
}

TEST_F(ImporterTest, DevicesAndFoldersAreNoFiles)
{
    for (const char* path : {"/dev/zero", "/dev/null"})
        EXPECT_EQ(findingOf([&] { importFile(QLatin1String(path), site(), {}); }),
                  ImportFinding{.what = What::NotAFile});
    EXPECT_TRUE(findingOf([&] { importFile(m_folder.path(), site(), {}); }));
}

struct OptionCase {
    const char* name;
    std::function<void(ImportOptions&)> set;
    ImportFinding finding;
};

class WrongOption : public ImporterTest, public testing::WithParamInterface<OptionCase> {};

TEST_P(WrongOption, IsNamed)
{
    GetParam().set(m_options);
    EXPECT_EQ(failure("time,a\n2015-01-01,1\n"), GetParam().finding);
}

/// The option names a column b, which is not there.
ImportFinding unknownColumn(ImportOption option)
{
    return {.what = What::UnknownColumn, .text = "b", .columns = {"time", "a"}, .option = option};
}

INSTANTIATE_TEST_SUITE_P(
    Options, WrongOption,
    testing::Values(
        OptionCase{"Time", [](auto& o) { o.timeColumn = "b"; }, unknownColumn(ImportOption::TimeColumn)},
        OptionCase{"Where", [](auto& o) { o.where.emplace_back("b", "1"); }, unknownColumn(ImportOption::Where)},
        OptionCase{"Only", [](auto& o) { o.only << "b"; }, unknownColumn(ImportOption::Only)},
        OptionCase{"Name", [](auto& o) { o.names.emplace_back("b", "B"); }, unknownColumn(ImportOption::Name)},
        OptionCase{"Unit",
                   [](auto& o) { o.units.emplace_back("a", "bananas"); },
                   {.what = What::UnknownUnit, .column = "a", .text = "bananas"}},
        OptionCase{"Zone", [](auto& o) { o.timeZone = "Nowhere"; }, {.what = What::UnknownTimeZone, .text = "Nowhere"}},
        OptionCase{"NoSuchText", [](auto& o) { o.where.emplace_back("a", "7"); }, {.what = What::NoRowWanted}}),
    [](const auto& row) { return row.param.name; });

TEST_F(ImporterTest, ColumnsAreNamedAsPeopleWriteThem)
{
    m_options.only = {QStringLiteral("air temperature [°F]")};
    EXPECT_EQ(import("time,a,Air Temperature (°C)\n2015-01-01,1,2\n").columns.front().header,
              QStringLiteral("Air Temperature (°C)"));
}

TEST_F(ImporterTest, ABadRowIsTheReasonWhereEveryRowIsBad)
{
    m_options.skipBadRows = true;
    const auto finding = failure("time,a\n2015-13-01,1\n");
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->what, What::NoRowRead);
    EXPECT_EQ(finding->causes,
              (std::vector<ImportFinding>{{.what = What::NoTime, .line = 2, .column = "time", .text = "2015-13-01"}}));
}

TEST_F(ImporterTest, AFileThatIsNotThereIsAnError)
{
    const auto finding = findingOf([&] { importFile(m_folder.filePath(QStringLiteral("none.csv")), site(), {}); });
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->what, What::CannotBeOpened);
    EXPECT_FALSE(finding->text.isEmpty());
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(ImporterTest, CancellingStoresNothing)
{
    const QString file = write("time,a\n2015-01-01,1\n");
    EXPECT_THROW(importFile(file, site(), {}, [](qint64, qint64) { return false; }), ImportCancelled);
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(ImporterTest, CancellingWhileStoringRollsBack)
{
    import("time,a\n2015-01-01,1\n");
    const QString file = write("time,a\n2015-01-02,1\n");
    int calls = 0;
    EXPECT_THROW(importFile(file, site(), {}, [&calls](qint64, qint64) { return ++calls < 2; }), ImportCancelled);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(times().size(), 1U);
}

TEST_F(ImporterTest, ProgressEndsAtTheFilesLength)
{
    const QByteArray text = "time,a\n2015-01-01,1\n";
    qint64 last = 0;
    importFile(write(text), site(), {}, [&](qint64 done, qint64 total) {
        EXPECT_GE(done, last);
        EXPECT_EQ(total, text.size());
        last = done;
        return true;
    });
    EXPECT_EQ(last, text.size());
}

TEST_F(ImporterTest, KeepsEveryBitOfExoticNumbers)
{
    import("time,a\n2015-01-01,-0\n2015-01-02,5e-324\n2015-01-03,inf\n2015-01-04,-1.7976931348623157e308\n");
    const Numbers numbers = values(QStringLiteral("a"));
    EXPECT_TRUE(std::signbit(numbers[0].value()));
    EXPECT_EQ(numbers[1], 5e-324);
    EXPECT_EQ(numbers[2], std::numeric_limits<double>::infinity());
    EXPECT_EQ(numbers[3], -std::numeric_limits<double>::max());
}

}  // namespace

}  // namespace plotix
