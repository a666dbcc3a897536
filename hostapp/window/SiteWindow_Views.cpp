// Views that come into the window: of links, and of figures that are dropped.
//
// A figure of another site is shown in that site's window.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/window/ViewSite.h"

#include <QtCore/QFileInfo>

namespace plotix {

void SiteWindow::showView(const ShownView& view)
{
    try {
        m_controller->showView(view);
    } catch (const ReportableError& error) {
        showAlert(tr("The view cannot be shown"), error.message());
    }
}

bool SiteWindow::openFigure(const QString& file)
{
    const std::optional<ShownView> view = viewInFile(file);
    if (!view)
        return false;
    if (view->siteFile == QFileInfo(m_controller->siteDocument()->path()).fileName())
        showView(*view);
    else
        emit openViewRequested(*view, QFileInfo(file).absolutePath());
    return true;
}

}  // namespace plotix
