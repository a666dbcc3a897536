#include "plugins/PlotixPlugIn/reading/looks/GraphLook.h"

#include "plugins/PlotixPlugIn/reading/looks/PaperColors.h"

#include <algorithm>
#include <type_traits>

namespace plotix {

namespace {

constexpr const char* kNames[] = {"dark", "light", "paper"};  // stored: never change

CPTLineStyle line(double width, const CPTColor& color)
{
    return {.width = width, .color = color};
}

constexpr double kFullText = 12;                                                  // points
constexpr CPTPadding kAroundPaper{.top = 2, .left = 2, .bottom = 2, .right = 4};  // points; labels make their own room
constexpr CPTPadding kInPaper{.top = 4, .left = 4, .bottom = 4, .right = 4};

/// Lines and ticks on paper are as fine as the text is small.
double paperScale(const GraphDress::Wish& wish)
{
    return std::clamp(wish.fontSize.value_or(kFullText) / kFullText, 0.5, 2.0);
}

/// Grey and white become ink; what has a colour keeps its hue.
CPTTextStyle onLight(CPTTextStyle style)
{
    style.color = style.color.isValid() && style.color.hslSaturationF() > 0.2F ? colorOnPaper(style.color) : inkColor();
    return style;
}

}  // namespace

QString nameOfLook(GraphLook look)
{
    return QString::fromLatin1(kNames[static_cast<int>(look)]);
}

std::optional<GraphLook> lookNamed(const QString& name)
{
    for (const GraphLook look : {GraphLook::Dark, GraphLook::Light, GraphLook::Paper})
        if (name == nameOfLook(look))
            return look;
    return std::nullopt;
}

double GraphDress::widestLine(const Wish& wish)
{
    switch (wish.look) {
    case GraphLook::Dark: return 20;
    case GraphLook::Light: return 2;
    case GraphLook::Paper: return 1.6 * paperScale(wish);
    }
    return 20;
}

GraphDress::AxisStyle GraphDress::styleOf(const CPTXYAxis& axis)
{
    return {axis.axisLineStyle(),      axis.majorGridLineStyle(), axis.minorGridLineStyle(),
            axis.majorTickLineStyle(), axis.minorTickLineStyle(), axis.majorTickLength(),
            axis.minorTickLength(),    axis.labelTextStyle(),     axis.titleTextStyle()};
}

void GraphDress::setStyle(CPTXYAxis& axis, const AxisStyle& style)
{
    axis.setAxisLineStyle(style.line);
    axis.setMajorGridLineStyle(style.majorGrid);
    axis.setMinorGridLineStyle(style.minorGrid);
    axis.setMajorTickLineStyle(style.majorTick);
    axis.setMinorTickLineStyle(style.minorTick);
    axis.setMajorTickLength(style.majorTickLength);
    axis.setMinorTickLength(style.minorTickLength);
    axis.setLabelTextStyle(style.labels);
    axis.setTitleTextStyle(style.title);
}

/// A line that was left out stays left out.
GraphDress::AxisStyle GraphDress::styled(AxisStyle style, const Wish& wish)
{
    const auto restyle = [](std::optional<CPTLineStyle>& old, const CPTLineStyle& wanted) {
        if (old)
            old = wanted;
    };
    if (wish.look != GraphLook::Dark) {
        const bool isPaper = wish.look == GraphLook::Paper;
        const double scale = isPaper ? paperScale(wish) : 1;
        restyle(style.line, line(isPaper ? scale : 1.5, inkColor()));
        restyle(style.majorGrid, line(isPaper ? 0.5 * scale : 1, gridColorOnPaper()));
        restyle(style.majorTick, line(isPaper ? scale : 1.5, inkColor()));
        restyle(style.minorTick, line(0.75 * scale, inkColor()));
        style.minorGrid.reset();
        style.majorTickLength = isPaper ? 6 * scale : 8;
        style.minorTickLength = isPaper ? 3 * scale : 4;
        style.labels = onLight(style.labels);
        style.title = onLight(style.title);
    }
    style.labels.fontSize = wish.fontSize.value_or(style.labels.fontSize);
    style.title.fontSize = wish.fontSize.value_or(style.title.fontSize);
    return style;
}

GraphDress::StripStyle GraphDress::styleOf(const CPTXYPlotSpace& space)
{
    const CPTStrip& strip = space.strip();
    return {strip.fill, strip.borderLineStyle, strip.titleTextStyle, strip.keyTextStyle, strip.headRoom};
}

void GraphDress::setStyle(CPTXYPlotSpace& space, const StripStyle& style)
{
    CPTStrip strip = space.strip();
    strip.fill = style.fill;
    strip.borderLineStyle = style.border;
    strip.titleTextStyle = style.title;
    strip.keyTextStyle = style.keys;
    strip.headRoom = style.headRoom;
    space.setStrip(strip);
}

GraphDress::StripStyle GraphDress::styled(StripStyle style, const Wish& wish)
{
    if (wish.look != GraphLook::Dark) {
        const bool isPaper = wish.look == GraphLook::Paper;
        style.fill = isPaper ? CPTFill::none() : CPTFill::withColor(CPTColor(Qt::white));
        if (style.border)
            style.border = line(isPaper ? paperScale(wish) : 1, isPaper ? inkColor() : gridColorOnPaper());
        style.title = onLight(style.title);
        style.keys = onLight(style.keys);
    }
    if (wish.isTransparent)
        style.fill = CPTFill::none();
    if (!wish.fontSize)
        return style;
    style.title.fontSize = *wish.fontSize;
    style.keys.fontSize = *wish.fontSize;
    style.headRoom *= *wish.fontSize / kFullText;
    return style;
}

GraphDress::GroundStyle GraphDress::styleOf(const CPTXYGraph& graph)
{
    const CPTPlotAreaFrame& frame = graph.plotAreaFrame();
    return {graph.fill(),           frame.fill,
            frame.borderLineStyle,  frame.cornerRadius,
            graph.titleTextStyle(), graph.legend().textStyle,
            graph.padding(),        frame.padding};
}

void GraphDress::setStyle(CPTXYGraph& graph, const GroundStyle& style)
{
    CPTPlotAreaFrame frame = graph.plotAreaFrame();
    frame.fill = style.frameFill;
    frame.borderLineStyle = style.border;
    frame.cornerRadius = style.cornerRadius;
    frame.padding = style.framePadding;
    graph.setPadding(style.padding);
    graph.setPlotAreaFrame(frame);
    graph.setFill(style.fill);
    graph.setTitleTextStyle(style.title);
    CPTLegend legend = graph.legend();
    legend.textStyle = style.legend;
    graph.setLegend(legend);
}

/// On paper there is room for what is drawn and no more, where labels make their own.
GraphDress::GroundStyle GraphDress::styled(GroundStyle style, const Wish& wish, CPTLabelRoom room)
{
    if (wish.look == GraphLook::Light) {
        style.frameFill = {{{0.0, CPTColor(0xec, 0xee, 0xf1)}, {1.0, CPTColor(0xfc, 0xfc, 0xfd)}}};
        style.border = line(1, CPTColor(0xb8, 0xbe, 0xc6));
    } else if (wish.look == GraphLook::Paper) {
        style.fill = style.frameFill = CPTFill::withColor(CPTColor(Qt::white));
        style.border = std::nullopt;
        style.cornerRadius = 0;
        if (room == CPTLabelRoom::Grows) {
            style.padding = kAroundPaper;
            style.framePadding = kInPaper;
        }
    }
    if (wish.look != GraphLook::Dark) {
        style.title = onLight(style.title);
        style.legend = onLight(style.legend);
    }
    if (wish.isTransparent) {
        style.fill = style.frameFill = CPTFill::none();
        style.border = std::nullopt;
    }
    style.title.fontSize = wish.fontSize.value_or(style.title.fontSize);
    style.legend.fontSize = wish.fontSize.value_or(style.legend.fontSize);
    return style;
}

/// What differs from what was put on last was restyled by somebody else. One that is new, but looks like one that
/// wears a look, was made after it: what is beneath is the same too.
template <class Owner, class Style>
void GraphDress::dress(std::vector<Worn<Owner, Style>>& all, const std::shared_ptr<Owner>& owner, const Wish& wish)
{
    const Style present = styleOf(*owner);
    auto own = std::find_if(all.begin(), all.end(), [&](const auto& worn) { return worn.owner.lock() == owner; });
    if (own == all.end()) {
        const auto model = std::find_if(all.begin(), all.end(), [&](const auto& worn) { return worn.now == present; });
        const Style before = model == all.end() ? present : model->before;
        own = all.insert(all.end(), {owner, before, present});
    }
    if (!(own->now == present))
        own->before = present;
    if constexpr (std::is_same_v<Style, GroundStyle>)
        own->now = styled(own->before, wish, owner->labelRoom());
    else
        own->now = styled(own->before, wish);
    if (!(own->now == present))
        setStyle(*owner, own->now);
}

void GraphDress::wear(const CPTXYGraphPtr& graph, const Wish& wish)
{
    if (!graph || (wish.isPlain() && m_grounds.empty()))
        return;
    std::erase_if(m_axes, [](const auto& worn) { return worn.owner.expired(); });
    std::erase_if(m_strips, [](const auto& worn) { return worn.owner.expired(); });
    std::erase_if(m_grounds, [](const auto& worn) { return worn.owner.expired(); });
    dress(m_grounds, graph, wish);
    for (const CPTXYAxisPtr& axis : graph->axisSet()->axes())
        dress(m_axes, axis, wish);
    for (const CPTXYPlotSpacePtr& space : graph->allPlotSpaces())
        if (!space->strip().isWhole())
            dress(m_strips, space, wish);
    if (!wish.isPlain())
        return;
    m_axes.clear();
    m_strips.clear();
    m_grounds.clear();
}

}  // namespace plotix
