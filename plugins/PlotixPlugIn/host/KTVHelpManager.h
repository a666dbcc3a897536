#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QString>

/// Opens the help at an anchor. The host *owns* the single manager. Main thread only.
class KTVHOST_EXPORT KTVHelpManager {
public:
    virtual ~KTVHelpManager();
    static KTVHelpManager* sharedHelpManager();  ///< never null: does nothing until a host is installed
    virtual void openHelpAnchor(const QString& anchor) = 0;
};
