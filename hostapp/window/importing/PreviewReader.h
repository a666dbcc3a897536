#pragma once

#include "hostapp/exchange/ImportPreview.h"

#include <QtCore/QObject>

#include <memory>
#include <optional>
#include <utility>

/// Reads what an import would take from a file, on a worker thread, so that a dialog may ask again with every change.
///
/// One file is read at a time, and only the answer to the last request arrives: a new one cancels the one before.
/// Destruction does not wait, because a large spreadsheet takes its time to be opened. Main thread only.
namespace plotix {

class PreviewReader : public QObject {
    Q_OBJECT
public:
    explicit PreviewReader(QObject* parent = nullptr);
    ~PreviewReader() override;

    void request(const QString& file, const ImportOptions& options);
    void cancel();  ///< no answer comes any more
    bool isReading() const { return m_reading != nullptr; }

signals:
    void progressed(int permille);  ///< of a file that has to be read whole
    void previewed(const plotix::ImportPreview& preview);

private:
    struct Reading;
    static void read(const std::shared_ptr<Reading>& reading);
    static void tell(const std::shared_ptr<Reading>& reading, int permille);
    void start(const QString& file, const ImportOptions& options);
    void end(const Reading& reading);

    std::shared_ptr<Reading> m_reading;  ///< while one runs
    std::optional<std::pair<QString, ImportOptions>> m_next;
};

}  // namespace plotix
