#include "plugins/PlotixPlugIn/host/KTVMessageViewController.h"

#include "plugins/PlotixPlugIn/host/KTVHostServices.h"

KTVMessageViewController::~KTVMessageViewController() = default;

std::unique_ptr<KTVMessageViewController> KTVMessageViewController::create()
{
    return KTVHostServices::installed().makeMessageViewController();
}

void removeFromSuperview(QWidget* view)
{
    if (!view || !view->parentWidget())
        return;
    view->hide();
    view->setParent(nullptr);
}
