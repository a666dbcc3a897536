#pragma once

#include "hostapp/exchange/tables/TableSample.h"

#include <QtCore/QStringList>

#include <functional>
#include <optional>

/// Tables with a row for each day and a column for each time of day ("Date; 00:00; 00:15; …"), taken apart into one row
/// a moment: date, other texts of the row (a meter's name), time of day, value. Columns of numbers that are no time of
/// day, such as the day's sum, are left out.
///
/// A value that reads a file's rows in order; one thread.
namespace plotix {

class DayRows {
public:
    /// Nothing: the sample has no such table. Six times of day that rise make one, if dates without a time stand in
    /// front of them.
    static std::optional<DayRows> in(const TableSample& sample);

    /// The sample as it reads when it is taken apart.
    TableSample takenApart(const TableSample& sample) const;

    QStringList clocks() const;  ///< the headers of the columns that are times of day

    void rewind();
    /// The next row, taken from `source`, which answers false at the end; so does this. Lines above the table, and
    /// those without a date, pass as they are.
    bool next(TextRecord& record, const std::function<bool(TextRecord&)>& source);

private:
    bool isHeader(const TextRecord& record) const;
    bool isDay(const TextRecord& record) const;
    bool giveMoment(TextRecord& record);

    std::size_t m_headerRow = 0;  // of the file's rows
    std::vector<std::string> m_header;
    std::size_t m_date = 0;
    std::vector<std::size_t> m_texts;   // columns kept beside the date
    std::vector<std::size_t> m_clocks;  // columns whose headers are times of day
    std::vector<std::string> m_newHeader;

    std::size_t m_row = 0;
    TextRecord m_day;  // being taken apart
    std::size_t m_nextClock = 0;
};

}  // namespace plotix
