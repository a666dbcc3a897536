#include "hostapp/window/RecordExportTask.h"

#include "hostapp/core/OutputFile.h"
#include "hostapp/window/OutputWords.h"
#include "records/store/RecordStore.h"

namespace plotix {

RecordExportTask::RecordExportTask(std::shared_ptr<SiteDocument> document, RecordExport what, QString file,
                                   QObject* parent)
    : QObject(parent),
      m_document(std::move(document)),
      m_store(&*m_document->records()),
      m_what(std::move(what)),
      m_file(std::move(file))
{
}

RecordExportTask::~RecordExportTask()
{
    m_cancel = true;
    if (m_thread)
        m_thread->wait();
}

void RecordExportTask::start()
{
    m_thread.reset(QThread::create([this] { run(); }));
    connect(m_thread.get(), &QThread::finished, this, &RecordExportTask::announce);
    m_thread->start();
}

void RecordExportTask::cancel()
{
    m_cancel = true;
}

void RecordExportTask::run()
{
    const auto progress = [this](double fraction) {
        const int permille = static_cast<int>(fraction * 1000);
        if (permille != m_permille) {
            m_permille = permille;
            emit progressed(permille);
        }
        return !m_cancel;
    };
    try {
        exportRecords(*m_store, m_what, m_file, progress);
        return;
    } catch (const ExportCancelled&) {
        m_outcome = Outcome::Cancelled;
        return;
    } catch (const OutputFailure& failure) {
        m_error = outputText(failure.problem());
    } catch (const ExportFailure& failure) {
        m_error = failure.systemError();
    } catch (const std::exception& error) {
        m_error = QString::fromUtf8(error.what());
    }
    m_outcome = Outcome::Failed;
}

void RecordExportTask::announce()
{
    switch (m_outcome) {
    case Outcome::Written: emit finished(); break;
    case Outcome::Cancelled: emit cancelled(); break;
    case Outcome::Failed: emit failed(m_error); break;
    }
}

}  // namespace plotix
