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

void styleAxis(CPTXYAxis& axis)
{
    axis.setAxisLineStyle(line(1, inkColor()));
    axis.setMajorGridLineStyle(line(0.5, gridColorOnPaper()));
    axis.setMinorGridLineStyle(std::nullopt);
    axis.setMajorTickLineStyle(line(1, inkColor()));
    axis.setMajorTickLength(8);
    axis.setMinorTickLineStyle(line(0.7, inkColor()));
    axis.setMinorTickLength(4);
    axis.setTitle(QString());
    CPTTextStyle text = axis.labelTextStyle();
    text.fontSize = kTextSize;
    text.color = inkColor();
    axis.setLabelTextStyle(text);
}

/// Gives a graph the look for paper, and its own back when it goes.
class PaperLook {
public:
    explicit PaperLook(CPTXYGraph& graph)
        : m_graph(graph),
          m_bounds(graph.bounds()),
          m_padding(graph.padding()),
          m_fill(graph.fill()),
          m_frame(graph.plotAreaFrame()),
          m_title(graph.title())
    {
        for (const CPTXYAxisPtr& axis : graph.axisSet()->axes())
            m_axes.push_back({axis, *axis});
        for (const CPTScatterPlotPtr& plot : graph.allPlots())
            m_lines.push_back(plot->dataLineStyle());
        apply();
    }
    ~PaperLook()
    {
        m_graph.setBounds(m_bounds);
        m_graph.setPadding(m_padding);
        m_graph.setFill(m_fill);
        m_graph.setPlotAreaFrame(m_frame);
        m_graph.setTitle(m_title);
        for (const auto& [axis, before] : m_axes)
            *axis = before;
        for (std::size_t index = 0; index < m_lines.size(); ++index)
            m_graph.allPlots()[index]->setDataLineStyle(m_lines[index]);
        m_graph.setNeedsDisplay();
    }
    PaperLook(const PaperLook&) = delete;
    PaperLook& operator=(const PaperLook&) = delete;

private:
    void apply()
    {
        CPTPlotAreaFrame frame = m_frame;
        frame.fill = CPTFill::none();
        frame.borderLineStyle = std::nullopt;
        m_graph.setPlotAreaFrame(frame);
        m_graph.setPadding(kAroundFrame);
        m_graph.setFill(CPTFill::none());
        m_graph.setTitle(QString());
        for (const auto& [axis, before] : m_axes)
            styleAxis(*axis);
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
    std::vector<std::pair<CPTXYAxisPtr, CPTXYAxis>> m_axes;  // each with what it was
    std::vector<CPTLineStyle> m_lines;                       // of the plots, in their order
};

}  // namespace

void paintOnPaper(QPainter& painter, CPTXYGraph& graph, const QRectF& rect)
{
    const PaperLook look(graph);
    graph.setBounds(QRectF(QPointF(), rect.size()));
    plotkit::paintGraph(painter, graph, rect, plotkit::DrawingReport::Silent);
}

}  // namespace plotix
