#pragma once

#include "plugins/PlotixPlugIn/host/KTVWindowController.h"

#include <memory>
#include <vector>

/// One site's document, as plug-ins see it: its windows. The host and its callers *share* it. Main thread only.
class KTVHOST_EXPORT KTVSiteDocument {
public:
    virtual ~KTVSiteDocument();
    virtual std::vector<std::shared_ptr<KTVWindowController>> windowControllers() const = 0;
};
