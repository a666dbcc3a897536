#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QString>

#include <memory>

class KTVPlugIn;

/// One line of the site window's source list. *Shares* its plug-in; the list and its callers *share* it. Any thread may
/// hold one and ask it, as web requests do.
class KTVHOST_EXPORT KTVSourceListItem {
public:
    virtual ~KTVSourceListItem();
    virtual std::shared_ptr<KTVPlugIn> representedObject() const = 0;
    virtual QString title() const = 0;
};

using KTVSourceListItemPtr = std::shared_ptr<KTVSourceListItem>;
