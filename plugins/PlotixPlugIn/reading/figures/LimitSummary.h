#pragma once

#include "plugins/PlotixPlugIn/reading/figures/LineSummary.h"

#include <memory>
#include <vector>

/// How long a line was above or below a limit, over any span of its records, as quickly as its other figures.
///
/// Immutable once made, *shared*; any thread.
namespace plotix {

/// Seconds of the time that the line covers; what is exactly at the limit is neither above nor below. The first two
/// hold each value until the next, the others go straight.
struct LimitFigures {
    double heldAbove = 0, heldBelow = 0;
    double straightAbove = 0, straightBelow = 0;
    std::int64_t crossings = 0;  ///< how often the line came to lie above the limit, or ceased to
};

class LimitSummary {
public:
    /// Reads the records on both sides of the limit once. *Shares* the line. Null when it was stopped.
    static std::shared_ptr<const LimitSummary> make(std::shared_ptr<const LineSummary> line, double limit,
                                                    const Work& work = {});

    LimitFigures figures(double from, double to) const;  ///< as LineSummary::figures
    double limit() const { return m_limit; }

private:
    LimitSummary() = default;
    LimitFigures sidesOf(const FigureRecords::Points& points) const;
    void addWay(LimitFigures& figures, const LineSummary::Point& one, const LineSummary::Point& other, double from,
                double to) const;

    std::shared_ptr<const LineSummary> m_line;
    double m_limit = 0;
    std::vector<LimitFigures> m_blocks;  // of the ways between the points of a block
};

}  // namespace plotix
