// Into the clipboard: pictures, links and records.

#include "hostapp/window/TrendOutputs.h"

#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/ShownTrend.h"
#include "hostapp/site/TrendZone.h"
#include "hostapp/site/ViewLink.h"
#include "hostapp/window/CopiedRecords.h"

#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>

namespace plotix {

namespace {

constexpr double kCopiedDensity = 2;  // pixels a point

}  // namespace

void TrendOutputs::copyPicture()
{
    const KTVPlugInPtr trend = m_around.trendInFront();
    const QImage picture = graphImage(trend.get(), kUsualGraphSize, kCopiedDensity, titleOf(*trend));
    if (picture.isNull())
        return alert(tr("There is no picture to copy"), tr("The trend shows no graph yet. Refresh it."));
    QApplication::clipboard()->setImage(picture);
    emit told(tr("The picture is in the clipboard."));
}

void TrendOutputs::copyLink()
{
    putLinkTo(viewOf(m_around.trendInFront(), *m_around.site.siteDocument()));
}

void TrendOutputs::copyMarkedLink()
{
    const KTVPlugInPtr trend = m_around.trendInFront();
    const auto marked = markedSpan(trend.get());
    if (!marked)
        return alert(tr("There is no stretch between marks"), tr("Set both marks, A and B, first."));
    ShownView view = viewOf(trend, *m_around.site.siteDocument());
    view.from = Date{marked->first};
    view.to = Date{marked->second};
    putLinkTo(view);
}

void TrendOutputs::putLinkTo(const ShownView& view)
{
    QApplication::clipboard()->setText(linkOf(view));
    emit told(
        tr("The link is in the clipboard; “plotix open LINK” shows this view to whoever has %1.").arg(view.siteFile));
}

void TrendOutputs::copyRecords()
{
    const KTVPlugInPtr trend = m_around.trendInFront();
    SiteDocument& document = *m_around.site.siteDocument();
    const ShownView view = viewOf(trend, document);
    const auto agent = document.agentNamed(view.agent);
    try {
        QString records;
        if (agent && view.from && view.to)
            records = copiedRecords(document, *agent, shownKeys(trend.get()), {view.from->seconds, view.to->seconds},
                                    zoneOfTrend(trend.get()));
        if (records.isEmpty())
            return alert(tr("There are no records to copy"), tr("The trend shows none in this span."));
        QApplication::clipboard()->setText(records);
        emit told(tr("The records shown are in the clipboard."));
    } catch (const std::exception& error) {
        alert(tr("The records could not be copied"), QString::fromUtf8(error.what()));
    }
}

}  // namespace plotix
