// Bringing files of measurements into the site of a window.
//
// ImportSequence asks and imports; the window shows what came of it, and an agent that had no records gets its first
// trend. Files come from the menu, from the empty state, or are dropped.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/core/OutputFile.h"
#include "hostapp/site/NewTrend.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/SiteDrops.h"
#include "hostapp/window/SiteEditor.h"
#include "hostapp/window/importing/ImportSequence.h"

namespace plotix {

namespace {

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
    m_drops = std::make_unique<SiteDrops>(
        SiteDrops::Surroundings{this, *m_controller, *m_editor, m_trendList, [this] { return trendsOnScreen(); }});
    connect(m_drops.get(), &SiteDrops::filesDropped, this, &SiteWindow::takeFiles);
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

void SiteWindow::takeFiles(const QStringList& files)
{
    QStringList measurements;
    for (const QString& file : files)
        if (isSite(file))
            emit openSiteRequested(file);
        else if (!openFigure(file))
            measurements << file;
    if (!measurements.isEmpty())
        askAndImportAll(measurements);
}

}  // namespace plotix
