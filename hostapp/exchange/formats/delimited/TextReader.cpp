#include "hostapp/exchange/formats/delimited/TextReader.h"

#include "hostapp/exchange/ImportFinding.h"
#include "hostapp/exchange/formats/delimited/FindByte.h"

#include <algorithm>
#include <cstring>

namespace plotix {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isBlank(char character, char delimiter)
{
    return (character == ' ' || character == '\t') && character != delimiter;
}

std::string_view withoutBlanks(const char* begin, const char* end, char delimiter)
{
    while (begin != end && isBlank(*begin, delimiter))
        ++begin;
    while (begin != end && isBlank(end[-1], delimiter))
        --end;
    return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

TextReader::TextReader(QIODevice& device, const TextFormat& format, std::size_t bufferSize)
    : m_device(device), m_format(format), m_buffer(std::max<std::size_t>(bufferSize, 16) + kReach, '\0')
{
    while (m_end < kByteOrderMark.size() && fillBuffer()) {
    }
    if (std::string_view(m_buffer.data(), m_end).starts_with(kByteOrderMark))
        m_position = m_consumed = kByteOrderMark.size();
}

bool TextReader::next(TextRecord& record)
{
    for (;;) {
        if (m_position == m_end && !fillBuffer())
            return false;
        const std::size_t begin = m_position;
        const qint64 line = m_line;
        if (cutRecord(record) == Cut::NeedsMore) {
            if (m_end - begin > kLongestRecord)
                throw ImportFailure(
                    {.what = m_inQuotation ? ImportFinding::What::UnclosedQuotation : ImportFinding::What::LineTooLong,
                     .line = line});
            fillBuffer();
            continue;
        }
        m_consumed += static_cast<qint64>(m_position - begin);
        const bool isBlankLine = record.fields.size() == 1 && record.fields.front().empty();
        if (!isBlankLine)
            return true;
    }
}

void TextReader::passOver(std::size_t bytes)
{
    m_position += bytes;
    m_consumed += static_cast<qint64>(bytes);
    ++m_line;
}

/// Leaves everything as it was when the buffer ends inside the record and the device has more.
TextReader::Cut TextReader::cutRecord(TextRecord& record)
{
    const char* const end = m_buffer.data() + m_end;
    const char* cursor = m_buffer.data() + m_position;
    qint64 lines = 1;
    record.line = m_line;
    record.fields.clear();
    m_unquoted.clear();
    m_unquoted.reserve(m_end - m_position);  // views into it must stay
    m_inQuotation = false;
    if (m_format.fewestBlanks > 0) {
        const char* const stop = std::find(cursor, end, m_format.lineBreak);
        if (stop == end && !m_atEnd)
            return Cut::NeedsMore;
        putBlankFields(record, {cursor, static_cast<std::size_t>(stop - cursor)});
        ++m_line;
        m_position = static_cast<std::size_t>(stop - m_buffer.data()) + (stop == end ? 0 : 1);
        return Cut::Complete;
    }
    for (;;) {
        const char* begin = cursor;
        while (begin != end && isBlank(*begin, m_format.delimiter))
            ++begin;
        cursor = begin != end && *begin == '"' ? cutQuotedField(begin, record, lines) : cutPlainField(cursor, record);
        if (cursor == nullptr || (cursor == end && !m_atEnd))
            return Cut::NeedsMore;
        if (cursor == end || *cursor == m_format.lineBreak)
            break;
        ++cursor;  // the delimiter
    }
    m_line += lines;
    m_position = static_cast<std::size_t>(cursor - m_buffer.data()) + (cursor == end ? 0 : 1);
    return Cut::Complete;
}

/// Fields apart by blanks: a quotation mark at the front of one keeps blanks in it, within the line.
void TextReader::putBlankFields(TextRecord& record, std::string_view line) const
{
    const auto isApart = [](char character) { return character == ' ' || character == '\t'; };
    while (!line.empty() && (isApart(line.back()) || line.back() == '\r'))
        line.remove_suffix(1);
    while (!line.empty() && isApart(line.front()))
        line.remove_prefix(1);
    while (!line.empty()) {
        std::size_t end = 0, blanks = 0;
        const std::size_t closing = line.front() == '"' ? line.find('"', 1) : std::string_view::npos;
        if (closing != std::string_view::npos)
            end = closing + 1;
        for (; end < line.size(); ++end) {
            blanks = isApart(line[end]) ? blanks + 1 : 0;
            if (blanks == static_cast<std::size_t>(m_format.fewestBlanks) || line[end] == '\t')
                break;
        }
        std::string_view field = line.substr(0, end);
        while (!field.empty() && isApart(field.back()))
            field.remove_suffix(1);
        const bool isQuoted = field.size() > 1 && field.front() == '"' && field.back() == '"';
        record.fields.push_back(isQuoted ? field.substr(1, field.size() - 2) : field);
        line.remove_prefix(end);
        while (!line.empty() && isApart(line.front()))
            line.remove_prefix(1);
    }
    if (record.fields.empty())
        record.fields.emplace_back();
}

/// Answers where the field ends: at a delimiter, a line break or the end of the buffer.
const char* TextReader::cutPlainField(const char* begin, TextRecord& record)
{
    const char* const end = m_buffer.data() + m_end;
    const char delimiter = m_format.delimiter;
    const char lineBreak = m_format.lineBreak;
    const char* const cursor = findEither(begin, end, delimiter, lineBreak);
    const char* fieldEnd = cursor;
    const bool endsLine = cursor == end || *cursor == lineBreak;
    if (endsLine && lineBreak == '\n' && fieldEnd != begin && fieldEnd[-1] == '\r')
        --fieldEnd;
    record.fields.push_back(withoutBlanks(begin, fieldEnd, delimiter));
    return cursor;
}

/// As cutPlainField; null when the buffer ends before the closing quotation mark and the device has more. What stands
/// between that mark and the next delimiter is kept, so that `"5" inch` loses nothing.
const char* TextReader::cutQuotedField(const char* begin, TextRecord& record, qint64& lines)
{
    const char* const end = m_buffer.data() + m_end;
    const std::size_t first = m_unquoted.size();
    const char* cursor = begin + 1;
    for (;;) {
        const char* const mark =
            cursor == end ? nullptr
                          : static_cast<const char*>(std::memchr(cursor, '"', static_cast<std::size_t>(end - cursor)));
        if (mark == nullptr) {
            m_inQuotation = true;
            if (!m_atEnd)
                return nullptr;
            throw ImportFailure({.what = ImportFinding::What::UnclosedQuotation, .line = record.line + lines - 1});
        }
        lines += std::count(cursor, mark, m_format.lineBreak);
        m_unquoted.append(cursor, mark);
        if (mark + 1 == end && !m_atEnd)
            return nullptr;  // only the next bytes show whether it is doubled
        cursor = mark + 1;
        if (cursor == end || *cursor != '"')
            break;
        m_unquoted.push_back('"');
        ++cursor;
    }
    const char* const closed = cursor;
    while (cursor != end && *cursor != m_format.delimiter && *cursor != m_format.lineBreak)
        ++cursor;
    std::string_view rest(closed, static_cast<std::size_t>(cursor - closed));
    while (!rest.empty() && (isBlank(rest.back(), m_format.delimiter) || rest.back() == '\r'))
        rest.remove_suffix(1);
    m_unquoted.append(rest);
    record.fields.emplace_back(m_unquoted.data() + first, m_unquoted.size() - first);
    return cursor;
}

/// Moves what is unread to the front, reads on behind it, and makes the buffer longer when one record fills it.
bool TextReader::fillBuffer()
{
    if (m_atEnd)
        return false;
    std::memmove(m_buffer.data(), m_buffer.data() + m_position, m_end - m_position);
    m_end -= m_position;
    m_position = 0;
    if (m_end + kReach == m_buffer.size())
        m_buffer.resize(m_buffer.size() * 2);
    const std::size_t room = m_buffer.size() - kReach - m_end;
    const qint64 count = m_device.read(m_buffer.data() + m_end, static_cast<qint64>(room));
    if (count < 0)
        throw ImportFailure({.what = ImportFinding::What::ReadingFailed, .text = m_device.errorString()});
    m_end += static_cast<std::size_t>(count);
    m_atEnd = count == 0;
    return count > 0;
}

}  // namespace plotix
