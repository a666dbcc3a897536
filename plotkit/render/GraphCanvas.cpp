#include "plotkit/render/GraphCanvas.h"

#include "plotkit/layout/LineDashes.h"
#include "plotkit/render/GraphText.h"
#include "plotkit/render/RectBlending.h"
#include "plotkit/render/TextImages.h"

#include <QtGui/QImage>
#include <QtGui/QLinearGradient>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

namespace plotkit {

namespace {

bool isUniformScale(const QTransform& transform)
{
    return transform.type() <= QTransform::TxScale && transform.m11() > 0 &&
           qFuzzyCompare(transform.m11(), transform.m22());
}

Qt::PenCapStyle penCap(CPTLineCap cap)
{
    switch (cap) {
    case CPTLineCap::Butt: return Qt::FlatCap;
    case CPTLineCap::Round: return Qt::RoundCap;
    case CPTLineCap::Square: return Qt::SquareCap;
    }
    return Qt::FlatCap;
}

QBrush brushForFill(const CPTFill& fill, const QRectF& rect)
{
    if (fill.stops.size() == 1)
        return fill.stops.front().color;
    QLinearGradient gradient(rect.bottomLeft(), rect.topLeft());
    for (const CPTFill::Stop& stop : fill.stops)
        gradient.setColorAt(std::clamp(stop.position, 0.0, 1.0), stop.color);
    return gradient;
}

bool isDrawable(const CPTLineStyle& style)
{
    return style.color.isValid() && style.color.alpha() > 0 && std::isfinite(style.width) && style.width > 0;
}

}  // namespace

bool isVisible(const CPTFill& fill)
{
    return std::any_of(fill.stops.begin(), fill.stops.end(),
                       [](const CPTFill::Stop& stop) { return stop.color.isValid() && stop.color.alpha() > 0; });
}

/// A straight line as the rectangle of whole pixels it fills, and its colour.
struct GraphCanvas::AlignedStroke {
    QRectF rect;
    QColor color;
};

GraphCanvas::GraphCanvas(QPainter& painter, TextImages* texts) : m_painter(painter), m_texts(texts)
{
    m_painter.save();
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QTransform device = m_painter.deviceTransform();
    const QPaintEngine* engine = m_painter.paintEngine();
    if (!engine || engine->type() != QPaintEngine::Raster || !isUniformScale(device))
        return;
    m_aligned = true;
    m_density = device.m11();
    m_offset = QPointF(device.dx(), device.dy());
    // The world transform that undoes whatever density and offset the device adds: from here on a unit is a pixel.
    m_painter.setWorldTransform(device.inverted() * m_painter.worldTransform());
}

GraphCanvas::~GraphCanvas()
{
    m_painter.restore();
}

QRectF GraphCanvas::toPainter(const QRectF& points) const
{
    return {toPainter(points.topLeft()), points.size() * m_density};
}

QRectF GraphCanvas::alignedRect(const QRectF& points) const
{
    const QRectF rect = toPainter(points);
    if (!m_aligned)
        return rect;
    const QPointF topLeft(std::round(rect.left()), std::round(rect.top()));
    return {topLeft, QPointF(std::round(rect.right()), std::round(rect.bottom()))};
}

QRect GraphCanvas::visiblePixels() const
{
    const QPaintEngine* engine = m_painter.paintEngine();
    const QPaintDevice* device = engine->paintDevice();
    const QRect whole(0, 0, device->width(), device->height());
    const QRegion exposed = engine->systemClip();
    return exposed.isEmpty() ? whole : whole.intersected(exposed.boundingRect());
}

QImage* GraphCanvas::directImage() const
{
    const QPaintEngine* engine = m_painter.paintEngine();
    QPaintDevice* device = m_aligned ? engine->paintDevice() : nullptr;
    const bool plain = device && device->devType() == QInternal::Image && !m_painter.hasClipping() &&
                       engine->systemClip().rectCount() <= 1 && m_painter.opacity() >= 1 &&
                       m_painter.compositionMode() == QPainter::CompositionMode_SourceOver;
    if (!plain)
        return nullptr;
    auto* image = static_cast<QImage*>(device);
    const bool blendable =
        image->format() == QImage::Format_RGB32 || image->format() == QImage::Format_ARGB32_Premultiplied;
    return blendable && image->isDetached() ? image : nullptr;
}

void GraphCanvas::fillRect(const QRectF& rect, const CPTFill& fill)
{
    if (!isVisible(fill))
        return;
    const QRectF aligned = alignedRect(rect);
    QImage* image = fill.stops.size() == 1 ? directImage() : nullptr;
    if (image)
        blendRect(*image, aligned.toRect().intersected(visiblePixels()), fill.stops.front().color);
    else
        m_painter.fillRect(aligned, brushForFill(fill, aligned));
}

void GraphCanvas::drawRoundedFrame(const QRectF& rect, const CPTFill& fill, const std::optional<CPTLineStyle>& border,
                                   double cornerRadius)
{
    const QRectF outer = alignedRect(rect);
    const bool hasBorder = border && isDrawable(*border);
    double width = hasBorder ? border->width * m_density : 0.0;
    if (m_aligned && hasBorder)
        width = std::max(1.0, std::round(width));
    const QRectF middle = outer.adjusted(width / 2, width / 2, -width / 2, -width / 2);
    if (!middle.isValid())
        return;
    const double radius = std::min({cornerRadius * m_density, middle.width() / 2, middle.height() / 2});
    if (radius <= 0 && drawPlainFrame(outer.toRect(), fill, hasBorder ? border : std::nullopt, width))
        return;
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(isVisible(fill) ? brushForFill(fill, outer) : QBrush(Qt::NoBrush));
    if (hasBorder)
        m_painter.setPen(QPen(border->color, width));
    m_painter.drawRoundedRect(middle, radius, radius);
}

/// Of one colour, and either filled or outlined: the rectangles of whole pixels that it is. False: drawn by nobody yet.
bool GraphCanvas::drawPlainFrame(const QRect& outer, const CPTFill& fill, const std::optional<CPTLineStyle>& border,
                                 double width)
{
    const bool isFilled = isVisible(fill);
    const int edge = static_cast<int>(width);
    QImage* image = isFilled != border.has_value() ? directImage() : nullptr;
    if (!image || fill.stops.size() > 1 || 2 * edge > std::min(outer.width(), outer.height()))
        return false;
    const QRect visible = visiblePixels();
    const auto blend = [&](const QRect& rect, const QColor& color) {
        blendRect(*image, rect.intersected(visible), color);
    };
    if (isFilled) {
        blend(outer, fill.stops.front().color);
        return true;
    }
    const QRect within = outer.adjusted(edge, edge, -edge, -edge);
    blend({outer.left(), outer.top(), outer.width(), edge}, border->color);
    blend({outer.left(), within.bottom() + 1, outer.width(), edge}, border->color);
    blend({outer.left(), within.top(), edge, within.height()}, border->color);
    blend({within.right() + 1, within.top(), edge, within.height()}, border->color);
    return true;
}

/// Butt ends, whatever the style's: they lie within what is drawn.
void GraphCanvas::drawDashes(const QLineF& line, const CPTLineStyle& style)
{
    CPTLineStyle solid = style;
    solid.dashPattern.clear();
    solid.cap = CPTLineCap::Butt;
    const double length = line.length();
    double from = 0;
    for (std::size_t index = 0; from < length; index = (index + 2) % style.dashPattern.size()) {
        const double to = std::min(from + style.dashPattern[index], length);
        drawLine(QLineF(line.pointAt(from / length), line.pointAt(to / length)), solid);
        from += style.dashPattern[index] + style.dashPattern[index + 1];
    }
}

void GraphCanvas::drawLine(const QLineF& line, const std::optional<CPTLineStyle>& style)
{
    if (!style || !isDrawable(*style))
        return;
    constexpr double kMostDashes = 1 << 16;
    if (const std::optional<DashPattern> dashes = DashPattern::of(*style, 1)) {
        if (line.length() < kMostDashes * dashes->period)
            return drawDashes(line, *style);
    }
    const bool straight = qFuzzyIsNull(line.dx()) || qFuzzyIsNull(line.dy());
    if (!m_aligned || !straight) {
        drawFreeLine(line, *style);
        return;
    }
    const AlignedStroke stroke = alignedStroke(line, *style);
    if (style->cap != CPTLineCap::Round) {
        if (QImage* image = directImage())
            blendRect(*image, stroke.rect.toRect().intersected(visiblePixels()), stroke.color);
        else
            m_painter.fillRect(stroke.rect, stroke.color);
        return;
    }
    const double radius = std::min(stroke.rect.width(), stroke.rect.height()) / 2;
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(stroke.color);
    m_painter.drawRoundedRect(stroke.rect, radius, radius);
}

/// Whole pixels keep an edge crisp. What rounding takes from a line's width goes into its opacity, so that a line
/// of 1.5 points weighs the same at every density.
GraphCanvas::AlignedStroke GraphCanvas::alignedStroke(const QLineF& line, const CPTLineStyle& style) const
{
    const double exact = style.width * m_density;
    const double width = std::max(1.0, std::ceil(exact - 0.5));
    const double cap = style.cap == CPTLineCap::Butt ? 0.0 : width / 2;
    const QPointF from = toPainter(line.p1());
    const QPointF to = toPainter(line.p2());
    QRectF rect;
    if (qFuzzyIsNull(line.dx())) {
        const double top = std::round(std::min(from.y(), to.y()) - cap);
        const double bottom = std::round(std::max(from.y(), to.y()) + cap);
        rect = QRectF(std::round(from.x() - width / 2), top, width, bottom - top);
    } else {
        const double left = std::round(std::min(from.x(), to.x()) - cap);
        const double right = std::round(std::max(from.x(), to.x()) + cap);
        rect = QRectF(left, std::round(from.y() - width / 2), right - left, width);
    }
    QColor color = style.color;
    color.setAlphaF(float(std::min(1.0, double(color.alphaF()) * exact / width)));
    return {rect, color};
}

void GraphCanvas::drawFreeLine(const QLineF& line, const CPTLineStyle& style)
{
    QPen pen(style.color, style.width * m_density);
    pen.setCapStyle(penCap(style.cap));
    m_painter.setPen(pen);
    m_painter.drawLine(QLineF(toPainter(line.p1()), toPainter(line.p2())));
}

void GraphCanvas::drawText(const PlacedText& text, const CPTTextStyle& style, TextBackground background)
{
    TextPlacing placing;
    placing.box = toPainter(text.box);
    placing.density = m_density;
    placing.snaps = m_aligned;
    placing.hasHalo = background == TextBackground::Plots;
    if (m_aligned && m_texts)
        m_texts->draw(m_painter, text, style, placing);
    else
        drawPlacedText(m_painter, text, style, placing);
}

}  // namespace plotkit
