// Importing text files into the site of a window.
//
// The work is done by a worker thread over the site's file; the document picks up what was added when it has ended, and
// an agent that had no records gets its first trend. Files come from the menu, from the empty state, or are dropped.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/core/OutputFile.h"
#include "hostapp/site/NewTrend.h"
#include "hostapp/window/ImportDialog.h"
#include "hostapp/window/ImportTask.h"
#include "hostapp/window/ImportWords.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtGui/QDropEvent>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>

namespace plotix {

namespace {

/// The local files of a drag; none when one of them is no file.
QStringList droppedFiles(const QMimeData* data)
{
    QStringList files;
    for (const QUrl& url : data->hasUrls() ? data->urls() : QList<QUrl>()) {
        if (!QFileInfo(url.toLocalFile()).isFile())
            return {};
        files << url.toLocalFile();
    }
    return files;
}

bool isSite(const QString& file)
{
    return kindOfFile(file) == FileKind::Database || file.endsWith(QStringLiteral(".plotix"), Qt::CaseInsensitive);
}

}  // namespace

void SiteWindow::askAndImport(const QString& file)
{
    askAndImportAll({file});
}

void SiteWindow::askAndImportAll(const QStringList& files)
{
    m_filesToImport << files;
    if (!m_import && m_filesToImport.size() == files.size())  // else the next one's turn comes
        importNext();
}

void SiteWindow::importNext()
{
    if (m_import || m_filesToImport.isEmpty())
        return;
    QStringList names;
    for (const auto& agent : m_controller->siteDocument()->agents())
        names << agent->name();
    ImportDialog dialog(names, windowInFront());
    dialog.setFile(m_filesToImport.first());
    dialog.setMoreToCome(static_cast<int>(m_filesToImport.size()) - 1);
    const int answer = dialog.exec();
    if (answer == QDialog::Rejected)
        m_filesToImport.clear();
    else
        m_filesToImport.removeFirst();
    if (answer == QDialog::Accepted)
        startImport(dialog.file(), dialog.options());
    else
        importNext();  // this one is skipped
}

void SiteWindow::startImport(const QString& file, const ImportOptions& options)
{
    if (m_import)
        return;
    m_importWanted = {file, options};
    m_import = std::make_unique<ImportTask>(file, m_controller->siteDocument()->path(), options);
    updateActions();
    m_progress = new QProgressDialog(tr("Importing %1…").arg(QFileInfo(file).fileName()), tr("Cancel"), 0, 1000, this);
    m_progress->setWindowModality(Qt::WindowModal);
    m_progress->setAutoClose(false);
    m_progress->setAutoReset(false);
    m_progress->setMinimumDuration(400);
    connect(m_import.get(), &ImportTask::progressed, m_progress, &QProgressDialog::setValue);
    connect(m_progress, &QProgressDialog::canceled, m_import.get(), &ImportTask::cancel);
    connect(m_import.get(), &ImportTask::finished, this, &SiteWindow::importFinished);
    connect(m_import.get(), &ImportTask::failed, this, [this](const QString& message) {
        endImport();
        showAlert(tr("The file could not be imported"), message, KTVAlert::Style::Critical, [this] { importNext(); });
        emit importEnded(false);
    });
    connect(m_import.get(), &ImportTask::wouldReplace, this, &SiteWindow::askAndReplace);
    connect(m_import.get(), &ImportTask::cancelled, this, [this] {
        endImport();
        m_filesToImport.clear();
        statusBar()->showMessage(tr("Import cancelled; nothing was stored."), 10'000);
        emit importEnded(false);
    });
    m_import->start();
}

/// Nothing was changed yet; if the user agrees, the file is imported again with leave to replace.
void SiteWindow::askAndReplace(const ImportFinding& finding)
{
    endImport();
    QMessageBox box(QMessageBox::Question, tr("Import"),
                    tr("%1: %2.").arg(QFileInfo(m_importWanted.first).fileName(), shownText(finding)),
                    QMessageBox::Cancel, this);
    box.setInformativeText(tr("Edit ▸ Undo Import brings the values of now back."));
    const QPushButton* replace = box.addButton(tr("&Replace"), QMessageBox::AcceptRole);
    box.exec();
    if (box.clickedButton() != replace) {
        statusBar()->showMessage(tr("Import cancelled; nothing was stored."), 10'000);
        emit importEnded(false);
        importNext();
        return;
    }
    ImportOptions options = m_importWanted.second;
    options.replace = true;
    startImport(QString(m_importWanted.first), options);
}

void SiteWindow::endImport()
{
    delete m_progress;
    ImportTask* ended = m_import.release();
    ended->setParent(this);
    ended->deleteLater();  // later: it is the sender of the signal that brought us here
    updateActions();
}

void SiteWindow::importFinished(const ImportSummary& summary)
{
    endImport();
    try {
        m_controller->siteDocument()->reload();
        if (summary.firstImport)
            addFirstTrend(summary);
        showSelection();
        showAlert(tr("Imported %n record(s)", nullptr, static_cast<int>(summary.records)), shownText(summary),
                  KTVAlert::Style::Informational, [this] { importNext(); });
    } catch (const ReportableError& error) {
        m_filesToImport.clear();
        showAlert(tr("The site could not be read again"), error.message());
    }
    emit importEnded(true);
}

void SiteWindow::addFirstTrend(const ImportSummary& summary)
{
    const auto agent = m_controller->siteDocument()->agentNamed(summary.agent);
    if (!agent || !summary.first || !summary.last)
        return;
    const std::pair imported(Date{*summary.first}, Date{*summary.last});
    std::vector<ValueExtent> extents;
    for (const ImportSummary::Column& column : summary.columns)
        extents.push_back({column.propertyName, column.lowest, column.highest});
    m_controller->newTrend(agent, planFirstTrend(TrendOccasion::Imported, *agent, imported, extents));
}

void SiteWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void SiteWindow::dropEvent(QDropEvent* event)
{
    const QStringList files = droppedFiles(event->mimeData());
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    // Posted: a dialog inside the drop would hold the program the files come from.
    QTimer::singleShot(0, this, [this, files] {
        QStringList measurements;
        for (const QString& file : files)
            if (isSite(file))
                emit openSiteRequested(file);
            else
                measurements << file;
        if (!measurements.isEmpty())
            askAndImportAll(measurements);
    });
}

}  // namespace plotix
