#include "hostapp/window/importing/ColumnChoices.h"

#include "hostapp/window/importing/ImportWords.h"
#include "hostapp/window/importing/QualityTexts.h"

#include <QtCore/QLocale>

#include <algorithm>
#include <limits>
#include <set>

namespace plotix {

namespace {

using Use = ImportPreview::Column::Use;

/// Equal headers are told apart by their places.
std::vector<QString> keysOf(const std::vector<ImportPreview::Column>& columns)
{
    std::multiset<QString> headers;
    for (const ImportPreview::Column& column : columns)
        headers.insert(column.header);
    std::vector<QString> keys;
    for (std::size_t index = 0; index < columns.size(); ++index)
        keys.push_back(headers.count(columns[index].header) == 1 ? columns[index].header
                                                                 : QStringLiteral("Column %1").arg(index + 1));
    return keys;
}

}  // namespace

void ColumnChoices::setPreview(const ImportPreview& preview)
{
    std::vector<QString> keys = keysOf(preview.columns);
    const bool isRead = preview.rowsLookedAt > 0;
    m_areNamed = preview.form.arrangement == Arrangement::Names;
    if (keys != m_keys) {
        beginResetModel();
        m_columns = preview.columns;
        m_keys = std::move(keys);
        m_isJudged = isRead;
        endResetModel();
    } else if (!m_keys.empty() && (isRead || !m_isJudged)) {  // else what was found before still stands
        m_columns = preview.columns;
        m_isJudged = isRead;
        emit dataChanged(index(0, 0), index(rowCount() - 1, kParts - 1));  // a cell being edited stays open
    }
}

void ColumnChoices::setOptions(const ImportOptions& options)
{
    m_choices.clear();
    for (const auto& [column, name] : options.names)
        m_choices[column].name = name;
    for (const auto& [column, unit] : options.units)
        m_choices[column].unit = unit;
    for (const QString& column : options.also)
        m_choices[column].isTaken = true;
    for (const QString& column : options.leaveOut)
        m_choices[column].isTaken = false;
}

void ColumnChoices::addTo(ImportOptions& options) const
{
    for (const auto& [key, choice] : m_choices) {
        if (!m_keys.empty() && std::find(m_keys.begin(), m_keys.end(), key) == m_keys.end())
            continue;
        if (choice.name)
            options.names.emplace_back(key, *choice.name);
        if (choice.unit)
            options.units.emplace_back(key, *choice.unit);
        if (choice.isTaken)
            (*choice.isTaken ? options.also : options.leaveOut) << key;
    }
}

int ColumnChoices::rowOf(const QString& column) const
{
    for (std::size_t row = 0; row < m_columns.size(); ++row)
        if (!column.isEmpty() && (m_keys[row] == column || m_columns[row].header == column))
            return static_cast<int>(row);
    return -1;
}

int ColumnChoices::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

int ColumnChoices::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kParts;
}

const ColumnChoices::Choice* ColumnChoices::choiceOf(std::size_t row) const
{
    const auto found = m_choices.find(m_keys[row]);
    return found == m_choices.end() ? nullptr : &found->second;
}

bool ColumnChoices::isTaken(std::size_t row) const
{
    const Choice* choice = choiceOf(row);
    if (choice && choice->isTaken)
        return *choice->isTaken;
    const bool isProbable = !m_isJudged && m_columns[row].reason == ImportPreview::Column::Reason::NotAskedFor;
    return m_columns[row].use == Use::Taken || isProbable;
}

Qt::ItemFlags ColumnChoices::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const auto row = static_cast<std::size_t>(index.row());
    if (m_columns[row].use == Use::Time)
        return flags;
    if (index.column() == Header)
        return flags | Qt::ItemIsUserCheckable;
    return isTaken(row) && index.column() != Meaning ? flags | Qt::ItemIsEditable : flags;
}

QString ColumnChoices::meaningOf(const ImportPreview::Column& column) const
{
    using Reason = ImportPreview::Column::Reason;
    if (column.use == Use::Time)
        return tr("the time");
    if (!m_isJudged)
        return {};
    if (column.use == Use::Taken) {
        const auto count = [](std::size_t number) {
            return static_cast<int>(std::min<std::size_t>(number, std::numeric_limits<int>::max()));
        };
        QString numbers = tr("%n number(s)", nullptr, count(column.numbers));
        if (column.marked > 0)
            numbers += tr(", %n of them marked as bad", nullptr, count(column.marked));
        return column.bad == 0 ? numbers : numbers + tr(", %n cell(s) without one", nullptr, count(column.bad));
    }
    switch (column.reason) {
    case Reason::CountsRows:
        if (m_areNamed)
            return tr("part of the quantities below");
        return tr("counts the rows, names them, or is another time");
    case Reason::JudgesValues: return textOfJudging(column.judges);
    case Reason::NoNumbers: return tr("no number so far");
    case Reason::HardlyNumbers: return tr("texts with few numbers among them");
    case Reason::NotAskedFor:
    case Reason::None: break;
    }
    return tr("not ticked");
}

QString ColumnChoices::text(std::size_t row, int part) const
{
    const ImportPreview::Column& column = m_columns[row];
    const Choice* choice = choiceOf(row);
    switch (part) {
    case Header: return column.header;
    case Name:
        if (column.use == Use::Time)
            return {};
        return choice && choice->name ? *choice->name : column.name;
    case Unit:
        if (column.use == Use::Time)
            return {};
        return choice && choice->unit ? *choice->unit : column.unit;
    default: return meaningOf(column);
    }
}

QVariant ColumnChoices::data(const QModelIndex& index, int role) const
{
    const auto row = static_cast<std::size_t>(index.row());
    const ImportPreview::Column& column = m_columns[row];
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return text(row, index.column());
    if (role == Qt::CheckStateRole && index.column() == Header && column.use != Use::Time)
        return isTaken(row) ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::ToolTipRole && index.column() == Meaning && column.firstBad)
        return shownText(*column.firstBad);
    if (role == Qt::ToolTipRole)
        return text(row, index.column());
    return {};
}

bool ColumnChoices::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const bool isTick = role == Qt::CheckStateRole && index.column() == Header;
    if (!isTick && (role != Qt::EditRole || value.toString().trimmed() == data(index, role)))
        return false;
    choose(index, value);
    emit dataChanged(this->index(index.row(), 0), this->index(index.row(), kParts - 1));
    emit changed();
    return true;
}

void ColumnChoices::choose(const QModelIndex& index, const QVariant& value)
{
    Choice& choice = m_choices[m_keys[static_cast<std::size_t>(index.row())]];
    const QString text = value.toString().trimmed();
    switch (index.column()) {
    case Header: choice.isTaken = value.toInt() == Qt::Checked; break;
    case Name: choice.name = text.isEmpty() ? std::nullopt : std::optional(text); break;  // its own again
    case Unit: choice.unit = text; break;
    default: break;
    }
}

QVariant ColumnChoices::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Header: return tr("Column");
    case Name: return tr("Name");
    case Unit: return tr("Unit");
    default: return tr("What it is");
    }
}

}  // namespace plotix
