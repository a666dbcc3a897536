#include "hostapp/exchange/ImportTable.h"

#include <algorithm>
#include <array>
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

ImportTable::ImportTable(const ImportPlan& plan) : m_plan(plan), m_columns(plan.columns.size()) {}

void ImportTable::restart()
{
    m_times = {};
    m_columns.assign(m_plan.columns.size(), {});
    m_counts = {};
    m_badInRun = m_runBegan = 0;
    m_firstInRun.reset();
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
}

void ImportTable::addRow(double time, std::span<const double> values, std::span<const Mark> marks)
{
    for (std::size_t index = 0; index < m_columns.size(); ++index)
        if (values[index] == values[index])
            addMarked(m_columns[index], values[index], marks[index]);
        else
            addValue(m_columns[index], values[index], false);
    m_times.push_back(time);
}

void ImportTable::addMarked(ImportColumn& column, double value, Mark mark)
{
    addValue(column, value, mark == Mark::Good);
    if (mark == Mark::Good)
        return;
    ++column.numbers;
    ++column.marked;
}

void ImportTable::addText(std::size_t index, qint64 line, std::string_view text)
{
    ImportColumn& column = m_columns[index];
    addValue(column, kNoNumber, false);
    if (column.bad++ == 0)
        column.firstBad = ImportFinding{.what = ImportFinding::What::NoNumber,
                                        .line = line,
                                        .column = m_plan.columns[index].header,
                                        .text = textForFinding(text)};
}

void ImportTable::addState(std::size_t index, double value, qint64 line, std::string_view word, Mark mark)
{
    ImportColumn& column = m_columns[index];
    column.stateRows.push_back(m_times.size());
    addMarked(column, value, mark);
    if (!column.firstState)
        column.firstState = ImportFinding{.what = ImportFinding::What::StatesAreNumbers,
                                          .line = line,
                                          .column = m_plan.columns[index].header,
                                          .text = textForFinding(word)};
}

void ImportTable::addBadRow(const ImportFinding& finding)
{
    if (m_runBegan != m_times.size() || m_badInRun == 0) {
        m_counts.badRows += m_badInRun;
        if (!m_counts.firstBad)
            m_counts.firstBad = m_firstInRun;
        m_runBegan = m_times.size();
        m_badInRun = 0;
        m_firstInRun = finding;
    }
    ++m_badInRun;
}

void ImportTable::finish()
{
    settleBadRows();
    for (ImportColumn& column : m_columns) {
        settleStates(column);
        if (!m_plan.keepsAllNumbers)
            settleGapNumbers(column);
    }
    sortRows();
}

/// The last run of bad rows is what stands below a table, if there is little of it.
void ImportTable::settleBadRows()
{
    constexpr std::size_t kMostBelow = 20;
    constexpr std::size_t kSharePassedOver = 3;  // one in so many
    const bool isBelow =
        m_badInRun > 0 && m_runBegan == m_times.size() && m_badInRun <= kMostBelow && m_badInRun <= m_times.size();
    if (isBelow) {
        m_counts.linesBelow = m_badInRun;
        m_counts.firstBelow = m_firstInRun;
    } else {
        m_counts.badRows += m_badInRun;
        if (!m_counts.firstBad)
            m_counts.firstBad = m_firstInRun;
    }
    m_counts.rows = m_times.size() + m_counts.otherRows + m_counts.badRows;
    const std::size_t wanted = m_times.size() + m_counts.badRows;
    if (m_plan.skipsBadRows || m_times.size() == 0 || m_counts.badRows * kSharePassedOver <= wanted)
        return;
    throw ImportFailure({.what = ImportFinding::What::TooManyBadRows,
                         .found = m_counts.badRows,
                         .expected = wanted,
                         .causes = {*m_counts.firstBad}});
}

/// Words for states beside other numbers than 0 and 1 are bad cells: "off" in a column of kilowatts is no 0.
void ImportTable::settleStates(ImportColumn& column)
{
    if (column.stateRows.empty())
        return;
    bool areStates = true;
    for (std::size_t row = 0; row < column.values.size() && areStates; ++row)
        areStates = !bitAt(column.valid, row) || column.values[row] == 0 || column.values[row] == 1;
    if (areStates)
        return;
    for (const std::size_t row : column.stateRows) {
        column.valid[row / 64] &= ~(std::uint64_t{1} << (row % 64));
        column.values.set(row, kNoNumber);
    }
    column.numbers -= column.stateRows.size();
    column.bad += column.stateRows.size();
    if (!column.firstBad || column.firstState->line < column.firstBad->line) {
        column.firstBad = column.firstState;
        column.firstBad->what = ImportFinding::What::NoNumber;
    }
    column.firstState.reset();
}

/// A lowest value of -999 far below all others stands for a gap, as loggers and weather services write one.
void ImportTable::settleGapNumbers(ImportColumn& column)
{
    double lowest = 0;
    for (std::size_t row = 0; row < column.values.size(); ++row)
        lowest = column.values[row] < lowest ? column.values[row] : lowest;
    constexpr std::array<double, 7> kGapNumbers = {-999, -9999, -99999, -999.9, -999.99, -9999.9, -6999};
    if (std::find(kGapNumbers.begin(), kGapNumbers.end(), lowest) == kGapNumbers.end())
        return;
    for (std::size_t row = 0; row < column.values.size(); ++row)
        if (column.values[row] > lowest && column.values[row] < lowest / 4)
            return;
    for (std::size_t row = 0; row < column.values.size(); ++row)
        if (column.values[row] == lowest) {
            column.valid[row / 64] &= ~(std::uint64_t{1} << (row % 64));
            column.values.set(row, kNoNumber);
            --column.numbers;
            ++column.gapNumbers;
        }
    column.gapNumber = lowest;
}

