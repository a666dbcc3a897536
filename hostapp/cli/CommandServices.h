#pragma once

#include "hostapp/site/FigureRecipe.h"
#include "hostapp/site/ServedSites.h"
#include "hostapp/site/StoredReport.h"
#include "hostapp/site/TrendCase.h"
#include "hostapp/site/TrendRequest.h"

#include <QtCore/QByteArray>

#include <functional>

/// What the command line needs from the rest of the program: the site window and the plug-in module.
///
/// The composition root *owns* the implementation; commands *borrow* it. Main thread only, inside a QApplication.
/// Operations throw ReportableError with one line for people; the command line prints it and exits with status 1.
namespace plotix {

/// The site window, or a picture of it.
struct OpenRequest {
    QString site;                             ///< path of an existing site document; empty when there are `imports`
    QStringList imports{};                    ///< files of measurements; the user is asked for the site they go into
    std::optional<ShownView> view{};          ///< to be shown; without `site` the user is asked for its site
    QString screenshot;                       ///< PNG file to save the whole window in, then exit; empty: none
    QSize screenshotSize = kUsualWindowSize;  ///< of the window, points
};

/// Called with 0…1; answers false to stop.
using CommandProgress = std::function<bool(double fraction)>;

class CommandServices {
public:
    virtual ~CommandServices() = default;

    /// Whether windows can be shown.
    virtual bool hasDisplay() const = 0;

    /// Shows the site window and runs until the program quits (or the picture is saved); answers the exit status.
    virtual int open(const OpenRequest& request) = 0;

    /// Fetches, draws and answers the bytes of the PNG or PDF file. The caller writes them.
    virtual QByteArray render(const RenderRequest& request) = 0;

    /// Lays out the report and answers the bytes of the PDF file. The caller writes them.
    virtual QByteArray report(const ReportRequest& request) = 0;

    /// What goes into a case of a trend. The caller writes it.
    virtual CasePlan planCase(const CaseRequest& request) = 0;

    /// Says the addresses, then shows the sites' views to browsers until the user interrupts or the system asks to end.
    virtual void serve(const ServeRequest& request) = 0;

    /// Archives a new trend view in the document, after those it has.
    virtual void storeTrend(const TrendRequest& trend) = 0;

    /// The program's own progress display, such as a window; empty: it has none, and a terminal is used instead.
    /// `title` is for people. The display ends when the handler is destroyed.
    virtual CommandProgress makeProgress(const QString& title) = 0;
};

}  // namespace plotix
