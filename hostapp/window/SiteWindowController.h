#pragma once

#include "hostapp/site/WindowMemory.h"
#include "hostapp/site/WorkingSite.h"
#include "hostapp/window/SeparateWindow.h"

#include <QtCore/QPointer>

/// The controller of a site window: the open site, its window, and the trends in windows of their own.
///
/// *Owns* the separate windows, *borrows* the site window. Main thread only, with the exceptions of WorkingSite.
namespace plotix {

class SiteWindowController : public WorkingSite {
    Q_OBJECT
public:
    SiteWindowController(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module);
    ~SiteWindowController() override;

    QWidget* window() const override { return m_window; }
    void setWindow(QWidget* window) { m_window = window; }

    void openInSeparateWindow(const KTVSourceListItemPtr& item) override;

    /// As above, with a geometry from `separateTrends`; if it is empty, the desktop places the window.
    void openInSeparateWindow(const KTVPlugInPtr& plugIn, const QByteArray& geometry);
    /// The trends in windows of their own, with the geometry of these windows.
    std::vector<SeparateTrend> separateTrends() const;
    void closeSeparateWindows();  ///< at once, giving the views back

    SeparateWindow* separateWindowOf(const KTVPlugIn* plugIn) const;  ///< null while the site window shows it

signals:
    void separateWindowChanged(const KTVPlugInPtr& plugIn);  ///< opened or closed

protected:
    void letGo(const KTVPlugInPtr& plugIn) override;
    QString lookOfNewTrends() const override;
    void showInPlaceOf(const KTVPlugInPtr& old, const KTVPlugInPtr& fresh) override;

private:
    void closeSeparateWindow(const KTVPlugIn* plugIn);
    void publishWindowControllers();

    std::vector<std::shared_ptr<SeparateWindow>> m_separateWindows;
    QPointer<QWidget> m_window;
};

}  // namespace plotix
