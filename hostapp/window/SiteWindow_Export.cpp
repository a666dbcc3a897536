// Exporting records or a picture into a file.
//
// The dialog comes first, then the save panel, which proposes a name. Records are written on a worker thread with their
// progress in front.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/ShownTrend.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/ExportPictureDialog.h"
#include "hostapp/window/ExportRecordsDialog.h"
#include "hostapp/window/OutputWords.h"
#include "hostapp/window/RecordExportTask.h"
#include "hostapp/window/WorkProgress.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QStatusBar>

namespace plotix {

namespace {

constexpr int kMessageTime = 10'000;  // milliseconds
constexpr int kProgressDelay = 400;

using Agents = std::vector<std::shared_ptr<SiteAgent>>;

/// All that have records to export, that of the trend in front first.
Agents agentsToExport(const SiteDocument& document, const KTVPlugInPtr& trend)
{
    Agents agents = document.agents();
    if (trend && trend->agent())
        std::stable_partition(agents.begin(), agents.end(), [&](const auto& agent) {
            return agent->uniqueIdentifier() == trend->agent()->uniqueIdentifier();
        });
    return agents;
}

/// Of the trend's own agent the lines it shows are ticked, of others everything.
std::vector<ExportRecordsDialog::Source> sourcesOf(const Agents& agents, const KTVPlugInPtr& trend)
{
    const QStringList shown = shownKeys(trend.get());
    std::vector<ExportRecordsDialog::Source> sources;
    for (const auto& agent : agents) {
        const bool isTrends = sources.empty() && !shown.isEmpty();
        ExportRecordsDialog::Source source{agent->name(), {}};
        for (const auto& property : agent->siteProperties())
            source.properties.push_back({property->name(), !isTrends || shown.contains(property->propertyName())});
        sources.push_back(std::move(source));
    }
    return sources;
}

/// What cannot be drawn now is drawn when it is exported, or told then.
std::function<QImage(const TrendPicture&)> previewOf(const KTVPlugInPtr& trend)
{
    return [trend](const TrendPicture& picture) {
        try {
            return QImage::fromData(pictureOf(trend, picture), "PNG");
        } catch (const ReportableError&) {
            return QImage();
        }
    };
}

}  // namespace

void SiteWindow::exportPicture()
{
    const KTVPlugInPtr trend = trendInFront();
    ExportPictureDialog dialog(titleOf(*trend),
                               canPrintOnPage(trend.get()) ? ExportPictureDialog::Table::Offered
                                                           : ExportPictureDialog::Table::NotOffered,
                               windowInFront(), {reading(trend.get()).value_or(QVariantMap()), previewOf(trend)});
    if (dialog.exec() != QDialog::Accepted || !settle(trend, Wanted::Covered))
        return;
    const TrendPicture wanted = dialog.picture();
    try {
        QByteArray picture = pictureOf(trend, wanted);
        if (picture.isEmpty()) {
            showAlert(tr("There is no picture to export"),
                      tr("The trend shows no graph yet, or the size asked for is too large. Refresh it, or ask for "
                         "less."));
            return;
        }
        if (dialog.hasRecipe()) {
            ShownView view = viewOf(trend, *m_controller->siteDocument());
            view.reading.insert(wanted.reading);
            picture = withRecipe(wanted.format, picture, recipeOf(view));
        }
        const QString type = endingsOf(wanted.format).first();
        if (const auto path = m_services.userInterface->askWhereToSave({type}, titleOf(*trend)))
            writeOutput(wanted.format, *path, picture);
    } catch (const OutputFailure& failure) {
        showAlert(tr("The picture could not be saved"), outputText(failure.problem()));
    } catch (const ReportableError& error) {
        showAlert(tr("There is no picture to export"), error.message());
    }
}

void SiteWindow::exportRecordsOfTrend()
{
    const std::shared_ptr<SiteDocument> document = m_controller->siteDocument();
    const KTVPlugInPtr trend = trendInFront();
    const Agents agents = agentsToExport(*document, trend);
    if (agents.empty())
        return;
    ExportRecordsDialog dialog(sourcesOf(agents, trend), shownRange(trend.get()), windowInFront());
    if (dialog.exec() != QDialog::Accepted)
        return;
    const auto agent = agents[dialog.source()];
    const auto path = m_services.userInterface->askWhereToSave({dialog.fileType()}, agent->name());
    if (!path)
        return;
    std::vector<std::shared_ptr<SiteProperty>> properties;
    for (const std::size_t position : dialog.properties())
        properties.push_back(agent->siteProperties().at(position));
    RecordExport what = exportOf(*agent, properties);
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
    showLabelPlainly(*progress);
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
