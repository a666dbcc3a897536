#include "hostapp/live/LiveRecorder.h"

#include "base/Date.h"
#include "base/MainQueue.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace plotix {

namespace {

constexpr double kLongestUnwatched = 0.5;  // seconds until the site is looked for again

}  // namespace

LiveRecorder::LiveRecorder(const QString& site, std::unique_ptr<ReadingSource> source, double interval)
    : m_recording(site, std::move(source), interval),
      m_agent(m_recording.agent()),
      m_agentName(m_recording.agentName()),
      m_names(m_recording.propertyNames()),
      m_interval(interval),
      m_self(std::make_shared<LiveRecorder*>(this))
{
}

LiveRecorder::~LiveRecorder()
{
    stop();
    *m_self = nullptr;  // tasks that the thread has posted then do nothing
}

void LiveRecorder::start()
{
    if (m_thread)
        return;
    m_thread.reset(QThread::create([this] { run(); }));
    m_thread->setObjectName(QStringLiteral("recorder"));
    m_thread->start();
}

void LiveRecorder::stop()
{
    if (!m_thread)
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_wake.notify_all();
    m_thread->wait();
    m_thread.reset();
}

RecordingStatus LiveRecorder::status() const
{
    const std::lock_guard lock(m_mutex);
    return m_status;
}

void LiveRecorder::run()
{
    while (!isOver() && waitForNext())
        publish(m_recording.record(currentDate().seconds));
    publish(m_recording.finish());
}

bool LiveRecorder::isOver() const
{
    return status().state == RecordingStatus::State::SiteReplaced;
}

/// Waits for the next whole multiple of the interval by the wall clock, so that records once a second come close to the
/// full second. The clock is read each time, not counted on: after a sleep or a clock change there is nothing to catch
/// up with.
bool LiveRecorder::waitForNext()
{
    const double now = currentDate().seconds;
    const double next = (std::floor(now / m_interval) + 1) * m_interval;
    for (double left = next - now; left > 0; left -= kLongestUnwatched) {
        if (!wait(std::min(left, kLongestUnwatched)))
            return false;
        if (left <= kLongestUnwatched)
            break;
        publish(m_recording.watch());
        if (isOver())
            return false;
    }
    return true;
}

/// False when the recorder ends meanwhile.
bool LiveRecorder::wait(double seconds)
{
    std::unique_lock lock(m_mutex);
    return !m_wake.wait_for(lock, std::chrono::duration<double>(seconds), [this] { return m_ending; });
}

void LiveRecorder::publish(const RecordingStatus& status)
{
    RecordingStatus before;
    {
        const std::lock_guard lock(m_mutex);
        before = std::exchange(m_status, status);
    }
    const bool isNew = status.stored > before.stored && status.last;
    const bool isOnItsWay = status.onDisk != before.onDisk;
    const bool differs = status.state != before.state || status.message != before.message;
    if (!isNew && !isOnItsWay && !differs)
        return;
    MainQueue::main().async([self = m_self, isNew, isOnItsWay, differs, time = status.last.value_or(0)] {
        if (isNew && *self)
            emit(*self)->recorded(time);
        if (isOnItsWay && *self)
            emit(*self)->waitingChanged();
        if (differs && *self)
            emit(*self)->statusChanged();
    });
}

}  // namespace plotix
