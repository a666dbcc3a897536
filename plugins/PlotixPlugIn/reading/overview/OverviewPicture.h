#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plotkit/render/GraphPainter.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <QtCore/QStringList>
#include <QtGui/QImage>

#include <cstdint>
#include <optional>
#include <vector>

class QPainter;

/// The lines of a graph over all of their times, as a small picture without axes.
///
/// It draws a graph of its own whose plots share the points of the large one's, and keeps the picture while they,
/// their colours and the size stay the same. Its owner *owns* it. Main thread only.
namespace plotix {

class OverviewPicture {
public:
    /// Takes the plots of these keys of this graph as they are now; `asked` is what their records were asked for, where
    /// that is known.
    void take(const CPTXYGraph& graph, const QStringList& keys, const std::optional<TimeSpan>& asked);
    /// What it spans; nothing without points.
    const std::optional<TimeSpan>& whole() const { return m_whole; }

    /// Lines of a page stay vectors. Nothing without points. `mayBeRough`: a kept picture of nearly that size will do;
    /// of long lines also the one of the lines before, or none: nobody is to wait for the strip to see the graph.
    void draw(QPainter& painter, const QRectF& place, bool mayBeRough);
    /// Whether the one drawn last was another one.
    bool isRough() const { return m_isRough; }

private:
    /// What the picture was made from.
    struct Line {
        std::uint64_t series = 0;
        CPTLineStyle style;
        CPTScatterPlotInterpolation interpolation{};
        double gapThreshold = 0;
        std::size_t space = 0;
        friend bool operator==(const Line&, const Line&) = default;
    };
    struct Kept {
        QSizeF size;
        double density = 0;
        friend bool operator==(const Kept&, const Kept&) = default;
    };

    static std::vector<Line> linesOf(const CPTXYGraph& graph, const QStringList& keys);
    void rebuild(const CPTXYGraph& graph, const QStringList& keys);
    CPTXYPlotSpacePtr addSpace();
    bool areLinesLong() const;

    std::vector<Line> m_lines;
    std::optional<TimeSpan> m_asked;
    std::optional<TimeSpan> m_whole;
    CPTXYGraphPtr m_graph;
    plotkit::GraphPainter m_painter;
    QImage m_image;
    Kept m_kept;
    bool m_isOutdated = false;  // the picture is of the lines before
    bool m_isRough = false;
};

}  // namespace plotix
