#pragma once

#include "hostapp/exchange/Importer.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>

#include <functional>
#include <memory>

class KTVUserInterface;
class QProgressDialog;
class QWidget;

/// Brings files of measurements into an open site: asks how each is to be read, imports one after the other, and says
/// what came of it.
///
/// A site window *owns* one. The work is done by a worker thread over the site's file; the document picks up what was
/// added when it has ended. Destruction cancels an import that runs. Main thread only.
namespace plotix {

class ImportDialog;
class ImportTask;
class SiteDocument;

/// What a sequence needs of the window it works for.
struct ImportSurroundings {
    std::shared_ptr<SiteDocument> site;       ///< shared
    KTVUserInterface* userInterface;          ///< borrowed
    std::function<QWidget*()> windowInFront;  ///< dialogs and progress stand before it
};

class ImportSequence : public QObject {
    Q_OBJECT
public:
    explicit ImportSequence(ImportSurroundings surroundings, QObject* parent = nullptr);
    ~ImportSequence() override;

    /// Asks for each file and imports it; those that come while one is asked for or imported wait for their turn. An
    /// empty name stands for a file yet to be chosen.
    void ask(const QStringList& files);

    /// Imports without asking first; a file that is refused is asked for then, so filled in and with the reason. While
    /// an import runs another one is refused.
    void start(const QString& file, const ImportOptions& options);

    bool isRunning() const { return m_task != nullptr; }

signals:
    void runningChanged();
    void stored(const plotix::ImportSummary& summary);  ///< the document has it already
    void told(const QString& message);                  ///< in passing, as a status bar does
    void ended(bool stored);                            ///< one import

private:
    void next();
    void goOn();
    void tellReport();
    void giveUpOthers();
    ImportDialog* openDialog(const QString& file);
    void askAgain(const ImportFinding& finding);
    void dialogEnded(int answer);
    void cancelled();
    void showProgress(const QString& file);
    void connectTask();
    void askAndReplace(const ImportFinding& finding);
    void finish(const ImportSummary& summary);
    void endTask();
    void report(const ImportSummary& summary);
    void alert(const QString& message, const QString& text, bool isFailure);

    ImportSurroundings m_around;
    QStringList m_files;                 ///< not yet asked for
    QPointer<ImportDialog> m_dialog;     ///< while it asks
    std::unique_ptr<ImportTask> m_task;  ///< while one runs
    QPointer<QProgressDialog> m_progress;
    QString m_file;             ///< of the import started last
    ImportOptions m_options;    ///< likewise
    ImportOptions m_forAll;     ///< how the files that are not asked for are read
    qsizetype m_unasked = 0;    ///< so many of m_files
    std::size_t m_records = 0;  ///< imported since something was said
    QString m_report;           ///< likewise: what came of each file
};

}  // namespace plotix