bool ImportTable::isTaken(std::size_t index) const
{
    constexpr std::size_t kTextsToANumber = 9;
    const ImportColumn& column = m_columns[index];
    if (column.numbers == 0 || m_plan.columns[index].isAskedFor)
        return column.numbers > 0;
    const bool areStates = column.stateRows.size() == column.numbers;  // on, off and auto are no 1 and 0
    return areStates ? column.bad * kTextsToANumber <= column.numbers : column.bad <= column.numbers * kTextsToANumber;
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
    std::vector<std::size_t> order(m_times.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [this](std::size_t one, std::size_t other) { return m_times[one] < m_times[other]; });
    joinRows(order);
}

/// How many rows lose a number to another one at the same time.
std::size_t ImportTable::replacedRows(const std::vector<std::size_t>& order, const std::vector<Group>& groups) const
{
    std::vector<bool> isReplaced(order.size(), false);
    for (const ImportColumn& column : m_columns)
        for (const Group& group : groups) {
            if (group.end - group.begin == 1)
                continue;
            std::optional<double> last;
            for (std::size_t place = group.end; place-- > group.begin;) {
                const std::size_t row = order[place];
                if (!bitAt(column.valid, row))
                    continue;
                if (last && *last != column.values[row])
                    isReplaced[place] = true;
                last = last ? last : std::optional(column.values[row]);
            }
        }
    return static_cast<std::size_t>(std::count(isReplaced.begin(), isReplaced.end(), true));
}

/// The last valid number, else the last one that was marked as bad.
std::size_t ImportTable::placeThatCounts(const ImportColumn& column, const std::vector<std::size_t>& order,
                                         const Group& group)
{
    for (std::size_t place = group.end; place-- > group.begin;)
        if (bitAt(column.valid, order[place]))
            return place;
    for (std::size_t place = group.end; place-- > group.begin;)
        if (const double value = column.values[order[place]]; value == value)
            return place;
    return group.begin;
}

void ImportTable::joinRows(const std::vector<std::size_t>& order)
{
    constexpr std::size_t kShareReplaced = 10;  // one in so many
    std::vector<Group> groups;
    for (std::size_t place = 0; place < order.size(); ++place) {
        if (place == 0 || m_times[order[place]] != m_times[order[place - 1]])
            groups.push_back({place, place});
        groups.back().end = place + 1;
    }
    m_counts.repeatedTimes = order.size() - groups.size();
    m_counts.replacedRows = m_counts.repeatedTimes == 0 ? 0 : replacedRows(order, groups);
    const bool areMany = m_counts.replacedRows > 1 && m_counts.replacedRows * kShareReplaced > order.size();
    if (areMany && m_plan.rowsAtOneTime == RowsAtOneTime::Refuse)
        throw ImportFailure({.what = ImportFinding::What::ManyRowsAtOneTime,
                             .column = m_plan.timeHeader,
                             .found = order.size(),
                             .expected = m_counts.repeatedTimes});
    GrowingColumn times;
    times.makeRoom(groups.size());
    for (const Group& group : groups)
        times.push_back(m_times[order[group.begin]]);
    m_times = std::move(times);
    for (ImportColumn& column : m_columns) {
        GrowingColumn values;
        values.makeRoom(groups.size());
        std::vector<std::uint64_t> valid((groups.size() + 63) / 64, 0);
        for (std::size_t index = 0; index < groups.size(); ++index) {
            const std::size_t place = placeThatCounts(column, order, groups[index]);
            values.push_back(column.values[order[place]]);
            if (bitAt(column.valid, order[place]))
                setBit(valid, index);
        }
        column.values = std::move(values);
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

void finishImport(RowSource& source, ImportTable& table)
{
    try {
        table.finish();
    } catch (const ImportFailure& failure) {
        ImportFinding finding = failure.finding();
        if (finding.what != ImportFinding::What::ManyRowsAtOneTime)
            throw;
        for (const auto& [header, text] : source.categories()) {
            finding.text = finding.columns.isEmpty() ? text : finding.text;
            finding.columns << header;
        }
        throw ImportFailure(std::move(finding));
    }
    if (std::optional<ImportFinding> mixture = source.mixture())
        throw ImportFailure(*std::move(mixture));
}

std::vector<ImportFinding> notesOf(const RowSource& source, const ImportTable& table)
{
    std::vector<ImportFinding> notes = source.notes();
    for (const ImportColumn& column : table.columns())
        if (column.firstState)
            notes.push_back(*column.firstState);
    for (std::size_t index = 0; index < table.columns().size(); ++index)
        if (const ImportColumn& column = table.columns()[index]; column.gapNumbers > 0)
            notes.push_back({.what = ImportFinding::What::NumbersAreGaps,
                             .column = table.headerOf(index),
                             .text = QString::number(column.gapNumber),
                             .found = column.gapNumbers});
    const RowCounts& counts = table.counts();
    if (counts.linesBelow > 0)
        notes.push_back({.what = ImportFinding::What::LinesBelowTable,
                         .line = counts.firstBelow->line,
                         .text = counts.firstBelow->text,
                         .found = counts.linesBelow});
    return notes;
}

}  // namespace plotix
