#pragma once

#include "hostapp/print/Paper.h"
#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtCore/QByteArray>
#include <QtGui/QImage>

#include <functional>

class QPagedPaintDevice;

/// Prints a plug-in's report: its HTML on pages set up as it asks, with the page headers and footers it draws.
///
/// *Shares* the plug-in, whose view and records must be loaded. Building the report resizes the view's graph, so a view
/// on screen is laid out again afterwards. Main thread only.
namespace plotix {

/// Whether the plug-in has a report to print: it draws page headers and footers.
bool hasReport(const KTVPlugIn* plugIn);

class ReportPrinter {
public:
    /// Draws the plug-in's graph at a size in points with `density` pixels a point; null when it cannot.
    using DrawGraph = std::function<QImage(KTVPlugIn* plugIn, const QSizeF& size, double density)>;

    ReportPrinter(KTVPlugInPtr plugIn, DrawGraph drawGraph);

    /// Builds the report and paints it on the device with the page layout that the plug-in asks for. Answers the number
    /// of pages. Throws ReportableError when there is no report or the device fails.
    int print(QPagedPaintDevice& device) const;

    /// The report as a PDF file's bytes. Throws ReportableError.
    QByteArray pdf() const;

private:
    KTVPlugInPtr m_plugIn;
    DrawGraph m_drawGraph;
};

}  // namespace plotix
