#include "hostapp/exchange/Importer.h"

#include "base/Date.h"
#include "hostapp/core/Units.h"
#include "hostapp/document/ReplacedValues.h"
#include "hostapp/document/SiteTransaction.h"
#include "hostapp/exchange/ImportTable.h"

#include <QtCore/QFileInfo>

#include <limits>
#include <span>
#include <utility>

namespace plotix {

namespace {

using What = ImportFinding::What;

constexpr double kRoomToSpare = 1.02;  // memory never touched costs nothing; moving a full column does

/// The lowest and the highest finite value among the valid ones.
std::pair<double, double> rangeOf(std::span<const double> values, const ValidityBitmap& validity, bool hasMarks)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    double lowest = kInfinity, highest = -kInfinity;
    for (std::size_t row = 0; row < values.size(); ++row) {
        const double value = values[row];
        if (hasMarks && !validity.isValid(row))
            continue;  // all others that are not valid are NaN
        lowest = value < lowest && value > -kInfinity ? value : lowest;
        highest = value > highest && value < kInfinity ? value : highest;
    }
    return lowest > highest ? std::pair(0.0, 0.0) : std::pair(lowest, highest);
}

/// One import of one source into one site, step by step.
class FileImport {
public:
    FileImport(RowSource& source, const QString& file, const QString& site, const ImportOptions& options,
               const ImportProgress& progress);

    ImportSummary run();

private:
    void readRows();
    void report(qint64 done) const;
    void expectRows();
    void count();
    void store();
    void prepareReplacing(SiteTransaction& transaction, RowId agent, const RecordBlock& block);
    void storeColumn(SiteTransaction& transaction, RowId agent, std::size_t index, RecordBlock& block);
    void convert(SharedArray<double>& values, const ImportPlan::Column& column,
                 const SiteTransaction::Property& property);

