#pragma once

#include "hostapp/document/ArchivedReferences.h"
#include "hostapp/document/EditJournal.h"
#include "hostapp/document/SiteStore.h"
#include "hostapp/formulas/FormulaDirectory.h"

#include <map>
#include <memory>

/// One change of a site, in one transaction: what `SiteEditing` is made of. Destruction without `finish` or `commit`
/// leaves the site as it was. Any one thread. Throws ReportableError, and EditCancelled where it advances.
namespace plotix {

class SiteEdit {
public:
    explicit SiteEdit(const QString& site, const EditProgress& progress = {});
    ~SiteEdit();
    SiteEdit(const SiteEdit&) = delete;
    SiteEdit& operator=(const SiteEdit&) = delete;

    Database& database() { return m_database; }
    SiteStore& tables() { return m_tables; }
    RecordStore& stored() { return *m_stored; }
    RecordTransaction& records() { return *m_records; }
    EditStepBuilder& step() { return *m_step; }
    EditMeter& meter() { return m_meter; }

    // Throw when it is not there any more.
    SiteStore::Agent agent(RowId id) const;
    SiteStore::Agent agentOf(RowId property) const;
    SiteProperty::Description property(RowId id) const;
    std::vector<RowId> propertyIds(RowId agent) const;

    /// What names in formulas mean now.
    FormulaDirectory directory() const;

    /// A recorder goes on with the numbers of the properties it found when it began.
    void requireNotRecorded(const SiteStore::Agent& agent) const;

    /// Throws for one whose records are a table of somebody else's: they cannot be changed.
    void requireOwnRecords(const SiteStore::Agent& agent);

    void begin(EditStep::Kind kind, const QString& subject);

    /// The first one's values go into the other; both are kept as they were. Throws where their units do not convert.
    /// A computed one has no values: formulas that name it name the other.
    void absorb(RowId agent, const SiteProperty::Description& from, RowId intoAgent,
                const SiteProperty::Description& into);
    void expectToAbsorb(RowId agent, RowId intoAgent, std::size_t properties);  ///< in so many parts

    /// Keeps the elements for undo and takes them out.
    void takeOut(RowId agent, const std::vector<RowId>& properties, std::optional<double> from = {},
                 std::optional<double> to = {});
    void expectToTakeOut(RowId agent, std::optional<double> from = {}, std::optional<double> to = {});

    void countValues(RowId agent, const std::vector<RowId>& properties, std::optional<double> from = {},
                     std::optional<double> to = {});

    /// Stored views go on with what took the place of what they show.
    void moveReferences(const std::vector<MovedProperty>& moved, const QString& fromAgent = {},
                        const QString& toAgent = {});
    void removeViewsOf(const QString& agentIdentifier);
    void removeProperty(RowId id);
    void removeAgent(RowId id);

    EditOutcome finish();
    void commit();

private:
    std::vector<ArchivedPlugIn> plugIns() const;
    void followNames();  // formulas go on meaning what they meant; what cannot be is told

    Database m_database;
    SiteStore m_tables;
    std::shared_ptr<RecordStore> m_stored;  // as they were before this transaction
    std::unique_ptr<RecordTransaction> m_records;
    std::unique_ptr<EditStepBuilder> m_step;
    FormulaDirectory m_before;         // when the step began
    std::map<qint64, qint64> m_moved;  // properties that were absorbed, and by which
    EditOutcome m_outcome;
    EditMeter m_meter;
};

}  // namespace plotix
