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

/// Answers range queries over one agent's records, on worker threads: where the agent and the store of records meet.
/// The agent *owns* it.
///
/// The dictionary's columns stand in the order of the properties asked for, under their keys. A property that is not
/// the agent's own (one that is gone, say) gets no key. Values stand in the archived unit and leave in the property's
/// current one. `maximumSamples` is not applied: every stored record is answered, drawing reduces.
///   nothing to fetch (no properties, an empty list, or none of the agent's own): a dictionary without "time"
///   stopped by the progress handler, or by the manager's end: a dictionary without "time"
///   more records than the memory budget allows: a dictionary without "time", and an error that says what would fit
///   the records cannot be read: no dictionary, and an error
/// The completion is called exactly once for each fetch, always on a worker thread; its number is how many records were
/// read. Handlers are let go on the main thread. Reads run beside a writer and see what was stored when they began.
namespace plotix {

class RecordStore;

class ArchiveManager : public QObject, public KTVArchiveManager {
    Q_OBJECT
public:
    using Properties = std::function<KTVPropertyList()>;  ///< the agent's own, asked on the main thread

    /// *Shares* the store. `budget`: bytes that the records of one fetch may take once they are plotted.
    ArchiveManager(std::shared_ptr<RecordStore> records, qint64 agent, Properties properties,
                   std::shared_ptr<const KTVUnitModel> unitModel, std::uint64_t budget = memoryBudget());
    /// Stops running fetches and waits for them; each is still answered.
    ~ArchiveManager() override;

    void fetchRecordsForProperties(const std::optional<KTVPropertyList>& properties, const OptionalDate& fromDate,
                                   const OptionalDate& toDate, int maximumSamples, ProgressHandler progressHandler,
                                   CompletionHandler completionHandler) override;

    /// Fetches whose `fetchAnswered` is still to come.
    int pendingFetches() const;

signals:
    /// On the main thread, once for each fetch, after what its completion handler posted to the main queue has run.
    void fetchAnswered();
    /// On the main thread, before `fetchAnswered`, for a fetch that was answered with an error: what people are told.
    void fetchFailed(const QString& message);

private:
    struct Fetch;
    struct State;
    static KTVRecordDictionaryPtr read(Fetch& fetch, const State& state, std::optional<KTVError>& error);
    static void answer(const std::shared_ptr<Fetch>& fetch, const std::shared_ptr<State>& state);

    std::shared_ptr<RecordStore> m_records;
    std::uint64_t m_budget;
    qint64 m_agent;
    Properties m_properties;
    std::shared_ptr<const KTVUnitModel> m_unitModel;
    std::shared_ptr<State> m_state;
    QThreadPool m_workers;
};

}  // namespace plotix
