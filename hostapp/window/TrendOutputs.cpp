#include "hostapp/window/TrendOutputs.h"

#include "base/ReportableError.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/ShownTrend.h"
#include "hostapp/site/TrendZone.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/ExportPictureDialog.h"
#include "hostapp/window/ExportRecordsDialog.h"
#include "hostapp/window/OutputWords.h"
#include "hostapp/window/RecordExportTask.h"
#include "hostapp/window/WorkProgress.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QProgressDialog>

namespace plotix {

namespace {

constexpr int kProgressDelay = 400;  // milliseconds
constexpr QSizeF kAnySize{16, 16};   // points; only whether there is a picture counts

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

TrendOutputs::TrendOutputs(Surroundings around, QObject* parent) : QObject(parent), m_around(std::move(around)) {}

void TrendOutputs::exportGraph(const char* operation)
{
    const KTVPlugInPtr plugIn = m_around.trendInFront();
    if (!settle(plugIn, Wanted::Covered))
        return;
    if (drawsGraph(plugIn.get()) && graphImage(plugIn.get(), kAnySize, 1, {}).isNull())
        alert(tr("There is no picture to export"),
              tr("The trend shows no graph yet: wait for its records, or refresh it."));
    else
        sendAction(plugIn.get(), operation, this);
}

void TrendOutputs::exportPicture()
{
    const KTVPlugInPtr trend = m_around.trendInFront();
    ExportPictureDialog dialog(
        titleOf(*trend),
        canPrintOnPage(trend.get()) ? ExportPictureDialog::Table::Offered : ExportPictureDialog::Table::NotOffered,
        m_around.windowInFront(), {reading(trend.get()).value_or(QVariantMap()), previewOf(trend)});
    if (dialog.exec() != QDialog::Accepted || !settle(trend, Wanted::Covered))
        return;
    const TrendPicture wanted = dialog.picture();
    try {
        QByteArray picture = pictureOf(trend, wanted);
        if (picture.isEmpty()) {
            alert(tr("There is no picture to export"),
                  tr("The trend shows no graph yet, or the size asked for is too large. Refresh it, or ask for "
                     "less."));
            return;
        }
        if (dialog.hasRecipe()) {
            ShownView view = viewOf(trend, *m_around.site.siteDocument());
            view.reading.insert(wanted.reading);
            picture = withRecipe(wanted.format, picture, recipeOf(view));
        }
        const QString type = endingsOf(wanted.format).first();
        if (const auto path = m_around.userInterface.askWhereToSave({type}, titleOf(*trend)))
            writeOutput(wanted.format, *path, picture);
    } catch (const OutputFailure& failure) {
        alert(tr("The picture could not be saved"), outputText(failure.problem()));
    } catch (const ReportableError& error) {
        alert(tr("There is no picture to export"), error.message());
    }
}

void TrendOutputs::exportRecords()
{
    const std::shared_ptr<SiteDocument> document = m_around.site.siteDocument();
    const KTVPlugInPtr trend = m_around.trendInFront();
    const Agents agents = agentsToExport(*document, trend);
    if (agents.empty())
        return;
    ExportRecordsDialog dialog(sourcesOf(agents, trend), shownRange(trend.get()), m_around.windowInFront(),
                               {zoneOfTrend(trend.get()), document->zone()});
    if (dialog.exec() != QDialog::Accepted)
        return;
    const auto agent = agents[dialog.source()];
    const auto path = m_around.userInterface.askWhereToSave({dialog.fileType()}, agent->name());
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
    start(new RecordExportTask(document, std::move(what), *path, this), QFileInfo(*path).fileName());
}

void TrendOutputs::start(RecordExportTask* task, const QString& fileName)
{
    auto* progress =
        new QProgressDialog(tr("Exporting %1…").arg(fileName), tr("Cancel"), 0, 1000, m_around.windowInFront());
    showLabelPlainly(*progress);
    progress->setWindowModality(Qt::WindowModal);
    progress->setAutoClose(false);
    progress->setAutoReset(false);
    progress->setMinimumDuration(kProgressDelay);
    connect(task, &RecordExportTask::progressed, progress, &QProgressDialog::setValue);
    connect(progress, &QProgressDialog::canceled, task, &RecordExportTask::cancel);
    connect(task, &RecordExportTask::finished, this, [this, fileName] { emit told(tr("Exported %1.").arg(fileName)); });
    connect(task, &RecordExportTask::cancelled, this,
            [this] { emit told(tr("Export cancelled; nothing was written.")); });
    connect(task, &RecordExportTask::failed, this,
            [this](const QString& message) { alert(tr("The records could not be exported"), message); });
    for (const auto end : {&RecordExportTask::finished, &RecordExportTask::cancelled}) {
        connect(task, end, progress, &QObject::deleteLater);
        connect(task, end, task, &QObject::deleteLater);
    }
    connect(task, &RecordExportTask::failed, progress, &QObject::deleteLater);
    connect(task, &RecordExportTask::failed, task, &QObject::deleteLater);
    task->start();
}

void TrendOutputs::alert(const QString& message, const QString& text)
{
    m_around.userInterface.beginSheet({message, text, KTVAlert::Style::Critical}, m_around.windowInFront(), {});
}

}  // namespace plotix
