#include "hostapp/exchange/DecodedText.h"
#include "hostapp/exchange/ImportTable.h"
#include "hostapp/exchange/tables/JoinedTime.h"
#include "hostapp/exchange/tables/TableReader.h"

#include <algorithm>
#include <array>

/// How a row of texts becomes a row of numbers.
namespace plotix {

namespace {

using What = ImportFinding::What;

constexpr std::size_t kMostInFinding = 40;  // bytes of a field in a finding about its row

bool areEmpty(const TextRecord& record)
{
    return std::all_of(record.fields.begin(), record.fields.end(),
                       [](std::string_view field) { return field.empty(); });
}

bool isComment(std::string_view field)
{
    return field.starts_with('#') || field.starts_with("//");
}

ImportFinding wrongLength(const TableShape& shape, const TextRecord& record)
{
    QStringList fields;
    for (const std::string_view field : record.fields)
        fields << decodedText(field.substr(0, kMostInFinding));
    return {.what = shape.hasHeader ? What::RowUnlikeHeader : What::RowUnlikeOthers,
            .line = record.line,
            .text = textForFinding(fields.join(QLatin1Char(' ')).toStdString()),
            .found = record.fields.size(),
            .expected = shape.fields()};
}

}  // namespace

bool TableReader::readRows(ImportTable& table)
{
    for (std::size_t count = 0; count < kRowsInBatch; ++count) {
        if (!nextRow(m_record))
            return false;
        addRow(m_record, table);
    }
    return true;
}

bool TableReader::nextRow(TextRecord& record)
{
    return m_days ? m_days->next(record, [this](TextRecord& row) { return next(row); }) : next(record);
}

void TableReader::rewindRows()
{
    if (m_days)
        m_days->rewind();
    rewind();
}

std::string_view TableReader::fieldAt(const TextRecord& record, std::size_t field) const
{
    return field < record.fields.size() ? record.fields[field] : std::string_view();
}

std::optional<DateAndTime> TableReader::joinedTimeOf(const TextRecord& record)
{
    switch (m_time.form) {
    case TimeColumns::Form::Single: return splitDateAndTime(fieldAt(record, m_time.fields.front()));
    case TimeColumns::Form::DateAndClock: {
        const std::string_view date = fieldAt(record, m_time.fields[0]);
        const std::string_view clock = fieldAt(record, m_time.fields[1]);
        if (!date.empty())
            m_date = date;
        if (m_time.fields.size() == 2)
            return joinedTime(m_date, clock, m_time.layout, m_time.clockDigits);
        m_clock = clock;
        (m_clock += ' ') += fieldAt(record, m_time.fields[2]);
        return joinedTime(m_date, m_clock, m_time.layout, m_time.clockDigits);
    }
    case TimeColumns::Form::Parts: break;
    }
    std::array<std::string_view, 6> parts;
    for (std::size_t index = 0; index < m_time.fields.size(); ++index)
        parts[index] = fieldAt(record, m_time.fields[index]);
    return joinedTime(std::span(parts).first(m_time.fields.size()));
}

std::optional<double> TableReader::timeOf(const TextRecord& record)
{
    if (m_time.form == TimeColumns::Form::Single)
        return m_times->read(fieldAt(record, m_time.fields.front()));
    const std::optional<DateAndTime> time = joinedTimeOf(record);
    return time ? m_times->read(*time) : std::nullopt;
}

bool TableReader::allHold(const std::vector<ImportPlan::Condition>& conditions, const TextRecord& record) const
{
    return std::all_of(conditions.begin(), conditions.end(),
                       [&](const auto& condition) { return condition.holds(fieldAt(record, condition.field)); });
}

bool TableReader::isTooLong(const TextRecord& record) const
{
    return record.fields.size() > m_shape.fields() &&
           std::any_of(record.fields.begin() + static_cast<std::ptrdiff_t>(m_shape.fields()), record.fields.end(),
                       [](std::string_view field) { return !field.empty(); });
}

void TableReader::addRow(const TextRecord& record, ImportTable& table)
{
    if (!conditionsHold(record)) {
        table.passOverRow();
        return;
    }
    const std::optional<double> time = timeOf(record);
    if (!time) {
        passOverLine(record, table);
        return;
    }
    if (m_times->skippedBy() != nullptr) {
        passOverSkippedTime(record, table);
        return;
    }
    if (isTooLong(record)) {
        table.addBadRow(wrongLength(m_shape, record));
        return;
    }
    if (record.fields.size() < m_shape.fields() && m_shortRows.found++ == 0)
        m_shortRows.line = record.line;
    if (m_named)
        addNamedCell(record, *time);
    else
        addCells(record, table, *time);
}

/// A row at a time that no clock of the zone showed: the zone is not that of the recorder. One without a value loses
/// nothing, since forms with a place for every hour leave that one empty.
void TableReader::passOverSkippedTime(const TextRecord& record, ImportTable& table)
{
    const auto isEmptyAt = [&](std::size_t field) { return isMissing(fieldAt(record, field)); };
    const bool isEmpty = m_named ? isEmptyAt(m_named->value)
                                 : std::all_of(m_plan->columns.begin(), m_plan->columns.end(),
                                               [&](const auto& column) { return isEmptyAt(column.field); });
    if (isEmpty)
        return;
    QStringList time;
    for (const std::size_t field : m_time.fields)
        time << decodedText(fieldAt(record, field).substr(0, kMostInFinding));
    const LocalTime& zone = *m_times->skippedBy();
    const ImportFinding bad{.what = What::NotInZone,
                            .line = record.line,
                            .column = m_plan->timeHeader,
                            .text = textForFinding(time.join(QLatin1Char(' ')).toStdString()),
                            .columns = {zone.name()}};
    if (!m_plan->skipsBadRows)
        throw ImportFailure({.what = What::TimesNotInZone, .text = zone.offsetBeforeSkip(), .causes = {bad}});
    table.addBadRow(bad);
}

/// A line without a time: nothing, a comment, the header again, or what counts as a bad row.
void TableReader::passOverLine(const TextRecord& record, ImportTable& table)
{
    if (areEmpty(record))
        return;
    const bool isHeader = m_shape.hasHeader && std::equal(record.fields.begin(), record.fields.end(),
                                                          m_shape.headerFields.begin(), m_shape.headerFields.end());
    if (isHeader) {
        ++m_headersAgain;
        return;
    }
    if (isComment(record.fields.front())) {
        ++m_comments;
        return;
    }
    const std::size_t field = m_time.fields.front();
    const std::string_view text = fieldAt(record, field);
    const bool namesTime = m_shape.hasHeader && record.fields.size() > 1 && field < m_shape.headerFields.size() &&
                           !text.empty() && text == m_shape.headerFields[field];
    if (namesTime)
        throw ImportFailure({.what = What::AnotherHeader, .line = record.line, .column = m_plan->timeHeader});
    table.addBadRow(
        {.what = What::NoTime, .line = record.line, .column = m_plan->timeHeader, .text = textForFinding(text)});
}

bool TableReader::takesBareNumbers() const
{
    return std::all_of(m_cellUnits.begin(), m_cellUnits.end(),
                       [](const CellUnits& units) { return units.takesBareNumbers(); });
}

/// The number in a cell, whatever unit it is in.
FieldKind TableReader::readCell(std::string_view field, std::size_t mark, double& value)
{
    if (m_marks[mark] == DecimalMark::Unknown)
        learnMark(field, mark);
    return readNumber(field, m_marks[mark], value);
}

/// The first number with a mark in a file whose beginning has none: it says so for all columns that know none, unless
/// it may be meant either way. Then all rows are asked.
void TableReader::learnMark(std::string_view field, std::size_t index)
{
    DecimalEvidence evidence;
    evidence.add(field);
    DecimalMark mark = evidence.proven();
    if (mark == DecimalMark::Unknown && !evidence.isOpen())
        return;
    if (mark == DecimalMark::Unknown && !isSettledByForm(evidence, mark)) {
        m_marksAreOpen = m_mustRestart = true;
        m_marks[index] = DecimalMark::Point;  // of no matter: the rows are read again
        return;
    }
    for (DecimalMark& other : m_marks)
        if (other == DecimalMark::Unknown)
            other = mark;
    setCommonMark();
}

void TableReader::addCells(const TextRecord& record, ImportTable& table, double time)
{
    judge(record);
    for (std::size_t index = 0; index < m_plan->columns.size(); ++index) {
        const std::size_t column = m_plan->columns[index].field;
        const std::string_view field = fieldAt(record, column);
        const NumberWithUnit cell = numberIn(field, index);
        double value = 0;
        FieldKind kind = readCell(cell.number, index, value);
        if (kind == FieldKind::Number && !m_cellUnits[index].convert(cell.unit, value))
            kind = FieldKind::Text;
        switch (kind) {
        case FieldKind::Number: table.addNumber(index, value, markOf(m_plan->columns[index])); break;
        case FieldKind::Missing: table.addMissing(index); break;
        case FieldKind::Text:
            if (const std::optional<double> state = stateOf(field))
                table.addState(index, *state, record.line, field, markOf(m_plan->columns[index]));
            else
                table.addText(index, record.line, field);
            break;
        }
    }
    table.endRow(time);
}

void TableReader::endRows(ImportTable& table)
{
    if (m_quantities)
        moveQuantities(table);
    if (m_headersAgain > 0)
        m_notes.push_back({.what = What::HeadersRepeated, .found = m_headersAgain});
    if (m_comments > 0)
        m_notes.push_back({.what = What::CommentsPassedOver, .found = m_comments});
    if (m_shortRows.found > 0)
        m_notes.push_back(m_shortRows);
    noteUnknownQualities();
}

}  // namespace plotix
