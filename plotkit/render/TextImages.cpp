#include "plotkit/render/TextImages.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace plotkit {

namespace {

/// More texts than a picture shows; beyond, everything is forgotten and what is shown comes back with the next frame.
constexpr std::size_t kMostKept = 400;
/// Larger texts are drawn directly, without an image.
constexpr double kLargestSide = 2048;  // pixels
constexpr double kReach = 4;           // points a halo or a slanted glyph reaches beyond its box

QRectF onWholePixels(const QRectF& box)
{
    return {QPointF(std::round(box.left()), std::round(box.top())), box.size()};
}

}  // namespace

TextImages::StyleKey TextImages::keyOf(const CPTTextStyle& style)
{
    return {style.fontName, style.fontSize, style.color.isValid() ? style.color.rgba() : 0U};
}

QSizeF TextImages::sizeOf(const QString& text, const CPTTextStyle& style)
{
    if (m_sizes.size() > kMostKept)
        m_sizes.clear();
    const auto [entry, isNew] = m_sizes.try_emplace({text, keyOf(style)});
    if (isNew)
        entry->second = sizeOfText(text, style);
    return entry->second;
}

TextImages::Drawn TextImages::drawn(const PlacedText& text, const CPTTextStyle& style, TextPlacing placing)
{
    const double reach = std::ceil(kReach * placing.density + std::max(0.0, style.fontSize) * placing.density / 2);
    const QRectF box(QPointF(reach, reach), placing.box.size());
    Drawn drawn{QImage(int(std::ceil(box.width() + 2 * reach)), int(std::ceil(box.height() + 2 * reach)),
                       QImage::Format_ARGB32_Premultiplied),
                QPoint(-int(reach), -int(reach))};
    drawn.image.fill(Qt::transparent);
    QPainter painter(&drawn.image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    placing.box = box;
    drawPlacedText(painter, text, style, placing);
    return drawn;
}

void TextImages::draw(QPainter& painter, const PlacedText& text, const CPTTextStyle& style, TextPlacing placing)
{
    if (!style.color.isValid() || text.text.isEmpty())
        return;
    placing.box = onWholePixels(placing.box);
    const QSizeF size = placing.box.size();
    const double fontSize = style.fontSize * placing.density;
    if (!(std::max({size.width(), size.height(), fontSize}) < kLargestSide)) {
        drawPlacedText(painter, text, style, placing);
        return;
    }
    if (m_images.size() > kMostKept)
        m_images.clear();
    const auto [entry, isNew] =
        m_images.try_emplace({text.text, keyOf(style), size.width(), size.height(), placing.density,
                              int(text.alignment), text.readsUpward, placing.hasHalo});
    if (isNew)
        entry->second = drawn(text, style, placing);
    painter.drawImage(placing.box.topLeft() + entry->second.corner, entry->second.image);
}

}  // namespace plotkit
