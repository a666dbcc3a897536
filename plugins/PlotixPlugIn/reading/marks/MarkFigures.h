#pragma once

#include "plugins/PlotixPlugIn/reading/figures/LineSummary.h"
#include "plugins/PlotixPlugIn/reading/values/TrendLines.h"
#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <QtCore/QStringList>

#include <map>
#include <optional>
#include <vector>

/// What the lines of a trend say at the marks A and B and between them. Values and free functions, and what is kept
/// between two questions. Main thread only.
namespace plotix {

/// Two marks, seconds since 1970-01-01 UTC; B may lie before A, and either may be missing.
struct MarkTimes {
    std::optional<double> a, b;

    bool areBoth() const { return a && b; }
    double distance() const { return *b - *a; }                             ///< Requires: both
    TimeSpan span() const { return {std::min(*a, *b), std::max(*a, *b)}; }  ///< Requires: both

    friend bool operator==(const MarkTimes&, const MarkTimes&) = default;
};

/// A line at the marks; a value is missing where nothing was recorded.
struct MarkedLine {
    QString name;
    QColor color;
    QString unitSymbol;
    std::optional<double> atA, atB;

    bool hasDifference() const { return atA && atB; }
};

/// Requires: both marks.
std::vector<MarkedLine> markedLines(const std::vector<TrendLine>& lines, const MarkTimes& marks);

/// "A – B", how long that is, then the difference of each line that has one: what is written above the graph.
QStringList markHeading(const std::vector<MarkedLine>& lines, const MarkTimes& marks, const ValueTexts& texts);

/// The figures of the stretch between the marks, from sums over a line's records that are made when first asked for.
class StretchFigures {
public:
    LineFigures of(const TrendLine& line, const KTVRecordDictionary& records, const TimeSpan& span);

private:
    struct Kept {
        std::weak_ptr<const KTVRecordColumn> column;
        QString unit;
        std::shared_ptr<const LineSummary> summary;
    };
    static LineFigures ofPart(Kept& kept, bool isKnown, const TrendLine& line, const KTVRecordDictionary& records,
                              const TimeSpan& span);
    std::map<QString, Kept> m_kept;  // by the key of the line
};

/// Both moments with their zone, "2013-02-06T00:00:00+01:00/2013-02-13T00:00:00+01:00": a range as the date fields, the
/// command line and other programs read it.
QString rangeText(const TimeSpan& span, const CPTClock& clock = {});

}  // namespace plotix
