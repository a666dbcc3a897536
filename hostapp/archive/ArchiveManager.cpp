#include "hostapp/archive/ArchiveManager.h"

#include "base/MainQueue.h"
#include "hostapp/archive/RecordArchive.h"
#include "hostapp/core/HostError.h"
#include "hostapp/core/SiteProperty.h"

#include <algorithm>
#include <atomic>
#include <new>

namespace plotix {

namespace {

constexpr int kMostWorkers = 4;

}  // namespace

/// Everything a worker needs: no object of the main thread's.
struct ArchiveManager::Fetch {
    QString file;
    qint64 agent = 0;
    std::vector<RowId> rows;
    std::vector<KTVRecordColumn::Descriptor> descriptors;  // index for index with rows
    std::shared_ptr<const KTVUnitModel> unitModel;
    OptionalDate from, to;
    ProgressHandler progress;
    CompletionHandler completion;
    std::size_t records = 0;
};

/// What outlives the manager for as long as a fetch is under way.
struct ArchiveManager::State {
    std::atomic<bool> ending = false;
    ArchiveManager* manager = nullptr;  // main thread only; null once it is gone
    int pending = 0;                    // main thread only
};

ArchiveManager::ArchiveManager(QString file, qint64 agent, Properties properties,
                               std::shared_ptr<const KTVUnitModel> unitModel)
    : m_file(std::move(file)),
      m_agent(agent),
      m_properties(std::move(properties)),
      m_unitModel(std::move(unitModel)),
      m_state(std::make_shared<State>())
{
    m_state->manager = this;
    m_workers.setMaxThreadCount(std::clamp(QThread::idealThreadCount(), 1, kMostWorkers));
}

ArchiveManager::~ArchiveManager()
{
    m_state->ending = true;
    m_workers.waitForDone();
    m_state->manager = nullptr;
}

int ArchiveManager::pendingFetches() const
{
    return m_state->pending;
}

void ArchiveManager::fetchRecordsForProperties(const std::optional<KTVPropertyList>& properties,
                                               const OptionalDate& fromDate, const OptionalDate& toDate,
                                               int /*maximumSamples*/, ProgressHandler progressHandler,
                                               CompletionHandler completionHandler)
{
    auto fetch = std::make_shared<Fetch>();
    fetch->file = m_file;
    fetch->agent = m_agent;
    fetch->unitModel = m_unitModel;
    fetch->from = fromDate;
    fetch->to = toDate;
    fetch->progress = std::move(progressHandler);
    fetch->completion = std::move(completionHandler);
    const KTVPropertyList own = m_properties ? m_properties() : KTVPropertyList{};
    for (const KTVPropertyPtr& property : properties.value_or(KTVPropertyList{})) {
        const auto* stored = dynamic_cast<const SiteProperty*>(property.get());
        const bool isOwn =
            stored && stored->description().id > 0 && std::find(own.begin(), own.end(), property) != own.end();
        if (!isOwn || std::find(fetch->rows.begin(), fetch->rows.end(), stored->description().id) != fetch->rows.end())
            continue;
        const SiteProperty::Description& what = stored->description();
        fetch->rows.push_back(what.id);
        fetch->descriptors.push_back(
            {what.name, what.propertyName, what.archivedUnit, what.unit, what.color, what.type, what.visible});
    }
    ++m_state->pending;
    m_workers.start([fetch, state = m_state]() mutable { answer(std::exchange(fetch, {}), state); });
}

KTVRecordDictionaryPtr ArchiveManager::read(Fetch& fetch, const State& state)
{
    auto dictionary = std::make_shared<KTVRecordDictionary>();
    if (fetch.rows.empty() || state.ending)
        return dictionary;
    const auto goesOn = [&](double fraction) {
        bool stop = false;
        if (fetch.progress)
            fetch.progress(fraction, &stop);
        return !stop && !state.ending;
    };
    const auto seconds = [](const OptionalDate& date) { return date ? std::optional(date->seconds) : std::nullopt; };
    RecordReader reader(fetch.file);
    const std::optional<RecordBlock> block =
        reader.read(fetch.agent, fetch.rows, seconds(fetch.from), seconds(fetch.to), goesOn);
    if (!block)
        return dictionary;
    fetch.records = block->times.size();
    dictionary->setTime(block->times);
    for (std::size_t i = 0; i < fetch.rows.size(); ++i) {
        const RecordBlock::Column& column = block->columns[i];
        dictionary->setColumn(
            fetch.descriptors[i].propertyName,
            std::make_shared<KTVRecordColumn>(fetch.descriptors[i], column.values, column.validity, fetch.unitModel));
    }
    return dictionary;
}

void ArchiveManager::answer(const std::shared_ptr<Fetch>& fetch, const std::shared_ptr<State>& state)
{
    KTVRecordDictionaryPtr records;
    std::optional<KTVError> error;
    try {
        records = read(*fetch, *state);
    } catch (const HostError& failure) {
        error = KTVError{failure.message()};
    } catch (const std::bad_alloc&) {
        error = KTVError{QStringLiteral("The records do not fit into memory: choose a shorter range.")};
    }
    if (fetch->completion)
        fetch->completion(std::move(records), static_cast<double>(fetch->records), std::move(error));
    // Handlers may hold the last reference to something of the main thread's; so they end there, and after what they
    // posted, because the queue is serial.
    auto handlers = std::make_shared<std::pair<ProgressHandler, CompletionHandler>>(
        std::exchange(fetch->progress, {}), std::exchange(fetch->completion, {}));
    MainQueue::main().async([handlers = std::move(handlers), state]() mutable {
        handlers.reset();
        --state->pending;
        if (state->manager)
            emit state->manager->fetchAnswered();
    });
}

}  // namespace plotix
