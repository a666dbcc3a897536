#pragma once

#include <QtCore/QString>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

/// Asks a server every second whether anything was stored there, and if so brings the desk's file up to date, so that
/// whoever has the file open hears of it as of any other change. A server that cannot be reached is asked again. What
/// an ended recorder could not store there is handed over meanwhile.
///
/// Works on a thread of its own, which ends with it; any one thread.
namespace plotix {

class DeskWatch {
public:
    DeskWatch(const QString& desk, const QString& address);
    ~DeskWatch();
    DeskWatch(const DeskWatch&) = delete;
    DeskWatch& operator=(const DeskWatch&) = delete;

private:
    void run();
    void look() const;
    void handOver();

    const QString m_desk, m_address;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::atomic<bool> m_ends = false;                   // changed under the mutex
    std::chrono::steady_clock::time_point m_handAgain;  // the thread's
    std::thread m_thread;
};

}  // namespace plotix
