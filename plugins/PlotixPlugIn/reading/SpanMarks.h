#pragma once

#include "plotkit/model/CPTGraphLayer.h"

#include <optional>

/// The marks over a graph that is behind: a shade where records have not been read yet, and a word where other dates
/// have been chosen than the graph shows.
///
/// A layer; the graph and the trend's reading *share* it. Main thread only.
namespace plotix {

/// Seconds since 1970-01-01 UTC; from ≤ to unless said otherwise.
struct TimeSpan {
    double from = 0, to = 0;

    friend bool operator==(const TimeSpan&, const TimeSpan&) = default;
};

/// Whether two spans are the same to a hundredth of a second: a range is kept as location and length, which rounds its
/// end.
bool isSameSpan(const TimeSpan& one, const TimeSpan& other);

class SpanMarks : public CPTGraphLayer {
public:
    /// What has been read (nothing: nothing is shaded), and the dates that were chosen (nothing: those of the graph).
    void show(const std::optional<TimeSpan>& read, const std::optional<TimeSpan>& chosen);

    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;

private:
    std::optional<TimeSpan> m_read, m_chosen;
};

}  // namespace plotix
