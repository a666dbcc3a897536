// Views that come into the window: of links, and of figures that are opened or dropped.
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
    if (!isFigure(file))
        return false;
    const std::optional<ShownView> view = viewInFile(file);
    if (!view) {
        showAlert(
            tr("The figure cannot be opened as a view"),
            tr("“%1” does not tell what it shows: it was not made by Plotix, or what it shows was left out of it.")
                .arg(QFileInfo(file).fileName()));
        return true;
    }
    if (view->siteFile == QFileInfo(m_controller->siteDocument()->path()).fileName())
        showView(*view);
    else
        emit openViewRequested(*view, QFileInfo(file).absolutePath());
    return true;
}

}  // namespace plotix
