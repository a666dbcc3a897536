// The graph, its plots, and the styling of its axes.
//
// Rules of this room:
//  1. The graph is built on the first rebuild and then kept; only its plots are replaced.
//  2. `setupXAxis`, `setupYAxis` and `adjustXAxis` reach the axes through the hosting view, everything else through
//     `graph`. Off screen there is no hosting view, so the theme's own axes stay there.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/reading/ReadSpans.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"

namespace {

constexpr CPTPadding kPlotAreaPadding{.top = 20, .left = 60, .bottom = 50, .right = 20};
constexpr double kDataLineWidth = 3.0;

CPTColor color(float red, float green, float blue, float alpha = 1.0F)
{
    return QColor::fromRgbF(red, green, blue, alpha);
}

CPTLineStyle line(double width, const CPTColor& lineColor)
{
    CPTLineStyle style;
    style.width = width;
    style.color = lineColor;
    return style;
}

CPTLineStyle tickLine(CPTLineStyle axisLine, double width)
{
    axisLine.width = width;
    axisLine.cap = CPTLineCap::Round;
    axisLine.color = CPTColor(Qt::white);
    return axisLine;
}

/// What both axes share, in the order it is set.
void styleAxis(CPTXYAxis& axis)
{
    axis.setOrthogonalPosition(1.0);
    axis.setTickDirection(CPTSign::None);
    const CPTLineStyle axisLine = line(3.0, color(0.6F, 0.6F, 0.6F));
    axis.setAxisLineStyle(axisLine);
    axis.setMajorGridLineStyle(line(1.5, color(1, 1, 1, 0.25F)));
    axis.setMinorGridLineStyle(line(1.0, color(0.5F, 0.5F, 0.5F, 0.125F)));
    axis.setMajorTickLineStyle(tickLine(axisLine, 3.0));
    axis.setMajorTickLength(12.0);
    axis.setMinorTickLineStyle(tickLine(axisLine, 2.0));
    axis.setMinorTickLength(8.0);
    CPTTextStyle titleStyle;
    titleStyle.fontName = QStringLiteral("Helvetica-Bold");
    titleStyle.color = CPTColor(Qt::white);
    axis.setTitleTextStyle(titleStyle);
    // Set a second time: the first position is overridden, as the constraint then holds the axis at the edge.
    axis.setOrthogonalPosition(0.0);
    axis.setAxisConstraints(CPTConstraints{0.0});
}

}  // namespace

void KTVPlotixPlugIn::buildGraph()
{
    m_binders.emplace();
    m_graph = std::make_shared<CPTXYGraph>(QRectF());
    m_graph->applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    m_graph->setPlotAreaFramePadding(kPlotAreaPadding);
    // Alpha 0 although a grey is given: around the plot area frame the graph stays transparent.
    m_graph->setFill(CPTFill::withColor(color(0.25F, 0.25F, 0.25F, 0.0F)));
    if (m_hostView)
        m_hostView->setHostedGraph(m_graph);
    m_graph->defaultPlotSpace()->setDelegate(this);
    m_graph->defaultPlotSpace()->setAllowsUserInteraction(true);
    setupXAxis();
    adjustXAxis();
    setupYAxis();
    adjustYAxis();
    m_readSpans->graphBuilt(m_graph);
    m_reader->tell(&plotix::ReadingPart::graphBuilt);
    applyReading();
}

CPTXYAxisSet* KTVPlotixPlugIn::hostedAxisSet() const
{
    return m_hostView && m_hostView->hostedGraph() ? m_hostView->hostedGraph()->axisSet() : nullptr;
}

void KTVPlotixPlugIn::setupXAxis()
{
    CPTXYAxisSet* axisSet = hostedAxisSet();
    if (!axisSet)
        return;
    CPTXYAxis& axis = *axisSet->firstAxis();
    axis.setLabelingPolicy(CPTAxisLabelingPolicy::FixedInterval);
    axis.setTitleOffset(-20.0);
    axis.setTitle(QStringLiteral("Time"));
    styleAxis(axis);
}

void KTVPlotixPlugIn::setupYAxis()
{
    CPTXYAxisSet* axisSet = hostedAxisSet();
    if (!axisSet)
        return;
    CPTXYAxis& axis = *axisSet->lastAxis();
    axis.setLabelingPolicy(CPTAxisLabelingPolicy::Automatic);
    axis.setTitleOffset(10.0);
    axis.setTitle(QStringLiteral("Value"));
    styleAxis(axis);
}

void KTVPlotixPlugIn::addPlot(const QString& key, const QColor& lineColor, const CPTSeriesControllerPtr& binder)
{
    const auto plot = std::make_shared<CPTScatterPlot>();
    plot->setIdentifier(key);
    CPTLineStyle style;
    style.width = kDataLineWidth;
    style.color = lineColor;
    plot->setDataLineStyle(style);
    plot->setDelegate(this);
    m_graph->addPlot(plot);
    plot->bind(CPTScatterPlotBindingXValues, binder, QStringLiteral("arrangedObjects.x"));
    plot->bind(CPTScatterPlotBindingYValues, binder, QStringLiteral("arrangedObjects.y"));
}

// The hosting view may show the graph a little longer; nothing in it may point back here by then.
void KTVPlotixPlugIn::releaseGraph()
{
    if (!m_graph)
        return;
    m_reader->tell(&plotix::ReadingPart::graphReleased);
    m_graph->setFill(CPTFill::none());
    m_graph->defaultPlotSpace()->setDelegate(nullptr);
    for (const CPTScatterPlotPtr& plot : m_graph->allPlots())
        plot->setDelegate(nullptr);
    m_graph.reset();
}
