#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtGui/QImage>

/// An image as a PNG file: what exports, reports, previews and the web hand out. Pure; any thread.

/// The same pixels give the same bytes. A null image answers no data.
QByteArray pngOfImage(const QImage& image);

/// Writes the same to an open file. False for a null image, and where not all of it could be written.
bool writePng(QIODevice& to, const QImage& image);
