#include "plugins/PlotixPlugIn/reading/PaperGraph.h"

#include "plotkit/render/GraphRendering.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace plotix {

namespace {

constexpr double kLineWidth = 1.6;  // points
constexpr double kTextSize = 10;    // points: read at arm's length
constexpr CPTPadding kAroundFrame{.top = 2, .left = 2, .bottom = 2, .right = 2};

CPTLineStyle line(double width, const CPTColor& color)
{
    return {.width = width, .color = color};
}

void styleAxis(CPTXYAxis& axis, PaperTitles titles)
{
    axis.setAxisLineStyle(line(1, inkColor()));
    axis.setMajorGridLineStyle(line(0.5, gridColorOnPaper()));
    axis.setMinorGridLineStyle(std::nullopt);
    axis.setMajorTickLineStyle(line(1, inkColor()));
    axis.setMajorTickLength(8);
    axis.setMinorTickLineStyle(line(0.7, inkColor()));
    axis.setMinorTickLength(4);
    if (titles == PaperTitles::LeftOut)
        axis.setTitle(QString());
    CPTTextStyle text = axis.labelTextStyle();
    text.fontSize = kTextSize;
    text.color = inkColor();
    axis.setLabelTextStyle(text);
    CPTTextStyle title = axis.titleTextStyle();
    title.fontSize = kTextSize;
    title.color = inkColor();
    axis.setTitleTextStyle(title);
}

CPTStrip stripOnPaper(CPTStrip strip)
{
    strip.fill = CPTFill::none();
    if (strip.borderLineStyle)
        strip.borderLineStyle = line(0.5, gridColorOnPaper());
    strip.titleTextStyle.color = inkColor();
    strip.keyTextStyle.color = inkColor();
    strip.titleTextStyle.fontSize = strip.keyTextStyle.fontSize = kTextSize;
    return strip;
}

/// Gives a graph the look for paper, and its own back when it goes.
class PaperLook {
public:
    PaperLook(CPTXYGraph& graph, PaperTitles titles)
        : m_graph(graph),
          m_bounds(graph.bounds()),
          m_padding(graph.padding()),
          m_fill(graph.fill()),
          m_frame(graph.plotAreaFrame()),
          m_title(graph.title()),
          m_legend(graph.legend())
    {
        for (const CPTXYAxisPtr& axis : graph.axisSet()->axes())
            m_axes.push_back({axis, *axis});
        for (const CPTScatterPlotPtr& plot : graph.allPlots())
            m_lines.push_back(plot->dataLineStyle());
        for (const CPTXYPlotSpacePtr& space : graph.allPlotSpaces())
            m_strips.emplace_back(space, space->strip());
        apply(titles);
    }
    ~PaperLook()
    {
        m_graph.setBounds(m_bounds);
        m_graph.setPadding(m_padding);
        m_graph.setFill(m_fill);
        m_graph.setPlotAreaFrame(m_frame);
        m_graph.setTitle(m_title);
        m_graph.setLegend(m_legend);
        for (const auto& [axis, before] : m_axes)
            *axis = before;
        for (std::size_t index = 0; index < m_lines.size(); ++index)
            m_graph.allPlots()[index]->setDataLineStyle(m_lines[index]);
        for (const auto& [space, before] : m_strips)
            space->setStrip(before);
        m_graph.setNeedsDisplay();
    }
    PaperLook(const PaperLook&) = delete;
    PaperLook& operator=(const PaperLook&) = delete;

private:
    void apply(PaperTitles titles)
    {
        CPTPlotAreaFrame frame = m_frame;
        frame.fill = CPTFill::none();
        frame.borderLineStyle = std::nullopt;
        m_graph.setPlotAreaFrame(frame);
        m_graph.setPadding(kAroundFrame);
        m_graph.setFill(CPTFill::none());
        m_graph.setTitle(QString());
        for (const auto& [axis, before] : m_axes)
            styleAxis(*axis, titles);
        for (const auto& [space, before] : m_strips)
            space->setStrip(stripOnPaper(before));
        CPTLegend legend = m_legend;
        legend.textStyle.color = inkColor();
        legend.textStyle.fontSize = kTextSize;
        m_graph.setLegend(legend);
        for (const CPTScatterPlotPtr& plot : m_graph.allPlots()) {
            CPTLineStyle style = plot->dataLineStyle();
            style.width = std::min(style.width, kLineWidth);
            style.color = colorOnPaper(style.color);
            plot->setDataLineStyle(style);
        }
    }

    CPTXYGraph& m_graph;  // borrowed
    QRectF m_bounds;
    CPTPadding m_padding;
    CPTFill m_fill;
    CPTPlotAreaFrame m_frame;
    QString m_title;
    CPTLegend m_legend;
    std::vector<std::pair<CPTXYAxisPtr, CPTXYAxis>> m_axes;  // each with what it was
    std::vector<CPTLineStyle> m_lines;                       // of the plots, in their order
    std::vector<std::pair<CPTXYPlotSpacePtr, CPTStrip>> m_strips;
};

}  // namespace

void paintOnPaper(QPainter& painter, CPTXYGraph& graph, const QRectF& rect, PaperTitles titles)
{
    const PaperLook look(graph, titles);
    graph.setBounds(QRectF(QPointF(), rect.size()));
    plotkit::paintGraph(painter, graph, rect, plotkit::DrawingReport::Silent);
}

}  // namespace plotix
