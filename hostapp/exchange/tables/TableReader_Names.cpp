#include "hostapp/core/Units.h"
#include "hostapp/exchange/ColumnHeader.h"
#include "hostapp/exchange/DecodedText.h"
#include "hostapp/exchange/ImportTable.h"
#include "hostapp/exchange/tables/TableReader.h"

#include <algorithm>

/// Rows that each name their quantity.
namespace plotix {

namespace {

using What = ImportFinding::What;

constexpr std::size_t kMostQuantities = 5000;  // more different texts are no names of quantities

}  // namespace

/// The names stand in the rows, so all rows are read for them: all that are wanted.
void TableReader::addNamedColumns()
{
    const std::vector<ImportPlan::Condition> conditions = conditionsOf(m_columns, m_options);
    const std::vector<std::string_view> header(m_shape.headerFields.begin(), m_shape.headerFields.end());
    TextRecord record;
    rewindRows();
    for (std::size_t row = 0; nextRow(record); ++row) {
        if (row % kRowsInBatch == 0)
            report();
        const bool isRow = row >= m_shape.firstRow && record.fields != header;
        if (!isRow || fieldAt(record, m_time.fields.front()).empty() || !allHold(conditions, record))
            continue;
        const std::string name = nameIn(record);
        if (name.empty() || record.fields.front().starts_with('#'))
            continue;
        m_kinds.learn(name, unitIn(record));
        if (m_kinds.quantities().size() > kMostQuantities) {
            m_named.reset();
            return;
        }
    }
    for (SourceColumn& column : m_columns)
        column.isMeasurement = false;
    m_notes.push_back({.what = What::RowsNameQuantities,
                       .column = m_columns[m_named->names.back()].header,
                       .text = m_columns[m_named->value].header,
                       .found = m_kinds.quantities().size()});
    for (const QuantityKinds::Quantity& quantity : m_kinds.quantities())
        m_columns.push_back(columnOf(quantity));
}

SourceColumn TableReader::columnOf(const QuantityKinds::Quantity& quantity) const
{
    QString text = decodedText(quantity.name).simplified();
    const ColumnHeader title = splitHeader(text);
    const bool isBare = quantity.unit.isEmpty();
    const QString unit = !isBare                 ? quantity.unit
                         : !title.unit.isEmpty() ? title.unit
                                                 : m_shape.titles[m_named->value].unit;
    SourceColumn column{text, title.name, unit};
    if (quantity.isOneOfMore && !quantity.text.empty()) {
        const QString said = isBare ? decodedText(quantity.text).simplified() : quantity.unit;
        text = QStringLiteral("%1 (%2)").arg(title.name, said);
        column = {text, text, quantity.unit};
    }
    column.qualities = m_columns[m_named->value].qualities;
    column.valuesIn = m_named->value;
    return column;
}

std::string TableReader::nameIn(const TextRecord& record) const
{
    std::string name;
    for (const std::size_t field : m_named->names) {
        const std::string_view part = fieldAt(record, field);
        if (!name.empty() && !part.empty())
            name += ' ';
        name += part;
    }
    return name;
}

/// What the row's number is in: what stands behind it, or in the column of units.
std::string_view TableReader::unitIn(const TextRecord& record)
{
    const NumberWithUnit cell = numberIn(fieldAt(record, m_named->value), 0);
    return !cell.unit.empty() || !m_named->unit ? cell.unit : fieldAt(record, *m_named->unit);
}

void TableReader::addNamedCell(const TextRecord& record, double time)
{
    const std::string name = nameIn(record);
    const QuantityKinds::Place* const place = name.empty() ? nullptr : m_kinds.find(name, unitIn(record));
    if (!place)
        return;
    const std::size_t quantity = place->quantity;
    const std::string_view field = fieldAt(record, m_named->value);
    const ImportTable::Mark mark = markOfQuantity(record, quantity);
    double value = 0;
    switch (readCell(numberIn(field, 0).number, 0, value)) {
    case FieldKind::Number: m_quantities->addNumber(quantity, time, place->conversion(value), mark); break;
    case FieldKind::Missing: m_quantities->addMissing(quantity, time); break;
    case FieldKind::Text:
        if (const std::optional<double> state = stateOf(field))
            m_quantities->addState(quantity, time, *state, record.line, field, mark);
        else
            m_quantities->addText(quantity, time, record.line, field);
        break;
    }
}

/// Only the row's own quantity is judged; others stand in rows of theirs.
ImportTable::Mark TableReader::markOfQuantity(const TextRecord& record, std::size_t quantity)
{
    if (m_qualities.empty())
        return ImportTable::Mark::Good;
    const std::size_t field = m_shape.fields() + quantity;
    const auto column = std::lower_bound(
        m_planned.begin(), m_planned.end(), field,
        [](const std::pair<std::size_t, std::size_t>& one, std::size_t other) { return one.first < other; });
    if (column == m_planned.end() || column->first != field)
        return ImportTable::Mark::Good;  // not taken
    judge(record);
    return markOf(m_plan->columns[column->second]);
}

/// Rows that name their quantity become a table only at the end, with a cell for each quantity at each time: where the
/// first rows are wanted, they are not collected from a whole long file.
bool TableReader::hasEnoughCells() const
{
    constexpr std::size_t kMostRows = 200'000;
    constexpr std::size_t kMostCells = 10'000'000;
    if (!m_quantities || m_plan->rowsWanted == 0 || m_quantities->cells() < m_plan->rowsWanted)
        return false;
    return m_quantities->cells() >= kMostRows || m_quantities->cells() * m_plan->columns.size() >= kMostCells;
}

void TableReader::moveQuantities(ImportTable& table)
{
    std::vector<std::size_t> columns;
    for (const ImportPlan::Column& column : m_plan->columns)
        columns.push_back(column.field < m_shape.fields() ? m_quantities->columnOf(std::string())
                                                          : column.field - m_shape.fields());
    m_quantities->moveTo(table, columns, [this] { report(); });
}

}  // namespace plotix
