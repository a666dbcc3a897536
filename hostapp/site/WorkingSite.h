#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/site/NewTrend.h"
#include "hostapp/site/PlugInStore.h"
#include "hostapp/site/RecordsWatch.h"
#include "hostapp/site/SourceListModel.h"
#include "hostapp/site/SpanReader.h"
#include "hostapp/site/TrendFollower.h"
#include "hostapp/site/TrendReading.h"
#include "plugins/PlotixPlugIn/host/KTVSiteWindowController.h"

#include <QtCore/QObject>

#include <functional>
#include <map>

/// An open site: its document, and the plug-ins that show it, with all that windows, the command line and the web need
/// of it.
///
/// By itself it has no window; a site window derives from it and adds one. *Shares* the document and the plug-ins,
/// *borrows* the module. Plug-ins borrow it, so it releases them before it is destroyed. Main thread only, except
/// `itemsWithRepresentedObjectsOfClass` and `sourceList().items()`.
namespace plotix {

struct ShownView;

class WorkingSite : public QObject, public KTVSiteWindowController {
    Q_OBJECT
public:
    enum class Use {
        OnScreen,  ///< changes are stored; a followed trend is not moved while it is invisible
        Elsewhere  ///< on paper or in browsers: nothing is stored, and a followed trend is always moved
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

    /// Makes the archived plug-ins and lists them in the order of the site's window, those it did not know last;
    /// answers how many could not be made. Call once.
    int loadPlugIns();

    /// The plug-ins in the toolbar, which are not in the list: one of the module's toolbar class for each agent,
    /// archived with the others. Empty when the module has no such class, and before `loadPlugIns`.
    const std::vector<KTVPlugInPtr>& toolbarPlugIns() const { return m_toolbarPlugIns; }

    /// Makes a trend view through the module and adds it, selected. Null when the module declines.
    KTVPlugInPtr newTrend(const std::shared_ptr<SiteAgent>& agent, const KTVPropertyList& properties, OptionalDate from,
                          OptionalDate to, const QString& title);
    /// The same; followed from the beginning if the plan says so.
    KTVPlugInPtr newTrend(const std::shared_ptr<SiteAgent>& agent, const TrendPlan& plan);
    /// Shows what a figure or a link tells: in the trend of this title and these properties, or in a new one. Throws
    /// ReportableError where the site does not have it.
    KTVPlugInPtr showView(const ShownView& view);
    /// The plug-in once more as it is now, with other dates: neither listed nor stored, its view not loaded. Null when
    /// the module declines.
    KTVPlugInPtr copyOf(const KTVPlugIn& plugIn, const MomentSpan& dates) const;
    void removePlugIn(const KTVPlugInPtr& plugIn);
    /// Puts a removed plug-in back into the list, at a row, and selects it.
    void restorePlugIn(const KTVPlugInPtr& plugIn, int row);

    /// Shows what was changed in the document's plug-ins: new ones, ones that are gone, and ones that differ, in the
    /// place of the old. What was changed here and is not stored yet is stored first, beside the other version where
    /// both were changed. Where the site is kept up with its file only; called by itself, and told, when others changed
    /// it.
    void takeInChanges();

    /// Loads the views that were never shown, at the usual size; loading fetches what they show at first.
    void loadViews();
    /// Runs the event loop until all fetches are answered and shown; failed ones are ignored.
    void waitForRecords() const;
    /// The same; throws ReportableError when a fetch failed.
    void requireRecords() const;
    /// Brings dates, graph and records of a trend together, for whatever leaves the screen and names a span. `wait`
    /// waits for records and answers false when the user gave up; so does this then. Throws ReportableError when they
    /// cannot be brought together.
    using Wait = std::function<bool()>;
    bool settle(KTVPlugIn& plugIn, Wanted wanted, const Wait& wait) const;
    void settle(KTVPlugIn& plugIn, Wanted wanted) const;  ///< waits as long as it takes

    TrendFollower& follower() { return m_follower; }
    const TrendFollower& follower() const { return m_follower; }
    /// Follows the trends that the site's window followed when it was left.
    void followAgain();
    QStringList followedTrends() const;                ///< identifiers of those followed now, in list order
    std::map<QString, QString> followedSpans() const;  ///< as WindowState has them

    /// Stores what changed since the last time; failures are reported by `storingFailed`. A read-only document stores
    /// nothing.
    void storeAll();
    /// From now on nothing is stored, as if the document could only be read: for a look that leaves no trace.
    void storeNothing() { m_storesNothing = true; }
    bool storesNothing() const { return m_storesNothing; }

signals:
    void selectionRequested(const KTVPlugInPtr& plugIn);
    void toolbarPlugInsChanged();
    void storingFailed(const QString& message);
    /// Others changed what is listed here; `message` says what became of it.
    void changedByOthers(const QString& message);

protected:
    /// Releases all plug-ins. For derived classes, to be called while they still exist; the destructor does it in any
    /// case.
    void letGoOfPlugIns();
    /// Takes a plug-in out of the list; it stays in the document.
    virtual void letGo(const KTVPlugInPtr& plugIn);
    /// Lists `fresh` where `old` is, and lets go of that; the selection goes over.
    virtual void showInPlaceOf(const KTVPlugInPtr& old, const KTVPlugInPtr& fresh);
    /// The look that suits the window that trends are made in; empty: the plug-in's own.
    virtual QString lookOfNewTrends() const { return {}; }
    /// From now on what others store is shown here: trends, records and which of them are followed. On screen it always
    /// is.
    void keepUp();

private:
    void joinAgents();
    void lookAfter(const KTVPlugInPtr& plugIn);
    std::optional<double> firstRecordOf(const KTVPlugIn& plugIn) const;
    std::vector<KTVPlugInPtr> watchedTrends() const;
    KTVPlugInPtr listed(const QString& uniqueIdentifier) const;  ///< null when it is not
    void takeInWhatOthersChanged();
    QStringList takeIn(const PlugInStore::Changes& changes);  ///< what to tell of it
    void store(const KTVPlugIn& plugIn);
    void tell(const KTVPlugIn& plugIn, const PlugInStore::Stored& stored);
    void removeFromDocument();
    bool isStored() const;
    Reader reader() const { return m_use == Use::OnScreen ? Reader::AtAWindow : Reader::OfAPicture; }
    void makeMissingToolbarPlugIns();
    bool hasToolbarPlugInOf(const KTVAgentPtr& agent) const;

    std::shared_ptr<SiteDocument> m_document;
    KTVPlugInModule* m_module;
    Use m_use;
    PlugInStore m_store;
    std::vector<KTVPlugInPtr> m_toRemove;  ///< from the document, once it can be written again
    SourceListModel m_sourceList;
    std::vector<KTVPlugInPtr> m_toolbarPlugIns;
    TrendFollower m_follower;
    SpanReader m_reader;
    RecordsWatch m_watch;
    const KTVPlugIn* m_leaving = nullptr;  ///< still listed, not stored any more
    bool m_isLoaded = false;
    bool m_storesNothing = false;
    bool m_isKeptUp;
};

}  // namespace plotix
