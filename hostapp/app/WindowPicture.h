#pragma once

#include "hostapp/window/SiteWindow.h"

#include <QtGui/QImage>

/// Waits for a site window's trend to be drawn, and takes a picture of the window. Free functions; main thread only.
namespace plotix {

/// Waits until every record the shown window asked for has arrived and is in place; the next painting shows it.
void waitForTrend(SiteWindow& window);

/// Shows the window at `size` points, waits until every record asked for has arrived and been drawn, and answers the
/// picture. A site without a trend answers its empty state.
QImage pictureOfWindow(SiteWindow& window, const QSize& size);

}  // namespace plotix
