#include "plotkit/render/GraphBackground.h"

#include "plotkit/render/FreshImage.h"

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

void paintBackground(GraphCanvas& canvas, const CPTXYGraph& graph, const GraphBackground::Places& places)
{
    const CPTPlotAreaFrame& style = graph.plotAreaFrame();
    canvas.fillRect(places.rect, graph.fill());
    canvas.drawRoundedFrame(places.frame, style.fill, style.borderLineStyle, style.cornerRadius);
    for (const GraphBackground::Places::Panel& panel : places.panels)
        canvas.drawRoundedFrame(panel.rect, panel.fill, std::nullopt, 0);
}

GraphBackground::Places narrowed(GraphBackground::Places places, double by)
{
    places.rect.adjust(0, 0, -by, 0);
    places.frame.adjust(0, 0, -by, 0);
    for (GraphBackground::Places::Panel& panel : places.panels)
        panel.rect.adjust(0, 0, -by, 0);
    return places;
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
                                                            const Places& places)
{
    constexpr double kWorthwhile = 64;
    constexpr double kMost = 1 << 20;
    constexpr double kKept = 8;
    const double density = canvas.density();
    const QRectF target = canvas.alignedRect(places.rect);
    const QRectF inner = canvas.alignedRect(places.frame);
    const double border = style.borderLineStyle ? style.borderLineStyle->width : 0;
    double side = style.cornerRadius + border;
    for (const Places::Panel& panel : places.panels)
        side = std::max({side, panel.rect.left() - places.frame.left(), places.frame.right() - panel.rect.right()});
    const double corner = std::ceil(side * density) + 3;
    const double spare = inner.width() - 2 * corner - kKept;
    const bool isWithin = inner.left() >= target.left() && inner.right() <= target.right();
    if (!isWithin || density != std::floor(density) || !(corner >= 0) || !(spare >= kWorthwhile && spare < kMost))
        return {};
    return {static_cast<int>(inner.left() - target.left() + corner + kKept / 2),
            static_cast<int>(std::floor(spare / density) * density)};
}

/// Fresh memory comes page by page from the system, which costs more than painting a background into it.
bool GraphBackground::makeImage(const QSize& pixels, bool isOpaque)
{
    const QImage::Format format = isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    m_image = QImage();
    const QSize wanted(roomFor(pixels.width()), roomFor(pixels.height()));
    const QSize had = m_memory.size();
    const bool fits = had.width() >= pixels.width() && had.height() >= pixels.height();
    const bool isWasteful = had.width() > 2 * wanted.width() || had.height() > 2 * wanted.height();
    if (!fits || isWasteful)
        m_memory = freshImage(wanted, QImage::Format_RGB32);
    if (m_memory.isNull() || pixels.isEmpty())
        return false;
    m_image = QImage(m_memory.bits(), pixels.width(), pixels.height(), m_memory.bytesPerLine(), format);
    if (!isOpaque)
        m_image.fill(Qt::transparent);
    return !m_image.isNull();
}

/// Paints what can be seen of the look, into memory of our own.
bool GraphBackground::make(const CPTXYGraph& graph, const Look& look, const AlikeColumns& alike)
{
    if (!makeImage(look.pixels - QSize(alike.spare, 0), look.isOpaque))
        return false;
    {
        const double narrower = alike.spare / look.density;
        QPainter painter(&m_image);
        painter.translate(look.origin - look.places.rect.topLeft() * look.density);
        painter.scale(look.density, look.density);
        GraphCanvas canvas(painter);
        paintBackground(canvas, graph, narrowed(look.places, narrower));
    }
    m_runs = PixelRuns(m_image, alike.column, alike.spare);
    return alike.spare == 0 || !m_runs.isEmpty() || make(graph, look, {});
}

const QImage& GraphBackground::wholeImage()
{
    if (m_image.size() != m_look.pixels && makeImage(m_look.pixels, m_look.isOpaque))
        m_runs.draw(m_image, {0, 0}, m_image.rect());
    return m_image;
}

/// Without anything kept.
void GraphBackground::paintOver(GraphCanvas& canvas, const CPTXYGraph& graph, const Places& places, Beneath beneath)
{
    if (beneath == Beneath::Nothing) {
        canvas.painter().setCompositionMode(QPainter::CompositionMode_Clear);
        canvas.painter().fillRect(canvas.alignedRect(places.rect), Qt::black);
        canvas.painter().setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    paintBackground(canvas, graph, places);
}

void GraphBackground::draw(GraphCanvas& canvas, const CPTXYGraph& graph, const Places& places, Beneath beneath)
{
    // A translucent background is blended with what is there: it gives the same pixels only when drawn there.
    const bool opaque = isOpaque(graph.fill());
    if (!canvas.isAligned() || (!opaque && beneath == Beneath::Picture))
        return paintOver(canvas, graph, places, beneath);
    const QRectF target = canvas.alignedRect(places.rect);
    const QPointF origin = canvas.toPainter(places.rect).topLeft() - target.topLeft();
    const CPTPlotAreaFrame& style = graph.plotAreaFrame();
    Look look{origin,     canvas.density(),      target.size().toSize(), places, graph.fill(),
              style.fill, style.borderLineStyle, style.cornerRadius,     opaque};
    if (m_image.isNull() || !(look == m_look)) {
        if (!make(graph, look, alikeColumns(canvas, style, places)))
            return paintOver(canvas, graph, places, beneath);
        m_look = std::move(look);
    }
    QImage* image = m_runs.isEmpty() ? nullptr : canvas.directImage();
    if (image != nullptr)
        return m_runs.draw(*image, target.topLeft().toPoint(), canvas.visiblePixels());
    const QPainter::CompositionMode mode = canvas.painter().compositionMode();
    if (!opaque)
        canvas.painter().setCompositionMode(QPainter::CompositionMode_Source);
    canvas.painter().drawImage(target.topLeft(), wholeImage());
    canvas.painter().setCompositionMode(mode);
}

}  // namespace plotkit
