#pragma once

#include "hostapp/document/SiteDocument.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

#include <functional>
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
    /// Whether two states of the plug-in of that identifier count as the same; by default `showTheSame`.
    using IsSame = std::function<bool(const QString& identifier, const QByteArray& one, const QByteArray& other)>;
    Changes changes(KTVSiteWindowController* siteWindowController, const IsSame& isSame = {});

    enum class Meeting {
        None,      ///< nobody else changed it, or only what it shows of time: stored
        Waits,     ///< others changed or deleted it, and nothing but a span differs here: theirs is left as it is
        Restored,  ///< others deleted it, and it was changed here: stored again, after the others
        Both  ///< title or properties were changed here and elsewhere: this one is stored, theirs is kept beside it
    };
    struct Stored {
        Meeting meeting = Meeting::None;
        QString kept;  ///< title of the other version, where there are two now
    };
    /// Stores the plug-in after the others the first time, in place afterwards, and never over what others have changed
    /// since. The other version, where there is one, gets an identifier and a title of its own. Throws ReportableError.
    Stored store(const KTVPlugIn& plugIn);
    void remove(const KTVPlugIn& plugIn);

private:
    struct Known {
        qint64 id = 0;
        QByteArray state;  ///< as last read or written
    };
    using Row = std::optional<ArchivedPlugIn>;
    static Stored judge(const Known& known, const Row& present, const QByteArray& state);
    KTVPlugInPtr make(const ArchivedPlugIn& archived, KTVSiteWindowController* siteWindowController);

    std::shared_ptr<SiteDocument> m_document;
    KTVPlugInModule* m_module;
    std::map<QString, Known> m_stored;  // by the plug-in's unique identifier
    int m_unreadableCount = 0;
};

}  // namespace plotix
