#pragma once

#include "base/Date.h"
#include "hostapp/document/ArchivedPlugIn.h"
#include "hostapp/document/SiteAgent.h"
#include "hostapp/document/SiteAnnotations.h"
#include "plugins/PlotixPlugIn/host/KTVSiteDocument.h"

#include <QtCore/QObject>
#include <QtCore/QTimeZone>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace plotix {

enum class RecordFailure;
class AnnotationEditor;
class ComputedRecords;
class RecordStore;  // records/store
struct FormulaDirectory;

/// One site in one SQLite file `NAME.plotix`: its name and place, agents, properties, archived plug-ins and settings.
///
/// Every change is stored at once, in a transaction of its own. Main thread only; the records, which any thread may ask
/// for, are in a RecordStore that the document *shares*. Throws ReportableError for files that are newer, foreign,
/// locked, read-only or damaged, and leaves them as they were.
class SiteDocument : public QObject, public KTVSiteDocument, public std::enable_shared_from_this<SiteDocument> {
    Q_OBJECT
public:
    /// Makes a new file; throws when one is there already. The name defaults to the file's base name.
    static std::shared_ptr<SiteDocument> create(const QString& path, const QString& siteName = {});
    static std::shared_ptr<SiteDocument> open(const QString& path);
    ~SiteDocument() override;

    const QString& path() const { return m_path; }
    QString siteName() const { return m_siteName; }
    QString siteLocation() const { return m_siteLocation; }
    void setSite(const QString& name, const QString& location);
    /// The zone of the clocks where the site is; invalid: nobody has said.
    const QTimeZone& zone() const { return m_zone; }
    void setZone(const QTimeZone& zone);

    const std::vector<std::shared_ptr<SiteAgent>>& agents() const { return m_agents; }
    std::shared_ptr<SiteAgent> agentNamed(const QString& name) const;  ///< null when there is none
    std::shared_ptr<SiteAgent> agentWithIdentifier(const QString& uniqueIdentifier) const;
    std::shared_ptr<SiteAgent> addAgent(const QString& name);

    /// Reads what others stored meanwhile: agents and properties that came, went, or have another name, unit or colour,
    /// and the site's name. Objects of what is still there stay; those of what is gone belong to the document no more.
    /// Emits `siteChanged`, `agentsChanged` and each agent's `propertiesChanged` where something differs. Called by
    /// itself within a second when another connection has written; `changedElsewhere` follows.
    void reload();

    /// The same for whoever is about to read everything there is: `changedElsewhere` tells of what comes later only.
    void catchUp();

    /// As last read: setting them is `AnnotationEditing`'s.
    const std::vector<SiteLimit>& limits() const { return m_limits; }
    const std::vector<SiteNote>& notes() const { return m_notes; }  ///< in the order of time
    /// Who asks for them; *borrowed*, null without a window.
    AnnotationEditor* annotationEditor() const { return m_annotationEditor; }
    void setAnnotationEditor(AnnotationEditor* editor) { m_annotationEditor = editor; }

    /// The table of somebody else's that has the agent's records, for people; empty: they are the site's own.
    QString attachedTable(const SiteAgent& agent) const;

    /// The records of the site's agents, computed properties and attached tables among them.
    const std::shared_ptr<RecordStore>& records() const { return m_records; }

    /// What names in formulas mean at this moment.
    std::shared_ptr<const FormulaDirectory> formulaDirectory() const;

    /// First and last time of all records of all agents, as the store answers it; nothing without records.
    std::optional<std::pair<Date, Date>> recordExtent() const;

    /// True once another file has taken the site's name: storing throws FileReplaced, what was read stays.
    bool isReplaced() const;

    /// True when the file can only be read, or was replaced: storing throws, and changed units and colours last as long
    /// as the document.
    bool isReadOnly() const;

    std::vector<ArchivedPlugIn> archivedPlugIns() const;  ///< in list order
    /// Stores at the end when `plugIn.id` is 0, else in place; answers the id.
    qint64 storePlugIn(const ArchivedPlugIn& plugIn);
    /// Stores what `decide` answers, in one transaction, while nobody else can write. It is told what is archived under
    /// `id` now; nothing: nothing is. Answers the ids in the order of the answer.
    using Decide = std::function<std::vector<ArchivedPlugIn>(const std::optional<ArchivedPlugIn>& present)>;
    std::vector<qint64> storePlugIns(qint64 id, const Decide& decide);
    void removePlugIn(qint64 id);

    /// Small named values of the document, such as a window's geometry.
    QByteArray setting(const QString& key) const;
    void setSetting(const QString& key, const QByteArray& value);

    std::vector<std::shared_ptr<KTVWindowController>> windowControllers() const override { return m_windowControllers; }
    void setWindowControllers(std::vector<std::shared_ptr<KTVWindowController>> controllers);

signals:
    void agentsChanged();
    void siteChanged();  ///< name, location or zone
    void annotationsChanged();
    /// A change of a property's unit, colour or visibility could not be stored; it is tried again with the next one.
    void changeNotStored(const QString& message);
    /// Another file has taken the site's name; once.
    void replaced(const QString& message);
    /// Another connection has written, of this program or another one; what was written may be anything.
    void changedElsewhere();
    /// A fetch failed: the records cannot be read, or exceed the memory budget.
    void recordsNotRead(const QString& message, RecordFailure failure);

private:
    friend class SiteAgent;
    struct Store;  // the SQLite connection and its statements
    explicit SiteDocument(const QString& path);
    std::shared_ptr<SiteProperty> addPropertyTo(SiteAgent& agent, const QString& name, const QString& unit,
                                                std::uint32_t type);
    std::shared_ptr<SiteProperty> adopt(SiteAgent& agent, const SiteProperty::Description& description);
    bool reloadProperties(SiteAgent& agent);  // true when they differ
    bool reloadAgents(std::vector<std::shared_ptr<SiteAgent>>& changed);
    void takeOver(SiteProperty& property, const SiteProperty::Description& stored);
    void tellFormulas();  // of the agents and properties there are now
    bool reloadAnnotations();
    void lookForChanges();
    void storeChange(const SiteProperty& property);
    void storeUnsaved();
    void lookForTheFile();

    std::unique_ptr<Store> m_store;
    QString m_path, m_siteName, m_siteLocation;
    QTimeZone m_zone;
    std::shared_ptr<RecordStore> m_records;  // m_computed, for those who need not know
    std::shared_ptr<ComputedRecords> m_computed;
    std::vector<std::shared_ptr<SiteAgent>> m_agents;
    std::vector<SiteLimit> m_limits;
    std::vector<SiteNote> m_notes;
    AnnotationEditor* m_annotationEditor = nullptr;
    std::vector<std::shared_ptr<KTVWindowController>> m_windowControllers;
};

}  // namespace plotix
