// Views on their way out of the window and back into it: pictures and links in the clipboard, figures that are dropped.
//
// A figure of another site is shown in that site's window.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/ShownTrend.h"
#include "hostapp/site/ViewLink.h"
#include "hostapp/window/CopiedRecords.h"
#include "hostapp/window/ViewSite.h"

#include <QtCore/QFileInfo>
#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStatusBar>

#include <algorithm>

namespace plotix {

namespace {

constexpr int kTellTime = 10'000;     // milliseconds
constexpr double kCopiedDensity = 2;  // pixels a point

/// Between the marks A and B of a trend, in order; nothing while one is not set.
std::optional<std::pair<double, double>> markedSpan(const KTVPlugIn* trend)
{
    const QVariantMap marks = reading(trend).value_or(QVariantMap()).value(QStringLiteral("marks")).toMap();
    if (!marks.contains(QStringLiteral("a")) || !marks.contains(QStringLiteral("b")))
        return std::nullopt;
    return std::minmax({marks.value(QStringLiteral("a")).toDouble(), marks.value(QStringLiteral("b")).toDouble()});
}

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

void SiteWindow::copyLink(Linked span)
{
    const KTVPlugInPtr trend = trendInFront();
    ShownView view = viewOf(trend, *m_controller->siteDocument());
    if (span == Linked::Marked) {
        const auto marked = markedSpan(trend.get());
        if (!marked)
            return showAlert(tr("There is no stretch between marks"), tr("Set both marks, A and B, first."));
        view.from = Date{marked->first};
        view.to = Date{marked->second};
    }
    QApplication::clipboard()->setText(linkOf(view));
    statusBar()->showMessage(
        tr("The link is in the clipboard; “plotix open LINK” shows this view to whoever has %1.").arg(view.siteFile),
        kTellTime);
}

void SiteWindow::copyRecords()
{
    const KTVPlugInPtr trend = trendInFront();
    SiteDocument& document = *m_controller->siteDocument();
    const ShownView view = viewOf(trend, document);
    const auto agent = document.agentNamed(view.agent);
    try {
        const QString records = agent && view.from && view.to ? copiedRecords(document, *agent, shownKeys(trend.get()),
                                                                              {view.from->seconds, view.to->seconds})
                                                              : QString();
        if (records.isEmpty())
            return showAlert(tr("There are no records to copy"), tr("The trend shows none in this span."));
        QApplication::clipboard()->setText(records);
        statusBar()->showMessage(tr("The records shown are in the clipboard."), kTellTime);
    } catch (const std::exception& error) {
        showAlert(tr("The records could not be copied"), QString::fromUtf8(error.what()));
    }
}

}  // namespace plotix
