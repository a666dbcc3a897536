#include "hostapp/window/importing/ImportSequence.h"

#include "base/ReportableError.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/window/importing/ImportDialog.h"
#include "hostapp/window/importing/ImportTask.h"
#include "hostapp/window/importing/ImportWords.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"

#include <QtCore/QFileInfo>
#include <QtCore/QTimer>
#include <QtWidgets/QCheckBox>
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
    if (m_around.site->isReadOnly()) {
        alert(tr("Nothing is imported"), tr("This site may only be looked at."), true);
        return;
    }
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
    const QString file = m_files.takeFirst();
    if (m_unasked > 0) {
        --m_unasked;
        start(file, m_forAll);
    } else {
        openDialog(file)->open();
    }
}

ImportDialog* ImportSequence::openDialog(const QString& file)
{
    QStringList names;
    for (const auto& agent : m_around.site->agents())
        names << agent->name();
    m_dialog = new ImportDialog(names, m_around.windowInFront());
    m_dialog->setFile(file);
    m_dialog->setMoreToCome(static_cast<int>(m_files.size()));
    connect(m_dialog, &QDialog::finished, this, &ImportSequence::dialogEnded);
    return m_dialog;
}

/// The dialog comes back as it was filled in, with what is wrong.
void ImportSequence::askAgain(const ImportFinding& finding)
{
    endTask();
    emit ended(false);
    ImportDialog* dialog = openDialog(m_file);
    dialog->setOptions(m_options);
    dialog->setStandsForAll(m_unasked > 0);
    dialog->showRefusal(finding);
    dialog->open();
}

void ImportSequence::dialogEnded(int answer)
{
    ImportDialog* dialog = m_dialog;
    m_dialog = nullptr;
    dialog->deleteLater();
    if (answer == QDialog::Accepted) {
        const ImportOptions options = dialog->options();
        m_unasked = dialog->standsForAll() ? m_files.size() : 0;
        m_forAll = options;
        if (dialog->namesAgentByFile())
            m_forAll.agentName.clear();
        start(dialog->file(), options);
        return;
    }
    if (answer == QDialog::Rejected)
        giveUpOthers();
    goOn();
}

void ImportSequence::giveUpOthers()
{
    m_files.clear();
    m_unasked = 0;
}

/// The next file's turn; after the last one that was not asked for, what came of them.
void ImportSequence::goOn()
{
    if (m_task || m_dialog)
        return;
    if (m_unasked == 0 && !m_report.isEmpty())
        tellReport();
    else
        next();
}

void ImportSequence::tellReport()
{
    const QString report = std::exchange(m_report, {});
    const auto records = static_cast<int>(std::exchange(m_records, 0));
    alert(tr("Imported %n record(s)", nullptr, records), report, false);
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
    connect(m_task.get(), &ImportTask::refused, this, &ImportSequence::askAgain);
    connect(m_task.get(), &ImportTask::cancelled, this, &ImportSequence::cancelled);
    connect(m_task.get(), &ImportTask::failed, this, [this](const QString& message) {
        endTask();
        m_unasked = 0;  // what is wrong is the site: they would meet the same
        alert(tr("The file could not be imported"), message, true);
        emit ended(false);
    });
}

void ImportSequence::cancelled()
{
    endTask();
    giveUpOthers();
    emit told(tr("Import cancelled; nothing was stored."));
    emit ended(false);
    goOn();
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
    auto* inAll = new QCheckBox(tr("&Also in the other %n file(s)", nullptr, static_cast<int>(m_unasked)), &box);
    if (m_unasked > 0)
        box.setCheckBox(inAll);
    inAll->setVisible(box.checkBox() != nullptr);
    box.exec();
    if (box.clickedButton() != replace) {
        emit told(tr("Import cancelled; nothing was stored."));
        emit ended(false);
        goOn();
        return;
    }
    if (inAll->isChecked())
        m_forAll.replace = true;
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
        report(summary);
    } catch (const ReportableError& error) {
        giveUpOthers();
        alert(tr("The site could not be read again"), error.message(), true);
    }
    emit ended(true);
}

/// At once, or together with the others'.
void ImportSequence::report(const ImportSummary& summary)
{
    m_records += summary.records;
    m_report += (m_report.isEmpty() ? QString() : QStringLiteral("\n")) + shownText(summary);
    if (m_unasked > 0)
        QTimer::singleShot(0, this, &ImportSequence::goOn);  // after everyone knows that this one has ended
    else
        tellReport();
}

/// The next file's turn comes when it is dismissed.
void ImportSequence::alert(const QString& message, const QString& text, bool isFailure)
{
    const auto style = isFailure ? KTVAlert::Style::Critical : KTVAlert::Style::Informational;
    m_around.userInterface->beginSheet({message, text, style}, m_around.windowInFront(), [weak = QPointer(this)] {
        if (weak)
            weak->goOn();
    });
}

}  // namespace plotix
