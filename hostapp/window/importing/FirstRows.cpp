#include "hostapp/window/importing/FirstRows.h"

#include "hostapp/window/importing/ImportWords.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

using Column = ImportPreview::Column;

/// With all its digits, and without an exponent where people write none.
QString shownNumber(double value)
{
    constexpr double kLeast = 1e-6, kMost = 1e15;
    const double size = std::abs(value);
    const bool isPlain = value == 0 || (size >= kLeast && size < kMost);
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);  // so that a sign in a number is the decimal sign
    return locale.toString(value, isPlain ? 'f' : 'g', QLocale::FloatingPointShortest);
}

/// In the order of the values of a row: columns in the file's order, as they are when none is named.
QStringList titlesOf(const std::vector<Column>& columns)
{
    QStringList titles;
    for (const Column& column : columns)
        if (column.use == Column::Use::Taken)
            titles << (column.unit.isEmpty() ? column.name : QStringLiteral("%1 (%2)").arg(column.name, column.unit));
    return titles;
}

}  // namespace

void FirstRows::setPreview(const ImportPreview& preview)
{
    beginResetModel();
    m_rows = preview.rows;
    m_titles = titlesOf(preview.columns);
    m_qualities.clear();
    for (const Column& column : preview.columns)
        if (column.use == Column::Use::Taken)
            m_qualities << column.quality;
    m_hasFractions = std::any_of(m_rows.begin(), m_rows.end(),
                                 [](const ImportPreview::Row& row) { return row.time != std::floor(row.time); });
    endResetModel();
}

int FirstRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int FirstRows::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() || m_rows.empty() ? 0 : static_cast<int>(m_titles.size()) + 1;
}

QVariant FirstRows::data(const QModelIndex& index, int role) const
{
    const auto row = static_cast<std::size_t>(index.row());
    if (role == Qt::TextAlignmentRole)
        return index.column() == 0 ? QVariant() : QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (index.column() == 0) {
        if (role == Qt::ToolTipRole)
            return QDateTime::fromMSecsSinceEpoch(std::llround(m_rows[row].time * 1000), Qt::UTC)
                .toString(Qt::ISODateWithMs);
        return role == Qt::DisplayRole ? shownTime(m_rows[row].time, m_hasFractions) : QVariant();
    }
    const auto place = static_cast<std::size_t>(index.column()) - 1;
    const std::optional<double>& value = m_rows[row].values[place];
    const bool isMarked = m_rows[row].marked[place];
    if (isMarked && (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole))
        return tr("%1, marked as bad by “%2”: kept, and invalid")
            .arg(shownNumber(*value), m_qualities.value(index.column() - 1));
    if (isMarked && role == Qt::FontRole) {
        QFont struck = QGuiApplication::font();
        struck.setStrikeOut(true);
        return struck;
    }
    if (role == Qt::DisplayRole)
        return value ? shownNumber(*value) : QStringLiteral("–");
    if (!value && (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole))
        return tr("gap");
    if ((!value || isMarked) && role == Qt::ForegroundRole)
        return QGuiApplication::palette().placeholderText();
    return {};
}

QVariant FirstRows::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    return section == 0 ? tr("Time") : m_titles.value(section - 1);
}

}  // namespace plotix
