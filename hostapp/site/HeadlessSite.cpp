#include "hostapp/site/HeadlessSite.h"

namespace plotix {

HeadlessSite::HeadlessSite(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module)
    : WorkingSite(std::move(document), module, Use::Elsewhere)
{
}

void HeadlessSite::load()
{
    m_unreadableCount = loadPlugIns();
    loadViews();
    waitForRecords();
}

void HeadlessSite::follow()
{
    keepUp();
    followAgain();
    waitForRecords();
}

}  // namespace plotix
