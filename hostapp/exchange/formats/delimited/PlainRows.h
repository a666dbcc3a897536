#pragma once

#include "hostapp/exchange/ImportPlan.h"
#include "hostapp/exchange/ImportTable.h"
#include "hostapp/exchange/NumberText.h"
#include "hostapp/exchange/QualityReader.h"
#include "hostapp/exchange/TimeColumnReader.h"
#include "hostapp/exchange/formats/delimited/Detection.h"

#include <span>
#include <vector>

/// The fast path for rows in which every field has its most frequent form.
///
/// Fields are read in place, without cutting the row into fields first. A row with anything else in it (quotation
/// marks, blanks, words, exponents, another number of fields) is refused without side effects and left to the slow
/// path, which reads everything and reports errors. Both paths read the same values.
/// One import *owns* it; one thread.
namespace plotix {

class PlainRows {
public:
    /// `fields` is how many a row has. Borrows the plan, and the readers of times and of the plan's columns of quality,
    /// which both paths share.
    PlainRows(const TextFormat& format, std::size_t fields, const ImportPlan& plan, TimeColumnReader& times,
              std::span<QualityReader> qualities = {});

    /// Reads the row at the beginning of the text; answers how many bytes it takes, its line break included. 0:
    /// refused. TextReader::kReach bytes behind the text must be readable. While the decimal mark is unknown, numbers
    /// with one are refused.
    std::size_t read(std::string_view text, DecimalMark mark);

    double time() const { return m_time; }
    /// By the plan's columns; NaN where a field is empty.
    std::span<const double> values() const { return m_values; }

    bool hasQualities() const { return !m_qualities.empty(); }
    /// Which of the values are marked as bad, by the plan's columns. Requires: hasQualities().
    std::span<const ImportTable::Mark> marks();

private:
    enum class Role { Time, Value, Quality, Other };
    struct Field {
        Role role = Role::Other;
        std::size_t column = 0;  ///< of a value or a quality, in the plan
    };

    const char* takeField(const Field& field, const char* cursor, const char* end);
    const char* takeValue(const char* cursor, double& value) const;
    const char* takeQuality(std::size_t quality, const char* cursor, const char* end);
    const char* takeOther(const char* cursor, const char* end) const;
    bool isEndOfField(char character) const { return character == m_format.delimiter || isEndOfLine(character); }
    bool isEndOfLine(char character) const;

    const ImportPlan& m_plan;              // borrowed
    TimeColumnReader& m_times;             // borrowed
    std::span<QualityReader> m_qualities;  // borrowed
    TextFormat m_format;
    std::vector<Field> m_fields;
    bool m_canRead;
    DecimalMark m_mark = DecimalMark::Unknown;
    double m_time = 0;
    std::vector<double> m_values;
    std::vector<QualityReader::Mark> m_read;  // by the plan's qualities
    std::vector<ImportTable::Mark> m_marks;
};

}  // namespace plotix
