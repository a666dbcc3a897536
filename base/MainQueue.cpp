#include "base/MainQueue.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QObject>

#include <cassert>
#include <condition_variable>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace plotix {

/// Lives on the main thread and receives the wake-ups.
///
/// A nested event loop delivers posted events as well, so the events carry no task: the tasks wait in a list of their
/// own, and a wake-up that arrives inside a running task leaves them there. The outermost drain wakes itself again.
class MainQueue::Drain : public QObject {
public:
    void post(std::function<void()> task)
    {
        {
            const std::lock_guard guard(m_lock);
            m_tasks.push_back(std::move(task));
            m_posted.notify_one();
            if (m_running || m_wakeUpPosted)
                return;
            m_wakeUpPosted = true;
        }
        wakeUp();
    }

    void runUntil(const std::function<bool()>& reached)
    {
        while (!reached()) {
            const InnerTask inner(this);
            inner.task();
        }
        const std::unique_lock guard(m_lock);
        if (!m_running && !m_tasks.empty() && !std::exchange(m_wakeUpPosted, true))
            wakeUp();
    }

    bool isOnItsThread() const { return std::this_thread::get_id() == m_mainThread; }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        if (auto task = beginTask()) {
            const RunningTask running{this};
            (*task)();
        }
        return true;
    }

private:
    struct RunningTask {
        Drain* drain;
        ~RunningTask() { drain->endTask(); }
    };

    /// Waits for the next task and takes it, also while another task runs, which goes on afterwards.
    struct InnerTask {
        explicit InnerTask(Drain* itsDrain) : drain(itsDrain)
        {
            std::unique_lock lock(drain->m_lock);
            drain->m_posted.wait(lock, [this] { return !drain->m_tasks.empty(); });
            task = std::move(drain->m_tasks.front());
            drain->m_tasks.pop_front();
            isInsideAnother = std::exchange(drain->m_running, true);
        }
        ~InnerTask()
        {
            const std::lock_guard guard(drain->m_lock);
            drain->m_running = isInsideAnother;
        }
        InnerTask(const InnerTask&) = delete;
        InnerTask& operator=(const InnerTask&) = delete;

        Drain* drain;
        std::function<void()> task;
        bool isInsideAnother = false;
    };

    std::optional<std::function<void()>> beginTask()
    {
        const std::lock_guard guard(m_lock);
        m_wakeUpPosted = false;
        if (m_running || m_tasks.empty())
            return std::nullopt;
        m_running = true;
        auto task = std::move(m_tasks.front());
        m_tasks.pop_front();
        return task;
    }

    void endTask()
    {
        {
            const std::lock_guard guard(m_lock);
            m_running = false;
            if (m_tasks.empty() || m_wakeUpPosted)
                return;
            m_wakeUpPosted = true;
        }
        wakeUp();
    }

    void wakeUp() { QCoreApplication::postEvent(this, new QEvent(QEvent::User)); }

    const std::thread::id m_mainThread = std::this_thread::get_id();
    std::mutex m_lock;  // guards the three below
    std::condition_variable m_posted;
    std::deque<std::function<void()>> m_tasks;
    bool m_running = false;
    bool m_wakeUpPosted = false;
};

MainQueue::MainQueue() : m_drain(new Drain) {}

MainQueue& MainQueue::main()
{
    static MainQueue* const queue = new MainQueue;
    return *queue;
}

void MainQueue::async(std::function<void()> task)
{
    m_drain->post(std::move(task));
}

void MainQueue::sync(const std::function<void()>& task)
{
    assert(!isMainThread() && "the main thread would wait for itself");
    // Shared: the main thread is still inside the packaged task when the waiting thread goes on.
    const auto packaged = std::make_shared<std::packaged_task<void()>>(task);
    std::future<void> done = packaged->get_future();
    m_drain->post([packaged] { (*packaged)(); });
    done.get();
}

void MainQueue::runUntil(const std::function<bool()>& reached)
{
    assert(isMainThread());
    m_drain->runUntil(reached);
}

bool MainQueue::isMainThread()
{
    return main().m_drain->isOnItsThread();
}

}  // namespace plotix
