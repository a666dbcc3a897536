#pragma once

#include "hostapp/exchange/tables/TableSample.h"

#include <QtCore/QIODevice>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Cuts a stream of bytes into records of fields.
///
/// Reads through one buffer that it *owns*, so that a file of any length takes little memory; it *borrows* the device.
/// A field that begins with a quotation mark ends at the next single one; inside it two stand for one, and delimiters
/// and line breaks are plain text. A quotation mark further inside a field is an ordinary character. Blank lines are
/// no records. Blanks and tabs around a field do not belong to it. Any one thread.
namespace plotix {

struct TextFormat {
    char delimiter = ',';
    char lineBreak = '\n';  ///< '\n' also serves "\r\n"; '\r' for files with no other line break
    int fewestBlanks = 0;   ///< above 0, so many blanks or tabs, or more, part fields, and the delimiter is ' '
};

class TextReader {
public:
    /// Longer records are refused: a quotation mark was opened and never closed.
    static constexpr std::size_t kLongestRecord = 1 << 24;  // bytes

    /// Starts at the device's position; a UTF-8 byte order mark there is passed over.
    TextReader(QIODevice& device, const TextFormat& format, std::size_t bufferSize = 1 << 20);

    /// False at the end. Throws ImportFailure when the device fails or a record is too long.
    bool next(TextRecord& record);

    /// What has been read ahead of the next record; may be empty, or end anywhere. kReach bytes behind it can be looked
    /// at, whatever they hold. Valid until the next call.
    std::string_view ahead() const { return {m_buffer.data() + m_position, m_end - m_position}; }
    /// The caller has read these bytes, one line with its line break, from `ahead`.
    void passOver(std::size_t bytes);
    static constexpr std::size_t kReach = 128;

    qint64 bytesRead() const { return m_consumed; }  ///< of the records handed out, byte order mark included

private:
    enum class Cut { Complete, NeedsMore };
    Cut cutRecord(TextRecord& record);
    void putBlankFields(TextRecord& record, std::string_view line) const;
    const char* cutPlainField(const char* begin, TextRecord& record);
    const char* cutQuotedField(const char* begin, TextRecord& record, qint64& lines);
    bool fillBuffer();

    QIODevice& m_device;  // borrowed
    TextFormat m_format;
    std::string m_buffer;
    std::string m_unquoted;      // quoted fields of this record, without their doubled quotation marks
    std::size_t m_position = 0;  // of the next record in the buffer
    std::size_t m_end = 0;       // of the bytes in the buffer
    bool m_atEnd = false;        // the device has no more
    bool m_inQuotation = false;  // the record that needs more bytes has an open quotation mark
    qint64 m_line = 1;
    qint64 m_consumed = 0;
};

}  // namespace plotix
