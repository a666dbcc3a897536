#pragma once

#include "hostapp/document/HandingOver.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

/// Records of one agent on their way to the server of their site, which may be slow, or gone for days.
///
/// A record goes there at once where the server takes it at once; else onto this desk's disk (`WaitingRecords`), and
/// those behind it too, until all of them were handed over in order. A server is only ever waited for on a thread of
/// its own, so that whoever measures goes on. *Owns* that thread. The rest: one thread.
namespace plotix {

class Forwarding {
public:
    /// `found`: the agent in the site; nothing: it is looked for, and made, once the server can be reached. Throws
    /// ReportableError where another program records the agent.
    Forwarding(const QString& desk, const RecordedAgent& agent, const std::optional<FoundAgent>& found);
    ~Forwarding();  ///< what waits on the disk stays there
    Forwarding(const Forwarding&) = delete;
    Forwarding& operator=(const Forwarding&) = delete;

    /// Stored there or kept here when it returns. Throws ReportableError where neither can be: the disk is full.
    void store(const RecordBlock& byPlace);

    /// Waits until nothing waits any more, or it does not get on, but not for long.
    void finish();

    struct State {
        std::size_t stored = 0;        ///< records on the server, since this began
        std::size_t others = 0;        ///< records that waited and were left out: the server has others at their times
        std::optional<double> last{};  ///< time of the last one stored
        std::size_t onDisk = 0;        ///< records that are kept here
        std::optional<RecordExtent> extent{};  ///< of those
        QString problem;                       ///< why they wait; empty: they are being handed over
        std::optional<FoundAgent> found{};
    };
    State state() const;
    const QString& path() const { return m_waiting->path(); }

private:
    struct Direct;
    using Lock = std::unique_lock<std::mutex>;
    using Clock = std::chrono::steady_clock;

    void run();
    void storeDirectly(Lock& lock);
    void handOver(Lock& lock);
    void noteProblem(const QString& problem);

    const std::shared_ptr<WaitingRecords> m_waiting;
    AgentAppender m_appender;  // the thread's, as is the next
    HandingOver m_handing;

    mutable std::mutex m_mutex;  // guards what follows
    std::condition_variable m_changed;
    std::shared_ptr<Direct> m_direct;  // being stored, or to be
    State m_state;
    Clock::time_point m_again;         // when to try the next time
    std::atomic<bool> m_ends = false;  // changed under the mutex
    std::thread m_thread;              // last: it uses all of them
};

}  // namespace plotix
