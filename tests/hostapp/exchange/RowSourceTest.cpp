#include "hostapp/exchange/RowSource.h"

#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/exchange/ImportTable.h"
#include "hostapp/exchange/Importer.h"
#include "tests/hostapp/exchange/FindingPrinter.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

namespace plotix {

namespace {

using What = ImportFinding::What;

/// A format without a file: one row per batch, times in the first column, texts where a test wants them.
class MadeUpSource : public RowSource {
public:
    struct Row {
        double time = 0;
        std::vector<double> values;
        std::string text{};  ///< of the last column, in place of its number
    };

    const std::vector<SourceColumn>& columns() const override { return m_columns; }
    std::size_t chooseTimeColumn(const std::vector<std::size_t>& named) override
    {
        return named.empty() ? 0 : named.front();
    }
    void begin(const ImportPlan& plan) override { m_plan = &plan; }
    bool read(ImportTable& table) override
    {
        if (m_next == rows.size())
            return false;
        add(rows[m_next++], table);
        return true;
    }
    qint64 bytesRead() const override { return static_cast<qint64>(m_next); }
    qint64 bytesInAll() const override { return static_cast<qint64>(rows.size()); }
    const std::vector<ImportFinding>& notes() const override { return m_notes; }

    std::vector<Row> rows;

private:
    void add(const Row& row, ImportTable& table) const
    {
        const std::size_t last = m_plan->columns.size() - 1;
        for (std::size_t index = 0; index <= last; ++index) {
            const double value = row.values[m_plan->columns[index].field - 1];
            if (index == last && !row.text.empty())
                table.addText(index, static_cast<qint64>(m_next), row.text);
            else if (value != value)
                table.addMissing(index);
            else
                table.addNumber(index, value);
        }
        table.endRow(row.time);
    }

    std::vector<SourceColumn> m_columns = {
        {"when", "when", {}}, {"Speed", "Speed", "m/s"}, {"Level", "Level", {}}, {"row", "row", {}, false}};
    std::vector<ImportFinding> m_notes = {{.what = What::ColumnsHaveNoNames, .found = 4}};
    const ImportPlan* m_plan = nullptr;
    std::size_t m_next = 0;
};

class RowSourceTest : public testing::Test {
protected:
    ImportSummary import() { return importRows(m_source, QStringLiteral("log.made"), site(), m_options, m_progress); }
    QString site() const { return m_folder.filePath(QStringLiteral("site.plotix")); }

    RecordBlock stored() const
    {
        const auto document = SiteDocument::open(site());
        const auto agent = document->agents().front();
        std::vector<RowId> ids;
        for (const auto& property : agent->siteProperties())
            ids.push_back(property->description().id);
        return recordsOfSite(site())->read(agent->id(), ids, {}, {}).value();
    }

    MadeUpSource m_source;
    ImportOptions m_options;
    ImportProgress m_progress;
    QTemporaryDir m_folder;
};

TEST_F(RowSourceTest, RowsOfAnyFormatAreStoredUnderTheColumnsNamesAndUnits)
{
    m_source.rows = {{10, {1.5, 7, 1}}, {20, {std::numeric_limits<double>::quiet_NaN(), 8, 2}}};
    const ImportSummary summary = import();
    EXPECT_EQ(summary.agent, QStringLiteral("log"));
    ASSERT_EQ(summary.columns.size(), 2U);  // the one that counts the rows is no measurement
    EXPECT_EQ(summary.columns[0].unit, QStringLiteral("m/s"));
    EXPECT_EQ(summary.notes.front().what, What::ColumnsHaveNoNames);
    const RecordBlock block = stored();
    EXPECT_EQ(std::vector<double>(block.times.span().begin(), block.times.span().end()), (std::vector<double>{10, 20}));
    EXPECT_EQ(block.columns[0].values[0], 1.5);
    EXPECT_FALSE(block.columns[0].validity.isValid(1));
}

TEST_F(RowSourceTest, AColumnThatIsNoMeasurementIsTakenWhenItIsAskedFor)
{
    m_options.only = {QStringLiteral("row")};
    m_source.rows = {{10, {1, 2, 3}}};
    EXPECT_EQ(import().columns.front().name, QStringLiteral("row"));
}

TEST_F(RowSourceTest, RowsOfAnyFormatAreSortedAndTheLastOfATimeIsKept)
{
    m_source.rows = {{20, {1, 1, 1}}, {10, {2, 2, 2}}, {20, {3, 3, 3}}};
    const ImportSummary summary = import();
    EXPECT_EQ(summary.unorderedTimes, 1U);
    EXPECT_EQ(summary.repeatedTimes, 1U);
    EXPECT_EQ(stored().columns[0].values[1], 3);
}

TEST_F(RowSourceTest, ATextAmongNumbersCostsItsCellAndNotTheRow)
{
    m_source.rows = {{10, {1, 2, 3}}, {20, {1, 2, 3}, "broken"}};
    const ImportSummary summary = import();
    EXPECT_EQ(summary.records, 2U);
    EXPECT_EQ(summary.columns[1].bad, 1U);
    EXPECT_EQ(summary.columns[1].firstBad,
              (ImportFinding{.what = What::NoNumber, .line = 2, .column = "Level", .text = "broken"}));
}

TEST_F(RowSourceTest, AnyImportCanBeCancelledBetweenBatches)
{
    m_source.rows = {{10, {1, 2, 3}}, {20, {1, 2, 3}}, {30, {1, 2, 3}}};
    m_progress = [](qint64 done, qint64) { return done < 2; };
    EXPECT_THROW(import(), ImportCancelled);
    EXPECT_EQ(m_source.bytesRead(), 2);
    EXPECT_FALSE(QFile::exists(site()));
}

}  // namespace

}  // namespace plotix
