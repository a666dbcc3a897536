#include "hostapp/exchange/tables/DayRows.h"

#include "hostapp/exchange/DecodedText.h"
#include "hostapp/exchange/TimeText.h"

#include <algorithm>

namespace plotix {

namespace {

using Row = TableSample::Row;

constexpr std::size_t kFewestClocks = 6;

/// The columns of a header that are times of day, one rising above the other; empty where they are none.
std::vector<std::size_t> clocksIn(const Row& row)
{
    std::vector<std::size_t> fields;
    int before = -1;  // seconds of the day
    for (std::size_t field = 0; field < row.fields.size(); ++field) {
        const std::string& text = row.fields[field];
        const std::optional<DateAndTime> clock =
            kindOf(text) == CellKind::Clock ? splitClock(text) : std::optional<DateAndTime>();
        if (!clock)
            continue;
        if (clock->secondOfDay <= before)
            return {};
        before = clock->secondOfDay;
        fields.push_back(field);
    }
    return fields.size() < kFewestClocks ? std::vector<std::size_t>() : fields;
}

bool isDateAlone(std::string_view text)
{
    const std::optional<DateAndTime> compact = splitCompactDigits(text);
    const std::optional<DateAndTime> date = compact ? compact : splitDateAndTime(text);
    return date && date->secondOfDay == 0;
}

/// Whether the column holds dates without a time of day, each but for a stray cell.
bool holdsDays(std::span<const Row> rows, std::size_t field)
{
    std::size_t days = 0, others = 0;
    for (const Row& row : rows)
        if (field < row.fields.size() && !row.fields[field].empty())
            ++(isDateAlone(row.fields[field]) ? days : others);
    return days > 0 && days > others * 4;
}

bool holdsTexts(std::span<const Row> rows, std::size_t field)
{
    std::size_t texts = 0, others = 0;
    for (const Row& row : rows)
        if (field < row.fields.size() && !row.fields[field].empty())
            ++(kindOf(row.fields[field]) == CellKind::Text ? texts : others);
    return texts > others;
}

}  // namespace

std::optional<DayRows> DayRows::in(const TableSample& sample)
{
    const auto header =
        std::find_if(sample.rows.begin(), sample.rows.end(), [](const Row& row) { return !clocksIn(row).empty(); });
    if (header == sample.rows.end())
        return {};
    DayRows days;
    days.m_headerRow = static_cast<std::size_t>(header - sample.rows.begin());
    days.m_header = header->fields;
    days.m_clocks = clocksIn(*header);
    const std::span<const Row> rows = std::span(sample.rows).subspan(days.m_headerRow + 1);
    std::optional<std::size_t> date;
    for (std::size_t field = 0; field < days.m_clocks.front() && !date; ++field)
        if (kindOf(days.m_header[field]) != CellKind::Date && holdsDays(rows, field))
            date = field;
    if (!date)
        return {};
    days.m_date = *date;
    for (std::size_t field = 0; field < days.m_clocks.front(); ++field)
        if (field != days.m_date && holdsTexts(rows, field))
            days.m_texts.push_back(field);
    days.m_newHeader = {days.m_header[days.m_date].empty() ? std::string("Date") : days.m_header[days.m_date]};
    for (const std::size_t field : days.m_texts)
        days.m_newHeader.push_back(days.m_header[field]);
    days.m_newHeader.insert(days.m_newHeader.end(), {"Time", "Value"});
    return days;
}

QStringList DayRows::clocks() const
{
    QStringList headers;
    for (const std::size_t field : m_clocks)
        headers << decodedText(m_header[field]).simplified();
    return headers;
}

TableSample DayRows::takenApart(const TableSample& sample) const
{
    DayRows reader = *this;
    reader.rewind();
    TableSample apart{{}, sample.delimiter};
    auto row = sample.rows.begin();
    const auto source = [&](TextRecord& record) {
        if (row == sample.rows.end())
            return false;
        record = {row->line, {row->fields.begin(), row->fields.end()}};
        ++row;
        return true;
    };
    for (TextRecord record; apart.rows.size() < kSampleRows && reader.next(record, source);)
        apart.rows.push_back({record.line, {record.fields.begin(), record.fields.end()}});
    return apart;
}

void DayRows::rewind()
{
    m_row = m_nextClock = 0;
    m_day = {};
}

bool DayRows::isHeader(const TextRecord& record) const
{
    return std::equal(record.fields.begin(), record.fields.end(), m_header.begin(), m_header.end());
}

bool DayRows::isDay(const TextRecord& record) const
{
    return m_date < record.fields.size() && isDateAlone(record.fields[m_date]);
}

bool DayRows::giveMoment(TextRecord& record)
{
    while (m_nextClock < m_clocks.size()) {
        const std::size_t field = m_clocks[m_nextClock++];
        if (field >= m_day.fields.size())
            continue;
        record.line = m_day.line;
        record.fields.assign(1, m_day.fields[m_date]);
        for (const std::size_t text : m_texts)
            record.fields.push_back(m_day.fields[text]);
        record.fields.push_back(m_header[field]);
        record.fields.push_back(m_day.fields[field]);
        return true;
    }
    m_day = {};
    return false;
}

bool DayRows::next(TextRecord& record, const std::function<bool(TextRecord&)>& source)
{
    while (m_day.fields.empty() || !giveMoment(record)) {
        if (!source(record))
            return false;
        const bool isBelow = m_row++ > m_headerRow;
        if (isHeader(record))
            record.fields.assign(m_newHeader.begin(), m_newHeader.end());
        else if (isBelow && isDay(record)) {
            m_day = record;
            m_nextClock = 0;
            continue;
        }
        return true;
    }
    return true;
}

}  // namespace plotix
