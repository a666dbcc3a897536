#include "hostapp/web/RequestQueue.h"

#include "base/MainQueue.h"

#include <algorithm>
#include <iterator>

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

template <class Askings>
void answerAll(const Askings& askings, const HttpReply& reply)
{
    for (const auto& asking : askings)
        asking.done(reply);
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

bool RequestQueue::submit(const QByteArray& subject, Work work, Done done, HasLeft hasLeft)
{
    std::vector<Asking> left;
    const bool accepted = [&] {
        const std::lock_guard guard(m_mutex);
        if (m_isClosed)
            return false;
        const auto same =
            std::find_if(m_jobs.begin(), m_jobs.end(), [&](const Job& job) { return job.subject == subject; });
        if (same != m_jobs.end()) {
            same->waiting.push_back({std::move(done), std::move(hasLeft)});
            return true;
        }
        if (m_jobs.size() >= m_longest)
            left = dropWhatNobodyWantsAnyMore();
        if (m_jobs.size() >= m_longest)
            return false;
        m_jobs.push_back({subject, std::move(work), {}});
        m_jobs.back().waiting.push_back({std::move(done), std::move(hasLeft)});
        m_changed.notify_one();
        return true;
    }();
    answerAll(left, busyReply());
    return accepted;
}

std::vector<RequestQueue::Asking> RequestQueue::takeThoseWhoLeft(Job& job)
{
    const auto first = std::stable_partition(job.waiting.begin(), job.waiting.end(),
                                             [](const Asking& one) { return !one.hasLeft || !one.hasLeft(); });
    std::vector<Asking> left(std::make_move_iterator(first), std::make_move_iterator(job.waiting.end()));
    job.waiting.erase(first, job.waiting.end());
    return left;
}

std::vector<RequestQueue::Asking> RequestQueue::dropWhatNobodyWantsAnyMore()
{
    std::vector<Asking> all;
    for (Job& job : m_jobs) {
        std::vector<Asking> left = takeThoseWhoLeft(job);
        std::move(left.begin(), left.end(), std::back_inserter(all));
    }
    std::erase_if(m_jobs, [](const Job& job) { return job.waiting.empty(); });
    return all;
}

void RequestQueue::runWorker()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_isClosed || !m_jobs.empty(); });
        if (m_isClosed)
            break;
        Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        lock.unlock();
        answerAll(takeThoseWhoLeft(job), busyReply());
        if (!job.waiting.empty())
            answerAll(job.waiting, replyOf(job.work));
        lock.lock();
    }
    lock.unlock();
    MainQueue::main().async([this] { --m_openWorkers; });
}

std::deque<RequestQueue::Job> RequestQueue::takeAll()
{
    const std::lock_guard guard(m_mutex);
    m_isClosed = true;
    return std::exchange(m_jobs, {});
}

void RequestQueue::close()
{
    for (const Job& job : takeAll())
        answerAll(job.waiting, busyReply());
    m_changed.notify_all();
    MainQueue::main().runUntil([this] { return m_openWorkers == 0; });
    for (std::thread& worker : m_workers)
        worker.join();
    m_workers.clear();
}

}  // namespace plotix
