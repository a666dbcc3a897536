#include "hostapp/window/importing/PreviewReader.h"

#include "base/MainQueue.h"
#include "hostapp/exchange/formats/FileExchange.h"

#include <QtCore/QThreadPool>

#include <atomic>

namespace plotix {

/// One reading, shared by reader and worker, either of which may end first.
struct PreviewReader::Reading {
    QString file;
    ImportOptions options;
    PreviewReader* reader = nullptr;  ///< main thread only; null when nobody waits
    std::atomic<bool> isCancelled = false;
    std::optional<ImportPreview> preview{};  ///< written by the worker before it says that it is done
};

PreviewReader::PreviewReader(QObject* parent) : QObject(parent) {}

PreviewReader::~PreviewReader()
{
    cancel();
    if (m_reading)
        m_reading->reader = nullptr;
}

void PreviewReader::request(const QString& file, const ImportOptions& options)
{
    cancel();
    if (m_reading)
        m_next.emplace(file, options);
    else
        start(file, options);
}

void PreviewReader::cancel()
{
    m_next.reset();
    if (m_reading)
        m_reading->isCancelled = true;
}

void PreviewReader::start(const QString& file, const ImportOptions& options)
{
    m_reading = std::make_shared<Reading>(file, options, this);
    QThreadPool::globalInstance()->start([reading = m_reading] { read(reading); });
}

/// On the worker's thread.
void PreviewReader::read(const std::shared_ptr<Reading>& reading)
{
    const auto progress = [&reading, last = -1](qint64 done, qint64 total) mutable {
        const int permille = total > 0 ? static_cast<int>(done * 1000 / total) : 0;
        if (std::exchange(last, permille) != permille)
            tell(reading, permille);
        return !reading->isCancelled;
    };
    try {
        reading->preview = previewOf(reading->file, reading->options, progress);
    } catch (const ImportCancelled&) {
    } catch (const std::exception& error) {
        reading->preview.emplace();
        reading->preview->problem =
            ImportFinding{.what = ImportFinding::What::ReadingFailed, .text = QString::fromUtf8(error.what())};
    }
    MainQueue::main().async([reading] {
        if (reading->reader)
            reading->reader->end(*reading);
    });
}

void PreviewReader::tell(const std::shared_ptr<Reading>& reading, int permille)
{
    MainQueue::main().async([reading, permille] {
        if (reading->reader && !reading->isCancelled)
            emit reading->reader->progressed(permille);
    });
}

void PreviewReader::end(const Reading& reading)
{
    const std::shared_ptr<Reading> ended = std::exchange(m_reading, nullptr);
    if (const auto next = std::exchange(m_next, std::nullopt))
        start(next->first, next->second);
    if (!reading.isCancelled && reading.preview)
        emit previewed(*reading.preview);
}

}  // namespace plotix
