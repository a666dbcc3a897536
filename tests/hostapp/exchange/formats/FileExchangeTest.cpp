#include "hostapp/exchange/formats/FileExchange.h"
#include "hostapp/document/RecordKeeping.h"

#include "hostapp/document/SiteDocument.h"
#include "hostapp/exchange/formats/FileFormats.h"
#include "records/store/RecordStore.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace plotix {

namespace {

TEST(FileFormats, TakeAnyFileAsDelimitedTextThatNoOtherFormatKnows)
{
    for (const char* name : {"data.csv", "DATA.TSV", "readings.log", "data"})
        EXPECT_STREQ(formatOf(QLatin1String(name), "time,a\n").name, "delimited text") << name;
}

TEST(FileFormats, AreWrittenUnderNamesOfTheirOwnAlone)
{
    for (const char* name : {"data.csv", "DATA.CSV", "readings.txt"})
        EXPECT_STREQ(formatWrittenFor(QLatin1String(name)).name, "delimited text") << name;
    for (const char* name : {"data", "site.plotix", "a.csv.plotix", "picture.png", "csv"})
        EXPECT_THROW(formatWrittenFor(QLatin1String(name)), OutputFailure) << name;
}

TEST(FileFormats, ASpreadsheetIsWrittenUnderItsName)
{
    EXPECT_STREQ(formatWrittenFor(QStringLiteral("Data.XLSX")).name, "spreadsheet");
    EXPECT_EQ(formatWrittenFor(QStringLiteral("data.xlsx")).written, FileKind::Workbook);
}

TEST(FileFormats, CanAllBeReadAndHaveNamesOfTheirOwn)
{
    QStringList names;
    for (const FileFormat& format : fileFormats()) {
        EXPECT_NE(format.read, nullptr) << format.name;
        EXPECT_FALSE(names.contains(QLatin1String(format.name))) << format.name;
        names << QLatin1String(format.name);
    }
}

class ExportFileTest : public testing::Test {
protected:
    void exportRecords(const ExportProgress& progress = {})
    {
        RecordBlock block{SharedArray<double>::fromVector({0.0}), {}};
        block.columns.push_back({1, SharedArray<double>::fromVector({2.0}), {}});
        exportFile(path, {{{QStringLiteral("a"), {}}}, plotix::RecordColumns::resident(block)}, progress);
    }
    QByteArray contents() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("out.csv"));
};

TEST_F(ExportFileTest, WritesTheWholeFile)
{
    exportRecords();
    EXPECT_EQ(contents(), "time,a\n1970-01-01T00:00:00Z,2\n");
}

TEST_F(ExportFileTest, CancelledItLeavesWhatWasThere)
{
    exportRecords();
    const QByteArray before = contents();
    EXPECT_THROW(exportRecords([](double) { return false; }), ExportCancelled);
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"out.csv"});
}

TEST_F(ExportFileTest, AFolderThatIsNotThereIsAFailureInTheSystemsWords)
{
    path = folder.filePath(QStringLiteral("none/out.csv"));
    try {
        exportRecords();
        FAIL() << "nothing was thrown";
    } catch (const OutputFailure& failure) {
        EXPECT_EQ(failure.problem().reason, OutputProblem::Reason::NotWritten);
        EXPECT_FALSE(failure.problem().systemError.isEmpty());
    }
}

