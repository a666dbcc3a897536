#pragma once

#include "hostapp/print/PageLayoutPlan.h"
#include "hostapp/print/ReportContents.h"

#include <QtCore/QByteArray>
#include <QtCore/QLocale>
#include <QtGui/QImage>

class QPagedPaintDevice;

/// The host's own report: title, span and place, the graph, and a table with a colour key, on one page wherever that is
/// possible.
///
/// Owns its contents. All lengths are points. Main thread only.
namespace plotix {

class PageReport {
public:
    /// Numbers and dates are written as in `locale`.
    explicit PageReport(ReportContents contents, QLocale locale = QLocale());

    /// Paints onto the device's sheet as it is set up, upright or not; of a printer the pages chosen in its dialog.
    /// Answers the number of pages of the report. Throws ReportableError when the device fails.
    int print(QPagedPaintDevice& device) const;

    /// The report as a PDF file's bytes, on a landscape sheet of this size in either order. Throws ReportableError.
    QByteArray pdf(const QSizeF& sheet) const;

    // One page of its own size, without a footer: to send around, not to print. Higher than `size` where there are many
    // rows.
    QImage picture(const QSizeF& size, double density) const;  ///< pixels a point; null when it would be too large
    QByteArray picturePdf(const QSizeF& size) const;           ///< throws ReportableError

private:
    bool hasNote() const;
    PageLayoutPlan pictured(const QSizeF& size) const;
    void drawPage(QPainter& painter, const PageLayoutPlan& plan, int page) const;
    void drawHeadings(QPainter& painter, const PageLayoutPlan& plan) const;
    void drawTable(QPainter& painter, const PageLayoutPlan& plan, const PageLayoutPlan::Page& page) const;
    void drawFootnotes(QPainter& painter, const PageLayoutPlan::Page& page) const;
    void drawFooter(QPainter& painter, const PageLayoutPlan& plan, int page) const;

    ReportContents m_contents;
    QLocale m_locale;
};

}  // namespace plotix
