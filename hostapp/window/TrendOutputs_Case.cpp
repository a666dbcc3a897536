// The trend in front as a case: a site of its own with its records and notes.

#include "hostapp/window/TrendOutputs.h"

#include "base/ReportableError.h"
#include "hostapp/site/ShownTrend.h"
#include "hostapp/site/TrendCase.h"
#include "hostapp/site/TrendZone.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/OutputWords.h"
#include "hostapp/window/SaveCaseDialog.h"
#include "hostapp/window/WorkProgress.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace plotix {

void TrendOutputs::saveCase()
{
    const KTVPlugInPtr trend = m_around.trendInFront();
    const SiteDocument& document = *m_around.site.siteDocument();
    const ShownView shown = viewOf(trend, document);
    if (!shown.from || !shown.to)
        return alert(tr("There is no case to save"), tr("The trend shows no graph yet. Refresh it."));
    SaveCaseDialog dialog(titleOf(*trend), {shown.from->seconds, shown.to->seconds}, markedSpan(trend.get()),
                          m_around.windowInFront(), zoneOfTrend(trend.get()));
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (const auto path = m_around.userInterface.askWhereToSave({QStringLiteral("plotix")}, titleOf(*trend)))
        writeCaseOf(*trend, dialog.span(), *path);
}

void TrendOutputs::writeCaseOf(const KTVPlugIn& trend, const MomentSpan& span, const QString& path)
{
    const QFileInfo file(path);
    try {
        const CasePlan plan = planOfCase(trend, *m_around.site.siteDocument(), span);
        std::optional<CaseContents> contents;
        workWithProgress(tr("Saving %1…").arg(file.fileName()), m_around.windowInFront(),
                         [&](const WorkProgress& progress) { contents = writeCase(plan, path, progress); });
        if (!contents)
            return emit told(tr("Cancelled; the case was not saved."));
        m_around.userInterface.beginSheet(
            {tr("The case is saved"),
             tr("“%1” in %2 has %3.")
                 .arg(file.fileName(), QDir::toNativeSeparators(file.absolutePath()), contentsText(*contents)),
             KTVAlert::Style::Informational},
            m_around.windowInFront(), {});
    } catch (const CaseFailure& failure) {
        alert(tr("The case is not saved"), caseText(failure.problem()));
    } catch (const std::exception& error) {
        alert(tr("The case is not saved"), QString::fromUtf8(error.what()));
    }
}

}  // namespace plotix
