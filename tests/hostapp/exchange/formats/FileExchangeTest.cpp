#include "hostapp/exchange/formats/FileExchange.h"

#include "hostapp/document/SiteDocument.h"
#include "hostapp/exchange/formats/FileFormats.h"
#include "records/store/RecordStore.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

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
        exportFile(path, {{{QStringLiteral("a"), {}}}, block}, progress);
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
    exportFile(path, {{{QStringLiteral("Flow, warm"), QStringLiteral("m³/h")}}, block});
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

}  // namespace

}  // namespace plotix
