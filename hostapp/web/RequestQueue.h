#pragma once

#include "hostapp/web/HttpReply.h"

#include <QtCore/QByteArray>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// Runs slow work on a few threads of its own: work that asks plug-ins, which wait for the main queue.
///
/// Waiting requests for the same thing share one piece of work; it begins after the last of them arrived, so that none
/// gets an answer older than itself. Nothing is made for clients that have left. The main queue never has more of these
/// tasks than there are workers, and the user's clicks are handled between them. `submit`: any thread; `close`: main
/// thread.
namespace plotix {

class RequestQueue {
public:
    using Work = std::function<HttpReply()>;  ///< on a worker; what it throws becomes status 500
    using Done = std::function<void(const HttpReply&)>;
    using HasLeft = std::function<bool()>;  ///< on any thread: whether nobody waits for the answer any more

    /// At most `longest` pieces of work wait for a worker.
    RequestQueue(int workers, std::size_t longest);
    ~RequestQueue();  ///< closes
    RequestQueue(const RequestQueue&) = delete;
    RequestQueue& operator=(const RequestQueue&) = delete;

    /// `done` gets the answer on a worker, exactly once. Answers false, and calls nothing, when too many wait or the
    /// queue is closed.
    bool submit(const QByteArray& subject, Work work, Done done, HasLeft hasLeft = {});

    /// Takes no more work, answers waiting requests with "busy", and returns when running work is done. The main queue
    /// goes on meanwhile, because that work may wait for it.
    void close();

private:
    struct Asking {
        Done done;
        HasLeft hasLeft;
    };
    struct Job {
        QByteArray subject;
        Work work;
        std::vector<Asking> waiting;
    };
    void runWorker();
    static std::vector<Asking> takeThoseWhoLeft(Job& job);
    std::vector<Asking> dropWhatNobodyWantsAnyMore();
    std::deque<Job> takeAll();

    std::size_t m_longest;
    std::mutex m_mutex;  // guards the next three
    std::condition_variable m_changed;
    std::deque<Job> m_jobs;
    bool m_isClosed = false;
    int m_openWorkers;  // main thread only
    std::vector<std::thread> m_workers;
};

}  // namespace plotix
