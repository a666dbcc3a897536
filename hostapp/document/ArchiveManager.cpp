#include "hostapp/document/ArchiveManager.h"

#include "base/Interruption.h"
#include "base/MainQueue.h"
#include "base/ReportableError.h"
#include "hostapp/core/SiteProperty.h"
#include "hostapp/document/ComputedRecords.h"
#include "records/store/RecordStore.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <new>

namespace plotix {

namespace {

constexpr int kMostWorkers = 4;
/// Of the memory budget: one part in so many may be records that are read at once, and no more than this: in less than
/// a picture's time. Frames and walks are quicker where all are in memory, the first frame where only what it needs is.
constexpr std::uint64_t kShareAtOnce = 4;
constexpr std::uint64_t kMostAtOnce = std::uint64_t{64} << 20;  // bytes

KTVRecordColumn::Known knownOf(const RecordColumns::Column& column)
{
    return {column.runs, static_cast<std::int64_t>(column.total->valid), column.total->sum.value()};
}

}  // namespace

/// Everything a worker needs, without any main-thread object.
struct ArchiveManager::Fetch {
    std::shared_ptr<RecordStore> store;
    std::shared_ptr<PageCache> pages;
    std::uint64_t budget = 0;
    qint64 agent = 0;
    std::vector<RowId> rows;
    std::vector<KTVRecordColumn::Descriptor> descriptors;  // index for index with rows
    KTVPropertyList properties;                            // likewise; main thread only
    std::vector<QMetaObject::Connection> followed;         // main thread only
    std::shared_ptr<const KTVUnitModel> unitModel;
    OptionalDate from, to;
    ProgressHandler progress;
    CompletionHandler completion;
    std::size_t records = 0;
    QString notComputed;  // why a formula could not be worked out
};

/// What outlives the manager until the last fetch is done.
struct ArchiveManager::State {
    std::atomic<bool> ending = false;
    ArchiveManager* manager = nullptr;  // main thread only; null once it is gone
    int pending = 0;                    // main thread only
    std::mutex mutex;
    std::optional<QString> notUnpacked;  // guarded
};

ArchiveManager::ArchiveManager(std::shared_ptr<RecordStore> records, qint64 agent, Properties properties,
                               std::shared_ptr<const KTVUnitModel> unitModel, std::uint64_t budget,
                               std::shared_ptr<PageCache> pages)
    : m_records(std::move(records)),
      m_pages(std::move(pages)),
      m_budget(budget),
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

std::optional<KTVArchiveManager::Span> ArchiveManager::recordedSpan() const
{
    try {
        const std::optional<RecordExtent> extent = m_records->extent(m_agent);
        return extent ? std::optional(Span{Date{extent->first}, Date{extent->last}}) : std::nullopt;
    } catch (const ReportableError&) {
        return std::nullopt;
    }
}

std::optional<QString> ArchiveManager::unpackingFailure() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->notUnpacked;
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
    fetch->store = m_records;
    fetch->pages = m_pages;
    fetch->budget = m_budget;
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
        fetch->rows.push_back(stored->description().id);
        fetch->descriptors.push_back(stored->description());
        fetch->properties.push_back(property);
    }
    ++m_state->pending;
    m_workers.start([fetch, state = m_state]() mutable { answer(std::exchange(fetch, {}), state); });
}

KTVRecordDictionaryPtr ArchiveManager::read(Fetch& fetch, const std::shared_ptr<State>& state,
                                            std::optional<KTVError>& error)
{
    auto dictionary = std::make_shared<KTVRecordDictionary>();
    if (fetch.rows.empty() || state->ending)
        return dictionary;
    const Interruption whenItEnds(state->ending);  // it waits for its reads
    const auto goesOn = [&](double fraction) {
        bool stop = false;
        if (fetch.progress)
            fetch.progress(fraction, &stop);
        return !stop && !state->ending;
    };
    const auto seconds = [](const OptionalDate& date) { return date ? std::optional(date->seconds) : std::nullopt; };
    const std::optional<double> from = seconds(fetch.from), to = seconds(fetch.to);
    const RecordPart wanted{fetch.agent, fetch.rows, from, to};
    if (const auto refusal = refusalToReadColumns(*fetch.store, wanted, fetch.budget)) {
        error = KTVError{*refusal};
        return dictionary;
    }
    if (!fetch.store->unpacksOnDemand(fetch.rows) ||
        fitsInto(std::min(fetch.budget / kShareAtOnce, kMostAtOnce), *fetch.store, wanted))
        fetch.pages = nullptr;  // which reads everything at once
    const std::optional<RecordColumns> columns = readWhatCanBe(fetch, goesOn);
    if (!columns || fetch.rows.empty())
        return dictionary;
    fetch.records = columns->times.size();
    dictionary->setTime({columns->times, columns->runs});
    for (std::size_t i = 0; i < fetch.rows.size(); ++i) {
        const RecordColumns::Column& column = columns->columns[i];
        const auto made =
            std::make_shared<KTVRecordColumn>(fetch.descriptors[i], column.values, column.validity, fetch.unitModel);
        if (column.runs && column.total)
            made->setKnown(knownOf(column));
        dictionary->setColumn(fetch.descriptors[i].propertyName, made);
    }
    columns->failure->addListener(state, [weak = std::weak_ptr(state)](const QString& message) {
        const auto alive = weak.lock();
        if (!alive)
            return;
        {
            const std::lock_guard lock(alive->mutex);
            if (!alive->notUnpacked)
                alive->notUnpacked = message;
        }
        MainQueue::main().async([alive, message] {
            if (alive->manager)
                emit alive->manager->fetchFailed(message, RecordFailure::NotUnpacked);
        });
    });
    return dictionary;
}