    RowSource& m_source;  // borrowed, as the others
    const ImportProgress& m_progress;
    bool m_mayReplace;
    ImportPlan m_plan;
    ImportTable m_table;
    ImportSummary m_summary;
};

FileImport::FileImport(RowSource& source, const QString& file, const QString& site, const ImportOptions& options,
                       const ImportProgress& progress)
    : m_source(source),
      m_progress(progress),
      m_mayReplace(options.replace),
      m_plan(planImport(source, options)),
      m_table(m_plan)
{
    m_summary.file = file;
    m_summary.site = site;
    m_summary.agent =
        options.agentName.trimmed().isEmpty() ? QFileInfo(file).completeBaseName() : options.agentName.trimmed();
    m_summary.timeColumn = m_plan.timeHeader;
}

ImportSummary FileImport::run()
{
    readRows();
    count();
    store();
    return std::move(m_summary);
}

void FileImport::report(qint64 done) const
{
    if (m_progress && !m_progress(done, m_source.bytesInAll()))
        throw ImportCancelled();
}

void FileImport::readRows()
{
    m_source.begin(m_plan);
    bool isExpected = false;
    for (bool more = true; more;) {
        more = m_source.read(m_table);
        if (!std::exchange(isExpected, isExpected || m_table.rows() > 0) && more)
            expectRows();
        report(m_source.bytesRead());
    }
    finishImport(m_source, m_table);
    m_summary.notes = notesOf(m_source, m_table);
}

/// Estimates the number of rows, with a little to spare, from the beginning of the file.
void FileImport::expectRows()
{
    const qint64 bytesRead = m_source.bytesRead();
    if (bytesRead <= 0)
        return;
    const double files = static_cast<double>(m_source.bytesInAll()) / static_cast<double>(bytesRead);
    const auto rows = static_cast<double>(m_table.rows());
    m_table.expectRows(m_table.rows() + static_cast<std::size_t>(rows * files * kRoomToSpare));
}

void FileImport::count()
{
    const RowCounts& counts = m_table.counts();
    m_summary.rows = counts.rows;
    m_summary.otherRows = counts.otherRows;
    m_summary.badRows = counts.badRows;
    m_summary.unorderedTimes = counts.unorderedTimes;
    m_summary.repeatedTimes = counts.repeatedTimes;
    m_summary.replacedRows = counts.replacedRows;
    m_summary.firstBadRow = counts.firstBad;
    if (m_table.rows() > 0)
        return;
    if (counts.otherRows > 0)
        throw ImportFailure({.what = What::NoRowWanted});
    ImportFinding finding{.what = What::NoRowRead};
    if (counts.firstBad)
        finding.causes.push_back(*counts.firstBad);
    throw ImportFailure(std::move(finding));
}

void FileImport::store()
{
    RecordBlock block;
    block.times = m_table.takeTimes();
    SiteTransaction transaction(m_summary.site);
    transaction.beginStep(EditStep::Kind::Import, QFileInfo(m_summary.file).fileName());
    const RowId agent = transaction.findOrCreateAgent(m_summary.agent);
    m_summary.agent = transaction.agentName(agent);
    for (std::size_t index = 0; index < m_plan.columns.size(); ++index) {
        if (index > 0)  // thousands of columns take a while
            report(m_source.bytesInAll());
        storeColumn(transaction, agent, index, block);
    }
    if (block.columns.empty())
        throw ImportFailure(
            {.what = What::NoNumbers, .column = m_summary.timeColumn, .columns = headersOf(m_source.columns())});
    prepareReplacing(transaction, agent, block);
    transaction.records().noteAmendments(currentDate().seconds);
    transaction.records().store(agent, block);
    m_summary.createdSite = transaction.createdFile();
    m_summary.firstImport = m_summary.createdSite || !transaction.storedRecords()->extent(agent);
    m_summary.records = block.times.size();
    m_summary.first = block.times[0];
    m_summary.last = block.times[block.times.size() - 1];
    report(m_source.bytesInAll());
    transaction.commit();
}

/// Refuses what was not allowed, and keeps what is there for undo.
void FileImport::prepareReplacing(SiteTransaction& transaction, RowId agent, const RecordBlock& block)
{
    const ReplacedValues replaced = replacedValues(*transaction.storedRecords(), agent, block);
    if (replaced.values > 0 && !m_mayReplace)
        throw ImportFailure({.what = What::WouldReplace, .found = replaced.values, .expected = replaced.properties});
    m_summary.replaced = replaced.values;
    std::vector<RowId> properties;
    for (const RecordBlock::Column& column : block.columns)
        properties.push_back(column.property);
    transaction.keepForUndo(agent, properties, block.times[0], block.times[block.times.size() - 1]);
}

void FileImport::storeColumn(SiteTransaction& transaction, RowId agent, std::size_t index, RecordBlock& block)
{
    const ImportPlan::Column& column = m_plan.columns[index];
    if (!m_table.isTaken(index)) {
        m_summary.leftOut << column.header;
        return;
    }
    const ImportColumn& read = m_table.columns()[index];
    const std::size_t bad = read.bad;
    const std::size_t marked = read.marked;
    const std::optional<ImportFinding> firstBad = read.firstBad;
    const QString quality = m_plan.headersOfQuality(column).join(QStringLiteral(", "));
    ImportTable::Taken taken = m_table.takeColumn(index);
    const SiteTransaction::Property property = transaction.findOrCreateProperty(agent, column.name, column.unit);
    convert(taken.values, column, property);
    const auto [lowest, highest] = rangeOf(taken.values.span(), taken.validity, marked > 0);
    block.columns.push_back({property.id, std::move(taken.values), std::move(taken.validity)});
    m_summary.columns.push_back({column.header, column.name, property.propertyName, property.archivedUnit, taken.valid,
                                 bad, firstBad, lowest, highest, marked, quality});
}

/// Converts to the property's archived unit. A column without a unit is taken to be in that unit.
void FileImport::convert(SharedArray<double>& values, const ImportPlan::Column& column,
                         const SiteTransaction::Property& property)
{
    if (column.unit.isEmpty() || column.unit == property.archivedUnit)
        return;
    const std::shared_ptr<const Units> units = Units::shared();
    if (!units->areCompatible(column.unit, property.archivedUnit))
        throw ImportFailure({.what = What::IncompatibleUnits,
                             .column = column.header,
                             .text = column.unit,
                             .archivedUnit = property.archivedUnit});
    std::vector<double> converted(values.size());
    units->convertValues(column.unit, property.archivedUnit, values.data(), converted.data(), converted.size());
    values = SharedArray<double>::fromVector(std::move(converted));
}

}  // namespace

ImportSummary importRows(RowSource& source, const QString& file, const QString& site, const ImportOptions& options,
                         const ImportProgress& progress)
{
    return FileImport(source, file, site, options, progress).run();
}

}  // namespace plotix
