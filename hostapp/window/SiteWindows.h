#pragma once

#include "hostapp/window/SiteWindow.h"

#include <functional>

/// The site windows that are open. *Owns* them until they are closed. Main thread only.
namespace plotix {

class SiteWindows : public QObject {
    Q_OBJECT
public:
    using DocumentOpened = std::function<void(const std::shared_ptr<SiteDocument>&)>;

    /// `documentOpened` is told every document before its window is made.
    SiteWindows(const WindowServices& services, DocumentOpened documentOpened);
    ~SiteWindows() override;

    /// Opens the site's window, or brings forward the one it has. Throws ReportableError. The window is not shown yet.
    SiteWindow* open(const QString& path);

    /// Makes a new site and opens its window. Throws ReportableError, also when the file exists.
    SiteWindow* create(const QString& path);

    std::vector<SiteWindow*> windows() const;

private:
    void openView(const ShownView& view, const QString& folder, QWidget* from);
    SiteWindow* openDocument(const std::shared_ptr<SiteDocument>& document);
    void openFromMenu(const QString& path, SiteWindow* (SiteWindows::*opening)(const QString&), QWidget* from);

    WindowServices m_services;
    DocumentOpened m_documentOpened;
    std::vector<QPointer<SiteWindow>> m_windows;
};

}  // namespace plotix
