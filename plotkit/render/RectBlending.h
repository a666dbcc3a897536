#pragma once

#include <QtCore/QRect>
#include <QtGui/QColor>
#include <QtGui/QImage>

/// Fills a rectangle of pixels as the toolkit's painter does, bit for bit, but on the calling thread.
///
/// The painter spreads every rectangle of many rows over threads, even a grid line one pixel wide: waking a thread
/// costs more than blending such a line. One thread at a time.
namespace plotkit {

/// Source over, within the image. Requires: premultiplied or opaque 32-bit pixels, not shared.
void blendRect(QImage& image, const QRect& rect, const QColor& color);

}  // namespace plotkit
