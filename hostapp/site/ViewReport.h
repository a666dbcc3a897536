#pragma once

#include "hostapp/print/ReportContents.h"
#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtCore/QByteArray>

class QPagedPaintDevice;

/// A view's report on paper, in one of two forms. *Shares* the view, whose records must be there. Main thread only.
namespace plotix {

enum class ReportForm {
    Page,    ///< the host's own: graph and figures on one page where possible, dark on white
    Classic  ///< as the view itself writes it; leaves the view's graph at its size on paper
};

class ViewReport {
public:
    /// A view that gives no contents for a page of the host's is printed in its own form.
    /// Without a title of its own the page has the view's.
    ViewReport(KTVPlugInPtr view, ReportForm wanted, QString title = {});

    ReportForm form() const { return m_form; }

    /// Prints onto a device as it is set up; the classic form sets it up itself. Answers the number of pages. Throws
    /// ReportableError when there is nothing to print or the device fails.
    int print(QPagedPaintDevice& device) const;

    /// As a PDF file's bytes, on the sheet of the shared print settings. Throws ReportableError.
    QByteArray pdf() const;

    // The host's own page as one picture; see PageReport. Requires: the form is Page. Throw ReportableError.
    QImage picture(const QSizeF& size, double density) const;
    QByteArray picturePdf(const QSizeF& size) const;

private:
    ReportContents contents() const;

    KTVPlugInPtr m_view;
    ReportForm m_form;
    QString m_title;
};

}  // namespace plotix
