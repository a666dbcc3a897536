// Images, PDF, off-screen rendering, sharing, and the end of a drawing.
//
// Rules of this room:
//  1. Every drawing ends the date panel's busy state, whichever fetch runs: screen, export and print alike.
//  2. A failed write of the two exports is not reported; a cancelled save panel does nothing.
//  3. `plotImageForSize` grows the top padding on every call and leaves it grown; the host's own renderings
//     (`graphImageWithSize`, `graphPDFWithSize`) put everything back.
//  4. Off screen one point is one pixel, and the completion target is told again by every further rebuild.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plotkit/render/GraphRendering.h"
#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"
#include "plugins/PlotixPlugIn/host/PngImage.h"
#include "plugins/PlotixPlugIn/logic/SizeText.h"

#include <QtCore/QFile>

namespace {

constexpr QSizeF kExportedImageSize{320, 320};         // points; whatever the size of the view
constexpr double kSpanHeight = 18;                     // points, for the line that names the span
constexpr QPointF kHostsTitleDisplacement{0.0, -2.0};  // clear of the frame's border

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

/// Puts size, padding and title of a graph back when it goes.
class GraphStateKeeper {
public:
    explicit GraphStateKeeper(CPTXYGraph& graph)
        : m_graph(graph),
          m_bounds(graph.bounds()),
          m_padding(graph.plotAreaFrame().padding),
          m_title(graph.title()),
          m_timeTitle(graph.axisSet()->firstAxis()->title()),
          m_timeTitleOffset(graph.axisSet()->firstAxis()->titleOffset()),
          m_style(graph.titleTextStyle()),
          m_displacement(graph.titleDisplacement()),
          m_anchor(graph.titlePlotAreaFrameAnchor())
    {
    }
    ~GraphStateKeeper()
    {
        m_graph.setBounds(m_bounds);
        m_graph.setPlotAreaFramePadding(m_padding);
        m_graph.setTitle(m_title);
        m_graph.axisSet()->firstAxis()->setTitle(m_timeTitle);
        m_graph.axisSet()->firstAxis()->setTitleOffset(m_timeTitleOffset);
        m_graph.setTitleTextStyle(m_style);
        m_graph.setTitleDisplacement(m_displacement);
        m_graph.setTitlePlotAreaFrameAnchor(m_anchor);
    }
    GraphStateKeeper(const GraphStateKeeper&) = delete;
    GraphStateKeeper& operator=(const GraphStateKeeper&) = delete;

private:
    CPTXYGraph& m_graph;  // borrowed
    QRectF m_bounds;
    CPTPadding m_padding;
    QString m_title, m_timeTitle;
    double m_timeTitleOffset;
    CPTTextStyle m_style;
    QPointF m_displacement;
    CPTRectAnchor m_anchor;
};

/// The span that the graph shows, for people.
QString spanText(const CPTPlotRange& range)
{
    const KTVUserInterface& desktop = *KTVHostServices::installed().userInterface;
    return QStringLiteral("%1 – %2").arg(desktop.localizedDescription(plotix::Date{range.minLimit()}),
                                         desktop.localizedDescription(plotix::Date{range.maxLimit()}));
}

/// Titles the time axis with the span shown, below its labels: a picture has no date panel, and the labels of a short
/// span name no day.
void placeSpan(CPTXYGraph& graph)
{
    if (graph.allPlots().empty())
        return;
    CPTXYAxis& axis = *graph.axisSet()->firstAxis();
    axis.setTitle(spanText(graph.plotSpace().xRange()));
    axis.setTitleOffset(0);
    CPTPadding padding = graph.plotAreaFrame().padding;
    padding.bottom += kSpanHeight;
    graph.setPlotAreaFramePadding(padding);
}

/// Draws the graph at a size of the host's choosing, titled or not, and leaves it as it was.
template <class Draw>
auto drawnAtSize(CPTXYGraph& graph, const QSizeF& size, const QString& title, Draw draw)
{
    const GraphStateKeeper keeper(graph);
    placeSpan(graph);
    graph.setBounds(QRectF(QPointF(), size));
    if (title.isEmpty())
        graph.setTitle(QString());
    else
        placeTitle(graph, title);
    graph.setTitleDisplacement(kHostsTitleDisplacement);
    return draw();
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

QImage KTVPlotixPlugIn::graphImageWithSize(const QSizeF& size, double density, const QString& title)
{
    if (!m_graph)
        return {};
    return drawnAtSize(*m_graph, size, title, [&] {
        return plotkit::imageOfGraph(*m_graph, size, density, plotkit::DrawingReport::TellDelegates);
    });
}

QByteArray KTVPlotixPlugIn::graphPDFWithSize(const QSizeF& size, const QString& title)
{
    if (!m_graph)
        return {};
    return drawnAtSize(*m_graph, size, title,
                       [&] { return plotkit::pdfOfGraph(*m_graph, size, plotkit::DrawingReport::TellDelegates); });
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
