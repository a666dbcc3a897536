#include "hostapp/web/RequestQueue.h"

#include "base/MainQueue.h"

#include <algorithm>

namespace plotix {

namespace {

HttpReply replyOf(const RequestQueue::Work& work)
{
    try {
        return work();
    } catch (const std::exception&) {  // a request that fails must not end the worker
        return plainReply(500, "Not possible", "This could not be drawn.");
    }
}

}  // namespace

RequestQueue::RequestQueue(int workers, std::size_t longest) : m_longest(longest), m_openWorkers(workers)
{
    for (int number = 0; number < workers; ++number)
        m_workers.emplace_back([this] { runWorker(); });
}

RequestQueue::~RequestQueue()
{
    close();
}

bool RequestQueue::submit(const QByteArray& subject, Work work, Done done)
{
    const std::lock_guard guard(m_mutex);
    if (m_isClosed || m_waitingCount >= m_longest)
        return false;
    ++m_waitingCount;
    const auto same =
        std::find_if(m_jobs.begin(), m_jobs.end(), [&](const Job& job) { return job.subject == subject; });
    if (same != m_jobs.end()) {
        same->waiting.push_back(std::move(done));
        return true;
    }
    m_jobs.push_back({subject, std::move(work), {}});
    m_jobs.back().waiting.push_back(std::move(done));
    m_changed.notify_one();
    return true;
}

void RequestQueue::runWorker()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_isClosed || !m_jobs.empty(); });
        if (m_isClosed)
            break;
        const Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        m_waitingCount -= job.waiting.size();
        lock.unlock();
        const HttpReply reply = replyOf(job.work);
        for (const Done& done : job.waiting)
            done(reply);
        lock.lock();
    }
    lock.unlock();
    MainQueue::main().async([this] { --m_openWorkers; });
}

std::deque<RequestQueue::Job> RequestQueue::takeAll()
{
    const std::lock_guard guard(m_mutex);
    m_isClosed = true;
    m_waitingCount = 0;
    return std::exchange(m_jobs, {});
}

void RequestQueue::close()
{
    for (const Job& job : takeAll())
        for (const Done& done : job.waiting)
            done(busyReply());
    m_changed.notify_all();
    MainQueue::main().runUntil([this] { return m_openWorkers == 0; });
    for (std::thread& worker : m_workers)
        worker.join();
    m_workers.clear();
}

}  // namespace plotix
