#pragma once

#include "hostapp/exchange/formats/RecordExport.h"

#include <QtCore/QObject>
#include <QtCore/QThread>

#include <atomic>
#include <memory>

/// One export of records on a worker thread. *Owns* its thread, *shares* the document; destruction cancels and waits.
/// Main thread only; signals are sent there.
namespace plotix {

class RecordExportTask : public QObject {
    Q_OBJECT
public:
    RecordExportTask(std::shared_ptr<SiteDocument> document, RecordExport what, QString file,
                     QObject* parent = nullptr);
    ~RecordExportTask() override;

    void start();   ///< once
    void cancel();  ///< the export stops at its next step; `cancelled` follows, or `finished` when it was done already

signals:
    void progressed(int permille);
    // Exactly one of these is sent, at the end.
    void finished();
    void failed(const QString& message);
    void cancelled();

private:
    enum class Outcome { Written, Failed, Cancelled };
    void run();
    void announce();

    std::shared_ptr<SiteDocument> m_document;
    RecordStore* m_store;  // borrowed from the document
    RecordExport m_what;
    QString m_file;
    std::unique_ptr<QThread> m_thread;
    Outcome m_outcome = Outcome::Written;  // written by the worker before the thread ends, read afterwards
    QString m_error;                       // likewise
    std::atomic<bool> m_cancel = false;
    int m_permille = -1;  // worker only: progress sent last
};

}  // namespace plotix
