#pragma once

#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"
#include "plugins/PlotixPlugIn/reading/values/AmendedRecords.h"
#include "plugins/PlotixPlugIn/reading/values/LineRecords.h"

#include <vector>

/// The lines of a trend that are shown, with their records, kept until something about them changes.
///
/// Whoever reads a trend *owns* one and *borrows* the trend. Main thread only.
namespace plotix {

struct TrendLine {
    ReadLine line;
    CPTScatterPlotPtr plot;
    LineRecords records;
    std::vector<KTVLimit> limits = {};  ///< of the property, in the unit of the moment; as of the last call
    AmendedRecords amendments = {};     ///< those the reader wants to be told; of the trend's own lines alone
};

class TrendLines {
public:
    /// Told: the host is asked for amendments, which takes the longer the more there are.
    enum class Amended { NotTold, Told };
    explicit TrendLines(const ReadTrend& trend, Amended amended = Amended::NotTold) : m_trend(trend), m_amended(amended)
    {
    }

    /// To be called when lines were hidden or shown, or look different. Other plots are noticed without it.
    void forget() { m_isKnown = false; }

    /// In the order of the plots; valid until the next call.
    const std::vector<TrendLine>& shown();

private:
    void find();

    const ReadTrend& m_trend;
    const Amended m_amended;
    bool m_isKnown = false;
    double m_lateBy = 0;                     // seconds: what is late by no more is not told
    std::vector<CPTScatterPlotPtr> m_plots;  // of the graph when the lines were found
    std::vector<TrendLine> m_lines;
};

/// The time of the record of any line that is nearest to `time`; `time` itself where none lies within `reach`.
double timeOfRecordNear(const std::vector<TrendLine>& lines, double time, double reach);

}  // namespace plotix
