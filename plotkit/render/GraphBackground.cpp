#include "plotkit/render/GraphBackground.h"

#include <algorithm>
#include <cmath>

namespace plotkit {

namespace {

bool isOpaque(const CPTFill& fill)
{
    return !fill.stops.empty() && std::all_of(fill.stops.begin(), fill.stops.end(), [](const CPTFill::Stop& stop) {
        return stop.color.isValid() && stop.color.alpha() == 255;
    });
}

void paintBackground(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& rect, const QRectF& frame)
{
    const CPTPlotAreaFrame& style = graph.plotAreaFrame();
    canvas.fillRect(rect, graph.fill());
    canvas.drawRoundedFrame(frame, style.fill, style.borderLineStyle, style.cornerRadius);
}

/// Rounded up, so that a window dragged larger does not need new memory at every step.
int roomFor(int pixels)
{
    constexpr int kStep = 256;
    constexpr int kMost = 1 << 20;  // wider than any picture there is memory for
    return pixels < kMost ? (pixels + kStep - 1) / kStep * kStep : pixels;
}

}  // namespace

GraphBackground::AlikeColumns GraphBackground::alikeColumns(const GraphCanvas& canvas, const CPTPlotAreaFrame& style,
                                                            const QRectF& rect, const QRectF& frame)
{
    constexpr double kWorthwhile = 64;
    constexpr double kMost = 1 << 20;
    constexpr double kKept = 8;
    const double density = canvas.density();
    const QRectF target = canvas.alignedRect(rect);
    const QRectF inner = canvas.alignedRect(frame);
    const double border = style.borderLineStyle ? style.borderLineStyle->width : 0;
    const double corner = std::ceil((style.cornerRadius + border) * density) + 3;
    const double spare = inner.width() - 2 * corner - kKept;
    const bool isWithin = inner.left() >= target.left() && inner.right() <= target.right();
    if (!isWithin || density != std::floor(density) || !(corner >= 0) || !(spare >= kWorthwhile && spare < kMost))
        return {};
    return {static_cast<int>(inner.left() - target.left() + corner + kKept / 2),
            static_cast<int>(std::floor(spare / density) * density)};
}

/// Fresh memory comes page by page from the system, which costs more than painting a background into it.
bool GraphBackground::makeImage(const QSize& pixels)
{
    m_image = QImage();
    const QSize wanted(roomFor(pixels.width()), roomFor(pixels.height()));
    const QSize had = m_memory.size();
    const bool fits = had.width() >= pixels.width() && had.height() >= pixels.height();
    const bool isWasteful = had.width() > 2 * wanted.width() || had.height() > 2 * wanted.height();
    if (!fits || isWasteful)
        m_memory = QImage(wanted, QImage::Format_RGB32);
    if (m_memory.isNull() || pixels.isEmpty())
        return false;
    m_image = QImage(m_memory.bits(), pixels.width(), pixels.height(), m_memory.bytesPerLine(), QImage::Format_RGB32);
    return !m_image.isNull();
}

/// Paints what can be seen of the look, into memory of our own.
bool GraphBackground::make(const CPTXYGraph& graph, const Look& look, const AlikeColumns& alike)
{
    if (!makeImage(look.pixels - QSize(alike.spare, 0)))
        return false;
    {
        const double narrower = alike.spare / look.density;
        QPainter painter(&m_image);
        painter.translate(look.origin - look.rect.topLeft() * look.density);
        painter.scale(look.density, look.density);
        GraphCanvas canvas(painter);
        paintBackground(canvas, graph, look.rect.adjusted(0, 0, -narrower, 0), look.frame.adjusted(0, 0, -narrower, 0));
    }
    m_runs = PixelRuns(m_image, alike.column, alike.spare);
    return alike.spare == 0 || !m_runs.isEmpty() || make(graph, look, {});
}

const QImage& GraphBackground::wholeImage()
{
    if (m_image.size() != m_look.pixels && makeImage(m_look.pixels))
        m_runs.draw(m_image, {0, 0}, m_image.rect());
    return m_image;
}

void GraphBackground::draw(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& rect, const QRectF& frame)
{
    // Only an opaque background can be copied as it is: every other is blended with what is there, and gives the same
    // pixels only when drawn there.
    if (!canvas.isAligned() || !isOpaque(graph.fill())) {
        paintBackground(canvas, graph, rect, frame);
        return;
    }
    const QRectF target = canvas.alignedRect(rect);
    const QPointF origin = canvas.toPainter(rect).topLeft() - target.topLeft();
    const CPTPlotAreaFrame& style = graph.plotAreaFrame();
    Look look{origin,     canvas.density(),      target.size().toSize(), rect, frame, graph.fill(),
              style.fill, style.borderLineStyle, style.cornerRadius};
    if (m_image.isNull() || !(look == m_look)) {
        if (!make(graph, look, alikeColumns(canvas, style, rect, frame))) {
            paintBackground(canvas, graph, rect, frame);
            return;
        }
        m_look = std::move(look);
    }
    QImage* image = m_runs.isEmpty() ? nullptr : canvas.directImage();
    if (image != nullptr)
        m_runs.draw(*image, target.topLeft().toPoint(), canvas.visiblePixels());
    else
        canvas.painter().drawImage(target.topLeft(), wholeImage());
}

}  // namespace plotkit
