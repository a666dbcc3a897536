#include "hostapp/exchange/tables/QualityColumns.h"
#include "hostapp/exchange/tables/TableReader.h"

#include <algorithm>

/// Columns that say which values are bad.
namespace plotix {

namespace {

using What = ImportFinding::What;

/// Which columns are read as ones of quality.
ImportFinding noteOf(const ImportPlan& plan)
{
    ImportFinding note{.what = What::QualityRecognised};
    for (const ImportPlan::Quality& quality : plan.qualities)
        note.columns << quality.header;
    for (const ImportPlan::Column& column : plan.columns)
        if (!column.qualities.empty() && note.found++ == 0)
            note.text = column.header;
    if (note.found > 1)
        note.text.clear();
    return note;
}

}  // namespace

/// Some systems leave the status empty as long as all is well: what it is shows further down, in the first row that has
/// one. It joins the sample.
void TableReader::lookForQualitiesBelow()
{
    std::vector<std::size_t> fields = emptyQualityFieldsOf(m_sample, m_shape);
    if (fields.empty())
        return;
    const std::size_t known = m_sample.rows.size();
    TextRecord record;
    rewindRows();
    for (std::size_t row = 0; !fields.empty() && nextRow(record); ++row) {
        if (row % kRowsInBatch == 0)
            report();
        if (row < known)
            continue;
        const bool isNew =
            std::erase_if(fields, [&](std::size_t field) { return !fieldAt(record, field).empty(); }) > 0;
        if (isNew && record.fields.size() == m_shape.fields())
            m_sample.rows.push_back({record.line, {record.fields.begin(), record.fields.end()}});
    }
}

/// The values they may judge are the measurements; where rows name their quantity there is one column of them.
void TableReader::recogniseQualities()
{
    std::vector<std::size_t> values;
    for (const std::size_t field : numberFieldsOf(m_sample, m_shape)) {
        const bool isValue =
            m_named ? field == m_named->value : !m_columns[field].isTime && m_columns[field].isMeasurement;
        if (isValue)
            values.push_back(field);
    }
    const QualityColumns found = qualityColumnsOf(m_sample, m_shape, values);
    for (const QualityColumn& column : found.columns) {
        m_columns[column.field].isMeasurement = false;
        for (const std::size_t value : column.values)
            m_columns[value].qualities.push_back(column.field);
    }
    m_notes.insert(m_notes.end(), found.notes.begin(), found.notes.end());
}

/// One that the user named and that says nothing without more words is refused: nobody knows what its 0 and 1 mean.
void TableReader::prepareQualities()
{
    m_qualityCodes.clear();
    for (const ImportPlan::Quality& quality : m_plan->qualities) {
        const bool isOfFile = quality.field < m_shape.fields();
        const std::optional<QualityCode> code =
            isOfFile ? codeOfQuality(m_sample, m_shape, quality.field) : std::nullopt;
        if (!code && m_plan->badWords.isEmpty()) {
            const std::vector<std::string> texts =
                isOfFile ? textsOf(m_sample, m_shape, quality.field) : std::vector<std::string>();
            throw ImportFailure({.what = What::QualityHasNoWords,
                                 .column = quality.header,
                                 .text = texts.empty() ? QString() : textForFinding(texts.front())});
        }
        m_qualityCodes.push_back(code.value_or(QualityCode::Words));
    }
    m_marksOfRow.assign(m_plan->qualities.size(), ImportTable::Mark::Good);
    m_planned.clear();
    for (std::size_t index = 0; index < m_plan->columns.size(); ++index)
        m_planned.emplace_back(m_plan->columns[index].field, index);
    std::sort(m_planned.begin(), m_planned.end());
    if (!m_plan->qualities.empty())
        m_notes.push_back(noteOf(*m_plan));
}

void TableReader::noteUnknownQualities()
{
    for (std::size_t index = 0; index < m_qualities.size(); ++index) {
        if (m_qualities[index].unknown() == 0)
            continue;
        ImportFinding note = m_qualities[index].firstUnknown();
        note.column = m_plan->qualities[index].header;
        note.found = m_qualities[index].unknown();
        m_notes.push_back(note);
    }
}

/// Reads what stands in the row's columns of quality.
void TableReader::judge(const TextRecord& record)
{
    for (std::size_t index = 0; index < m_qualities.size(); ++index) {
        const std::string_view text = fieldAt(record, m_plan->qualities[index].field);
        const QualityReader::Mark mark = m_qualities[index].read(text);
        if (mark == QualityReader::Mark::Unknown)
            m_qualities[index].countUnknown(text, record.line);
        m_marksOfRow[index] = mark == QualityReader::Mark::Bad ? ImportTable::Mark::Bad : ImportTable::Mark::Good;
    }
}

ImportTable::Mark TableReader::markOf(const ImportPlan::Column& column) const
{
    const bool isBad = std::any_of(column.qualities.begin(), column.qualities.end(), [this](std::size_t quality) {
        return m_marksOfRow[quality] == ImportTable::Mark::Bad;
    });
    return isBad ? ImportTable::Mark::Bad : ImportTable::Mark::Good;
}

}  // namespace plotix
