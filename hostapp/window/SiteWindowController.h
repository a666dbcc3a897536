#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/site/PlugInStore.h"
#include "hostapp/site/SourceListModel.h"
#include "hostapp/site/WindowMemory.h"
#include "hostapp/window/SeparateWindow.h"
#include "plugins/PlotixPlugIn/host/KTVSiteWindowController.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>

/// What stands behind a site window: the site's trend views, kept in the document as they change.
///
/// *Shares* the document, *owns* the source list, *shares* the plug-ins, *borrows* the module and the window. Plug-ins
/// borrow it, so it lets go of them before it ends. Main thread only, except `itemsWithRepresentedObjectsOfClass`.
namespace plotix {

class SiteWindowController : public QObject, public KTVSiteWindowController {
    Q_OBJECT
public:
    SiteWindowController(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module);
    ~SiteWindowController() override;

    QWidget* window() const override { return m_window; }
    void setWindow(QWidget* window) { m_window = window; }
    std::shared_ptr<KTVSiteDocument> document() const override { return m_document; }
    const std::shared_ptr<SiteDocument>& siteDocument() const { return m_document; }
    KTVAgentPtr agent() const override;  ///< the site's first; null while it has none

    std::vector<KTVSourceListItemPtr> itemsWithRepresentedObjectsOfClass(const QString& className) const override;
    void addPlugIn(const KTVPlugInPtr& plugIn, bool select) override;
    KTVSourceListItemPtr findSourceListItemWithRepresentedObject(const KTVPlugIn* plugIn) const override;
    void openInSeparateWindow(const KTVSourceListItemPtr& item) override;

    SourceListModel& sourceList() { return m_sourceList; }

    /// Makes the archived plug-ins and lists them in `order` (identifiers; those not named come last); answers how many
    /// could not be made. Once, before the window shows.
    int loadPlugIns(const QStringList& order = {});

    /// What stands in the toolbar and not in the list: one plug-in of the module's toolbar class for each agent,
    /// archived with the others. Empty when the module has no such class, and before `loadPlugIns`.
    const std::vector<KTVPlugInPtr>& toolbarPlugIns() const { return m_toolbarPlugIns; }

    /// Makes a trend view through the module and adds it, selected. Null when the module declines.
    KTVPlugInPtr newTrend(const std::shared_ptr<SiteAgent>& agent, const KTVPropertyList& properties, OptionalDate from,
                          OptionalDate to, const QString& title);
    void removePlugIn(const KTVPlugInPtr& plugIn);
    /// Lists a plug-in that was removed again, at a row, and selects it.
    void restorePlugIn(const KTVPlugInPtr& plugIn, int row);

    /// As above, at a place kept by `separateTrends`; without one the window stands where the desktop puts it.
    void openInSeparateWindow(const KTVPlugInPtr& plugIn, const QByteArray& geometry);
    /// The trends in windows of their own, with the places of these windows.
    std::vector<SeparateTrend> separateTrends() const;
    void closeSeparateWindows();  ///< at once, giving the views back

    SeparateWindow* separateWindowOf(const KTVPlugIn* plugIn) const;  ///< null while the site window shows it

    /// Stores what changed since; failures are told by `storingFailed`. A document that may only be read stores
    /// nothing.
    void storeAll();

signals:
    void selectionRequested(const KTVPlugInPtr& plugIn);
    void toolbarPlugInsChanged();
    void separateWindowChanged(const KTVPlugInPtr& plugIn);  ///< opened or closed
    void storingFailed(const QString& message);

private:
    void joinAgents();
    void store(const KTVPlugIn& plugIn);
    void removeFromDocument();
    void adoptToolbarPlugIn(const KTVPlugInPtr& plugIn);
    void makeMissingToolbarPlugIns();
    void releaseToolbarPlugIns();
    void closeSeparateWindow(const KTVPlugIn* plugIn);
    void publishWindowControllers();

    std::shared_ptr<SiteDocument> m_document;
    KTVPlugInModule* m_module;
    PlugInStore m_store;
    std::vector<KTVPlugInPtr> m_toRemove;  ///< from the document, as soon as it can be written again
    SourceListModel m_sourceList;
    std::vector<KTVPlugInPtr> m_toolbarPlugIns;
    bool m_isLoaded = false;
    std::vector<std::shared_ptr<SeparateWindow>> m_separateWindows;
    QPointer<QWidget> m_window;
};

}  // namespace plotix
