#include "hostapp/app/ProgramServices.h"

#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/app/WindowPicture.h"
#include "hostapp/core/OutputFile.h"
#include "hostapp/site/MakeTrend.h"
#include "hostapp/site/ServedSites.h"
#include "hostapp/site/StoredReport.h"
#include "hostapp/site/TrendRenderer.h"
#include "hostapp/window/Appearance.h"
#include "hostapp/window/ImportOffer.h"
#include "hostapp/window/ScreenFit.h"
#include "hostapp/window/SiteWindows.h"
#include "hostapp/window/ViewSite.h"
#include "plugins/PlotixPlugIn/host/PngImage.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressDialog>

#include <iostream>

namespace plotix {

namespace {

/// If set, `plotix open` ends as soon as its trend is on the screen: this is how the start is measured.
constexpr auto kQuitWhenDrawn = "PLOTIX_QUIT_WHEN_DRAWN";

/// Prints "drawn" when the trend is drawn, so that the time for ending can be measured separately.
int quitWhenDrawn(SiteWindow& window)
{
    waitForTrend(window);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);  // what is still to be painted
    QGuiApplication::sync();
    std::cout << "drawn" << std::endl;
    closeAllSites(Closing::Ordered);
    return 0;
}

/// The site asked for, or the one that the user chooses for files to import; null: none.
SiteWindow* windowFor(const OpenRequest& request, SiteWindows& windows)
{
    if (request.imports.isEmpty()) {
        const QString site = request.site.isEmpty() ? siteToShow(*request.view, {}, nullptr) : request.site;
        return site.isEmpty() ? nullptr : windows.open(site);
    }
    while (const std::optional<ImportOffer> chosen = askWhereToImport(request.imports.first())) {
        try {
            return chosen->isNew ? windows.create(chosen->site) : windows.open(chosen->site);
        } catch (const ReportableError& error) {
            QMessageBox::critical(nullptr, QApplication::applicationDisplayName(), error.message().toHtmlEscaped());
        }
    }
    return nullptr;
}

}  // namespace

bool ProgramServices::hasDisplay() const
{
    return m_composition.audience() == Composition::Audience::Desktop;
}

WindowServices ProgramServices::windowServices()
{
    return {m_composition.module(), &m_composition.userInterface(), &m_composition.helpManager(),
            &m_composition.webServing()};
}

int ProgramServices::open(const OpenRequest& request)
{
    if (request.screenshot.isEmpty() && !hasDisplay())
        throw ReportableError(
            QStringLiteral("There is no display to open a window on; use --screenshot FILE.png to get a "
                           "picture of it, or plotix render."));
    return request.screenshot.isEmpty() ? runWindow(request) : savePicture(request);
}

int ProgramServices::runWindow(const OpenRequest& request)
{
    applyAppearance(*qApp);
    const ScreenFit screenFit;
    SiteWindows windows(windowServices(), [this](const auto& document) { m_composition.documentOpened(document); });
    SiteWindow* const window = windowFor(request, windows);
    if (!window)
        return 0;  // the user wants none
    window->show();
    if (request.view)
        QTimer::singleShot(0, window, [window, view = *request.view] { window->showView(view); });
    if (!request.imports.isEmpty())
        QTimer::singleShot(0, window, [window, files = request.imports] { window->askAndImportAll(files); });
    if (qEnvironmentVariableIsSet(kQuitWhenDrawn))
        return quitWhenDrawn(*window);
    QApplication::setQuitOnLastWindowClosed(true);
    const StopRequest stop;
    QObject::connect(&stop, &StopRequest::requested, qApp, [] {
        closeAllSites(Closing::Ordered);  // which stores them
        QApplication::quit();
    });
    return QApplication::exec();
}

int ProgramServices::savePicture(const OpenRequest& request)
{
    applyAppearance(*qApp);
    QApplication::setQuitOnLastWindowClosed(false);
    SiteWindows windows(windowServices(), [this](const auto& document) { m_composition.documentOpened(document); });
    SiteWindow& window = *windows.open(request.site);
    if (request.view) {
        window.controller().storeNothing();  // who takes a picture of a view does not ask for a trend
        window.controller().showView(*request.view);
    }
    const QImage picture = pictureOfWindow(window, request.screenshotSize);
    writeOutput(FileKind::Png, request.screenshot, pngOfImage(picture));
    return 0;
}

QByteArray ProgramServices::render(const RenderRequest& request)
{
    m_composition.documentOpened(request.trend.document);
    return TrendRenderer(m_composition.module()).render(request);
}

QByteArray ProgramServices::report(const ReportRequest& request)
{
    m_composition.documentOpened(request.document);
    return pdfOfStoredReport(request, m_composition.module());
}

CasePlan ProgramServices::planCase(const CaseRequest& request)
{
    return planOfStoredCase(request, m_composition.module());
}

void ProgramServices::serve(const ServeRequest& request)
{
    for (const auto& document : request.documents)
        m_composition.documentOpened(document);
    applyAppearance(*qApp);  // browsers get the same look as windows
    serveSites(request, m_composition.module());
}

void ProgramServices::storeTrend(const TrendRequest& trend)
{
    TrendRequest wanted = trend;
    if (hasDisplay()) {
        applyAppearance(*qApp);
        wanted.look = lookOfGraphs();
    }
    plotix::storeTrend(*m_composition.module(), wanted);
}

CommandProgress ProgramServices::makeProgress(const QString& title)
{
    if (!hasDisplay())
        return {};
    applyAppearance(*qApp);
    QApplication::setQuitOnLastWindowClosed(false);  // the site window comes after the progress window has gone
    constexpr int kSteps = 1000;
    auto dialog =
        std::make_shared<QProgressDialog>(title, QCoreApplication::translate("ProgramServices", "Cancel"), 0, kSteps);
    dialog->setWindowTitle(QApplication::applicationDisplayName());
    dialog->setMinimumDuration(0);
    dialog->setMinimumWidth(420);
    dialog->setAutoClose(false);
    dialog->setAutoReset(false);
    return [dialog](double fraction) {
        dialog->setValue(static_cast<int>(fraction * kSteps));
        QApplication::processEvents();
        return !dialog->wasCanceled();
    };
}

}  // namespace plotix
