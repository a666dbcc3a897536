#include "hostapp/exchange/formats/delimited/PlainRows.h"

#include "hostapp/exchange/PlainNumber.h"
#include "hostapp/exchange/formats/delimited/FindByte.h"

#include <limits>

namespace plotix {

PlainRows::PlainRows(const TextFormat& format, std::size_t fields, const ImportPlan& plan, TimeColumnReader& times,
                     std::span<QualityReader> qualities)
    : m_plan(plan),
      m_times(times),
      m_qualities(qualities),
      m_format(format),
      m_fields(fields),
      m_canRead(plan.conditions.empty() && kDelimiters.find(format.delimiter) != std::string_view::npos),
      m_values(plan.columns.size()),
      m_read(qualities.size()),
      m_marks(plan.columns.size())
{
    for (std::size_t index = 0; index < qualities.size(); ++index)
        m_fields[plan.qualities[index].field] = {Role::Quality, index};
    for (std::size_t index = 0; index < plan.columns.size(); ++index) {
        Field& field = m_fields[plan.columns[index].field];
        m_canRead = m_canRead && field.role == Role::Other;  // a quality that is also a measurement
        field = {Role::Value, index};
    }
    m_fields[plan.timeField].role = Role::Time;
}

bool PlainRows::isEndOfLine(char character) const
{
    return character == m_format.lineBreak || (character == '\r' && m_format.lineBreak == '\n');
}

std::size_t PlainRows::read(std::string_view text, DecimalMark mark)
{
    if (!m_canRead)
        return 0;
    m_mark = mark;
    const char* const end = text.data() + text.size();
    const char* cursor = text.data();
    for (const Field& field : m_fields) {
        if (&field != m_fields.data() && *cursor++ != m_format.delimiter)
            return 0;
        if (cursor >= end)
            return 0;
        cursor = takeField(field, cursor, end);
        if (cursor == nullptr)
            return 0;
    }
    if (*cursor == '\r' && m_format.lineBreak == '\n')
        ++cursor;
    if (cursor >= end || *cursor != m_format.lineBreak)
        return 0;
    m_times.took(m_time);
    return static_cast<std::size_t>(cursor + 1 - text.data());
}

/// Answers what follows the field, or null.
const char* PlainRows::takeField(const Field& field, const char* cursor, const char* end)
{
    switch (field.role) {
    case Role::Time: return m_times.takePlain(cursor, m_format.delimiter, m_time);
    case Role::Value: return takeValue(cursor, m_values[field.column]);
    case Role::Quality: return takeQuality(field.column, cursor, end);
    case Role::Other: break;
    }
    return takeOther(cursor, end);
}

const char* PlainRows::takeOther(const char* cursor, const char* end) const
{
    const bool mayBeQuoted = *cursor == '"' || *cursor == ' ' || *cursor == '\t';
    return mayBeQuoted ? nullptr : findEither(cursor, end, m_format.delimiter, m_format.lineBreak);
}

/// What is not known, or has blanks behind it, is left to the slow path, which counts it.
const char* PlainRows::takeQuality(std::size_t quality, const char* cursor, const char* end)
{
    const char* const behind = takeOther(cursor, end);
    if (behind == nullptr)
        return nullptr;
    std::string_view text(cursor, static_cast<std::size_t>(behind - cursor));
    if (text.ends_with('\r') && m_format.lineBreak == '\n')
        text.remove_suffix(1);
    if (text.ends_with(' ') || text.ends_with('\t'))
        return nullptr;
    m_read[quality] = m_qualities[quality].read(text);
    return m_read[quality] == QualityReader::Mark::Unknown ? nullptr : behind;
}

std::span<const ImportTable::Mark> PlainRows::marks()
{
    for (std::size_t index = 0; index < m_marks.size(); ++index) {
        m_marks[index] = ImportTable::Mark::Good;
        for (const std::size_t quality : m_plan.columns[index].qualities)
            if (m_read[quality] == QualityReader::Mark::Bad)
                m_marks[index] = ImportTable::Mark::Bad;
    }
    return m_marks;
}

const char* PlainRows::takeValue(const char* cursor, double& value) const
{
    if (isEndOfField(*cursor)) {
        value = std::numeric_limits<double>::quiet_NaN();
        return cursor;
    }
    const char mark = m_mark == DecimalMark::Comma ? ',' : '.';
    bool hasMark = false;
    const char* const behind = takePlainNumber(cursor, mark, value, hasMark);
    const bool isUnsure = hasMark && (m_mark == DecimalMark::Unknown || mark == m_format.delimiter);
    return isUnsure ? nullptr : behind;
}

}  // namespace plotix
