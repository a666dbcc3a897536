#pragma once

#include "hostapp/site/WorkingSite.h"

/// A site without a window: its archived views, loaded at the usual size and never shown. Stores nothing: the site
/// stays as it was left. Main thread only, with the exceptions of WorkingSite.
namespace plotix {

class HeadlessSite : public WorkingSite {
    Q_OBJECT
public:
    HeadlessSite(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module);

    /// Makes the archived views and waits for the records they show at first. Call once.
    void load();
    /// From now on moves the trends that the site's window follows, so that they end now, and shows what others change
    /// in the site. Call after `load`.
    void follow();
    int unreadableCount() const { return m_unreadableCount; }  ///< archived views that could not be made

private:
    int m_unreadableCount = 0;
};

}  // namespace plotix
