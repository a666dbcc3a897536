// Exporting records into a file.
//
// The dialog comes first, then the save panel; the file is written on a worker thread with its progress in front.

#include "hostapp/window/SiteWindow.h"

#include "hostapp/site/PlugInOperations.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/ExportRecordsDialog.h"
#include "hostapp/window/RecordExportTask.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QStatusBar>

namespace plotix {

namespace {

constexpr int kMessageTime = 10'000;  // milliseconds
constexpr int kProgressDelay = 400;

/// The agent of the trend in front, else the first one; null without any.
std::shared_ptr<SiteAgent> agentToExport(const SiteDocument& document, const KTVPlugInPtr& trend)
{
    if (trend && trend->agent())
        if (auto agent = document.agentWithIdentifier(trend->agent()->uniqueIdentifier()))
            return agent;
    return document.agents().empty() ? nullptr : document.agents().front();
}

}  // namespace

void SiteWindow::exportRecordsOfTrend()
{
    const std::shared_ptr<SiteDocument> document = m_controller->siteDocument();
    const KTVPlugInPtr trend = trendInFront();
    const auto agent = agentToExport(*document, trend);
    if (!agent)
        return;
    ExportRecordsDialog dialog(agent->name(), shownRange(trend.get()), windowInFront());
    if (dialog.exec() != QDialog::Accepted)
        return;
    const auto path = m_services.userInterface->runSavePanel({dialog.fileType()});
    if (!path)
        return;
    RecordExport what = exportOf(*agent, agent->siteProperties());
    if (const auto span = dialog.span()) {
        what.from = span->first;
        what.to = span->second;
    }
    what.form = dialog.form();
    startExport(new RecordExportTask(document, std::move(what), *path, this), QFileInfo(*path).fileName());
}

void SiteWindow::startExport(RecordExportTask* task, const QString& fileName)
{
    auto* progress = new QProgressDialog(tr("Exporting %1…").arg(fileName), tr("Cancel"), 0, 1000, windowInFront());
    progress->setWindowModality(Qt::WindowModal);
    progress->setAutoClose(false);
    progress->setAutoReset(false);
    progress->setMinimumDuration(kProgressDelay);
    connect(task, &RecordExportTask::progressed, progress, &QProgressDialog::setValue);
    connect(progress, &QProgressDialog::canceled, task, &RecordExportTask::cancel);
    connect(task, &RecordExportTask::finished, this,
            [this, fileName] { statusBar()->showMessage(tr("Exported %1.").arg(fileName), kMessageTime); });
    connect(task, &RecordExportTask::cancelled, this,
            [this] { statusBar()->showMessage(tr("Export cancelled; nothing was written."), kMessageTime); });
    connect(task, &RecordExportTask::failed, this,
            [this](const QString& message) { showAlert(tr("The records could not be exported"), message); });
    for (const auto end : {&RecordExportTask::finished, &RecordExportTask::cancelled}) {
        connect(task, end, progress, &QObject::deleteLater);
        connect(task, end, task, &QObject::deleteLater);
    }
    connect(task, &RecordExportTask::failed, progress, &QObject::deleteLater);
    connect(task, &RecordExportTask::failed, task, &QObject::deleteLater);
    task->start();
}

}  // namespace plotix
