#pragma once

#include <cstddef>
#include <optional>

class QEvent;
class QPointF;

/// Lets the pointer drag the edges between lanes: the upper edge of a lane's head.
///
/// The arrangement *owns* it; it *borrows* the arrangement and the trend. Main thread only.
namespace plotix {

class Arrangement;
class ReadTrend;

class LaneDividers {
public:
    LaneDividers(const ReadTrend& trend, Arrangement& arrangement) : m_trend(trend), m_arrangement(arrangement) {}

    bool pointerActed(QEvent& event);  ///< answers whether it was meant for an edge

private:
    /// The lane whose upper edge is there; the first one's does not move.
    std::optional<std::size_t> edgeAt(const QPointF& point) const;
    void dragTo(const QPointF& point);
    void showCursorFor(const QPointF& point);

    const ReadTrend& m_trend;
    Arrangement& m_arrangement;
    std::optional<std::size_t> m_dragged;
    bool m_hasCursor = false;
};

}  // namespace plotix