TEST_F(ExportFileTest, ASpreadsheetOfOursIsReadByUsToTheSameValues)
{
    path = folder.filePath(QStringLiteral("out.xlsx"));
    const std::vector<double> times{1'700'000'000, 1'700'000'060, 1'700'000'120.25};
    const std::vector<double> values{0.1, -1234567.891, 1e-12};
    RecordBlock block{SharedArray<double>::fromVector(std::vector(times)), {}};
    block.columns.push_back({1, SharedArray<double>::fromVector(std::vector(values)), {}});
    exportFile(path,
               {{{QStringLiteral("Flow, warm"), QStringLiteral("m³/h")}}, plotix::RecordColumns::resident(block)});
    const QString site = folder.filePath(QStringLiteral("back.plotix"));
    importFile(path, site, {});
    const auto document = SiteDocument::open(site);
    const auto& property = document->agents().front()->siteProperties().front();
    EXPECT_EQ(property->name(), "Flow, warm");
    EXPECT_EQ(property->unit(), "m³/h");
    const RowId id = property->description().id;
    const auto back = document->records()->read(document->agents().front()->id(), std::span(&id, 1), {}, {});
    EXPECT_EQ(std::vector(back->times.span().begin(), back->times.span().end()), times);
    EXPECT_EQ(std::vector(back->columns[0].values.span().begin(), back->columns[0].values.span().end()), values);
}

/// Values and their validity, out of a site and back.
class QualityRoundTripTest : public testing::TestWithParam<const char*> {
protected:
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    void exportRecords(const ExportForm& form)
    {
        RecordBlock block{SharedArray<double>::fromVector({0.0, 60.0, 120.0, 180.0}), {}};
        block.columns.push_back({1, SharedArray<double>::fromVector({0.1, -99.9, 3, kNone}), bits(0b0101)});
        block.columns.push_back({2, SharedArray<double>::fromVector({1, 0, 1, 0}), bits(0b1110)});
        exportFile(file(), {{{QStringLiteral("Temp"), QStringLiteral("°C")}, {QStringLiteral("Flow m"), {}}},
                            plotix::RecordColumns::resident(block),
                            form});
    }
    static ValidityBitmap bits(std::uint64_t word)
    {
        return ValidityBitmap(SharedArray<std::uint64_t>::fromVector({word}));
    }
    QString file() const { return m_folder.filePath(QStringLiteral("out.") + QLatin1String(GetParam())); }

    RecordBlock imported()
    {
        const QString site = m_folder.filePath(QStringLiteral("site.plotix"));
        const ImportSummary summary = importFile(file(), site, {});
        EXPECT_EQ(summary.columns.size(), 2U);
        const auto document = SiteDocument::open(site);
        const auto agent = document->agents().front();
        std::vector<RowId> ids;
        for (const auto& property : agent->siteProperties())
            ids.push_back(property->description().id);
        return recordsOfSite(site)->read(agent->id(), ids, {}, {}).value();
    }
    static std::vector<bool> validity(const RecordBlock& block, std::size_t column)
    {
        std::vector<bool> valid;
        for (std::size_t row = 0; row < block.times.size(); ++row)
            valid.push_back(block.columns[column].validity.isValid(row));
        return valid;
    }

    QTemporaryDir m_folder;
};

TEST_P(QualityRoundTripTest, ColumnsOfQualityBringBackValuesAndValidity)
{
    exportRecords({.withQualities = true});
    const RecordBlock block = imported();
    ASSERT_EQ(block.times.size(), 4U);
    EXPECT_EQ(block.columns[0].values[1], -99.9);
    EXPECT_EQ(validity(block, 0), (std::vector{true, false, true, false}));
    EXPECT_TRUE(std::isnan(block.columns[0].values[3]));
    EXPECT_EQ(block.columns[1].values[0], 1);
    EXPECT_EQ(validity(block, 1), (std::vector{false, true, true, true}));
}

TEST_P(QualityRoundTripTest, WithoutThemInvalidValuesStayEmpty)
{
    exportRecords({});
    const RecordBlock block = imported();
    EXPECT_TRUE(std::isnan(block.columns[0].values[1]));
    EXPECT_EQ(validity(block, 0), (std::vector{true, false, true, false}));
}

INSTANTIATE_TEST_SUITE_P(Formats, QualityRoundTripTest, testing::Values("csv", "xlsx"),
                         [](const auto& row) { return std::string(row.param); });

}  // namespace

}  // namespace plotix
