#pragma once

#include <QtGui/QImage>

namespace plotkit {

/// An image as QImage makes it, its contents undefined; where it is large, memory comes in huge pages, which cost a
/// fraction of filling as many small ones for the first time. Null where there is no room. Any thread.
QImage freshImage(const QSize& pixels, QImage::Format format);

}  // namespace plotkit
