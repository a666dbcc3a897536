#pragma once

#include "hostapp/document/EditJournal.h"
#include "hostapp/document/SiteAnnotations.h"
#include "records/store/RecordStore.h"

#include <QtCore/QString>

#include <cstdint>
#include <memory>

/// One write transaction over a site file, which may be open as a document. Any one thread.
///
/// The file is created when it is missing. Agents, properties and records become visible together at `commit`;
/// destruction without it leaves the file as it was, and removes one that the transaction created.
/// `SiteDocument::reload` picks up what was added. Throws ReportableError.
namespace plotix {

struct AttachedTable;  // records/store

class SiteTransaction {
public:
    struct Property {
        RowId id = 0;
        QString archivedUnit;  ///< the unit of its records; the unit given is used only for a new property
        QString propertyName;
    };

    /// The site's name, for a file that is created; defaults to the file's base name.
    explicit SiteTransaction(const QString& path, const QString& siteName = {});
    ~SiteTransaction();
    SiteTransaction(const SiteTransaction&) = delete;
    SiteTransaction& operator=(const SiteTransaction&) = delete;

    /// True when the file did not exist before.
    bool createdFile() const;

    /// Makes what is done from now on a step that can be undone, also after the site was closed: `undoLastEdit` removes
    /// the agents and properties made, and puts back the values kept. Requires: nothing was written before.
    void beginStep(EditStep::Kind kind, const QString& subject);
    /// Keeps these properties' elements with from ≤ time ≤ to for undo; called before they are changed.
    void keepForUndo(RowId agent, const std::vector<RowId>& properties, double from, double to);

    /// Finds an agent by its name, else by one it gave up; else creates it.
    /// Throws where its records are a table of somebody else's: whoever asks is about to store some.
    RowId findOrCreateAgent(const QString& name);
    /// A new one; throws where the name is taken.
    RowId addAgent(const QString& name);
    /// Makes the table the agent's records. Requires: it has none of its own, and the table's properties.
    void attach(RowId agent, const AttachedTable& table);
    QString agentName(RowId agent) const;

    /// Finds a recorded property by its name, else by the name's camel case, else by a name it gave up; else creates
    /// it. Where a computed one has the name, the new one gets a number behind it, and is found by that name from then
    /// on.
    Property findOrCreateProperty(RowId agent, const QString& name, const QString& unit, std::uint32_t type = 0);

    /// Limits and notes of this site's properties, such as those copied from another site; ids of their own are given.
    void addLimit(SiteLimit limit);
    void addNote(SiteNote note);

    /// Stores records in this transaction; call `commit` here, not there. Borrowed.
    RecordTransaction& records();

    /// The site's records as others see them: this transaction's only after its `commit`.
    std::shared_ptr<RecordStore> storedRecords() const;

    /// At most once; nothing may be written afterwards.
    void commit();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace plotix
