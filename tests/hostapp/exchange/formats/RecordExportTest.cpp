#include "hostapp/exchange/formats/RecordExport.h"

#include "base/ReportableError.h"
#include "hostapp/document/ComputedRecords.h"
#include "hostapp/exchange/formats/FileExchange.h"
#include "hostapp/exchange/formats/spreadsheet/Archive.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <QtCore/QFile>

#include <cmath>

namespace plotix {

namespace {

/// Records of a site on their way into a file, page by page.
class RecordExportTest : public ArchiveFixture, public testing::WithParamInterface<const char*> {
protected:
    static constexpr std::size_t kRecords = 70'000;  // more than a page, and several chunks

    RecordExportTest()
    {
        std::vector<double> times, values;
        for (std::size_t i = 0; i < kRecords; ++i) {
            times.push_back(static_cast<double>(i) + (i % 7 == 0 ? 0.25 : 0));
            values.push_back(i % 1000 == 3 ? std::nan("") : std::sin(static_cast<double>(i)));
        }
        RecordBlock block{SharedArray<double>::fromVector(times), {}};
        block.columns.push_back({air, SharedArray<double>::fromVector(values), {}});
        store(block);
        store(ramp(wind, 30'000, 10));
    }

    static constexpr RowId kComputed = 1000;
    /// The same records with a computed property.
    std::shared_ptr<ComputedRecords> computed(const char* formula)
    {
        const auto directory = std::make_shared<FormulaDirectory>();
        FormulaDirectory::Agent& only = directory->agents.emplace_back();
        only.id = agent;
        for (const auto& [id, name] : {std::pair(air, "air"), std::pair(wind, "wind"), std::pair(kComputed, "made")}) {
            SiteProperty::Description& property = only.properties.emplace_back();
            property.id = id;
            property.name = property.propertyName = QString::fromLatin1(name);
        }
        only.properties.back().formula = PropertyFormula{QString::fromLatin1(formula)};
        const auto records = std::make_shared<ComputedRecords>(opened());
        records->setDirectory(directory);
        return records;
    }

    void exportNow() { exportRecords(*opened(), wanted, out()); }
    QByteArray written() const
    {
        QFile exported(out());
        return exported.open(QIODevice::ReadOnly) ? exported.readAll() : QByteArray();
    }
    /// Without the moment that an archive is stamped with.
    QByteArray content() const
    {
        if (!out().endsWith(QStringLiteral(".xlsx")))
            return written();
        const Archive archive(written());
        return archive.open(QStringLiteral("xl/worksheets/sheet1.xml"))->readAll();
    }
    QString out() const { return folder.filePath(QStringLiteral("out.") + QLatin1String(GetParam())); }

    RecordExport wanted{agent, {air, wind}, {{QStringLiteral("Air"), {}}, {QStringLiteral("Wind"), {}}}, {}, {}, {}};
};

TEST_P(RecordExportTest, PageByPageTheFileIsThatOfEverythingInMemory)
{
    exportNow();
    const QByteArray byPages = content();
    exportFile(out(), {wanted.columns, RecordColumns::resident(read({air, wind})), {}});
    EXPECT_GT(byPages.size(), qint64(kRecords) * 20);
    EXPECT_TRUE(byPages == content());
}

TEST_P(RecordExportTest, TheMemoryBudgetRefusesNoRecordedProperty)
{
    qputenv("PLOTIX_MEMORY_BUDGET", "1 kB");
    EXPECT_NO_THROW(exportNow());
    qunsetenv("PLOTIX_MEMORY_BUDGET");
}

TEST_P(RecordExportTest, NorAComputedOneWhoseFileIsThatOfEverythingInMemory)
{
    const auto records = computed("mean(air, 10 min) - wind");
    const std::vector<RowId> asked{air, kComputed};
    const RecordExport both{agent, asked, {{QStringLiteral("Air"), {}}, {QStringLiteral("Computed"), {}}}, {}, {}, {}};
    qputenv("PLOTIX_MEMORY_BUDGET", "1 kB");
    EXPECT_NO_THROW(exportRecords(*records, both, out()));
    qunsetenv("PLOTIX_MEMORY_BUDGET");
    const QByteArray byPages = content();
    exportFile(out(), {both.columns, RecordColumns::resident(*records->read(agent, asked, {}, {})), {}});
    EXPECT_TRUE(byPages == content());
}

TEST_P(RecordExportTest, RecordsThatCannotBeReadEndItAndTheFileIsAsItWas)
{
    exportNow();
    const QByteArray before = written();
    run("UPDATE segment SET data = zeroblob(length(data))");
    EXPECT_THROW(exportNow(), ReportableError);
    EXPECT_TRUE(written() == before);
}

INSTANTIATE_TEST_SUITE_P(Formats, RecordExportTest, testing::Values("csv", "xlsx"));

}  // namespace

}  // namespace plotix
