#include "hostapp/exchange/Importer.h"

#include "hostapp/core/Units.h"
#include "hostapp/document/SiteTransaction.h"
#include "hostapp/exchange/ImportRows.h"
#include "hostapp/exchange/ImportText.h"

#include <QtCore/QFileInfo>

#include <cmath>

namespace plotix {

namespace {

/// One file on its way into one site, step by step.
class FileImport {
public:
    FileImport(const QString& file, const QString& site, const ImportOptions& options, const ImportProgress& progress);

    ImportSummary run();

private:
    ImportPlan makePlan();
    void readRows();
    void store();
    void storeColumn(SiteTransaction& transaction, RowId agent, std::size_t index, RecordBlock& block);
    void convert(SharedArray<double>& values, const ImportPlan::Column& column,
                 const SiteTransaction::Property& property);

    QString m_site;
    const ImportOptions& m_options;
    const ImportProgress& m_progress;
    ImportSource m_source;
    ImportPlan m_plan;
    ImportTable m_table;
    ImportSummary m_summary;
};

FileImport::FileImport(const QString& file, const QString& site, const ImportOptions& options,
                       const ImportProgress& progress)
    : m_site(site),
      m_options(options),
      m_progress(progress),
      m_source(file),
      m_plan(makePlan()),
      m_table(m_plan, options.skipBadRows ? ImportTable::BadRows::Skip : ImportTable::BadRows::Stop)
{
    m_summary.file = file;
    m_summary.site = site;
    m_summary.agent =
        options.agentName.trimmed().isEmpty() ? QFileInfo(file).completeBaseName() : options.agentName.trimmed();
    m_summary.timeColumn = m_plan.timeHeader();
    m_summary.notes = m_plan.shape.notes;
}

ImportPlan FileImport::makePlan()
{
    const QByteArray beginning = m_source.fromBeginning().read(kSampleBytes);
    return planImport(takeSample(beginning, beginning.size() < kSampleBytes), m_options);
}

ImportSummary FileImport::run()
{
    readRows();
    store();
    return std::move(m_summary);
}

void FileImport::readRows()
{
    ImportRows rows(m_source, m_plan, m_options, m_progress);
    const bool wasOpen = m_plan.time.needsDateOrder;
    rows.decideDateOrder();
    if (wasOpen)
        m_summary.notes << (m_plan.time.layout == TimeLayout::DayFirst
                                ? ImportText::tr("Dates are read with the day first.")
                                : ImportText::tr("Dates are read with the month first."));
    const RowCounts counts = rows.read(m_table);
    m_table.finish();
    m_summary.rows = counts.rows;
    m_summary.otherRows = counts.otherRows;
    m_summary.badRows = counts.badRows + m_table.droppedRows();
    m_summary.unorderedTimes = m_table.unorderedTimes();
    m_summary.repeatedTimes = m_table.repeatedTimes();
    const std::optional<BadField>& dropped = m_table.firstDropped();
    const bool droppedComesFirst = dropped && (!counts.firstBad || dropped->line < counts.firstBad->line);
    if (const std::optional<BadField>& first = droppedComesFirst ? dropped : counts.firstBad)
        m_summary.firstBadRow = first->message();
    if (m_table.rows() == 0)
        throw ReportableError(m_summary.otherRows > 0
                                  ? ImportText::tr("no row has the texts asked for with --where")
                                  : ImportText::tr("no row could be read: %1").arg(m_summary.firstBadRow));
}

void FileImport::store()
{
    RecordBlock block;
    block.times = m_table.takeTimes();
    SiteTransaction transaction(m_site);
    const RowId agent = transaction.findOrCreateAgent(m_summary.agent);
    for (std::size_t index = 0; index < m_plan.columns.size(); ++index)
        storeColumn(transaction, agent, index, block);
    if (block.columns.empty())
        throw ReportableError(ImportText::tr("no column holds numbers besides the time in “%1” (columns: %2)")
                                  .arg(m_summary.timeColumn, m_plan.shape.headers.join(QStringLiteral(", "))));
    transaction.records().store(agent, block);
    m_summary.createdSite = transaction.createdFile();
    m_summary.firstImport = m_summary.createdSite || !transaction.storedRecords()->extent(agent);
    m_summary.records = block.times.size();
    m_summary.first = block.times[0];
    m_summary.last = block.times[block.times.size() - 1];
    if (m_progress && !m_progress(m_source.size(), m_source.size()))
        throw ImportCancelled(ImportText::tr("cancelled; nothing was stored"));
    transaction.commit();
}

void FileImport::storeColumn(SiteTransaction& transaction, RowId agent, std::size_t index, RecordBlock& block)
{
    const ImportPlan::Column& column = m_plan.columns[index];
    ImportTable::Taken taken = m_table.takeColumn(index);
    if (taken.valid == 0) {
        m_summary.leftOut << column.header;
        return;
    }
    const SiteTransaction::Property property = transaction.findOrCreateProperty(agent, column.name, column.unit);
    convert(taken.values, column, property);
    block.columns.push_back({property.id, std::move(taken.values), std::move(taken.validity)});
    m_summary.columns.push_back(
        {column.header, column.name, property.propertyName, property.archivedUnit, taken.valid});
}

/// Into the unit the property's records are in. A column without a unit is taken to be in it.
void FileImport::convert(SharedArray<double>& values, const ImportPlan::Column& column,
                         const SiteTransaction::Property& property)
{
    if (column.unit.isEmpty() || column.unit == property.archivedUnit)
        return;
    const std::shared_ptr<const Units> units = Units::shared();
    if (!units->areCompatible(column.unit, property.archivedUnit))
        throw ReportableError(
            ImportText::tr("column “%1” is in %2, but the agent's property of that name is in %3; give it "
                           "another name with --name")
                .arg(column.header, column.unit,
                     property.archivedUnit.isEmpty() ? ImportText::tr("no unit") : property.archivedUnit));
    std::vector<double> converted(values.size());
    units->convertValues(column.unit, property.archivedUnit, values.data(), converted.data(), converted.size());
    values = SharedArray<double>::fromVector(std::move(converted));
}

}  // namespace

ImportSummary importFile(const QString& file, const QString& site, const ImportOptions& options,
                         const ImportProgress& progress)
{
    const QString name = QFileInfo(file).fileName();
    try {
        return FileImport(file, site, options, progress).run();
    } catch (const ImportCancelled& cancelled) {
        throw ImportCancelled(QStringLiteral("%1: %2").arg(name, cancelled.message()));
    } catch (const ReportableError& error) {
        throw ReportableError(QStringLiteral("%1: %2").arg(name, error.message()));
    }
}

}  // namespace plotix
