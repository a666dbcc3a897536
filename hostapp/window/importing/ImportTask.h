#pragma once

#include "hostapp/exchange/Importer.h"

#include <QtCore/QObject>
#include <QtCore/QThread>

#include <atomic>
#include <memory>

/// One import on a worker thread. *Owns* its thread; destruction cancels and waits. Main thread only; signals are sent
/// there.
namespace plotix {

class ImportTask : public QObject {
    Q_OBJECT
public:
    ImportTask(QString file, QString site, ImportOptions options, QObject* parent = nullptr);
    ~ImportTask() override;

    void start();   ///< once
    void cancel();  ///< the import stops at its next step; `cancelled` follows, or `finished` when it was done already

signals:
    void progressed(int permille);
    // Exactly one of these is sent, at the end.
    void finished(const plotix::ImportSummary& summary);
    void wouldReplace(const plotix::ImportFinding& finding);  ///< stored values, which was not allowed
    void refused(const plotix::ImportFinding& finding);       ///< the file, read so
    void failed(const QString& message);                      ///< for another reason
    void cancelled();

private:
    struct Outcome;
    void run();
    void announce();

    QString m_file, m_site;
    ImportOptions m_options;
    std::unique_ptr<QThread> m_thread;
    std::unique_ptr<Outcome> m_outcome;  // written by the worker before the thread ends, read afterwards
    std::atomic<bool> m_cancel = false;
    int m_permille = -1;  // worker only: progress sent last
};

}  // namespace plotix
