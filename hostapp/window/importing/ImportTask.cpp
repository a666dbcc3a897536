#include "hostapp/window/importing/ImportTask.h"

#include "hostapp/exchange/formats/FileExchange.h"

#include <optional>

namespace plotix {

struct ImportTask::Outcome {
    std::optional<ImportSummary> summary;
    std::optional<ImportFinding> finding;  ///< why the file cannot be imported
    QString error;                         ///< any other reason
    bool cancelled = false;
};

ImportTask::ImportTask(QString file, QString site, ImportOptions options, QObject* parent)
    : QObject(parent),
      m_file(std::move(file)),
      m_site(std::move(site)),
      m_options(std::move(options)),
      m_outcome(std::make_unique<Outcome>())
{
}

ImportTask::~ImportTask()
{
    m_cancel = true;
    if (m_thread)
        m_thread->wait();
}

void ImportTask::start()
{
    m_thread.reset(QThread::create([this] { run(); }));
    connect(m_thread.get(), &QThread::finished, this, &ImportTask::announce);
    m_thread->start();
}

void ImportTask::cancel()
{
    m_cancel = true;
}

void ImportTask::run()
{
    const auto progress = [this](qint64 done, qint64 total) {
        const int permille = total > 0 ? static_cast<int>(done * 1000 / total) : 0;
        if (permille != m_permille) {
            m_permille = permille;
            emit progressed(permille);
        }
        return !m_cancel;
    };
    try {
        m_outcome->summary = importFile(m_file, m_site, m_options, progress);
    } catch (const ImportCancelled&) {
        m_outcome->cancelled = true;
    } catch (const ImportFailure& failure) {
        m_outcome->finding = failure.finding();
    } catch (const std::exception& error) {
        m_outcome->error = QString::fromUtf8(error.what());
    }
}

void ImportTask::announce()
{
    if (m_outcome->summary)
        emit finished(*m_outcome->summary);
    else if (m_outcome->cancelled)
        emit cancelled();
    else if (m_outcome->finding && m_outcome->finding->what == ImportFinding::What::WouldReplace)
        emit wouldReplace(*m_outcome->finding);
    else if (m_outcome->finding)
        emit refused(*m_outcome->finding);
    else
        emit failed(m_outcome->error);
}

}  // namespace plotix
