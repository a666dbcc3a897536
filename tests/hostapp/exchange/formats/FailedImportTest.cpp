#include "base/ReportableError.h"
#include "tests/hostapp/exchange/formats/ImportFixture.h"

#include <functional>

namespace plotix {

namespace {

using What = ImportFinding::What;

class FailedImportTest : public ImportFixture {};

struct FailureCase {
    const char* name;
    QByteArray text;
    ImportFinding finding;
};

class FailedImport : public ImportFixture, public testing::WithParamInterface<FailureCase> {};

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
                    FailureCase{"Json", "\n[ {\"time\": 1}]\n", {.what = What::NotATable, .text = "JSON"}},
                    FailureCase{"Html", "<HTML><body>", {.what = What::NotATable, .text = "HTML"}},
                    FailureCase{"OpenQuote", "time,a\n2015-01-01,\"1\n", {.what = What::UnclosedQuotation, .line = 2}}),
    [](const auto& row) { return row.param.name; });

TEST_F(FailedImportTest, AFailureLeavesAnExistingSiteAsItWas)
{
    import("time,a\n2015-01-01,1\n");
    failure("time,a,b\n2015-01-01,5,6\nsoon,x,7\nlater,x,7\n2015-01-02,1,2\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1}));
    EXPECT_TRUE(values(QStringLiteral("b")).empty());
}

TEST_F(FailedImportTest, WhatIsWrongWithTheSiteIsToldWithTheFilesName)
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

TEST_F(FailedImportTest, AFileThatIsNotThereIsAnError)
{
    const auto finding = findingOf([&] { importFile(m_folder.filePath(QStringLiteral("none.csv")), site(), {}); });
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->what, What::CannotBeOpened);
    EXPECT_FALSE(finding->text.isEmpty());
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(FailedImportTest, DevicesAndFoldersAreNoFiles)
{
    for (const char* path : {"/dev/zero", "/dev/null"})
        EXPECT_EQ(findingOf([&] { importFile(QLatin1String(path), site(), {}); }),
                  ImportFinding{.what = What::NotAFile});
    for (const QString& path : {m_folder.path(), m_folder.path() + QLatin1Char('/')})
        EXPECT_EQ(findingOf([&] { importFile(path, site(), {}); }), ImportFinding{.what = What::Folder});
}

TEST_F(FailedImportTest, ALogThatBeginsWithABracketIsATable)
{
    EXPECT_NE(failure("[2015-01-01 10:00] started\n").value_or(ImportFinding{}).what, What::NotATable);
}

struct OptionCase {
    const char* name;
    std::function<void(ImportOptions&)> set;
    ImportFinding finding;
};

class WrongOption : public ImportFixture, public testing::WithParamInterface<OptionCase> {};

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

TEST_F(FailedImportTest, CancellingStoresNothing)
{
    const QString file = write("time,a\n2015-01-01,1\n");
    EXPECT_THROW(importFile(file, site(), {}, [](qint64, qint64) { return false; }), ImportCancelled);
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(FailedImportTest, CancellingWhileStoringRollsBack)
{
    import("time,a\n2015-01-01,1\n");
    const QString file = write("time,a\n2015-01-02,1\n");
    int calls = 0;
    EXPECT_THROW(importFile(file, site(), {}, [&calls](qint64, qint64) { return ++calls < 2; }), ImportCancelled);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(times().size(), 1U);
}

}  // namespace

}  // namespace plotix
