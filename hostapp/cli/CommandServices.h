#pragma once

#include "base/Date.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/print/Paper.h"

#include <QtCore/QByteArray>
#include <QtCore/QSize>

#include <functional>
#include <memory>
#include <optional>

/// What the command line needs from the rest of the program: the site window and the plug-in module.
///
/// The composition root *owns* the implementation; commands *borrow* it. Main thread only, inside a QApplication.
/// Operations throw ReportableError with one line for people; the command line prints it and exits with status 1.
namespace plotix {

/// A trend of some of an agent's properties over a fixed range.
struct TrendRequest {
    std::shared_ptr<SiteDocument> document;
    std::shared_ptr<SiteAgent> agent;
    KTVPropertyList properties;  ///< the agent's own objects, in the order asked
    OptionalDate from, to;       ///< absent: the plug-in's own default
    QString title;               ///< empty: none
};

/// A trend drawn into a file.
struct RenderRequest {
    enum class Format { Png, Pdf };

    TrendRequest trend;
    QSize size{1200, 600};  ///< points
    Format format = Format::Png;
    bool bare = false;  ///< through the off-screen class operation: theme axes only; always Png
};

/// The printed report of a view that is stored in the site.
struct ReportRequest {
    std::shared_ptr<SiteDocument> document;
    QString view;                ///< its title; empty: the only one
    std::optional<Paper> paper;  ///< absent: what is usual in the user's country
};

/// The site window, or a picture of it.
struct OpenRequest {
    QString site;                     ///< path of an existing site document
    QString screenshot;               ///< PNG file to save the whole window in, then exit; empty: none
    QSize screenshotSize{1280, 800};  ///< of the window, points
};

/// Sites to show on the web.
struct ServeRequest {
    std::vector<std::shared_ptr<SiteDocument>> documents;
    QString address = QStringLiteral("127.0.0.1");
    int port = 8123;    ///< 0: any that is free
    QString tokenFile;  ///< empty: without a token
    std::function<void(const QString& line)> say;
};

/// Called with 0…1; answers false to stop.
using CommandProgress = std::function<bool(double fraction)>;

class CommandServices {
public:
    virtual ~CommandServices() = default;

    /// Whether a window could be seen by anybody.
    virtual bool hasDisplay() const = 0;

    /// Shows the site window and runs until the program quits (or the picture is saved); answers the exit status.
    virtual int open(const OpenRequest& request) = 0;

    /// Fetches, draws and answers the bytes of the PNG or PDF file. The caller writes them.
    virtual QByteArray render(const RenderRequest& request) = 0;

    /// Lays out the report and answers the bytes of the PDF file. The caller writes them.
    virtual QByteArray report(const ReportRequest& request) = 0;

    /// Says the addresses, then shows the sites' views to browsers until the user interrupts or the system asks to end.
    virtual void serve(const ServeRequest& request) = 0;

    /// Archives a new trend view in the document, after those it has.
    virtual void storeTrend(const TrendRequest& trend) = 0;

    /// A way of its own to show that something long runs, such as a window; empty: there is none, and a terminal
    /// serves where there is one. `title` is for people. The display ends when the handler is destroyed.
    virtual CommandProgress makeProgress(const QString& title) = 0;
};

}  // namespace plotix
