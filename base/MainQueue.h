#pragma once

#include <functional>

/// The one serial queue of the main thread, drained by the Qt event loop.
///
/// Tasks run in the order they were posted, one at a time: while a task runs (also while it runs a
/// modal alert's nested event loop) the next ones wait. Any thread may post. The main thread is the
/// one that first calls `MainQueue::main()`; do that before starting threads. One task a turn of the event
/// loop, so that a burst of tasks does not keep the user's clicks waiting. Needs QtCore only.
///
/// Invariants: 1. a task runs on the main thread only; 2. tasks start in the order of posting; 3. no task
/// starts while another one has not returned, unless that one called `runUntil`; 4. while tasks wait and none runs, one
/// wake-up is on its way.
namespace plotix {

class MainQueue {
public:
    static MainQueue& main();

    /// Posts a task and returns at once, also when called from the main thread: the task never runs inside this call.
    void async(std::function<void()> task);

    /// Posts a task and waits until it has run.
    /// A task that throws: the exception comes out here. Waits forever when the event loop never runs again.
    /// Requires: not the main thread (it would wait for itself).
    void sync(const std::function<void()>& task);

    /// Runs tasks here and now, without the event loop, until `reached` answers true: for whatever ends and must wait
    /// for threads which may still need the main queue. `reached` is checked before each task; another thread that
    /// makes it true posts a task afterwards, which may be empty. Called inside a task, that task lets the others run
    /// before it returns.
    /// Requires: the main thread.
    void runUntil(const std::function<bool()>& reached);

    static bool isMainThread();

    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;

private:
    MainQueue();
    ~MainQueue() = delete;  // late threads may still post while the process ends
    class Drain;
    Drain* m_drain;  // owns; lives as long as the process
};

}  // namespace plotix
