#pragma once

#include "plugins/PlotixPlugIn/reading/statistics/StatisticsTable.h"

#include <vector>

/// The table's columns that say of each line what it was at the times it is compared with: for every comparison the
/// average then and by how much the present one is more, and every figure that was chosen for the present.
///
/// An identifier is that of the figure and the comparison, such as "average:7d". Stored: never changes. The statistics
/// part *owns* it; it *borrows* trend and table. Main thread only.
namespace plotix {

class ComparedColumns {
public:
    ComparedColumns(const ReadTrend& trend, const StatisticsTable& table) : m_trend(trend), m_table(table) {}

    /// The comparisons that any line of the trend has, in their order.
    QStringList comparisons() const;
    std::vector<TableFigures::Column> columns(const StatisticsChoices& choices) const;
    /// Nothing where the identifier is none of these.
    std::optional<TableFigures::Cell> cell(const QString& key, const QString& identifier) const;

    /// The compared line that a cell is about, empty where the line has none, and the identifier of the figure.
    struct Meant {
        QString line, figure;
    };
    /// Nothing where the identifier is none of these.
    std::optional<Meant> meant(const QString& key, const QString& identifier) const;

private:
    /// Of the span, as people read them.
    struct Shares {
        QString now, then, hint;
    };
    std::optional<Shares> unequalShares(const LineFigures& now, const LineFigures& then) const;
    TableFigures::Cell averageCell(const QString& key, const QString& comparedKey) const;
    TableFigures::Cell differenceCell(const QString& key, const QString& comparedKey) const;

    const ReadTrend& m_trend;
    const StatisticsTable& m_table;
    FigureTexts m_texts;
    ReadableNumbers m_numbers;
};

}  // namespace plotix
