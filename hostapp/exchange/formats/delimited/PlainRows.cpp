#include "hostapp/exchange/formats/delimited/PlainRows.h"

#include "hostapp/exchange/PlainNumber.h"
#include "hostapp/exchange/formats/delimited/FindByte.h"

#include <limits>

namespace plotix {

PlainRows::PlainRows(const TextFormat& format, std::size_t fields, const ImportPlan& plan, TimeColumnReader& times)
    : m_times(times),
      m_format(format),
      m_fields(fields),
      m_canRead(plan.conditions.empty() && kDelimiters.find(format.delimiter) != std::string_view::npos),
      m_values(plan.columns.size())
{
    for (std::size_t index = 0; index < plan.columns.size(); ++index)
        m_fields[plan.columns[index].field] = {Role::Value, index};
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
    case Role::Other: break;
    }
    const bool mayBeQuoted = *cursor == '"' || *cursor == ' ' || *cursor == '\t';
    return mayBeQuoted ? nullptr : findEither(cursor, end, m_format.delimiter, m_format.lineBreak);
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
