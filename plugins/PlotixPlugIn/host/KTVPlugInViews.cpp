#include "plugins/PlotixPlugIn/host/KTVPlugInViews.h"

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtWidgets/QWidget>

void loadViewAtSize(KTVPlugIn& plugIn, const QSize& size)
{
    if (QWidget* view = plugIn.view())
        view->resize(size);
}

bool isViewVisible(KTVPlugIn& plugIn)
{
    return plugIn.isViewLoaded() && plugIn.view() && plugIn.view()->isVisible();
}
