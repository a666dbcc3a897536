#include "plugins/PlotixPlugIn/reading/lanes/Lane.h"

#include "plotkit/layout/AxisPlacement.h"
#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"
#include "plugins/PlotixPlugIn/logic/RangePolicy.h"
#include "plugins/PlotixPlugIn/reading/lanes/LaneFormatters.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kHeadRoom = 22;  // points above the plots of a lane, for title and keys
constexpr double kLaneGap = 8;    // the same of one that has neither
constexpr double kNoGap = 1;      // the same of the uppermost; with none at all it would be no strip
constexpr float kBorderOpacity = 0.22F;
constexpr float kFillOpacity = 0.10F;
constexpr double kTickLength = 6;
constexpr double kTitleSize = 12;  // points
constexpr double kKeySize = 11;

CPTColor withOpacity(CPTColor color, float opacity)
{
    color.setAlphaF(opacity);
    return color;
}

/// A lane is low: what suits a whole graph would fill it.
void makeFiner(CPTXYAxis& axis)
{
    const auto thin = [](std::optional<CPTLineStyle> style, double width) {
        if (style)
            style->width = std::min(style->width, width);
        return style;
    };
    axis.setAxisLineStyle(thin(axis.axisLineStyle(), 1));
    axis.setMajorTickLineStyle(thin(axis.majorTickLineStyle(), 1));
    axis.setMajorTickLength(std::min(axis.majorTickLength(), kTickLength));
    axis.setMajorGridLineStyle(thin(axis.majorGridLineStyle(), 1));
    axis.setMinorTickLineStyle(std::nullopt);
    axis.setMinorGridLineStyle(std::nullopt);
}

void bindPoints(CPTScatterPlot& plot, const CPTSeriesControllerPtr& controller)
{
    plot.bind(CPTScatterPlotBindingXValues, controller, QStringLiteral("arrangedObjects.x"));
    plot.bind(CPTScatterPlotBindingYValues, controller, QStringLiteral("arrangedObjects.y"));
}

}  // namespace

CPTPlotRange LaneDelegate::plotSpaceWillChangePlotRangeTo(CPTXYPlotSpace* space, const CPTPlotRange& range,
                                                          CPTCoordinate coordinate)
{
    const Qt::KeyboardModifiers keys = m_heedsKeys() ? KTVHostServices::installed().userInterface->modifierFlags()
                                                     : Qt::KeyboardModifiers(Qt::NoModifier);
    const CPTPlotRange& current = coordinate == CPTCoordinate::Y ? space->yRange() : space->xRange();
    return judgeRange(range, current, coordinate,
                      {.option = keys.testFlag(Qt::AltModifier), .shift = keys.testFlag(Qt::ShiftModifier)},
                      ValueLimits::Lifted)
        .range;
}

Lane::Lane(CPTXYGraph& graph, QString key, std::function<bool()> heedsKeys)
    : m_graph(graph), m_key(std::move(key)), m_delegate(std::move(heedsKeys))
{
    m_space->followXOf(graph.allPlotSpaces().front());
    m_space->setAllowsUserInteraction(true);
    m_space->setMovableRanges(CPTMovableRanges::OnlyY);
    m_space->setDelegate(&m_delegate);
    m_space->setFitter([this](const std::vector<CPTScatterPlotPtr>& plots) {
        std::vector<CPTPointSeriesPtr> series;
        for (const CPTScatterPlotPtr& plot : plots)
            if (!plot->isHidden() || plots.size() == 1)
                series.push_back(plot->series());
        return fittedLaneRange(series, m_settings, m_space->yRange());
    });
    graph.addPlotSpace(m_space);
    graph.axisSet()->addAxis(m_axis);
}

Lane::~Lane()
{
    for (std::size_t index = 0; index < m_plots.size(); ++index) {
        if (m_plots[index]->plotSpace() == m_space)
            m_plots[index]->setPlotSpace(nullptr);
    }
    leaveScale();
    m_space->setDelegate(nullptr);
    m_space->setFitter({});
    m_graph.axisSet()->removeAxis(m_axis);
    m_graph.removePlotSpace(m_space);
}

void Lane::setPlots(const std::vector<CPTScatterPlotPtr>& plots, const QString& name, const QString& unitSymbol)
{
    leaveScale();
    m_plots = plots;
    m_name = name;
    m_unitSymbol = unitSymbol;
    m_plain.clear();
    for (const CPTScatterPlotPtr& plot : plots) {
        m_plain.push_back(plot->boundController());
        plot->setPlotSpace(m_space);
    }
    putOnScale();
    restyle();
}

