#include "hostapp/window/importing/ImportSequence.h"

#include "base/ReportableError.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/window/importing/ImportDialog.h"
#include "hostapp/window/importing/ImportTask.h"
#include "hostapp/window/importing/ImportWords.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>

namespace plotix {

ImportSequence::ImportSequence(ImportSurroundings surroundings, QObject* parent)
    : QObject(parent), m_around(std::move(surroundings))
{
}

ImportSequence::~ImportSequence()
{
    delete m_dialog;
    delete m_progress;
}

void ImportSequence::ask(const QStringList& files)
{
    const bool isAsking = !m_files.isEmpty() || m_dialog;
    m_files << files;
    if (m_dialog)
        m_dialog->setMoreToCome(static_cast<int>(m_files.size()));
    if (!m_task && !isAsking)  // else the next one's turn comes
        next();
}

void ImportSequence::next()
{
    if (m_task || m_dialog || m_files.isEmpty())
        return;
    QStringList names;
    for (const auto& agent : m_around.site->agents())
        names << agent->name();
    m_dialog = new ImportDialog(names, m_around.windowInFront());
    m_dialog->setFile(m_files.takeFirst());
    m_dialog->setMoreToCome(static_cast<int>(m_files.size()));
    connect(m_dialog, &QDialog::finished, this, &ImportSequence::dialogEnded);
    m_dialog->open();
}

void ImportSequence::dialogEnded(int answer)
{
    ImportDialog* dialog = m_dialog;
    m_dialog = nullptr;
    dialog->deleteLater();
    if (answer == QDialog::Rejected)
        m_files.clear();
    if (answer == QDialog::Accepted)
        start(dialog->file(), dialog->options());
    else
        next();  // this one is skipped
}

void ImportSequence::start(const QString& file, const ImportOptions& options)
{
    if (m_task)
        return;
    m_file = file;
    m_options = options;
    m_task = std::make_unique<ImportTask>(file, m_around.site->path(), options);
    showProgress(file);
    connectTask();
    emit runningChanged();
    m_task->start();
}

void ImportSequence::showProgress(const QString& file)
{
    m_progress = new QProgressDialog(tr("Importing %1…").arg(QFileInfo(file).fileName()), tr("Cancel"), 0, 1000,
                                     m_around.windowInFront());
    m_progress->setWindowModality(Qt::WindowModal);
    m_progress->setAutoClose(false);
    m_progress->setAutoReset(false);
    m_progress->setMinimumDuration(400);
    m_progress->findChild<QLabel*>()->setTextFormat(Qt::PlainText);
    connect(m_task.get(), &ImportTask::progressed, m_progress, &QProgressDialog::setValue);
    connect(m_progress, &QProgressDialog::canceled, m_task.get(), &ImportTask::cancel);
}

void ImportSequence::connectTask()
{
    connect(m_task.get(), &ImportTask::finished, this, &ImportSequence::finish);
    connect(m_task.get(), &ImportTask::wouldReplace, this, &ImportSequence::askAndReplace);
    connect(m_task.get(), &ImportTask::failed, this, [this](const QString& message) {
        endTask();
        alert(tr("The file could not be imported"), message, true);
        emit ended(false);
    });
    connect(m_task.get(), &ImportTask::cancelled, this, [this] {
        endTask();
        m_files.clear();
        emit told(tr("Import cancelled; nothing was stored."));
        emit ended(false);
    });
}

/// Nothing was changed yet; if the user agrees, the file is imported again with leave to replace.
void ImportSequence::askAndReplace(const ImportFinding& finding)
{
    endTask();
    QMessageBox box(QMessageBox::Question, tr("Import"),
                    tr("%1: %2.").arg(QFileInfo(m_file).fileName(), shownText(finding)), QMessageBox::Cancel,
                    m_around.windowInFront());
    box.setTextFormat(Qt::PlainText);  // names stand in it
    box.setInformativeText(tr("Edit ▸ Undo Import brings the values of now back."));
    const QPushButton* replace = box.addButton(tr("&Replace"), QMessageBox::AcceptRole);
    box.exec();
    if (box.clickedButton() != replace) {
        emit told(tr("Import cancelled; nothing was stored."));
        emit ended(false);
        next();
        return;
    }
    ImportOptions options = m_options;
    options.replace = true;
    start(QString(m_file), options);
}

void ImportSequence::endTask()
{
    delete m_progress;
    ImportTask* finished = m_task.release();
    finished->setParent(this);
    finished->deleteLater();  // later: it is the sender of the signal that brought us here
    emit runningChanged();
}

void ImportSequence::finish(const ImportSummary& summary)
{
    endTask();
    try {
        m_around.site->reload();
        emit stored(summary);
        alert(tr("Imported %n record(s)", nullptr, static_cast<int>(summary.records)), shownText(summary), false);
    } catch (const ReportableError& error) {
        m_files.clear();
        alert(tr("The site could not be read again"), error.message(), true);
    }
    emit ended(true);
}

/// The next file's turn comes when it is dismissed.
void ImportSequence::alert(const QString& message, const QString& text, bool isFailure)
{
    const auto style = isFailure ? KTVAlert::Style::Critical : KTVAlert::Style::Informational;
    m_around.userInterface->beginSheet({message, text, style}, m_around.windowInFront(), [weak = QPointer(this)] {
        if (weak)
            weak->next();
    });
}

}  // namespace plotix
