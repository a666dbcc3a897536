#include "hostapp/exchange/tables/QuantityTable.h"

#include <algorithm>
#include <limits>

namespace plotix {

namespace {
constexpr std::size_t kCellsBetweenReports = 1'000'000;  // some milliseconds
}  // namespace

std::size_t QuantityTable::columnOf(const std::string& name)
{
    const auto [found, isNew] = m_columns.try_emplace(name, m_names.size());
    if (isNew) {
        m_names.push_back(name);
        m_cells.emplace_back();
    }
    return found->second;
}

void QuantityTable::addState(std::size_t column, double time, double value, qint64 line, std::string_view word,
                             ImportTable::Mark mark)
{
    add(column, time, value, Kind::State, mark, {line, std::string(word)});
}

void QuantityTable::addText(std::size_t column, double time, qint64 line, std::string_view text)
{
    add(column, time, std::numeric_limits<double>::quiet_NaN(), Kind::Text, ImportTable::Mark::Good,
        {line, std::string(text)});
}

void QuantityTable::add(std::size_t column, double time, double value, Kind kind, ImportTable::Mark mark, Remark remark)
{
    std::size_t index = 0;
    if (kind == Kind::State || kind == Kind::Text) {
        index = m_remarks.size();
        m_remarks.push_back(std::move(remark));
    }
    m_cells[column].push_back({time, value, kind, mark, index});
    ++m_count;
}

void QuantityTable::addTo(ImportTable& table, std::size_t index, const Cell& cell) const
{
    switch (cell.kind) {
    case Kind::Number: table.addNumber(index, cell.value, cell.mark); break;
    case Kind::Missing: table.addMissing(index); break;
    case Kind::State: {
        const Remark& remark = m_remarks[cell.remark];
        table.addState(index, cell.value, remark.line, remark.text, cell.mark);
        break;
    }
    case Kind::Text: table.addText(index, m_remarks[cell.remark].line, m_remarks[cell.remark].text); break;
    }
}

/// A row takes the next cell of each column whose time it is. Two cells of one column at one time make two rows, so
/// that the table decides between them.
void QuantityTable::moveTo(ImportTable& table, const std::vector<std::size_t>& columns,
                           const std::function<void()>& report)
{
    const auto isEarlier = [](const Cell& one, const Cell& other) { return one.time < other.time; };
    std::vector<double> times;
    for (const std::size_t column : columns) {
        report();
        std::stable_sort(m_cells[column].begin(), m_cells[column].end(), isEarlier);
        for (const Cell& cell : m_cells[column])
            times.push_back(cell.time);
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    std::vector<std::size_t> next(columns.size(), 0);
    std::size_t unreported = 0;  // cells
    for (const double time : times)
        for (bool more = true; more;) {
            more = false;
            if ((unreported += columns.size()) >= kCellsBetweenReports) {
                unreported = 0;
                report();
            }
            for (std::size_t index = 0; index < columns.size(); ++index) {
                const std::vector<Cell>& cells = m_cells[columns[index]];
                std::size_t& at = next[index];
                if (at == cells.size() || cells[at].time != time) {
                    table.addMissing(index);
                    continue;
                }
                const Cell& cell = cells[at++];
                more = more || (at < cells.size() && cells[at].time == time);
                addTo(table, index, cell);
            }
            table.endRow(time);
        }
    m_cells.assign(m_names.size(), {});
    m_remarks.clear();
    m_count = 0;
}

}  // namespace plotix
