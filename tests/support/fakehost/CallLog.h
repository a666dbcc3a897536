#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <atomic>

/// What happened to the fake host, in order, across all of its objects.
///
/// Every fake writes one line a call, "object.operation argument": "archiveManager.fetch airTemperature,pressure",
/// "userInterface.beginSheet Illegal Date Range", "message.center No Properties Available to Plot",
/// "airTemperature.addObserver unit". Tests may add lines of their own, so that the order of any two events can be
/// asked for. The host *owns* it. Main thread only; what comes on another thread is counted and not written down.
namespace fakehost {

class CallLog {
public:
    void note(const QString& line);
    void pass();  ///< a call that is not worth a line, but must come on the main thread as well
    int callsOnOtherThreads() const { return m_callsOnOtherThreads; }
    const QStringList& lines() const { return m_lines; }
    void clear() { m_lines.clear(); }

    /// Lines that begin with `beginning`.
    int count(const QString& beginning) const;
    bool contains(const QString& beginning) const { return count(beginning) > 0; }

    /// True when both happened, and the first of `earlier` came before the first of `later`.
    bool isBefore(const QString& earlier, const QString& later) const;

private:
    int firstIndex(const QString& beginning) const;  ///< -1 when it never happened

    QStringList m_lines;
    std::atomic<int> m_callsOnOtherThreads = 0;
};

}  // namespace fakehost
