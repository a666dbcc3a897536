#include "hostapp/exchange/ImportPreview.h"

#include "hostapp/exchange/ImportTable.h"

#include <algorithm>

namespace plotix {

namespace {

using Column = ImportPreview::Column;

constexpr std::size_t kRowsLookedAt = 2000;

void describeColumns(ImportPreview& preview, const std::vector<SourceColumn>& columns)
{
    preview.columns.clear();
    for (const SourceColumn& column : columns) {
        Column shown{column.header, column.name, column.unit};
        shown.use = column.isTime ? Column::Use::Time : Column::Use::LeftOut;
        if (!column.isTime)
            shown.reason = column.isMeasurement ? Column::Reason::NotAskedFor : Column::Reason::CountsRows;
        preview.columns.push_back(std::move(shown));
    }
}

void describeTaken(ImportPreview& preview, const ImportPlan& plan)
{
    for (const ImportPlan::Column& planned : plan.columns) {
        Column& shown = preview.columns[planned.field];
        shown.name = planned.name;
        shown.unit = planned.unit;
        shown.use = Column::Use::Taken;
        shown.reason = Column::Reason::None;
        shown.quality = plan.headersOfQuality(planned).join(QStringLiteral(", "));
        for (const std::size_t quality : planned.qualities)
            preview.columns[plan.qualities[quality].field].judges << planned.header;
    }
    for (Column& column : preview.columns)
        if (!column.judges.isEmpty() && column.use == Column::Use::LeftOut)
            column.reason = Column::Reason::JudgesValues;
}

/// The first rows, all planned columns of them.
std::vector<ImportPreview::Row> firstRows(const ImportTable& table)
{
    std::vector<ImportPreview::Row> rows(std::min(table.rows(), ImportPreview::kPreviewRows));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        rows[row].time = table.time(row);
        for (const ImportColumn& column : table.columns()) {
            const bool isValid = ((column.valid[row / 64] >> (row % 64)) & 1U) != 0;
            const double value = column.values[row];
            const bool isMarked = !isValid && value == value;
            rows[row].values.push_back(isValid || isMarked ? std::optional(value) : std::nullopt);
            rows[row].marked.push_back(isMarked);
        }
    }
    return rows;
}

/// Leaves out the columns that the import would leave out.
void judgeColumns(ImportPreview& preview, const RowSource& source, const ImportPlan& plan, const ImportTable& table)
{
    for (std::size_t index = plan.columns.size(); index-- > 0;) {
        const ImportColumn& read = table.columns()[index];
        Column& shown = preview.columns[plan.columns[index].field];
        shown.numbers = read.numbers;
        shown.bad = read.bad;
        shown.marked = read.marked;
        shown.firstBad = read.firstBad;
        const bool isYetToCome = source.isCutShort() && read.numbers == 0 && read.bad == 0;
        if (table.isTaken(index) || isYetToCome)
            continue;
        shown.use = Column::Use::LeftOut;
        shown.reason = read.numbers == 0 ? Column::Reason::NoNumbers : Column::Reason::HardlyNumbers;
        for (ImportPreview::Row& row : preview.rows) {
            row.values.erase(row.values.begin() + static_cast<std::ptrdiff_t>(index));
            row.marked.erase(row.marked.begin() + static_cast<std::ptrdiff_t>(index));
        }
    }
}

void readRows(ImportPreview& preview, RowSource& source, const ImportPlan& plan)
{
    ImportTable table(plan);
    source.begin(plan);
    bool more = true;
    while (more && table.rows() < kRowsLookedAt) {
        more = source.read(table);
        source.report();
    }
    preview.isWhole = !more && !source.isCutShort();
    preview.rowsLookedAt = table.rows();
    preview.rows = firstRows(table);
    preview.form = source.form();
    preview.notes = source.notes();
    try {
        finishImport(source, table);
        preview.notes = notesOf(source, table);
    } catch (const ImportFailure& failure) {
        preview.problem = failure.finding();
    }
    judgeColumns(preview, source, plan, table);
    const bool hasNumbers = std::any_of(preview.columns.begin(), preview.columns.end(),
                                        [](const Column& column) { return column.use == Column::Use::Taken; });
    if (!preview.problem && preview.rowsLookedAt == 0) {
        preview.problem = ImportFinding{.what = ImportFinding::What::NoRowRead};
        if (table.counts().firstBad)
            preview.problem->causes.push_back(*table.counts().firstBad);
    } else if (!preview.problem && !hasNumbers && preview.isWhole) {
        preview.problem = ImportFinding{
            .what = ImportFinding::What::NoNumbers, .column = plan.timeHeader, .columns = headersOf(source.columns())};
    }
}

}  // namespace

bool isRefused(const ImportPreview& preview)
{
    if (!preview.problem)
        return false;
    using What = ImportFinding::What;
    switch (preview.problem->what) {
    case What::NoRowRead:
    case What::NoNumbers:
    case What::ManyRowsAtOneTime:
    case What::TooManyBadRows: return preview.isWhole;
    default: return true;
    }
}

ImportPreview previewRows(RowSource& source, const ImportOptions& options)
{
    ImportPreview preview;
    describeColumns(preview, source.columns());
    preview.form = source.form();
    try {
        ImportPlan plan = planImport(source, options);
        plan.rowsWanted = kRowsLookedAt;
        describeColumns(preview, source.columns());
        describeTaken(preview, plan);
        preview.timeZone = plan.timeZone;
        preview.zoneIsFromFile = options.timeZone.trimmed().isEmpty() && !plan.timeZone.isEmpty();
        readRows(preview, source, plan);
    } catch (const ImportFailure& failure) {
        preview.form = source.form();
        preview.notes = source.notes();
        preview.problem = failure.finding();
    }
    return preview;
}

}  // namespace plotix
