#include "plugins/PlotixPlugIn/host/KTVGraphicsContext.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

KTVGraphicsContext*& theContext()
{
    static KTVGraphicsContext* context = nullptr;
    return context;
}

QImage onWhite(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return image;
    QImage sheet(image.size(), QImage::Format_RGB32);
    sheet.setDevicePixelRatio(image.devicePixelRatio());
    sheet.fill(Qt::white);
    QPainter(&sheet).drawImage(QPointF(), image);
    return sheet;
}

}  // namespace

KTVGraphicsContext* KTVGraphicsContext::currentContext()
{
    return theContext();
}

KTVGraphicsContext* KTVGraphicsContext::setCurrentContext(KTVGraphicsContext* context)
{
    return std::exchange(theContext(), context);
}

QPointF KTVGraphicsContext::toPainter(const QPointF& lowerLeft, double height) const
{
    // The painter wants the upper left corner, counted downward.
    const double lowerEdge = isFlipped() ? lowerLeft.y() : m_height - lowerLeft.y();
    return {lowerLeft.x(), lowerEdge - height};
}

void KTVGraphicsContext::copyImage(const QImage& image, const QPointF& point, const QRectF& source, double opacity)
{
    const QSizeF size = image.deviceIndependentSize();
    const QRectF part = source & QRectF(QPointF(), size);
    if (image.isNull() || part.isEmpty())
        return;
    const QPointF corner = toPainter(point + (part.topLeft() - source.topLeft()), part.height());
    const double density = image.devicePixelRatio();
    const QRectF pixels(part.x() * density, (size.height() - part.bottom()) * density, part.width() * density,
                        part.height() * density);
    m_painter->save();
    m_painter->setOpacity(opacity);
    m_painter->setRenderHint(QPainter::SmoothPixmapTransform);
    // Paper cannot become transparent, and print devices support no other composition mode.
    if (m_surface == Surface::Pixels && m_painter->paintEngine()->hasFeature(QPaintEngine::PorterDuff))
        m_painter->setCompositionMode(QPainter::CompositionMode_Source);
    m_painter->drawImage(QRectF(corner, part.size()), m_surface == Surface::Paper ? onWhite(image) : image, pixels);
    m_painter->restore();
}

void KTVGraphicsContext::drawText(const QString& text, const QPointF& point, const QFont& font, const QColor& color)
{
    const QFontMetricsF metrics(font);
    const QPointF corner = toPainter(point, metrics.height());
    m_painter->save();
    m_painter->setFont(font);
    m_painter->setPen(color);
    m_painter->drawText(corner + QPointF(0, metrics.ascent()), text);
    m_painter->restore();
}

QSizeF boundingSizeOfText(const QString& text, const QSizeF& box, int options, const QFont& font)
{
    const QFontMetricsF metrics(font);
    const double height = (options & KTVStringUsesFontLeading) != 0 ? metrics.lineSpacing() : metrics.height();
    return QSizeF(metrics.horizontalAdvance(text), height).boundedTo(box);
}

QFont pageFont(const QString& name, double points)
{
    QFont font(QFontDatabase::hasFamily(name) ? name : QStringLiteral("Helvetica"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(points))));  // one pixel of a page is one point
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}
