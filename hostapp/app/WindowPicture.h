#pragma once

#include "hostapp/window/SiteWindow.h"

#include <QtGui/QImage>

/// When a site window's trend is drawn, and a picture of the whole window then. Main thread only.
namespace plotix {

/// Waits until every record the shown window asked for has arrived and is in place; the next painting shows it.
void waitForTrend(SiteWindow& window);

/// Shows the window at `size` points, waits until every record asked for has arrived and been drawn, and answers the
/// picture. A site without a trend answers its empty state.
QImage pictureOfWindow(SiteWindow& window, const QSize& size);

}  // namespace plotix
