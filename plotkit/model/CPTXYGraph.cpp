#include "plotkit/model/CPTXYGraph.h"

#include <algorithm>

CPTXYGraph::CPTXYGraph(const QRectF& frame) : m_bounds(frame)
{
    const auto needsDisplay = [this] { setNeedsDisplay(); };
    m_plotSpace.setChangeHandler(needsDisplay);
    m_axisSet.xAxis()->setChangeHandler(needsDisplay);
    m_axisSet.yAxis()->setChangeHandler(needsDisplay);
}

CPTXYGraph::~CPTXYGraph()
{
    for (const CPTScatterPlotPtr& plot : m_plots)
        plot->setChangeHandler({});  // the plots may outlive the graph
}

void CPTXYGraph::applyTheme(const CPTTheme* theme)
{
    if (theme)
        theme->applyToGraph(*this);
}

void CPTXYGraph::addPlot(const CPTScatterPlotPtr& plot)
{
    if (!plot || std::find(m_plots.begin(), m_plots.end(), plot) != m_plots.end())
        return;
    m_plots.push_back(plot);
    plot->setChangeHandler([this] { setNeedsDisplay(); });
    setNeedsDisplay();
}

void CPTXYGraph::removePlot(const CPTScatterPlotPtr& plot)
{
    const auto found = std::find(m_plots.begin(), m_plots.end(), plot);
    if (found == m_plots.end())
        return;
    const CPTScatterPlotPtr removed = *found;  // `plot` may be a reference to the very element that goes
    m_plots.erase(found);
    removed->setChangeHandler({});
    setNeedsDisplay();
}

CPTScatterPlotPtr CPTXYGraph::plotWithIdentifier(const QString& identifier) const
{
    const auto found = std::find_if(m_plots.begin(), m_plots.end(), [&identifier](const CPTScatterPlotPtr& plot) {
        return plot->identifier() == identifier;
    });
    return found == m_plots.end() ? nullptr : *found;
}

void CPTXYGraph::setBounds(const QRectF& bounds)
{
    if (m_bounds == bounds)
        return;  // the hosting view sets them at every resize
    m_bounds = bounds;
    setNeedsDisplay();
}

void CPTXYGraph::setPadding(const CPTPadding& padding)
{
    m_padding = padding;
    setNeedsDisplay();
}

void CPTXYGraph::setFill(const CPTFill& fill)
{
    m_fill = fill;
    setNeedsDisplay();
}

void CPTXYGraph::setPlotAreaFrame(const CPTPlotAreaFrame& frame)
{
    m_plotAreaFrame = frame;
    setNeedsDisplay();
}

void CPTXYGraph::setPlotAreaFramePadding(const CPTPadding& padding)
{
    m_plotAreaFrame.padding = padding;
    setNeedsDisplay();
}

void CPTXYGraph::setTitle(const QString& title)
{
    m_title = title;
    setNeedsDisplay();
}

void CPTXYGraph::setTitleTextStyle(const CPTTextStyle& style)
{
    m_titleTextStyle = style;
    setNeedsDisplay();
}

void CPTXYGraph::setTitleDisplacement(QPointF displacement)
{
    m_titleDisplacement = displacement;
    setNeedsDisplay();
}

void CPTXYGraph::setTitlePlotAreaFrameAnchor(CPTRectAnchor anchor)
{
    m_titleAnchor = anchor;
    setNeedsDisplay();
}

void CPTXYGraph::setNeedsDisplay() const
{
    if (m_needsDisplayHandler)
        m_needsDisplayHandler();
}
