// Bringing files of measurements into the site of a window.
//
// ImportSequence asks and imports; the window shows what came of it, and an agent that had no records gets its first
// trend. Files come from the menu, from the empty state, or are dropped.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/core/OutputFile.h"
#include "hostapp/site/NewTrend.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/SiteEditor.h"
#include "hostapp/window/importing/ImportSequence.h"
#include "plugins/PlotixPlugIn/host/KTVDragData.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtGui/QDropEvent>

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

void SiteWindow::connectImporting()
{
    m_importing = std::make_unique<ImportSequence>(
        ImportSurroundings{m_controller->siteDocument(), m_services.userInterface, [this] { return windowInFront(); }});
    ImportSequence* importing = m_importing.get();
    connect(m_actions.import, &QAction::triggered, this, [this] { askAndImportAll({QString()}); });
    connect(importing, &ImportSequence::runningChanged, this, &SiteWindow::updateActions);
    connect(importing, &ImportSequence::stored, this, &SiteWindow::showImported);
    connect(importing, &ImportSequence::told, this, &SiteWindow::tell);
    connect(importing, &ImportSequence::ended, this, &SiteWindow::importEnded);
}

void SiteWindow::askAndImportAll(const QStringList& files)
{
    m_importing->ask(files);
}

void SiteWindow::startImport(const QString& file, const ImportOptions& options)
{
    m_importing->start(file, options);
}

void SiteWindow::showImported(const ImportSummary& summary)
{
    try {
        if (summary.firstImport)
            addFirstTrend(summary);
    } catch (const ReportableError& error) {
        showAlert(tr("The trend could not be made"), error.message());
    }
    showSelection();
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
    if (!droppedFiles(event->mimeData()).isEmpty() || !droppedProperties(event->mimeData()).empty())
        event->acceptProposedAction();
}

// Where a trend takes properties itself, since they are its own agent's, the window is not asked.
std::vector<std::shared_ptr<SiteProperty>> SiteWindow::droppedProperties(const QMimeData* dragged) const
{
    std::vector<std::shared_ptr<SiteProperty>> dropped;
    if (m_controller->siteDocument()->isReadOnly())
        return dropped;
    for (const auto& agent : m_controller->siteDocument()->agents()) {
        const auto keys = propertyNamesFromDragData(dragged->data(agent->uniqueIdentifier())).value_or(QStringList());
        for (const auto& property : agent->siteProperties())
            if (keys.contains(property->propertyName()))
                dropped.push_back(property);
    }
    return dropped;
}

void SiteWindow::dropProperties(const QDropEvent& event)
{
    const auto properties = droppedProperties(event.mimeData());
    for (const KTVPlugInPtr& trend : trendsOnScreen()) {
        QWidget* view = trend->view();
        const QPoint place = view->mapFromGlobal(mapToGlobal(event.position().toPoint()));
        if (properties.empty() || view->window() != this || !view->rect().contains(place))
            continue;
        // Posted: the window waits for the site to be written, and the drag would wait with it.
        QTimer::singleShot(0, m_editor.get(), [this, trend, properties] { m_editor->addToTrend(trend, properties); });
    }
}

void SiteWindow::dropEvent(QDropEvent* event)
{
    const QStringList files = droppedFiles(event->mimeData());
    if (files.isEmpty() && droppedProperties(event->mimeData()).empty())
        return;
    event->acceptProposedAction();
    if (files.isEmpty())
        return dropProperties(*event);
    // Posted: a dialog inside the drop would hold the program the files come from.
    QTimer::singleShot(0, this, [this, files] {
        QStringList measurements;
        for (const QString& file : files)
            if (isSite(file))
                emit openSiteRequested(file);
            else if (!openFigure(file))
                measurements << file;
        if (!measurements.isEmpty())
            askAndImportAll(measurements);
    });
}

}  // namespace plotix
