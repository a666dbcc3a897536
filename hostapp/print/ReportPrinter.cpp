#include "hostapp/print/ReportPrinter.h"

#include "base/ReportableError.h"
#include "hostapp/print/PagesToPrint.h"
#include "hostapp/print/PdfFile.h"
#include "hostapp/print/ReportDocument.h"
#include "plugins/PlotixPlugIn/host/KTVGraphicsContext.h"
#include "plugins/PlotixPlugIn/host/KTVWebUIDelegate.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>

namespace plotix {

namespace {

// The report's own picture is the graph drawn at twice its size on paper and scaled down to half. For print it is drawn
// the same way, not scaled down, and with twice as many pixels a point.
constexpr double kGraphScale = 2;
constexpr double kGraphDensity = 2;

/// The areas of one page, as the plug-in asked for them.
struct PageFrame {
    QSizeF paper;
    QRectF body;            ///< y downward, as the document is laid out
    QRectF header, footer;  ///< page coordinates: y upward
};

PageFrame frameOf(const KTVPrintInfo& setup, KTVWebUIDelegate& delegate)
{
    const QSizeF paper = setup.paperSize();
    const QMarginsF& margins = setup.margins();
    const double header = static_cast<double>(delegate.webViewHeaderHeight(nullptr));
    const double footer = static_cast<double>(delegate.webViewFooterHeight(nullptr));
    const double width = paper.width() - margins.left() - margins.right();
    const double top = margins.top() + header;
    return {paper, QRectF(margins.left(), top, width, paper.height() - margins.bottom() - footer - top),
            QRectF(margins.left(), paper.height() - top, width, header),
            QRectF(margins.left(), margins.bottom(), width, footer)};
}

/// Header and footer of one page, drawn by the delegate in page coordinates.
void drawHeaderAndFooter(QPainter& painter, const PageFrame& frame, KTVWebUIDelegate& delegate)
{
    KTVGraphicsContext context(&painter, frame.paper.height(), KTVGraphicsContext::YAxis::Unflipped,
                               KTVGraphicsContext::Surface::Paper);
    KTVGraphicsContext* previous = KTVGraphicsContext::setCurrentContext(&context);
    delegate.webViewDrawHeaderInRect(nullptr, frame.header);
    delegate.webViewDrawFooterInRect(nullptr, frame.footer);
    KTVGraphicsContext::setCurrentContext(previous);
}

void drawBody(QPainter& painter, const PageFrame& frame, ReportDocument& document, int page)
{
    painter.save();
    painter.translate(frame.body.topLeft());
    document.drawPage(&painter, page);
    painter.restore();
}

/// Sets all margins of the device to zero: they would be added to ours.
void setPageLayout(QPagedPaintDevice& device, const KTVPrintInfo& setup)
{
    const bool landscape = setup.orientation() == KTVPaperOrientation::Landscape;
    const QSizeF upright = landscape ? setup.paperSize().transposed() : setup.paperSize();
    const QPageSize size(upright, QPageSize::Point, QString(), QPageSize::FuzzyMatch);
    QPageLayout layout(size, landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(),
                       QPageLayout::Point);
    layout.setMode(QPageLayout::FullPageMode);
    device.setPageLayout(layout);
}

void paintPages(QPagedPaintDevice& device, const PageFrame& frame, ReportDocument& document, KTVWebUIDelegate& delegate)
{
    const std::vector<int> pages = pagesToPrint(device, document.pageCount());
    QPainter painter;
    if (!painter.begin(&device))
        throw ReportableError(QCoreApplication::translate("ReportPrinter", "The printer does not take the report."));
    painter.scale(device.logicalDpiX() / kPointsPerInch, device.logicalDpiY() / kPointsPerInch);
    KTVPrintOperation operation(document.pageCount());
    KTVPrintOperation* previous = KTVPrintOperation::setCurrentOperation(&operation);
    for (const int page : pages) {
        if (page != pages.front())
            device.newPage();
        operation.setCurrentPage(page + 1);
        drawHeaderAndFooter(painter, frame, delegate);
        drawBody(painter, frame, document, page);
    }
    KTVPrintOperation::setCurrentOperation(previous);
}

}  // namespace

bool hasReport(const KTVPlugIn* plugIn)
{
    return dynamic_cast<const KTVWebUIDelegate*>(plugIn) != nullptr;
}

ReportPrinter::ReportPrinter(KTVPlugInPtr plugIn, DrawGraph drawGraph)
    : m_plugIn(std::move(plugIn)), m_drawGraph(std::move(drawGraph))
{
}

int ReportPrinter::print(QPagedPaintDevice& device) const
{
    auto* delegate = dynamic_cast<KTVWebUIDelegate*>(m_plugIn.get());
    const KTVPrintInfo* setup = m_plugIn->customPrintInfo();
    const std::optional<QString> html = m_plugIn->htmlContentForPrinting();
    if (!delegate || !html)
        throw ReportableError(QCoreApplication::translate("ReportPrinter", "This view has no report to print."));
    const PageFrame frame = frameOf(*setup, *delegate);
    ReportDocument document([this](const QSizeF& size) {
        return m_drawGraph ? m_drawGraph(m_plugIn.get(), size * kGraphScale, kGraphDensity) : QImage();
    });
    document.layOut(*html, frame.body.size());
    setPageLayout(device, *setup);
    paintPages(device, frame, document, *delegate);
    return document.pageCount();
}

QByteArray ReportPrinter::pdf() const
{
    const QString title = m_plugIn->title().isEmpty() ? m_plugIn->name() : m_plugIn->title();
    return pdfFile(title, [this](QPdfWriter& writer) { print(writer); });
}

}  // namespace plotix
