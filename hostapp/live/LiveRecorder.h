#pragma once

#include "hostapp/live/Recording.h"

#include <QtCore/QObject>
#include <QtCore/QThread>

#include <condition_variable>
#include <mutex>

/// Records a source into a site document, second after second, on a thread of its own.
///
/// *Owns* the recording and the thread. Main thread only, for whoever uses it; what the two threads share is guarded by
/// one lock, and signals are sent by the main queue. The document may be open beside it: it
/// `reload`s to see a new agent.
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

    void start();  ///< once
    /// Ends after the record under way, and after one more try to store what waits. Waits for that.
    void stop();

    RecordingStatus status() const;

signals:
    void recorded(double time);  ///< a record of this time is stored, and all before it
    void statusChanged();        ///< another state, or another message

private:
    void run();
    bool waitForNext();
    void publish(const RecordingStatus& status);

    Recording m_recording;  // the thread's, once it runs
    RowId m_agent;
    QString m_agentName;
    QStringList m_names;
    double m_interval;
    std::unique_ptr<QThread> m_thread;
    std::shared_ptr<LiveRecorder*> m_self;  // pointed to nothing at the end, on the main thread

    mutable std::mutex m_mutex;  // guards what follows
    std::condition_variable m_wake;
    bool m_ending = false;
    RecordingStatus m_status;
};

}  // namespace plotix
