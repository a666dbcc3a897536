#pragma once

#include "hostapp/window/SiteWindow.h"

#include <QtGui/QImage>

/// A picture of a whole site window, taken when its trend is drawn. Main thread only.
namespace plotix {

/// Shows the window at `size` points, waits until every record asked for has arrived and been drawn, and answers the
/// picture. A site without a trend answers its empty state.
QImage pictureOfWindow(SiteWindow& window, const QSize& size);

}  // namespace plotix
