#include "hostapp/document/RememberedExtent.h"

#include "base/ReportableError.h"

#include <QtCore/QThread>
#include <QtCore/QThreadPool>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace plotix {

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kFreshFor = std::chrono::seconds(2);
constexpr auto kPatience = std::chrono::milliseconds(1500);
constexpr int kMostAtOnce = 32;  // most of them wait

/// Of its own: one that waits for a server that is gone keeps nobody else waiting.
QThreadPool& askers()
{
    static QThreadPool pool;
    static const bool isSetUp = (pool.setMaxThreadCount(kMostAtOnce), true);
    static_cast<void>(isSetUp);
    return pool;
}

}  // namespace

struct RememberedExtent::State {
    const std::shared_ptr<RecordStore> records;
    std::mutex mutex;  // guards what follows
    std::condition_variable told;
    std::optional<RecordExtent> extent;
    QString problem;  // of the last time; empty: none
    bool isKnown = false, isAsking = false;
    Clock::time_point again;  // when the store is to be asked the next time

    explicit State(std::shared_ptr<RecordStore> of) : records(std::move(of)) {}
};

RememberedExtent::RememberedExtent(std::shared_ptr<RecordStore> records)
    : m_state(std::make_shared<State>(std::move(records)))
{
}

void RememberedExtent::ask(const std::shared_ptr<State>& state)
{
    std::optional<RecordExtent> extent;
    QString problem;
    try {
        extent = state->records->extent(0);
    } catch (const std::exception& error) {
        problem = QString::fromUtf8(error.what());
    }
    const std::lock_guard lock(state->mutex);
    if (problem.isEmpty()) {
        state->extent = extent;
        state->isKnown = true;
    }
    state->problem = problem;
    state->isAsking = false;
    state->again = Clock::now() + kFreshFor;
    state->told.notify_all();
}

std::optional<RecordExtent> RememberedExtent::extent()
{
    std::unique_lock lock(m_state->mutex);
    bool isFirst = false;
    if (!m_state->isAsking && Clock::now() >= m_state->again) {
        m_state->isAsking = isFirst = true;
        askers().start([state = m_state] { ask(state); });
    }
    if (!m_state->isKnown && m_state->problem.isEmpty()) {
        const auto isTold = [this] { return !m_state->isAsking; };
        if (QThread::currentThread()->loopLevel() == 0)
            m_state->told.wait(lock, isTold);
        else if (isFirst)
            m_state->told.wait_for(lock, kPatience, isTold);
    }
    if (!m_state->isKnown && !m_state->problem.isEmpty())
        throw ReportableError(m_state->problem);
    return m_state->extent;
}

}  // namespace plotix
