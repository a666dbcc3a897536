#pragma once

#include "plotkit/model/PartFilling.h"
#include "plotkit/render/GraphPainter.h"

#include <QtCore/QPointF>
#include <QtCore/QSize>
#include <QtGui/QImage>

#include <cstdint>
#include <functional>
#include <vector>

/// Paints the frames of a view: a graph with layers is kept as a picture, so that moving a layer costs no more than
/// copying that picture and drawing the layers.
///
/// A graph without layers, and one on a device without pixels, is painted straight to where it is shown, and nothing is
/// kept.
///
/// A frame that would have to wait for pages of paged series is painted at once from what their runs tell, where
/// whoever paints allows it: it is *provisional* then, and its pages are brought into memory meanwhile. A view *owns*
/// one. After an exact frame the runs of its series are looked at, which a narrower one will need. Main thread only.
namespace plotkit {

/// What of a graph may have changed since the frame before.
enum class GraphChange { Anything, LayersOnly };

/// Whether a frame waits for all that it shows.
enum class FrameTruth { Exact, MayBeProvisional };

class GraphFrames {
public:
    /// `canSettle` is called, by another thread, when a graph painted provisionally can be painted exactly.
    explicit GraphFrames(std::function<void()> canSettle = [] {}) : m_filling(std::move(canSettle)) {}

    /// Paints graph and layers into `rect` (points) and answers whether the graph itself was painted. After a change of
    /// layers only, it is painted if size, density or position between pixels changed too. Kept pictures make no
    /// difference to the pixels, but for rounding where the graph is translucent. Reports to no delegate.
    bool paint(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, GraphChange change,
               FrameTruth truth = FrameTruth::Exact);

    /// Whether the graph painted last was painted provisionally; one painted exactly on demand does not count.
    bool isProvisional() const { return m_isProvisional; }
    /// The same of layers that drew roughly. They stay so until settleLayers(), which makes the next paint draw them
    /// exactly.
    bool areLayersRough() const { return m_areLayersRough; }
    void settleLayers() { m_settlesLayers = true; }
    /// Nobody will look for a while: nothing is brought into memory, or held there.
    void rest()
    {
        m_filling.letGo();
        m_lookedAt.clear();
    }

private:
    struct Look {
        QSize pixels;
        QPointF origin;  // where the picture's pixels begin, as a fraction of a pixel
        double density = 0;
        friend bool operator==(const Look&, const Look&) = default;
    };

    void keep(const CPTXYGraph& graph, const QRectF& rect, const Look& look);
    void paintLayersOf(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect);
    void paintGraph(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, Beneath beneath);
    void lookAhead(const CPTXYGraph& graph);

    GraphPainter m_painter;
    FrameTruth m_truth = FrameTruth::Exact;  // of the frame being painted
    bool m_isProvisional = false;
    bool m_areLayersRough = false;
    bool m_settlesLayers = false;
    std::vector<std::uint64_t> m_lookedAt;  // serials of the series whose runs are being looked at, or were
    PartFilling m_filling;
    Look m_look;
    QImage m_picture;  // of `m_look`; null when there is none
};

}  // namespace plotkit
