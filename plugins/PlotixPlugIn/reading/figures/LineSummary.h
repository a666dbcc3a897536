#pragma once

#include "plugins/PlotixPlugIn/reading/figures/FigureRecords.h"
#include "plugins/PlotixPlugIn/reading/figures/LineFigures.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

/// The figures of one line over any span of its records, in a time that hardly depends on the span: the sums of every
/// 4096 records are made once, and a span adds up those inside it and reads the records at its two ends.
///
/// Immutable once made, *shared*; any thread.
namespace plotix {

/// How long work is told to stop and tells how far it is. Any thread may stop it; `progressed` is called on the thread
/// that works, now and then, with the number of records done since it was called last.
struct Work {
    std::stop_token stop = {};
    std::function<void(std::size_t records)> progressed = {};

    bool isStopped() const { return stop.stop_requested(); }
    void tell(std::size_t records) const
    {
        if (progressed)
            progressed(records);
    }
};

class LineSummary {
public:
    /// Reads every record once. `longestJoin`: the longest distance between points, in seconds, over which the line is
    /// drawn; beyond it nothing was recorded. Null when it was stopped.
    /// Requires: times that never decrease.
    static std::shared_ptr<const LineSummary> make(FigureRecords records, double longestJoin, const Work& work = {});

    struct Elements {
        std::size_t first = 0, last = 0;  ///< `last` is not among them
    };
    /// Reads the blocks of these elements alone, and knows what another summary of the same records has read (null:
    /// there is none). Figures of spans whose records, and the ones next to them, were read are those of the whole
    /// line.
    static std::shared_ptr<const LineSummary> makePart(FigureRecords records, double longestJoin,
                                                       const Elements& elements, const LineSummary* known);
    bool hasRead(const Elements& elements) const;

    /// Over the records with from ≤ time ≤ to. The line's way from the record before the span into it, and out of it to
    /// the record after, counts as far as it lies in the span.
    LineFigures figures(double from, double to) const;

    const FigureRecords& records() const { return m_records; }
    double longestJoin() const { return m_longestJoin; }

    /// Elements of the span: from ≤ time ≤ to.
    Elements elements(double from, double to) const;

    /// Whole blocks and parts of them, in order; those without points are left out.
    struct Piece {
        std::size_t block = 0;
        std::size_t first = 0, last = 0;  ///< elements
        bool isWhole = false;
    };
    std::vector<Piece> pieces(const Elements& elements) const;

    /// Of the block'th 4096 records.
    const PointSums& block(std::size_t block) const { return m_blocks[block]; }

    struct Point {
        double time = 0, value = 0;
    };
    std::optional<Point> pointBefore(std::size_t element) const;  ///< the last one in front of the element
    std::optional<Point> pointFrom(std::size_t element) const;    ///< the first one at or behind it

private:
    LineSummary() = default;
    PointSums sums(const std::vector<Piece>& pieces) const;
    double timeOf(double value, const std::vector<Piece>& pieces, double PointSums::*extreme) const;
    /// Answers how much of the span lies before the first or after the last record of all, and is no gap.
    double addEnds(PointSums& sums, const Elements& elements, double from, double to) const;

    FigureRecords m_records;
    double m_longestJoin = 0;
    std::vector<PointSums> m_blocks;
    std::vector<bool> m_isRead;  // of a part, by block; empty: all are
};

}  // namespace plotix
