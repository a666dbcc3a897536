#pragma once

#include "plotkit/layout/GraphLayout.h"
#include "plotkit/model/CPTStyles.h"

#include <QtGui/QPainter>

#include <optional>

/// Draws the elements of a graph, given in points, on a painter.
///
/// On a raster device the canvas works in device pixels and puts straight lines and edges on whole ones, so that they
/// are crisp at every density; on any other device (PDF, a turned painter) nothing is rounded. The painter is
/// *borrowed*; its state is restored when the canvas goes. Main thread only.
namespace plotkit {

class TextImages;

enum class TextBackground { Plain, Plots };

class GraphCanvas {
public:
    /// `texts`, *borrowed*, keeps the texts of an aligned canvas from frame to frame.
    explicit GraphCanvas(QPainter& painter, TextImages* texts = nullptr);
    ~GraphCanvas();
    GraphCanvas(const GraphCanvas&) = delete;
    GraphCanvas& operator=(const GraphCanvas&) = delete;

    QPainter& painter() { return m_painter; }
    bool isAligned() const { return m_aligned; }   ///< works in device pixels
    double density() const { return m_density; }   ///< painter units a point: device pixels, or 1
    QRectF toPainter(const QRectF& points) const;  ///< not aligned to pixels

    /// The rectangle in painter units, on whole pixels where the canvas is aligned.
    QRectF alignedRect(const QRectF& points) const;

    /// The part of an aligned canvas that can be seen: the device, less what need not be painted again. Device pixels.
    QRect visiblePixels() const;

    /// The image an aligned canvas paints on, where its pixels may be blended directly inside `visiblePixels()`; null
    /// where the painter clips, or blends in any other way than premultiplied or opaque 32-bit source over.
    QImage* directImage() const;

    void fillRect(const QRectF& rect, const CPTFill& fill);

    /// A rounded rectangle with its border inside.
    void drawRoundedFrame(const QRectF& rect, const CPTFill& fill, const std::optional<CPTLineStyle>& border,
                          double cornerRadius);

    /// A horizontal or vertical line; others are drawn too, but not aligned. No style: nothing.
    void drawLine(const QLineF& line, const std::optional<CPTLineStyle>& style);

    /// Where plots lie beneath, a halo sets the text off.
    void drawText(const PlacedText& text, const CPTTextStyle& style, TextBackground background);

private:
    struct AlignedStroke;
    AlignedStroke alignedStroke(const QLineF& line, const CPTLineStyle& style) const;
    QPointF toPainter(const QPointF& point) const { return point * m_density + m_offset; }
    bool drawPlainFrame(const QRect& outer, const CPTFill& fill, const std::optional<CPTLineStyle>& border,
                        double width);
    void drawDashes(const QLineF& line, const CPTLineStyle& style);
    void drawFreeLine(const QLineF& line, const CPTLineStyle& style);

    QPainter& m_painter;
    TextImages* m_texts;
    bool m_aligned = false;
    double m_density = 1.0;
    QPointF m_offset;
};

/// Whether the fill leaves any mark.
bool isVisible(const CPTFill& fill);

}  // namespace plotkit
