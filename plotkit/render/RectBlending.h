#pragma once

#include <QtCore/QRect>
#include <QtGui/QColor>
#include <QtGui/QImage>

/// Fills a rectangle of pixels as the toolkit's painter does, bit for bit, but on the calling thread.
///
/// The painter shares out whatever has many rows among threads, the one pixel of a grid line's row too: waking a thread
/// costs more than blending such a line. One thread at a time.
namespace plotkit {

/// Source over, within the image. Requires: premultiplied or opaque 32-bit pixels, not shared.
void blendRect(QImage& image, const QRect& rect, const QColor& color);

}  // namespace plotkit
