// The printed report: page setup, HTML, page header and footer.
//
// Rules of this room:
//  1. The shared print settings are changed in place and stay changed: the next print of anything begins with them.
//  2. Writing the report resizes the hosting view itself and leaves it so until its container lays it out again.
//  3. Every report is built anew; an absent date or site text reads "(null)", an absent logo leaves its place empty.
//  4. Header and footer draw in page coordinates, y upward, whatever context is current, which is put back.
//  5. The two logos come from two bundles: the customer's from the plug-in's, the report's from the host's.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/TrendAccess.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/KTVGraphicsContext.h"
#include "plugins/PlotixPlugIn/logic/ReportText.h"
#include "plugins/PlotixPlugIn/reading/trend/ClockTexts.h"

#include <QtCore/QDateTime>

#include <cmath>

namespace {

// Points.
constexpr float kHeaderHeight = 48.0F;
constexpr float kFooterHeight = 24.0F;
constexpr double kSideMargin = 36.0;
constexpr double kTopAndBottomMargin = 45.0;
constexpr QSizeF kCustomerLogoSize{32.0, 32.0};
constexpr QSizeF kReportLogoSize{128.0, 32.0};
constexpr QSizeF kMeasuringBox{10000.0, 10000.0};
constexpr double kFooterFontSize = 9.0;
constexpr double kLogoDensity = 4.0;  // pixels a point

/// Makes an unflipped context current over the same surface when the current one is flipped; puts that back at the end.
class UnflippedContext {
public:
    UnflippedContext() : m_remembered(KTVGraphicsContext::currentContext())
    {
        if (m_remembered && m_remembered->isFlipped()) {
            m_own = m_remembered->withYAxis(KTVGraphicsContext::YAxis::Unflipped);
            KTVGraphicsContext::setCurrentContext(&*m_own);
        }
    }
    ~UnflippedContext() { KTVGraphicsContext::setCurrentContext(m_remembered); }
    UnflippedContext(const UnflippedContext&) = delete;
    UnflippedContext& operator=(const UnflippedContext&) = delete;

private:
    KTVGraphicsContext* m_remembered;  // borrowed
    std::optional<KTVGraphicsContext> m_own;
};

void drawLogo(const QImage& logo, const QSizeF& size, const QPointF& point)
{
    QImage scaled = imageByScalingProportionallyToSize(logo, size * kLogoDensity);
    scaled.setDevicePixelRatio(kLogoDensity);
    KTVGraphicsContext::currentContext()->copyImage(scaled, point, QRectF(QPointF(), size), 1.0);
}

plotix::ReportRow reportRow(const InfoTableRow& row)
{
    return {row.tableName, row.unit, row.minimum, row.maximum, row.average, row.points};
}

std::optional<QString> described(const plotix::OptionalDate& date, const CPTClock& clock)
{
    return date ? std::optional(plotix::momentDescription(clock, *date)) : std::nullopt;
}

plotix::ReportGeometry geometryOf(const KTVPrintInfo& setup)
{
    const QMarginsF& margins = setup.margins();
    return plotix::reportGeometry(
        setup.paperSize(), {margins.left() + margins.right(), margins.top() + margins.bottom()}, setup.scalingFactor());
}

plotix::Date now()
{
    return plotix::Date{static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000.0};
}

}  // namespace

KTVPrintInfo* KTVPlotixPlugIn::customPrintInfo()
{
    KTVPrintInfo* setup = KTVPrintInfo::sharedPrintInfo();
    setup->setHorizontalPagination(KTVPaginationMode::Automatic);
    setup->setVerticalPagination(KTVPaginationMode::Automatic);
    setup->setScalingFactor(1.0);
    setup->setOrientation(KTVPaperOrientation::Landscape);
    setup->setLeftMargin(kSideMargin);
    setup->setRightMargin(kSideMargin);
    setup->setTopMargin(kTopAndBottomMargin);
    setup->setBottomMargin(kTopAndBottomMargin);
    return setup;
}

std::optional<QString> KTVPlotixPlugIn::htmlContentForPrinting()
{
    const plotix::ReportGeometry geometry = geometryOf(*customPrintInfo());
    plotix::Report report;
    for (const InfoTableRowPtr& row : *m_infoTableArray)
        report.rows.push_back(reportRow(*row));
    if (m_dataCluster) {
        report.fromDate = described(m_dataCluster->fromDateValue(), m_access->clock());
        report.toDate = described(m_dataCluster->toDateValue(), m_access->clock());
    }
    // The window's agent is asked, not the view's own: the text names the site.
    const KTVAgentPtr site = siteWindowController() ? siteWindowController()->agent() : nullptr;
    if (site) {
        report.siteName = site->siteName();
        report.siteLocation = site->siteLocation();
    }
    const QVariantList notes = footnotes();
    for (const QVariant& told : notes) {
        const QVariantMap note = told.toMap();
        report.footnotes.push_back(
            {note.value(QStringLiteral("number")).toInt(), note.value(QStringLiteral("time")).toString(),
             note.value(QStringLiteral("text")).toString(), note.value(QStringLiteral("author")).toString()});
    }
    if (m_hostView)
        m_hostView->setGeometry(QRect(QPoint(), geometry.hostingView.toSize()));
    report.graph = PNGDataWithSize(geometry.graph);
    return plotix::reportHtml(report);
}

float KTVPlotixPlugIn::webViewHeaderHeight(QObject* /*webView*/)
{
    return kHeaderHeight;
}

float KTVPlotixPlugIn::webViewFooterHeight(QObject* /*webView*/)
{
    return kFooterHeight;
}

void KTVPlotixPlugIn::webViewDrawHeaderInRect(QObject* /*webView*/, const QRectF& rect)
{
    if (!KTVGraphicsContext::currentContext())
        return;
    const UnflippedContext context;
    drawLogo(QImage(QStringLiteral(":/PlotixPlugIn/customer_logo.png")), kCustomerLogoSize, rect.topLeft());
    drawLogo(KTVBundle::mainBundle()->imageNamed(QStringLiteral("report_logo")), kReportLogoSize,
             {rect.x() + rect.width() - kReportLogoSize.width(),
              rect.y() + (rect.height() - kReportLogoSize.height()) / 2.0});
}

void KTVPlotixPlugIn::webViewDrawFooterInRect(QObject* /*webView*/, const QRectF& rect)
{
    if (!KTVGraphicsContext::currentContext())
        return;
    const UnflippedContext unflipped;
    KTVGraphicsContext* context = KTVGraphicsContext::currentContext();
    const QFont font = pageFont(QStringLiteral("Gill Sans"), kFooterFontSize);
    const QString prepared =
        plotix::reportFooterLeft(KTVBundle::mainBundle()->executableName(), described(now(), {}).value_or(QString()));
    context->drawText(prepared, rect.topLeft(), font, Qt::black);
    const KTVPrintOperation* operation = KTVPrintOperation::currentOperation();
    const QString pages =
        plotix::reportFooterRight(operation ? operation->currentPage() : 0, operation ? operation->pageCount() : 0);
    const QSizeF measured =
        boundingSizeOfText(pages, kMeasuringBox, KTVStringUsesLineFragmentOrigin | KTVStringUsesFontLeading, font);
    context->drawText(pages, {rect.x() + rect.width() - measured.width(), rect.y()}, font, Qt::black);
}
