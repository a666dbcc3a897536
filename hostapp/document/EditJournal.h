#pragma once

#include "hostapp/document/EditProgress.h"
#include "hostapp/document/SiteDocument.h"
#include "records/store/RecordStore.h"
#include "storage/Database.h"

#include <QtCore/QCborArray>
#include <QtCore/QCborMap>

/// What was changed in a site, step by step, and what is needed to undo the latest steps, also after the site was
/// closed. The site file keeps the last kMostSteps of them.
///
/// Everything works inside the caller's transaction on the site's file and *borrows* its connection; one thread. Throws
/// ReportableError.
namespace plotix {

struct EditStep {
    enum class Kind {
        Import,
        Rename,
        Merge,
        Delete,
        RemoveValues,
        Compute,
        Limits,
        Notes
    };  ///< stored: never change the order

    qint64 id = 0;
    Kind kind{};
    QString subject;  ///< names alone, such as a file's or a property's
    double time = 0;  ///< when, seconds since 1970-01-01 UTC
};

/// What a step did.
struct EditOutcome {
    qint64 step = 0;            ///< its number in the journal
    QString subject;            ///< of the step, as the journal lists it
    std::size_t values = 0;     ///< that were moved or taken out
    std::size_t conflicts = 0;  ///< left out of a merge since the other had a different value at the same time
    std::vector<QString> followed =
        {};  ///< computed properties whose formulas were written anew, with other names in them
    /// Computed properties that can be worked out no longer, each with a sentence that says why.
    std::vector<std::pair<QString, QString>> broken = {};
};

/// A step under way. The tables of names are kept as they are when it begins; records only where they are told.
class EditStepBuilder {
public:
    EditStepBuilder(Database& database, EditStep::Kind kind, const QString& subject);

    qint64 id() const { return m_id; }
    void madeAgent(RowId agent) { m_madeAgents.append(agent); }
    void madeProperty(RowId property) { m_madeProperties.append(property); }
    /// Before it is changed or deleted.
    void keepPlugIn(const ArchivedPlugIn& plugIn);
    /// Keeps these properties' elements in a span, before they are changed; `stored`: the records as they are. Bounds
    /// are absent where they are open.
    void keepRecords(RecordStore& stored, RowId agent, const std::vector<RowId>& properties, std::optional<double> from,
                     std::optional<double> to, EditMeter& meter);
    /// Writes the step and drops those that are too old.
    void finish();

private:
    Database& m_database;
    qint64 m_id = 0;
    QCborMap m_tables;
    QCborArray m_madeAgents, m_madeProperties, m_plugIns, m_spans, m_amendments;
};

class EditJournal {
public:
    static constexpr int kMostSteps = 20;

    explicit EditJournal(Database& database) : m_database(database) {}

    std::vector<EditStep> steps() const;  ///< oldest first; none in a file of an older version

    /// Undoes the last step and removes it; `stored`: the records as they are. Requires: it is the last one.
    void undo(const EditStep& step, RecordStore& stored, RecordTransaction& records, EditMeter& meter);

private:
    void removeRecords(const QCborArray& spans, RecordStore& stored, RecordTransaction& records, EditMeter& meter);
    void restoreRecords(qint64 step, RecordTransaction& records, EditMeter& meter);
    static void restoreAmendments(const QCborArray& amendments, RecordTransaction& records);
    void removeWhatWasMade(const QCborMap& data);
    void restoreTables(const QCborMap& tables);
    void restoreFormulas(const QCborMap& tables);
    void restoreAnnotations(const QCborMap& tables);
    void restorePlugIns(EditStep::Kind kind, const QCborArray& plugIns);

    Database& m_database;
};

}  // namespace plotix
