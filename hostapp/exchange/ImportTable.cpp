#include "hostapp/exchange/ImportTable.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace plotix {

namespace {

void setBit(std::vector<std::uint64_t>& bits, std::size_t index)
{
    bits[index / 64] |= std::uint64_t{1} << (index % 64);
}

bool bitAt(const std::vector<std::uint64_t>& bits, std::size_t index)
{
    return ((bits[index / 64] >> (index % 64)) & 1U) != 0;
}

}  // namespace

ImportTable::ImportTable(const ImportPlan& plan, BadRows badRows)
    : m_plan(plan), m_badRows(badRows), m_columns(plan.columns.size())
{
}

void ImportTable::expectRows(std::size_t count)
{
    m_times.makeRoom(count);
    for (ImportColumn& column : m_columns)
        column.values.makeRoom(count);
}

void ImportTable::addRow(double time, std::span<const double> values)
{
    for (std::size_t index = 0; index < m_columns.size(); ++index)
        addValue(m_columns[index], values[index], values[index] == values[index]);
    m_times.push_back(time);
}

void ImportTable::addValue(ImportColumn& column, double value, bool isNumber)
{
    const std::size_t row = m_times.size();
    if (row % 64 == 0)
        column.valid.push_back(0);
    column.values.push_back(value);
    if (!isNumber)
        return;
    setBit(column.valid, row);
    ++column.numbers;
    if (column.firstText && m_badRows == BadRows::Stop)
        throw ImportFailure(*column.firstText);
}

void ImportTable::addText(std::size_t index, qint64 line, std::string_view text)
{
    ImportColumn& column = m_columns[index];
    addValue(column, kNoNumber, false);
    if (!column.firstText)
        column.firstText = ImportFinding{.what = ImportFinding::What::NoNumber,
                                         .line = line,
                                         .column = m_plan.columns[index].header,
                                         .text = textForFinding(text)};
    if (m_badRows == BadRows::Skip)
        column.textRows.push_back(m_times.size());
    else if (column.numbers > 0)
        throw ImportFailure(*column.firstText);
}

void ImportTable::addBadRow(const ImportFinding& finding)
{
    if (m_badRows == BadRows::Stop)
        throw ImportFailure(finding);
    ++m_counts.badRows;
    if (!m_counts.firstBad)
        m_counts.firstBad = finding;
}

void ImportTable::finish()
{
    m_counts.rows = m_times.size() + m_counts.otherRows + m_counts.badRows;
    dropTextRows();
    sortRows();
}

void ImportTable::dropTextRows()
{
    std::vector<std::uint64_t> bad((m_times.size() + 63) / 64, 0);
    bool any = false;
    for (const ImportColumn& column : m_columns) {
        if (column.numbers == 0 || column.textRows.empty())
            continue;
        any = true;
        for (const std::size_t row : column.textRows)
            setBit(bad, row);
        if (!m_counts.firstBad || column.firstText->line < m_counts.firstBad->line)
            m_counts.firstBad = column.firstText;
    }
    if (!any)
        return;
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < m_times.size(); ++row)
        if (!bitAt(bad, row))
            rows.push_back(row);
    m_counts.badRows += m_times.size() - rows.size();
    keepRows(rows);
}

void ImportTable::sortRows()
{
    bool isRepeated = false;
    for (std::size_t row = 1; row < m_times.size(); ++row) {
        m_counts.unorderedTimes += m_times[row] < m_times[row - 1] ? 1 : 0;
        isRepeated |= m_times[row] == m_times[row - 1];
    }
    if (m_counts.unorderedTimes == 0 && !isRepeated)
        return;
    std::vector<std::size_t> rows(m_times.size());
    std::iota(rows.begin(), rows.end(), std::size_t{0});
    std::stable_sort(rows.begin(), rows.end(),
                     [this](std::size_t one, std::size_t other) { return m_times[one] < m_times[other]; });
    std::vector<std::size_t> last;
    for (std::size_t index = 0; index < rows.size(); ++index)
        if (index + 1 == rows.size() || m_times[rows[index]] != m_times[rows[index + 1]])
            last.push_back(rows[index]);
    m_counts.repeatedTimes = rows.size() - last.size();
    keepRows(last);
}

void ImportTable::keepRows(const std::vector<std::size_t>& rows)
{
    const auto gather = [&rows](GrowingColumn& values) {
        GrowingColumn kept;
        kept.makeRoom(rows.size());
        for (const std::size_t row : rows)
            kept.push_back(values[row]);
        values = std::move(kept);
    };
    gather(m_times);
    for (ImportColumn& column : m_columns) {
        gather(column.values);
        std::vector<std::uint64_t> valid((rows.size() + 63) / 64, 0);
        for (std::size_t index = 0; index < rows.size(); ++index)
            if (bitAt(column.valid, rows[index]))
                setBit(valid, index);
        column.valid = std::move(valid);
    }
}

ImportTable::Taken ImportTable::takeColumn(std::size_t index)
{
    ImportColumn& column = m_columns[index];
    Taken taken;
    for (const std::uint64_t word : column.valid)
        taken.valid += static_cast<std::size_t>(std::popcount(word));
    if (taken.valid != column.values.size())
        taken.validity = ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(column.valid)));
    taken.values = column.values.take();
    return taken;
}

}  // namespace plotix
