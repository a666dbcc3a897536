#include "plugins/PlotixPlugIn/reading/PaperGraph.h"

#include "plotkit/render/GraphRendering.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kLeastContrast = 2.6;  // of a line with white paper, as the ratio of their luminances
constexpr double kLineWidth = 1.6;      // points
constexpr double kTextSize = 10;        // points: read at arm's length
constexpr CPTPadding kAroundFrame{.top = 2, .left = 2, .bottom = 2, .right = 2};

double linear(float channel)
{
    const double value = channel;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double contrastWithWhite(const QColor& color)
{
    const double luminance =
        0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    return 1.05 / (luminance + 0.05);
}

CPTColor ink()
{
    return CPTColor(0x22, 0x28, 0x30);
}

CPTLineStyle line(double width, const CPTColor& color)
{
    return {.width = width, .color = color};
}

void styleAxis(CPTXYAxis& axis)
{
    axis.setAxisLineStyle(line(1, ink()));
    axis.setMajorGridLineStyle(line(0.5, CPTColor(0xd0, 0xd4, 0xda)));
    axis.setMinorGridLineStyle(std::nullopt);
    axis.setMajorTickLineStyle(line(1, ink()));
    axis.setMajorTickLength(8);
    axis.setMinorTickLineStyle(line(0.7, ink()));
    axis.setMinorTickLength(4);
    axis.setTitle(QString());
    CPTTextStyle text = axis.labelTextStyle();
    text.fontSize = kTextSize;
    text.color = ink();
    axis.setLabelTextStyle(text);
}

CPTStrip stripOnPaper(CPTStrip strip)
{
    strip.fill = CPTFill::none();
    if (strip.borderLineStyle)
        strip.borderLineStyle = line(0.5, CPTColor(0xd0, 0xd4, 0xda));
    strip.titleTextStyle.color = ink();
    strip.keyTextStyle.color = ink();
    strip.titleTextStyle.fontSize = strip.keyTextStyle.fontSize = kTextSize;
    return strip;
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
        for (const CPTXYPlotSpacePtr& space : graph.allPlotSpaces())
            m_strips.emplace_back(space, space->strip());
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
        for (const auto& [space, before] : m_strips)
            space->setStrip(before);
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
        for (const auto& [space, before] : m_strips)
            space->setStrip(stripOnPaper(before));
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
    std::vector<std::pair<CPTXYPlotSpacePtr, CPTStrip>> m_strips;
};

}  // namespace

QColor colorOnPaper(const QColor& color)
{
    if (!color.isValid())
        return color;
    float hue = 0, saturation = 0, lightness = 0;
    color.getHslF(&hue, &saturation, &lightness);
    QColor darker = color;
    while (lightness > 0 && contrastWithWhite(darker) < kLeastContrast) {
        lightness = std::max(0.0F, lightness - 0.02F);
        darker.setHslF(std::max(0.0F, hue), saturation, lightness);
    }
    return darker;
}

void paintOnPaper(QPainter& painter, CPTXYGraph& graph, const QRectF& rect)
{
    const PaperLook look(graph);
    graph.setBounds(QRectF(QPointF(), rect.size()));
    plotkit::paintGraph(painter, graph, rect, plotkit::DrawingReport::Silent);
}

}  // namespace plotix
