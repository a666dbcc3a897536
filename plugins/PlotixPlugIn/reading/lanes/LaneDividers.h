#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <cstddef>
#include <optional>

class CPTGraphHostingView;
class QMouseEvent;
class QPointF;

/// Lets the pointer drag the edges between lanes: the upper edge of a lane's head.
///
/// The arrangement *owns* it and is *borrowed*. Main thread only.
namespace plotix {

class Arrangement;

class LaneDividers : public QObject {
public:
    explicit LaneDividers(Arrangement& arrangement) : m_arrangement(arrangement) {}

    void watch(CPTGraphHostingView* view);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// The lane whose upper edge is there; the first one's does not move.
    std::optional<std::size_t> edgeAt(const QPointF& point) const;
    void dragTo(const QPointF& point);
    void showCursorFor(const QPointF& point);

    Arrangement& m_arrangement;
    QPointer<CPTGraphHostingView> m_view;
    std::optional<std::size_t> m_dragged;
    bool m_hasCursor = false;
};

}  // namespace plotix
