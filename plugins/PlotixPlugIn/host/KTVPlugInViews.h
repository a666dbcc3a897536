#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QSize>

class KTVPlugIn;

// What may be done with a plug-in's view by whoever knows no widgets. Main thread only.

/// Loads the view, which starts its first fetch, and gives it a size in points.
KTVHOST_EXPORT void loadViewAtSize(KTVPlugIn& plugIn, const QSize& size);

/// Whether the view is loaded and on the screen.
KTVHOST_EXPORT bool isViewVisible(KTVPlugIn& plugIn);
