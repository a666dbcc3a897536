#include "plotkit/model/CPTXYGraph.h"

#include <algorithm>
#include <iterator>

namespace {

/// Adds what the list does not hold yet; a null is never added.
template <class T>
bool add(std::vector<std::shared_ptr<T>>& list, const std::shared_ptr<T>& element)
{
    if (!element || std::find(list.begin(), list.end(), element) != list.end())
        return false;
    list.push_back(element);
    return true;
}

/// Takes an element out of the list, from `first` on, and its change handler from it. `element` may be a reference to
/// the very one that goes.
template <class T>
bool remove(std::vector<std::shared_ptr<T>>& list, const std::shared_ptr<T>& element, std::ptrdiff_t first = 0)
{
    const auto found = std::find(list.begin() + first, list.end(), element);
    if (found == list.end())
        return false;
    const std::shared_ptr<T> removed = *found;
    list.erase(found);
    removed->setChangeHandler({});
    return true;
}

}  // namespace

CPTXYGraph::CPTXYGraph(const QRectF& frame) : m_bounds(frame)
{
    const auto needsDisplay = [this] { setNeedsDisplay(); };
    m_plotSpaces.front()->setChangeHandler(needsDisplay);
    m_axisSet.setChangeHandler(needsDisplay);
}

CPTXYGraph::~CPTXYGraph()
{
    // What was added may outlive the graph.
    for (const CPTScatterPlotPtr& plot : m_plots)
        plot->setChangeHandler({});
    for (const CPTXYPlotSpacePtr& space : m_plotSpaces)
        space->setChangeHandler({});
    for (const CPTGraphLayerPtr& layer : m_layers)
        layer->setChangeHandler({});
}

void CPTXYGraph::applyTheme(const CPTTheme* theme)
{
    if (theme)
        theme->applyToGraph(*this);
}

void CPTXYGraph::addPlotSpace(const CPTXYPlotSpacePtr& space)
{
    if (!add(m_plotSpaces, space))
        return;
    space->setChangeHandler([this] { setNeedsDisplay(); });
    setNeedsDisplay();
}

void CPTXYGraph::removePlotSpace(const CPTXYPlotSpacePtr& space)
{
    if (remove(m_plotSpaces, space, 1))
        setNeedsDisplay();
}

const CPTXYPlotSpace& CPTXYGraph::spaceNamed(const std::shared_ptr<const CPTXYPlotSpace>& space) const
{
    const auto found = std::find(m_plotSpaces.begin(), m_plotSpaces.end(), space);
    return found == m_plotSpaces.end() ? plotSpace() : **found;
}

const CPTXYPlotSpace& CPTXYGraph::plotSpaceOf(const CPTScatterPlot& plot) const
{
    return spaceNamed(plot.plotSpace());
}

const CPTXYPlotSpace& CPTXYGraph::plotSpaceOf(const CPTXYAxis& axis) const
{
    return spaceNamed(axis.plotSpace());
}

std::vector<CPTScatterPlotPtr> CPTXYGraph::plotsIn(const CPTXYPlotSpace& space) const
{
    std::vector<CPTScatterPlotPtr> plots;
    std::copy_if(m_plots.begin(), m_plots.end(), std::back_inserter(plots),
                 [&](const CPTScatterPlotPtr& plot) { return &plotSpaceOf(*plot) == &space; });
    return plots;
}

std::vector<CPTScatterPlotPtr> CPTXYGraph::plotsToFit(const CPTXYPlotSpace& space) const
{
    std::vector<CPTScatterPlotPtr> plots = plotsIn(space);
    if (plots.empty())
        std::copy_if(m_plots.begin(), m_plots.end(), std::back_inserter(plots),
                     [&](const CPTScatterPlotPtr& plot) { return plotSpaceOf(*plot).xLeader().get() == &space; });
    return plots;
}

void CPTXYGraph::addPlot(const CPTScatterPlotPtr& plot)
{
    if (!add(m_plots, plot))
        return;
    plot->setChangeHandler([this] { setNeedsDisplay(); });
    setNeedsDisplay();
}

void CPTXYGraph::removePlot(const CPTScatterPlotPtr& plot)
{
    if (remove(m_plots, plot))
        setNeedsDisplay();
}

void CPTXYGraph::addLayer(const CPTGraphLayerPtr& layer)
{
    if (!add(m_layers, layer))
        return;
    layer->setChangeHandler([this] { setLayersNeedDisplay(); });
    setLayersNeedDisplay();
}

void CPTXYGraph::addLayerBeneath(const CPTGraphLayerPtr& layer)
{
    const std::size_t before = m_layers.size();
    addLayer(layer);
    if (m_layers.size() > before)
        std::rotate(m_layers.begin(), m_layers.end() - 1, m_layers.end());
}

void CPTXYGraph::removeLayer(const CPTGraphLayerPtr& layer)
{
    if (remove(m_layers, layer))
        setLayersNeedDisplay();
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

void CPTXYGraph::setLabelRoom(CPTLabelRoom room)
{
    m_labelRoom = room;
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

void CPTXYGraph::setLegend(const CPTLegend& legend)
{
    m_legend = legend;
    setNeedsDisplay();
}

void CPTXYGraph::setNeedsDisplay() const
{
    if (m_needsDisplayHandler)
        m_needsDisplayHandler();
}

void CPTXYGraph::setLayersNeedDisplay() const
{
    if (m_layersNeedDisplayHandler)
        m_layersNeedDisplayHandler();
}
