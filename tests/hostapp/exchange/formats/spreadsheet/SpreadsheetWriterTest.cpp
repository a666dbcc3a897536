#include "hostapp/exchange/formats/spreadsheet/SpreadsheetWriter.h"

#include "tests/support/PinnedZone.h"

#include <QtCore/QBuffer>
#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

#include <zip.h>

#include <limits>
#include <numeric>

namespace plotix {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// A file of one column, written, and its parts as any reader of such archives finds them.
class SpreadsheetWriterTest : public testing::Test {
protected:
    void write(const std::vector<double>& times, const std::vector<double>& values, const ExportProgress& progress = {})
    {
        RecordBlock block{SharedArray<double>::fromVector(times), {}};
        block.columns.push_back({1, SharedArray<double>::fromVector(values), {}});
        QBuffer buffer(&m_bytes);
        buffer.open(QIODevice::WriteOnly);
        writeSpreadsheet(buffer, {{{m_name, QStringLiteral("°C")}}, plotix::RecordColumns::resident(block), m_form},
                         progress);
    }

    QByteArray part(const char* name) const
    {
        zip_source_t* source = zip_source_buffer_create(m_bytes.constData(), zip_uint64_t(m_bytes.size()), 0, nullptr);
        zip_t* archive = zip_open_from_source(source, ZIP_RDONLY, nullptr);
        EXPECT_NE(archive, nullptr);
        QByteArray text;
        if (zip_file_t* file = archive ? zip_fopen(archive, name, 0) : nullptr) {
            char piece[4096];
            for (zip_int64_t size; (size = zip_fread(file, piece, sizeof piece)) > 0;)
                text.append(piece, qsizetype(size));
            zip_fclose(file);
        }
        if (archive)
            zip_discard(archive);
        return text;
    }

    /// The cells as "A1=text"; checks that the part is well-formed.
    QStringList cells(const char* name = "xl/worksheets/sheet1.xml") const
    {
        QXmlStreamReader xml(part(name));
        QStringList cells;
        QString place;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement() && xml.name() == u"c")
                place = xml.attributes().value(QLatin1String("r")).toString();
            if (xml.isStartElement() && (xml.name() == u"v" || xml.name() == u"t"))
                cells << place + QLatin1Char('=') + xml.readElementText();
        }
        EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
        return cells;
    }

    QString m_name = QStringLiteral("Air");
    ExportForm m_form;
    QByteArray m_bytes;
    PinnedZone m_zone;
};

TEST_F(SpreadsheetWriterTest, ARowOfNamesAndARowARecord)
{
    write({0, 43'200}, {1.5, -2});
    EXPECT_EQ(cells(), (QStringList{"A1=time (UTC)", "B1=Air (°C)", "A2=25569", "B2=1.5", "A3=25569.5", "B3=-2"}));
}

TEST_F(SpreadsheetWriterTest, InvalidValuesLeaveTheirCellsEmpty)
{
    write({0, 86'400}, {kNone, std::numeric_limits<double>::infinity()});
    EXPECT_EQ(cells().mid(2), (QStringList{"A2=25569", "A3=25570", "B3=inf"}));
}

TEST_F(SpreadsheetWriterTest, LocalTimesFollowTheClockChanges)
{
    m_zone.use("Europe/Berlin");
    m_form.clock = ExportForm::Clock::Local;
    write({1'720'000'800, 1'705'000'800}, {1, 2});  // 2024-07-03 10:00 UTC, 2024-01-11 19:20 UTC
    EXPECT_EQ(cells().first(), "A1=time (Europe/Berlin)");
    EXPECT_EQ(cells().at(2), "A2=45476.5");
}

TEST_F(SpreadsheetWriterTest, MomentsBeforeTheSheetsCalendarAreText)
{
    write({-3e9}, {1});
    EXPECT_EQ(cells().at(2), "A2=1874-12-07T18:40:00Z");
}

TEST_F(SpreadsheetWriterTest, NamesLikeFormulasAreGuardedUnlessChosenOtherwise)
{
    m_name = QStringLiteral("=1+1");
    write({0}, {1});
    EXPECT_EQ(cells().at(1), "B1='=1+1 (°C)");
    m_form.guardsFormulas = false;
    write({0}, {1});
    EXPECT_EQ(cells().at(1), "B1==1+1 (°C)");
}

TEST_F(SpreadsheetWriterTest, NoRecordsMakeASheetOfNames)
{
    write({}, {});
    EXPECT_EQ(cells().size(), 2);
}

TEST_F(SpreadsheetWriterTest, EveryPartThatTheArchiveNamesIsThere)
{
    write({0}, {1});
    EXPECT_TRUE(part("[Content_Types].xml").contains("/xl/worksheets/sheet1.xml"));
    EXPECT_TRUE(part("xl/_rels/workbook.xml.rels").contains("worksheets/sheet1.xml"));
    for (const char* name : {"_rels/.rels", "xl/workbook.xml", "xl/styles.xml"}) {
        QXmlStreamReader xml(part(name));
        while (!xml.atEnd())
            xml.readNext();
        EXPECT_FALSE(xml.hasError()) << name;
    }
}

TEST_F(SpreadsheetWriterTest, MoreRecordsThanASheetHasRowsGoOnOnAnother)
{
    std::vector<double> times(kMostSheetRows);
    for (std::size_t row = 0; row < times.size(); ++row)
        times[row] = double(row);
    write(times, std::vector<double>(times.size(), 1));
    EXPECT_EQ(cells("xl/worksheets/sheet2.xml"),
              (QStringList{"A1=time (UTC)", "B1=Air (°C)", "A2=25581.136284722223", "B2=1"}));
}

TEST_F(SpreadsheetWriterTest, TheArchiveHoldsUnderTheStrictestCheck)
{
    for (const std::size_t rows : {std::size_t{0}, std::size_t{1}, kMostSheetRows}) {
        std::vector<double> times(rows);
        std::iota(times.begin(), times.end(), 0.0);
        write(times, std::vector<double>(rows, 1));
        zip_error_t error;
        zip_error_init(&error);
        zip_source_t* source = zip_source_buffer_create(m_bytes.constData(), zip_uint64_t(m_bytes.size()), 0, &error);
        zip_t* archive = zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error);
        EXPECT_NE(archive, nullptr) << rows << ": " << zip_error_strerror(&error);
        if (archive)
            zip_discard(archive);
        zip_error_fini(&error);
    }
}

TEST_F(SpreadsheetWriterTest, CancellingWritesNothing)
{
    EXPECT_THROW(write({0}, {1}, [](double) { return false; }), ExportCancelled);
    EXPECT_TRUE(m_bytes.isEmpty());
}

TEST_F(SpreadsheetWriterTest, MoreColumnsThanASheetHasAreRefused)
{
    const RecordBlock block{SharedArray<double>::fromVector({}), {}};
    const ExportedRecords records{std::vector<ExportedRecords::Column>(kMostSheetColumns),
                                  plotix::RecordColumns::resident(block)};
    QBuffer buffer;
    EXPECT_THROW(writeSpreadsheet(buffer, records, {}), ExportFailure);
}

}  // namespace

}  // namespace plotix
