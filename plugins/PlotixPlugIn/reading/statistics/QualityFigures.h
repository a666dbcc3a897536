#pragma once

#include "plugins/PlotixPlugIn/reading/statistics/FigureTexts.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"
#include "plugins/PlotixPlugIn/reading/values/QualityCounts.h"

#include <map>

/// How many records of a line are not valid, late or corrected, in words, for a reader who has chosen to see what is
/// missing: what is not shown in the graph is not counted either.
///
/// Keeps what it has counted as long as records, span and choice stay. The table of statistics *owns* it; *borrows* the
/// trend. Main thread only.
namespace plotix {

class QualityFigures {
public:
    explicit QualityFigures(ReadTrend& trend) : m_trend(trend) {}

    bool areChosen() const;
    /// Such as "12 not valid, 3 late"; a dash where there are none. Requires: areChosen().
    QString text(const QString& key, const TimeSpan& within, const FigureTexts& texts) const;

private:
    struct Counted {
        KTVRecordDictionaryPtr records;  // of which it is
        TimeSpan within;
        double lateBy = 0;
        QualityCounts counts;
    };
    QVariantMap choices() const;
    QualityCounts countsOf(const QString& key, const TimeSpan& within) const;

    ReadTrend& m_trend;
    mutable std::map<QString, Counted> m_counted;  // by key
};

}  // namespace plotix
