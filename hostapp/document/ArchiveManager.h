#pragma once

#include "base/Date.h"
#include "hostapp/document/MemoryBudget.h"
#include "plugins/PlotixPlugIn/host/KTVArchiveManager.h"

#include <QtCore/QObject>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>

#include <cstdint>
#include <functional>
#include <memory>

/// Reads ranges of one agent's records from the record store, on worker threads, for plug-ins. The agent *owns* it.
/// Main thread only, except where said.
///
/// The dictionary's columns are in the order of the properties asked for, under their keys. A property that is not the
/// agent's (a deleted one, say) gets no key. Values are kept in the archived unit and read in the property's current
/// one: a unit or colour changed while a fetch runs is that of its answer too, whenever the change comes before the
/// task in which the asker takes the answer up. `maximumSamples` is not applied: every stored record is answered, and
/// drawing reduces them.
///   nothing to fetch (no properties, an empty list, or none of the agent's own): a dictionary without "time"
///   stopped by the progress handler, or by the manager's end: a dictionary without "time"
///   more records than the memory budget allows, of a store that does not unpack on demand: a dictionary without
///   "time", and an error that says what would fit the records cannot be read: no dictionary, and an error a computed
///   property cannot be worked out: a dictionary without its key, and no error; `fetchFailed` tells why records that
///   cannot be unpacked when somebody looks: no point there; `fetchFailed` tells why, once a fetch
/// The completion is called exactly once for each fetch, always on a worker thread; its number is how many records were
/// read. Handlers are destroyed on the main thread. Reads may run while another connection writes, and see what was
/// stored when they began.
namespace plotix {

class RecordStore;
struct RecordColumns;

/// What the asker got with a failed fetch.
enum class RecordFailure {
    Unreadable,   ///< nothing; a plug-in says so by itself, without the reason
    TooMany,      ///< a dictionary without "time"; a plug-in shows that there is nothing to plot
    NotComputed,  ///< all that could be had; a property whose formula cannot be worked out got no key
    NotUnpacked   ///< everything; some of it could not be read when it was looked at, and is left out
};

class ArchiveManager : public QObject, public KTVArchiveManager {
    Q_OBJECT
public:
    using Properties = std::function<KTVPropertyList()>;  ///< the agent's own, asked on the main thread

    /// *Shares* the store and the cache of pages. `budget`: the most bytes that the records of one fetch may take once
    /// they are plotted. Of a store that unpacks on demand nothing is refused; records that take more than a quarter of
    /// it are unpacked where somebody looks.
    ArchiveManager(std::shared_ptr<RecordStore> records, qint64 agent, Properties properties,
                   std::shared_ptr<const KTVUnitModel> unitModel, std::uint64_t budget = memoryBudget(),
                   std::shared_ptr<PageCache> pages = programPages());
    /// Stops running fetches and waits for them; each is still answered.
    ~ArchiveManager() override;

    void fetchRecordsForProperties(const std::optional<KTVPropertyList>& properties, const OptionalDate& fromDate,
                                   const OptionalDate& toDate, int maximumSamples, ProgressHandler progressHandler,
                                   CompletionHandler completionHandler) override;

    /// Nothing either where the records cannot be read: a fetch says so.
    std::optional<Span> recordedSpan() const override;

    /// Why records of an answer could not be unpacked, the first time that happened; nothing while all could.
    std::optional<QString> unpackingFailure() const;

    /// How many fetches have not had their `fetchAnswered` yet.
    int pendingFetches() const;

signals:
    /// On the main thread, once for each fetch, after what its completion handler posted to the main queue has run.
    void fetchAnswered();
    /// On the main thread, before `fetchAnswered`, for a fetch that failed; `message` is for people. For records that
    /// could not be unpacked, whenever that is.
    void fetchFailed(const QString& message, RecordFailure failure);

private:
    struct Fetch;
    struct State;
    static KTVRecordDictionaryPtr read(Fetch& fetch, const std::shared_ptr<State>& state,
                                       std::optional<KTVError>& error);
    static std::optional<RecordColumns> readWhatCanBe(Fetch& fetch, const std::function<bool(double)>& goesOn);
    static void bringUpToDate(Fetch& fetch, const KTVRecordDictionaryPtr& records);
    static void answer(const std::shared_ptr<Fetch>& fetch, const std::shared_ptr<State>& state);

    std::shared_ptr<RecordStore> m_records;
    std::shared_ptr<PageCache> m_pages;
    std::uint64_t m_budget;
    qint64 m_agent;
    Properties m_properties;
    std::shared_ptr<const KTVUnitModel> m_unitModel;
    std::shared_ptr<State> m_state;
    QThreadPool m_workers;
};

}  // namespace plotix
