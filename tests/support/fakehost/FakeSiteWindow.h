#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"
#include "plugins/PlotixPlugIn/host/KTVSiteWindowController.h"
#include "tests/support/fakehost/CallLog.h"

#include <functional>
#include <memory>
#include <vector>

/// The fake site window with its document, windows and source list. Main thread only, except that other threads may ask
/// for the items while the main thread leaves the list alone.
namespace fakehost {

class FakeSourceListItem : public KTVSourceListItem {
public:
    explicit FakeSourceListItem(std::shared_ptr<KTVPlugIn> plugIn) : m_plugIn(std::move(plugIn)) {}
    std::shared_ptr<KTVPlugIn> representedObject() const override { return m_plugIn; }
    QString title() const override;  ///< the plug-in's title, or its name when it has none

private:
    std::shared_ptr<KTVPlugIn> m_plugIn;
};

/// One window showing one plug-in, or none. Owns the window.
class FakeWindowController : public KTVWindowController {
public:
    explicit FakeWindowController(std::shared_ptr<KTVPlugIn> contentViewController);
    std::shared_ptr<KTVPlugIn> contentViewController() const override { return m_contentViewController; }
    QWidget* window() const override { return m_window.get(); }

private:
    std::shared_ptr<KTVPlugIn> m_contentViewController;
    std::unique_ptr<QWidget> m_window;
};

class FakeSiteDocument : public KTVSiteDocument {
public:
    std::vector<std::shared_ptr<KTVWindowController>> windowControllers() const override { return m_controllers; }
    void addWindowController(std::shared_ptr<KTVWindowController> controller)
    {
        m_controllers.push_back(std::move(controller));
    }
    void removeWindowControllers() { m_controllers.clear(); }

private:
    std::vector<std::shared_ptr<KTVWindowController>> m_controllers;
};

/// Owns the site window, a real widget of 800 × 600 that is never shown. Logs "siteWindow.addPlugIn NAME" and
/// "siteWindow.openInSeparateWindow TITLE".
class FakeSiteWindowController : public KTVSiteWindowController {
public:
    FakeSiteWindowController(KTVAgentPtr agent, CallLog* log);

    QWidget* window() const override { return m_window.get(); }
    std::shared_ptr<KTVSiteDocument> document() const override { return m_document; }
    KTVAgentPtr agent() const override { return m_agent; }
    std::vector<KTVSourceListItemPtr> itemsWithRepresentedObjectsOfClass(const QString& className) const override;
    void addPlugIn(const std::shared_ptr<KTVPlugIn>& plugIn, bool select) override;
    KTVSourceListItemPtr findSourceListItemWithRepresentedObject(const KTVPlugIn* plugIn) const override;
    void openInSeparateWindow(const KTVSourceListItemPtr& item) override;

    FakeSiteDocument& fakeDocument() { return *m_document; }
    const std::vector<KTVSourceListItemPtr>& items() const { return m_items; }
    /// Runs whenever a plug-in is being added, before the list changes.
    void beforeAdding(std::function<void(KTVPlugIn& plugIn)> action) { m_beforeAdding = std::move(action); }
    const KTVSourceListItemPtr& selectedItem() const { return m_selectedItem; }  ///< null for none
    void closeWindow() { m_window.reset(); }                                     ///< from now on there is no window

private:
    KTVAgentPtr m_agent;
    CallLog* m_log;  // borrowed
    std::unique_ptr<QWidget> m_window;
    std::shared_ptr<FakeSiteDocument> m_document;
    std::vector<KTVSourceListItemPtr> m_items;
    KTVSourceListItemPtr m_selectedItem;
    std::function<void(KTVPlugIn&)> m_beforeAdding;
};

}  // namespace fakehost
