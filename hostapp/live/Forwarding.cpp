#include "hostapp/live/Forwarding.h"

#include "base/Interruption.h"
#include "hostapp/document/AgentLock.h"

namespace plotix {

namespace {

constexpr auto kLongestForOne = std::chrono::milliseconds(500);  // the next reading is not far
constexpr std::size_t kFew = 20;                                 // records
constexpr auto kLongestToFinish = std::chrono::seconds(2);
constexpr auto kAgainAfter = std::chrono::seconds(1);

/// Whoever hands over what an ended recorder left gives way within half a second.
std::shared_ptr<WaitingRecords> waitingOf(const QString& desk, const QString& agentName)
{
    constexpr auto kPatience = std::chrono::seconds(5);
    constexpr auto kPause = std::chrono::milliseconds(20);
    for (const auto until = std::chrono::steady_clock::now() + kPatience;; std::this_thread::sleep_for(kPause))
        try {
            return std::make_shared<WaitingRecords>(desk, agentName);
        } catch (const AgentIsRecorded&) {
            if (std::chrono::steady_clock::now() >= until)
                throw;
        }
}

}  // namespace

struct Forwarding::Direct {
    RecordBlock block;
    enum class Outcome { Unknown, Stored, Failed } outcome = Outcome::Unknown;
    bool isKept = false;  // nobody waits for the outcome any more
};

Forwarding::Forwarding(const QString& desk, const RecordedAgent& agent, const std::optional<FoundAgent>& found)
    : m_waiting(waitingOf(desk, agent.name)), m_appender(desk, agent), m_handing(desk, m_waiting)
{
    if (found)
        m_appender.use(*found);
    m_state.found = found;
    m_thread = std::thread([this] { run(); });
}

Forwarding::~Forwarding()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void Forwarding::store(const RecordBlock& byPlace)
{
    {
        Lock lock(m_mutex);
        if (m_waiting->count() == 0 && !m_direct && m_state.problem.isEmpty()) {
            const auto direct = std::make_shared<Direct>(Direct{byPlace});
            m_direct = direct;
            m_changed.notify_all();
            m_changed.wait_for(lock, kLongestForOne, [&] { return direct->outcome != Direct::Outcome::Unknown; });
            if (direct->outcome == Direct::Outcome::Stored)
                return;
            if (direct->outcome == Direct::Outcome::Unknown && m_state.problem.isEmpty())
                m_state.problem = QStringLiteral("The server takes long to answer.");
            direct->isKept = true;
        }
    }
    m_waiting->keep(m_appender.agent(), byPlace);
    Lock lock(m_mutex);
    m_changed.notify_all();
    // Soon there is nothing left to wait behind: the next one goes there directly again.
    if (m_waiting->count() <= kFew)
        m_changed.wait_for(lock, kLongestForOne, [&] { return m_waiting->count() == 0 || !m_state.problem.isEmpty(); });
}

void Forwarding::finish()
{
    Lock lock(m_mutex);
    m_again = {};
    m_changed.notify_all();
    const auto until = Clock::now() + kLongestToFinish;
    m_changed.wait_until(lock, until, [&] { return m_waiting->count() == 0 && !m_direct; });
}

Forwarding::State Forwarding::state() const
{
    const std::lock_guard lock(m_mutex);
    State state = m_state;
    state.onDisk = m_waiting->count();
    state.extent = m_waiting->extent();
    return state;
}

void Forwarding::run()
{
    const Interruption whenItEnds(m_ends);
    Lock lock(m_mutex);
    while (!m_ends) {
        if (m_direct) {
            storeDirectly(lock);
            continue;
        }
        const bool hasWork = m_waiting->count() > 0 || !m_state.problem.isEmpty();
        if (hasWork && Clock::now() >= m_again) {
            handOver(lock);
            continue;
        }
        if (hasWork)
            m_changed.wait_until(lock, m_again);
        else
            m_changed.wait(lock);
    }
}

void Forwarding::storeDirectly(Lock& lock)
{
    const std::shared_ptr<Direct> direct = m_direct;
    QString problem;
    lock.unlock();
    try {
        m_appender.append(direct->block);
    } catch (const std::exception& error) {
        problem = QString::fromUtf8(error.what());
    }
    lock.lock();
    m_direct.reset();
    m_state.found = m_appender.found() ? m_appender.found() : m_state.found;
    if (!problem.isEmpty()) {
        direct->outcome = Direct::Outcome::Failed;
        noteProblem(problem);
    } else {
        direct->outcome = Direct::Outcome::Stored;
        m_state.problem.clear();
        // One that is kept too is counted when it is handed over.
        if (!direct->isKept) {
            m_state.stored += direct->block.times.size();
            m_state.last = direct->block.times[direct->block.times.size() - 1];
        }
    }
    m_changed.notify_all();
}

void Forwarding::handOver(Lock& lock)
{
    std::optional<HandingOver::Done> done;
    QString problem;
    lock.unlock();
    try {
        done = m_handing.store();
    } catch (const std::exception& error) {
        problem = QString::fromUtf8(error.what());
    }
    lock.lock();
    try {
        if (problem.isEmpty())
            m_handing.settle();  // so that nobody sees records that are counted twice, or not at all
    } catch (const std::exception& error) {
        problem = QString::fromUtf8(error.what());
    }
    if (!problem.isEmpty()) {
        noteProblem(problem);
        return;
    }
    m_state.problem.clear();
    if (done) {
        m_state.stored += done->records - done->others;
        m_state.others += done->others;
        m_state.last = done->last;
    }
    m_changed.notify_all();
}

void Forwarding::noteProblem(const QString& problem)
{
    m_state.problem = problem;
    m_again = Clock::now() + kAgainAfter;
}

}  // namespace plotix
