#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <memory>

class QWidget;

class KTVPlugIn;

/// One window of a site document, and the plug-in it shows, if any. The document and its callers *share* it. Main
/// thread only.
class KTVHOST_EXPORT KTVWindowController {
public:
    virtual ~KTVWindowController();
    virtual std::shared_ptr<KTVPlugIn> contentViewController() const = 0;
    virtual QWidget* window() const = 0;  ///< borrowed
};
