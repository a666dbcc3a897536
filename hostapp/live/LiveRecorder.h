#pragma once

#include "hostapp/live/Recording.h"

#include <QtCore/QObject>
#include <QtCore/QThread>

#include <condition_variable>
#include <mutex>

/// Records a source into a site document, second after second, on a thread of its own.
///
/// *Owns* the recording and the thread. Callers use the main thread only; what the two threads share is guarded by
/// one lock, and signals are sent through the main queue. The document may be open meanwhile; its `reload` picks up a
/// new agent.
namespace plotix {

class LiveRecorder : public QObject {
    Q_OBJECT
public:
    /// Makes site, agent and properties where they are missing; throws ReportableError. `interval` is in seconds.
    LiveRecorder(const QString& site, std::unique_ptr<ReadingSource> source, double interval = 1);
    ~LiveRecorder() override;  ///< stops

    RowId agent() const { return m_agent; }
    const QString& agentName() const { return m_agentName; }
    const QStringList& propertyNames() const { return m_names; }

    /// Once. It ends by itself when another file takes the site's name, which is noticed within a second.
    void start();
    /// Finishes the current record, tries once more to store what waits, and returns then.
    void stop();

    RecordingStatus status() const;

signals:
    void recorded(double time);  ///< this record and all earlier ones are stored
    void waitingChanged();       ///< more records are on this disk until the site's server has them, or fewer
    void statusChanged();        ///< another state, or another message

private:
    void run();
    bool wait(double seconds);
    bool isOver() const;
    bool waitForNext();
    void publish(const RecordingStatus& status);

    Recording m_recording;  // the thread's, once it runs
    RowId m_agent;
    QString m_agentName;
    QStringList m_names;
    double m_interval;
    std::unique_ptr<QThread> m_thread;
    std::shared_ptr<LiveRecorder*> m_self;  // set to null by the destructor, on the main thread

    mutable std::mutex m_mutex;  // guards what follows
    std::condition_variable m_wake;
    bool m_ending = false;
    RecordingStatus m_status;
};

}  // namespace plotix
