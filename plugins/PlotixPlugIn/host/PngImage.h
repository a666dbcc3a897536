#pragma once

#include <QtCore/QByteArray>
#include <QtGui/QImage>

/// An image as a PNG file: what exports, reports, previews and the web hand out. Pure; any thread.
namespace plotix {

/// The same pixels give the same bytes. A null image answers no data.
QByteArray pngOfImage(const QImage& image);

}  // namespace plotix