void Lane::leaveScale()
{
    for (std::size_t index = 0; index < m_plots.size() && !m_scaled.empty(); ++index) {
        m_plots[index]->setValueSeries(nullptr);
        if (m_plain[index])
            bindPoints(*m_plots[index], m_plain[index]);
    }
    m_scaled.clear();
}

/// A logarithmic lane draws the powers of ten, so that reduction and rasteriser know nothing of scales.
void Lane::putOnScale()
{
    m_space->setYScaleType(m_settings.isLogarithmic ? CPTScaleType::Logarithmic : CPTScaleType::Linear);
    if (!m_settings.isLogarithmic)
        return;
    for (std::size_t index = 0; index < m_plots.size(); ++index) {
        if (!m_plain[index] || !m_plain[index]->content())
            continue;
        m_scaled.push_back(std::make_shared<CPTSeriesController>(logarithmicSeries(*m_plain[index]->content())));
        bindPoints(*m_plots[index], m_scaled.back());
        m_plots[index]->setValueSeries(m_plain[index]->content());
    }
}

void Lane::setStrip(double top, double bottom)
{
    m_top = top;
    m_bottom = bottom;
    restyle();
}

QString Lane::title() const
{
    if (m_prefixed.symbol.isEmpty())
        return m_name;
    return m_name.isEmpty() ? m_prefixed.symbol : QStringLiteral("%1 (%2)").arg(m_name, m_prefixed.symbol);
}

QString Lane::valueText(double value, const std::function<QString(double)>& write) const
{
    const QString number = write((m_settings.isLogarithmic ? std::pow(10.0, value) : value) * m_prefixed.factor);
    return m_prefixed.symbol.isEmpty() ? number : number + u' ' + m_prefixed.symbol;
}

void Lane::updatePrefix()
{
    const CPTPlotRange& range = m_space->yRange();
    const double magnitude = std::max(std::abs(range.minLimit()), std::abs(range.maxLimit()));
    m_prefixed = m_settings.isLogarithmic ? PrefixedUnit{m_unitSymbol, 1} : prefixedUnit(m_unitSymbol, magnitude);
}

void Lane::fit()
{
    const std::vector<CPTScatterPlotPtr> plots = m_graph.plotsIn(*m_space);
    m_space->setDelegate(nullptr);  // no key that is held means a fit
    m_space->scaleToFitPlots(plots);
    m_space->setDelegate(&m_delegate);
    restyle();
}

void Lane::restyle()
{
    updatePrefix();
    const CPTXYAxis& model = m_graph.axes().yAxis();
    m_axis->takeStyleOf(model);
    makeFiner(*m_axis);
    m_axis->setPlotSpace(m_space);
    m_axis->setAxisConstraints(CPTConstraints{});
    // A name that is longer than a low lane would run into its neighbours'.
    m_axis->setTitle(m_naming.title == LaneNaming::Title::AlongAxis
                         ? title() + plotkit::kTitleVariants + m_prefixed.symbol + plotkit::kTitleVariants
                         : QString());
    m_axis->setTitleOffset(0);
    m_axis->setHidden(false);
    m_axis->setLabelingPolicy(m_settings.isLogarithmic ? CPTAxisLabelingPolicy::Logarithmic
                                                       : CPTAxisLabelingPolicy::Automatic);
    m_axis->setLabelFormatter(laneFormatter(m_settings.isLogarithmic, m_prefixed.factor));
    const CPTColor ink = model.labelTextStyle().color;
    CPTStrip strip;
    strip.top = m_top;
    strip.bottom = m_bottom;
    const bool hasTitle = m_naming.title == LaneNaming::Title::InHead && !title().isEmpty();
    strip.headRoom = hasTitle || m_naming.hasKeys ? kHeadRoom : m_top > 0 ? kLaneGap : kNoGap;
    strip.borderLineStyle = CPTLineStyle{.width = 1, .color = withOpacity(ink, kBorderOpacity)};
    strip.fill = CPTFill::withColor(
        withOpacity(ink.lightnessF() > 0.5F ? CPTColor(Qt::black) : CPTColor(Qt::white), kFillOpacity));
    strip.title = hasTitle ? title() : QString();
    strip.hasKeys = m_naming.hasKeys;
    strip.titleTextStyle = {.fontName = QStringLiteral("Helvetica-Bold"), .fontSize = kTitleSize, .color = ink};
    strip.keyTextStyle = {.fontSize = kKeySize, .color = ink};
    m_space->setStrip(strip);
}

}  // namespace plotix
