#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/site/NewTrend.h"
#include "hostapp/site/PlugInStore.h"
#include "hostapp/site/SourceListModel.h"
#include "hostapp/site/TrendFollower.h"
#include "plugins/PlotixPlugIn/host/KTVSiteWindowController.h"

#include <QtCore/QObject>

/// A site at work: its document, and the plug-ins that show it. What every outlet asks of a site stands here.
///
/// By itself it has no window; a site window derives from it and adds one. *Shares* the document and the plug-ins,
/// *borrows* the module. Plug-ins borrow it, so it lets go of them before it ends. Main thread only, except
/// `itemsWithRepresentedObjectsOfClass` and `sourceList().items()`.
namespace plotix {

class WorkingSite : public QObject, public KTVSiteWindowController {
    Q_OBJECT
public:
    enum class Use {
        OnScreen,  ///< stored as it changes; a followed trend rests while it is not seen
        Elsewhere  ///< on paper or in browsers: nothing is stored, and a followed trend never rests
    };

    WorkingSite(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module, Use use);
    ~WorkingSite() override;

    QWidget* window() const override { return nullptr; }
    std::shared_ptr<KTVSiteDocument> document() const override { return m_document; }
    const std::shared_ptr<SiteDocument>& siteDocument() const { return m_document; }
    KTVAgentPtr agent() const override;  ///< the site's first; null while it has none

    std::vector<KTVSourceListItemPtr> itemsWithRepresentedObjectsOfClass(const QString& className) const override;
    void addPlugIn(const KTVPlugInPtr& plugIn, bool select) override;
    KTVSourceListItemPtr findSourceListItemWithRepresentedObject(const KTVPlugIn* plugIn) const override;
    void openInSeparateWindow(const KTVSourceListItemPtr&) override {}

    SourceListModel& sourceList() { return m_sourceList; }
    const SourceListModel& sourceList() const { return m_sourceList; }

    /// Makes the archived plug-ins and lists them as the site's window did last, those it did not know behind the
    /// others; answers how many could not be made. Once.
    int loadPlugIns();

    /// What stands in the toolbar and not in the list: one plug-in of the module's toolbar class for each agent,
    /// archived with the others. Empty when the module has no such class, and before `loadPlugIns`.
    const std::vector<KTVPlugInPtr>& toolbarPlugIns() const { return m_toolbarPlugIns; }

    /// Makes a trend view through the module and adds it, selected. Null when the module declines.
    KTVPlugInPtr newTrend(const std::shared_ptr<SiteAgent>& agent, const KTVPropertyList& properties, OptionalDate from,
                          OptionalDate to, const QString& title);
    /// The same; followed from the beginning where that is planned.
    KTVPlugInPtr newTrend(const std::shared_ptr<SiteAgent>& agent, const TrendPlan& plan);
    virtual void removePlugIn(const KTVPlugInPtr& plugIn);
    /// Lists a plug-in that was removed again, at a row, and selects it.
    void restorePlugIn(const KTVPlugInPtr& plugIn, int row);

    /// Loads the views nobody has looked at yet, at the usual size; that fetches what they show at first.
    void loadViews();
    /// Runs the event loop until every record asked for is in place; what could not be read is passed over.
    void waitForRecords() const;
    /// The same; throws ReportableError where something could not be read.
    void requireRecords() const;

    TrendFollower& follower() { return m_follower; }
    const TrendFollower& follower() const { return m_follower; }
    /// Follows the trends that the site's window followed when it was left.
    void followAgain();
    QStringList followedTrends() const;  ///< identifiers of those that are followed just now, as listed

    /// Stores what changed since; failures are told by `storingFailed`. A document that may only be read stores
    /// nothing.
    void storeAll();

signals:
    void selectionRequested(const KTVPlugInPtr& plugIn);
    void toolbarPlugInsChanged();
    void storingFailed(const QString& message);

protected:
    /// For whoever derives from it, to be called while it still stands; what happens at the end in any case.
    void letGoOfPlugIns();

private:
    void joinAgents();
    void store(const KTVPlugIn& plugIn);
    void removeFromDocument();
    bool isStored() const;
    void makeMissingToolbarPlugIns();
    bool hasToolbarPlugInOf(const KTVAgentPtr& agent) const;

    std::shared_ptr<SiteDocument> m_document;
    KTVPlugInModule* m_module;
    Use m_use;
    PlugInStore m_store;
    std::vector<KTVPlugInPtr> m_toRemove;  ///< from the document, as soon as it can be written again
    SourceListModel m_sourceList;
    std::vector<KTVPlugInPtr> m_toolbarPlugIns;
    TrendFollower m_follower;
    bool m_isLoaded = false;
};

}  // namespace plotix
