#pragma once

#include "plugins/PlotixPlugIn/reading/statistics/FigureColumns.h"
#include "plugins/PlotixPlugIn/reading/statistics/FigureKeeper.h"
#include "plugins/PlotixPlugIn/reading/statistics/FigureTexts.h"
#include "plugins/PlotixPlugIn/reading/statistics/QualityFigures.h"
#include "plugins/PlotixPlugIn/reading/statistics/StatisticsChoices.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"
#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <set>

/// The cells of the table of statistics: words for the figures that are kept of each line.
///
/// The statistics part *owns* it and says what was chosen. *Borrows* the trend. Main thread only.
namespace plotix {

class StatisticsTable {
public:
    StatisticsTable(ReadTrend& trend, FigureKeeper& keeper) : m_trend(trend), m_keeper(keeper), m_quality(trend) {}
    void setClock(const CPTClock& clock) { m_texts.setClock(clock); }

    /// Asks the keeper anew for what was chosen, about the records and the span there are now.
    void ask(const StatisticsChoices& choices);

    /// The span that the figures are about; nothing while there is none.
    std::optional<TimeSpan> span(StatisticsOver over) const;
    bool isPaged() const;  ///< whether looking at records may unpack them
    TableFigures::Cell cell(const QString& key, const FigureColumn& column) const;
    std::optional<TableFigures::Own> own(const QString& key) const;
    /// How many of the records are not valid, late or corrected, in words; nothing where nobody wants to see that.
    std::optional<QString> quality(const QString& key) const;
    /// When the line was lowest, or highest; nothing without records.
    std::optional<double> timeOf(const QString& key, Figure figure) const;
    std::optional<ReadLine> line(const QString& key) const;
    /// Nothing while they are being worked out, and for a line without any.
    std::optional<LineFigures> figures(const QString& key) const { return m_keeper.figures(key); }
    /// What the times of a line beyond a limit are counted by, in the unit shown; nothing: there is no limit.
    std::optional<double> limit(const QString& key, Figure figure) const;
    QString missing() const;  ///< what stands in the place of figures that are not there

private:
    bool isAsked() const;
    QString limitKey(const QString& key) const;
    std::vector<FigureLine> keptLines() const;
    /// A limit that times are counted beyond: the one chosen for this table, else the property's first one.
    struct CountedLimit {
        double value = 0;  ///< in the unit shown
        QString text;      ///< for people
    };
    std::optional<CountedLimit> limitOf(const QString& key, const KTVRecordColumn& column, Figure figure) const;
    LineLimits limitsOf(const QString& key, const KTVRecordColumn& column) const;
    bool isHeld(const QString& key) const;
    TableFigures::Cell percentileCell(const QString& key, const LineFigures& figures, double share) const;
    TableFigures::Cell momentCell(const QString& key, double drawn) const;
    TableFigures::Cell limitCell(const QString& key, Figure figure) const;
    TableFigures::Cell latestCell(const QString& key, const LineFigures& figures, Figure figure) const;
    TableFigures::Cell coverageCell(const QString& key, const LineFigures& figures) const;
    TableFigures::Cell integralCell(const QString& key, const LineFigures& figures) const;

    ReadTrend& m_trend;
    FigureKeeper& m_keeper;
    StatisticsChoices m_choices;
    FigureTexts m_texts;
    QualityFigures m_quality;
    ValueTexts m_values;
};

/// Whether anything of it differs from the table's own columns over everything fetched.
bool needsFigures(const StatisticsChoices& choices);

}  // namespace plotix
