// Views on their way out of the window and back into it: pictures and links in the clipboard, figures that are dropped.
//
// A figure of another site is shown in that site's window.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/ShownTrend.h"
#include "hostapp/site/ViewLink.h"
#include "hostapp/window/ViewSite.h"

#include <QtCore/QFileInfo>
#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStatusBar>

namespace plotix {

namespace {

constexpr int kTellTime = 10'000;     // milliseconds
constexpr double kCopiedDensity = 2;  // pixels a point

}  // namespace

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

void SiteWindow::copyPicture()
{
    const KTVPlugInPtr trend = trendInFront();
    const QImage picture = graphImage(trend.get(), kUsualGraphSize, kCopiedDensity, titleOf(*trend));
    if (picture.isNull())
        return showAlert(tr("There is no picture to copy"), tr("The trend shows no graph yet. Refresh it."));
    QApplication::clipboard()->setImage(picture);
    statusBar()->showMessage(tr("The picture is in the clipboard."), kTellTime);
}

void SiteWindow::copyLink()
{
    const ShownView view = viewOf(trendInFront(), *m_controller->siteDocument());
    QApplication::clipboard()->setText(linkOf(view));
    statusBar()->showMessage(
        tr("The link is in the clipboard; “plotix open LINK” shows this view to whoever has %1.").arg(view.siteFile),
        kTellTime);
}

}  // namespace plotix
