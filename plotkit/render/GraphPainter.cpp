#include "plotkit/render/GraphPainter.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/layout/GraphLayout.h"
#include "plotkit/render/LineSample.h"

#include <algorithm>

namespace plotkit {

namespace {

void drawLines(GraphCanvas& canvas, const std::vector<QLineF>& lines, const std::optional<CPTLineStyle>& style)
{
    for (const QLineF& line : lines)
        canvas.drawLine(line, style);
}

void drawGrid(GraphCanvas& canvas, const AxisLayout& layout, const CPTXYAxis& axis)
{
    drawLines(canvas, layout.minorGridLines, axis.minorGridLineStyle());
    drawLines(canvas, layout.majorGridLines, axis.majorGridLineStyle());
}

/// Ticks this many times as far apart as they are wide can be told apart; nearer ones would merge into a bar.
constexpr double kLeastTickSpacing = 3.0;

bool mayMerge(const std::vector<QLineF>& ticks, const CPTLineStyle& style)
{
    for (std::size_t index = 1; index < ticks.size(); ++index) {
        const QPointF apart = ticks[index].p1() - ticks[index - 1].p1();
        if (apart.manhattanLength() < kLeastTickSpacing * style.width)
            return true;
    }
    return false;
}

bool isLabelled(const AxisLayout& layout, double value)
{
    return std::any_of(layout.labels.begin(), layout.labels.end(),
                       [value](const AxisLabel& label) { return label.value == value; });
}

/// Of ticks that would merge only the labelled majors stay.
void drawTicks(GraphCanvas& canvas, const AxisLayout& layout, const CPTXYAxis& axis)
{
    const std::optional<CPTLineStyle>& minorStyle = axis.minorTickLineStyle();
    const std::optional<CPTLineStyle>& majorStyle = axis.majorTickLineStyle();
    const bool majorsMerge = majorStyle && mayMerge(layout.majorTicks, *majorStyle);
    if (minorStyle && !majorsMerge && !mayMerge(layout.minorTicks, *minorStyle))
        drawLines(canvas, layout.minorTicks, minorStyle);
    for (std::size_t index = 0; index < layout.majorTicks.size(); ++index)
        if (!majorsMerge || isLabelled(layout, layout.majorValues[index]))
            canvas.drawLine(layout.majorTicks[index], majorStyle);
}

TextBackground backgroundOf(const PlacedText& text, const QRectF& plotArea)
{
    return plotArea.intersects(text.box) ? TextBackground::Plots : TextBackground::Plain;
}

void drawTexts(GraphCanvas& canvas, const AxisLayout& layout, const CPTXYAxis& axis, const QRectF& plotArea)
{
    for (const AxisLabel& label : layout.labels)
        canvas.drawText(label, axis.labelTextStyle(), backgroundOf(label, plotArea));
    if (layout.title)
        canvas.drawText(*layout.title, axis.titleTextStyle(), backgroundOf(*layout.title, plotArea));
}

GraphBackground::Places placesOf(const GraphLayout& layout, const QRectF& rect)
{
    GraphBackground::Places places{rect, layout.frame};
    for (const StripLayout& strip : layout.strips)
        if (isVisible(strip.space->strip().fill))
            places.panels.push_back({strip.area, strip.space->strip().fill});
    return places;
}

/// Above the grid, whose lines would notch them.
void drawStripBorders(GraphCanvas& canvas, const GraphLayout& layout)
{
    for (const StripLayout& strip : layout.strips)
        canvas.drawRoundedFrame(strip.area, CPTFill::none(), strip.space->strip().borderLineStyle, 0);
}

/// A short piece of a plot's line: for points alone a dot at either end and in the middle.
void drawSample(GraphCanvas& canvas, const QLineF& sample, const CPTScatterPlot& plot)
{
    if (plot.interpolation() != CPTScatterPlotInterpolation::PointsOnly) {
        canvas.drawLine(sample, plot.dataLineStyle());
        return;
    }
    const double size = std::min(plot.drawnPointSize(), sample.length() / 4);
    const CPTLineStyle dot{.width = size, .color = plot.dataLineStyle().color, .cap = CPTLineCap::Round};
    for (const double at : {0.0, 0.5, 1.0})
        canvas.drawLine(QLineF(sample.pointAt(at), sample.pointAt(at) + QPointF(0.01, 0)), dot);
}

/// Texts on whole pixels where there are any; samples in points, as everywhere else that shows them.
void drawLegendTexts(GraphCanvas& canvas, const LegendLayout& legend, const CPTTextStyle& style)
{
    for (const PlacedLegendEntry& entry : legend.entries)
        canvas.drawText(entry.text, style, TextBackground::Plain);
    if (legend.more)
        canvas.drawText(*legend.more, style, TextBackground::Plain);
}

void drawHeads(GraphCanvas& canvas, const GraphLayout& layout)
{
    for (const StripLayout& strip : layout.strips) {
        const CPTStrip& style = strip.space->strip();
        if (strip.title)
            canvas.drawText(*strip.title, style.titleTextStyle, TextBackground::Plain);
        for (const PlacedKey& key : strip.keys) {
            drawSample(canvas, key.sample, *key.plot);
            canvas.drawText(key.name, style.keyTextStyle, TextBackground::Plain);
        }
        if (strip.more)
            canvas.drawText(*strip.more, style.keyTextStyle, TextBackground::Plain);
    }
}

}  // namespace

void GraphPainter::paint(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, FrameParts* parts)
{
    paintBelowLayers(painter, graph, rect, Beneath::Picture, parts);
    paintLayers(painter, graph, rect);
}

void GraphPainter::paintBelowLayers(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, Beneath beneath,
                                    FrameParts* parts)
{
    if (rect.isEmpty())
        return;
    const GraphLayout layout = layOutGraph(
        graph, rect, [this](const QString& text, const CPTTextStyle& style) { return m_texts.sizeOf(text, style); });
    paintLaidOut(painter, graph, rect, layout, beneath, parts);
    for (const PlacedLegendEntry& entry : layout.legend.entries)
        paintLineSample(painter, entry.sample, *entry.plot);
}

void GraphPainter::paintLaidOut(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect,
                                const GraphLayout& layout, Beneath beneath, FrameParts* parts)
{
    const auto eachAxis = [&](const auto& draw) {
        for (std::size_t index = 0; index < layout.axes.size(); ++index)
            draw(layout.axes[index], *graph.axes().axes()[index]);
    };

    GraphCanvas canvas(painter, &m_texts);
    m_background.draw(canvas, graph, placesOf(layout, rect), beneath);
    eachAxis([&](const AxisLayout& axisLayout, const CPTXYAxis& axis) { drawGrid(canvas, axisLayout, axis); });
    drawStripBorders(canvas, layout);
    // Before the plots: a value that stays on the axis must be seen.
    eachAxis([&](const AxisLayout& axisLayout, const CPTXYAxis& axis) {
        if (axisLayout.line)
            canvas.drawLine(*axisLayout.line, axis.axisLineStyle());
    });
    m_plots.drawPlots(canvas, graph, layout.plotArea, parts);
    eachAxis([&](const AxisLayout& axisLayout, const CPTXYAxis& axis) { drawTicks(canvas, axisLayout, axis); });
    eachAxis([&](const AxisLayout& axisLayout, const CPTXYAxis& axis) {
        drawTexts(canvas, axisLayout, axis, layout.plotArea);
    });
    drawHeads(canvas, layout);
    drawLegendTexts(canvas, layout.legend, graph.legend().textStyle);
    if (layout.title)
        canvas.drawText(*layout.title, graph.titleTextStyle(), backgroundOf(*layout.title, layout.plotArea));
}

void paintLayers(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, bool mayBeRough)
{
    if (rect.isEmpty() || graph.layers().empty())
        return;
    GraphGeometry geometry = geometryOfGraph(graph, rect, sizeOfText);
    geometry.mayBeRough = mayBeRough;
    for (const CPTGraphLayerPtr& layer : graph.layers()) {
        painter.save();
        layer->drawInGraph(painter, geometry);
        painter.restore();
    }
}

void reportFinishedDrawing(const CPTXYGraph& graph)
{
    const std::vector<CPTScatterPlotPtr> plots = graph.allPlots();  // a delegate may remove plots
    for (const CPTScatterPlotPtr& plot : plots)
        if (!plot->isHidden() && plot->delegate())
            plot->delegate()->didFinishDrawing(plot.get());
}

}  // namespace plotkit
