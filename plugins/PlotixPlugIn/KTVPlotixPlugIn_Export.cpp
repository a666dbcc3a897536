// Images, PDF, off-screen rendering, sharing, and the end of a drawing.
//
// Rules of this room:
//  1. Every drawing ends the date panel's busy state, whichever fetch runs: screen, export and print alike.
//  2. A failed write of the two exports is not reported; a cancelled save panel does nothing.
//  3. `plotImageForSize` grows the top padding on every call and leaves it grown; the pictures of
//     KTVPlotixPlugIn_Figures.cpp put everything back.
//  4. Off screen one point is one pixel, and the completion target is told again by every further rebuild.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plotkit/render/GraphRendering.h"
#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"
#include "plugins/PlotixPlugIn/host/PngImage.h"
#include "plugins/PlotixPlugIn/logic/SizeText.h"

#include <QtCore/QFile>

namespace {

constexpr QSizeF kExportedImageSize{320, 320};  // points; whatever the size of the view

CPTTextStyle graphTitleStyle()
{
    CPTTextStyle style;
    style.fontName = QStringLiteral("Helvetica-Bold");
    style.fontSize = 18.0;
    style.color = CPTColor(Qt::white);
    return style;
}

/// Gives the graph a title above the plot area and room for it.
void placeTitle(CPTXYGraph& graph, const QString& title)
{
    graph.setTitleTextStyle(graphTitleStyle());
    graph.setTitleDisplacement(QPointF(0.0, 1.0));
    graph.setTitlePlotAreaFrameAnchor(CPTRectAnchor::Top);
    CPTPadding padding = graph.plotAreaFrame().padding;
    padding.top += graph.titleTextStyle().fontSize;
    graph.setPlotAreaFramePadding(padding);
    graph.setTitle(title);
}

}  // namespace

void KTVPlotixPlugIn::exportToPDF(QObject* /*sender*/)
{
    writeToChosenFile(QStringLiteral("pdf"),
                      [this] { return m_hostView ? m_hostView->dataForPDFRepresentationOfLayer() : QByteArray(); });
}

void KTVPlotixPlugIn::exportToPNG(QObject* /*sender*/)
{
    writeToChosenFile(QStringLiteral("png"), [this] { return PNGDataWithSize(kExportedImageSize); });
}

void KTVPlotixPlugIn::writeToChosenFile(const QString& fileType, const std::function<QByteArray()>& makeData)
{
    const std::optional<QString> path = KTVHostServices::installed().userInterface->runSavePanel({fileType});
    if (!path)
        return;
    const QByteArray data = makeData();
    QFile file(*path);
    if (!data.isEmpty() && file.open(QIODevice::WriteOnly))
        file.write(data);
}

QByteArray KTVPlotixPlugIn::PNGDataWithSize(const QSizeF& size)
{
    if (!m_hostView)
        return {};
    return pngOfImage(imageByScalingProportionallyToSize(m_hostView->imageOfLayer(), size));
}

QImage KTVPlotixPlugIn::plotImageForSize(const QSizeF& size, const QString& title)
{
    if (!m_graph)
        return {};
    m_graph->setBounds(QRectF(QPointF(), size));
    placeTitle(*m_graph, title);
    return plotkit::imageOfGraph(*m_graph, size, 1.0, plotkit::DrawingReport::TellDelegates);
}

void KTVPlotixPlugIn::graph(const KTVAgentPtr& agent, const OptionalDate& fromDate, const OptionalDate& toDate,
                            const std::optional<QStringList>& properties, const QString& title, const QSizeF& size,
                            QObject* target, const QByteArray& selector)
{
    if (!properties || !agent)
        return;
    KTVPropertyList tables;
    const KTVPropertyCollection known = agent->properties();
    for (const QString& propertyName : *properties)
        if (const KTVPropertyPtr property = known.objectForKey(propertyName))
            tables.push_back(property);
    if (tables.empty())
        return;
    const Ptr plugIn = initWithAgent(agent, agent->siteWindowController(), tables);
    if (!plugIn)
        return;
    plugIn->setCompletionTarget(target);
    plugIn->setCompletionSelector(selector);
    plugIn->setGraphTitle(title);
    plugIn->setImageSize(plotix::stringFromSize(size));
    plugIn->acquirePlotFromDate(fromDate, toDate);
}

void KTVPlotixPlugIn::sendImageToCompletionTarget()
{
    const QImage image = plotImageForSize(plotix::sizeFromString(m_imageSize), m_graphTitle);
    QMetaObject::invokeMethod(m_completionTarget, m_completionSelector.constData(), Qt::DirectConnection,
                              Q_ARG(QByteArray, pngOfImage(image)));
}

void KTVPlotixPlugIn::didFinishDrawing(CPTScatterPlot* /*plot*/)
{
    didFinishDrawing();
}

void KTVPlotixPlugIn::didFinishDrawing()
{
    if (m_dataCluster)
        m_dataCluster->refreshComplete(this);
}

void KTVPlotixPlugIn::sharingButtonClicked(QObject* sender)
{
    auto* button = qobject_cast<QWidget*>(sender);
    QWidget* rootView = isViewLoaded() ? view() : nullptr;
    if (button && rootView)
        KTVHostServices::installed().userInterface->showSharingPicker(
            imageRepresentation(rootView), std::static_pointer_cast<KTVPlotixPlugIn>(shared_from_this()),
            button->rect(), button, KTVRectEdge::MinY);
}