/// A formula that cannot be worked out must not hide the other lines.
std::optional<RecordColumns> ArchiveManager::readWhatCanBe(Fetch& fetch, const std::function<bool(double)>& goesOn)
{
    const auto seconds = [](const OptionalDate& date) { return date ? std::optional(date->seconds) : std::nullopt; };
    while (!fetch.rows.empty()) {
        try {
            return fetch.store->columns(fetch.agent, fetch.rows, seconds(fetch.from), seconds(fetch.to), fetch.pages,
                                        goesOn);
        } catch (const FormulaNotWorkedOut& broken) {
            fetch.notComputed = broken.message();
            const auto row = std::find(fetch.rows.begin(), fetch.rows.end(), broken.property());
            if (row == fetch.rows.end())
                throw;
            fetch.descriptors.erase(fetch.descriptors.begin() + (row - fetch.rows.begin()));
            fetch.rows.erase(row);
        }
    }
    return std::nullopt;
}

// The records were read with the units and colours of the moment they were asked for. The answer follows its properties
// until its handlers are done; from then on the asker, who observes them as well, converts what it holds.
void ArchiveManager::bringUpToDate(Fetch& fetch, const KTVRecordDictionaryPtr& records)
{
    for (const KTVPropertyPtr& property : fetch.properties) {
        const auto column = records->columnForKey(property->propertyName());
        if (!column)
            continue;
        const auto update = [column, shown = std::weak_ptr(property)] {
            const KTVPropertyPtr now = shown.lock();
            if (now && now->unit() != column->unit())
                column->setUnit(now->unit());
            if (now)
                column->setColor(now->color());
        };
        update();
        // After the observers: one that has the answer already must still find the unit it knows, and convert.
        const auto* stored = dynamic_cast<const SiteProperty*>(property.get());
        fetch.followed.push_back(QObject::connect(stored, &SiteProperty::changed, update));
    }
}

void ArchiveManager::answer(const std::shared_ptr<Fetch>& fetch, const std::shared_ptr<State>& state)
{
    KTVRecordDictionaryPtr records;
    std::optional<KTVError> error;
    try {
        records = read(*fetch, state, error);
    } catch (const ReportableError& failure) {
        error = KTVError{failure.message()};
    } catch (const std::bad_alloc&) {
        error = KTVError{
            QCoreApplication::translate("MemoryText", "The records do not fit into memory: choose a shorter range.")};
    }
    const QString message = error ? error->message : fetch->notComputed;
    const RecordFailure failure = !error    ? RecordFailure::NotComputed
                                  : records ? RecordFailure::TooMany
                                            : RecordFailure::Unreadable;
    // Before what the completion handler posts, because the queue is serial.
    if (records)
        MainQueue::main().async([fetch, records] { bringUpToDate(*fetch, records); });
    if (fetch->completion)
        fetch->completion(std::move(records), static_cast<double>(fetch->records), std::move(error));
    // Handlers may hold the last reference to a main-thread object; so they are destroyed there, after the tasks they
    // posted, because the queue is serial.
    MainQueue::main().async([fetch, state, message, failure] {
        for (const QMetaObject::Connection& connection : std::exchange(fetch->followed, {}))
            QObject::disconnect(connection);
        fetch->properties.clear();
        fetch->progress = {};
        fetch->completion = {};
        --state->pending;
        if (state->manager && !message.isEmpty())
            emit state->manager->fetchFailed(message, failure);
        if (state->manager)
            emit state->manager->fetchAnswered();
    });
}

}  // namespace plotix
