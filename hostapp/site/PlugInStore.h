#pragma once

#include "hostapp/document/SiteDocument.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

#include <map>

/// Moves plug-ins between a site document and memory.
///
/// *Shares* the document, *borrows* the module. Plug-ins are recognised by their unique identifier; one whose state has
/// not changed since it was last stored or loaded is not written. Main thread only.
namespace plotix {

/// The class name that the document stores with a plug-in's state and the module makes the plug-in by.
QString classNameOf(const KTVPlugIn& plugIn);

class PlugInStore {
public:
    PlugInStore(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module);

    /// Every archived plug-in that can be made, in list order. Those that cannot (an unknown class, a damaged state, a
    /// missing agent) stay in the document unchanged and are counted.
    std::vector<KTVPlugInPtr> load(KTVSiteWindowController* siteWindowController);
    int unreadableCount() const { return m_unreadableCount; }

    /// What others changed in the document since it was loaded or stored.
    struct Changes {
        QStringList gone;                ///< identifiers of plug-ins that are not archived any more
        std::vector<KTVPlugInPtr> came;  ///< made anew
        /// Those with another title or other properties, made anew; where only a span or a range differs, each program
        /// keeps its own, and the file that of the one that stored last.
        std::vector<KTVPlugInPtr> different;
    };
    Changes changes(KTVSiteWindowController* siteWindowController);

    /// Stores the plug-in after the others the first time, in place afterwards. Throws ReportableError.
    void store(const KTVPlugIn& plugIn);
    void remove(const KTVPlugIn& plugIn);

private:
    struct Stored {
        qint64 id = 0;
        QByteArray state;
    };
    KTVPlugInPtr make(const ArchivedPlugIn& archived, KTVSiteWindowController* siteWindowController);

    std::shared_ptr<SiteDocument> m_document;
    KTVPlugInModule* m_module;
    std::map<QString, Stored> m_stored;  // by the plug-in's unique identifier
    int m_unreadableCount = 0;
};

}  // namespace plotix
