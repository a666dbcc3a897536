#include "plotkit/layout/AxisPlacement.h"

#include "plotkit/layout/AxisFrame.h"
#include "plotkit/layout/AxisTicks.h"

#include <algorithm>
#include <cmath>
#include <utility>

// Everything is reckoned in (along the axis, outward from its line); AxisFrame turns it into the picture's coordinates,
// and is the only one to know at which of the four edges the axis stands.

namespace plotkit {

namespace {

constexpr double kLabelGap = 4;        // points between a tick's end and its label
constexpr double kTitleGap = 3;        // points between the labels and the title
constexpr double kTitleClearance = 1;  // points between a tick's inner end and a title inside the plot area
constexpr double kLabelSpaceX = 8;     // points between neighbouring labels
constexpr double kLabelSpaceY = 2;
constexpr double kRounding = 1e-6;  // points

double positive(double length)
{
    return std::isfinite(length) && length > 0 ? length : 0;
}

/// Where the axis line stands across the picture: at its distance from an edge, or where the other axis has its value.
double lineOf(const CPTXYAxis& axis, const AxisSurroundings& in)
{
    const QRectF& area = in.plotArea;
    const std::optional<CPTConstraints>& held = axis.axisConstraints();
    if (!held)
        return coordinateForValue(in.across, axis.orthogonalPosition());
    if (axis.coordinate() == CPTCoordinate::X)
        return held->upperOffset ? area.top() + *held->upperOffset : area.bottom() - held->lowerOffset;
    return held->upperOffset ? area.right() - *held->upperOffset : area.left() + held->lowerOffset;
}

AxisEdge edgeOf(const CPTXYAxis& axis)
{
    return axis.axisConstraints() && axis.axisConstraints()->upperOffset ? AxisEdge::High : AxisEdge::Low;
}

struct TickReach {
    double outward, inward;
};

TickReach reachOfTicks(const CPTXYAxis& axis, double length)
{
    const double reach = positive(length);
    if (axis.tickDirection() == CPTSign::None)
        return {reach / 2, reach / 2};
    const bool isOutward = (axis.tickDirection() == CPTSign::Negative) == (edgeOf(axis) == AxisEdge::Low);
    return isOutward ? TickReach{reach, 0} : TickReach{0, reach};
}

class Placement {
public:
    Placement(const CPTXYAxis& axis, const AxisSurroundings& surroundings)
        : m_axis(axis), m_in(surroundings), m_frame(axis.coordinate(), lineOf(axis, surroundings), edgeOf(axis))
    {
    }

    AxisLayout place()
    {
        m_plan = planTicks(m_axis, m_in.along);
        const bool visible = isVisible();
        if (visible)
            m_layout.labels = placedLabels();
        placeTicks(visible);
        if (visible) {
            m_layout.line = m_frame.lineAlong(alongStart(), alongEnd());
            m_title = titleThatFits();
            m_layout.title = placedTitle();
        }
        return std::move(m_layout);
    }

private:
    bool isVisible() const
    {
        const QRectF& area = m_in.plotArea;
        const double low = m_frame.isX() ? area.top() : area.left();
        const double high = m_frame.isX() ? area.bottom() : area.right();
        return m_frame.line() >= low - kRounding && m_frame.line() <= high + kRounding;
    }

    double alongStart() const { return m_frame.isX() ? m_in.plotArea.left() : m_in.plotArea.bottom(); }
    double alongEnd() const { return m_frame.isX() ? m_in.plotArea.right() : m_in.plotArea.top(); }

    TickReach tickReach(double length) const { return reachOfTicks(m_axis, length); }

    QLineF tickLine(double value, double length) const
    {
        const TickReach reach = tickReach(length);
        return m_frame.lineAcross(coordinateForValue(m_in.along, value), reach.inward, reach.outward);
    }

    QLineF gridLine(double value) const
    {
        const double along = coordinateForValue(m_in.along, value);
        const QRectF& area = m_in.plotArea;
        return m_frame.isX() ? QLineF(along, area.top(), along, area.bottom())
                             : QLineF(area.left(), along, area.right(), along);
    }

    void placeTicks(bool visible)
    {
        for (const MajorTick& tick : majorTicks(m_plan, m_in.along))
            m_layout.majorValues.push_back(tick.value);
        m_layout.minorValues = minorTicks(m_plan, m_in.along);
        for (const double value : m_layout.majorValues)
            m_layout.majorGridLines.push_back(gridLine(value));
        for (const double value : m_layout.minorValues)
            m_layout.minorGridLines.push_back(gridLine(value));
        if (!visible)
            return;
        for (const double value : m_layout.majorValues)
            m_layout.majorTicks.push_back(tickLine(value, m_axis.majorTickLength()));
        for (const double value : m_layout.minorValues)
            m_layout.minorTicks.push_back(tickLine(value, m_axis.minorTickLength()));
    }

    AxisLabel labelAt(double value) const
    {
        AxisLabel label;
        label.value = value;
        label.text = tickText(m_axis, value, m_plan.step);
        const QSizeF size = m_in.measureText(label.text, m_axis.labelTextStyle());
        const double outward = tickReach(m_axis.majorTickLength()).outward + kLabelGap;
        label.box = m_frame.boxFrom(coordinateForValue(m_in.along, value), outward, size);
        label.alignment = m_frame.labelAlignment();
        return label;
    }

    /// What a label takes along the axis, its distance to the next included.
    double extentAlong(const AxisLabel& label) const
    {
        return m_frame.extentAlong(label.box) + (m_frame.isX() ? kLabelSpaceX : kLabelSpaceY);
    }

    /// In how many steps there is room for one label, judged by these labels.
    double multipleFor(const std::vector<AxisLabel>& labels) const
    {
        double widest = 0;
        for (const AxisLabel& label : labels)
            widest = std::max(widest, extentAlong(label));
        return readableMultiple(m_plan, widest * valuePerUnit(m_in.along) / m_plan.spacing());
    }

    /// Every `multiple`-th label, counted from the origin, so that panning keeps the choice.
    std::vector<AxisLabel> everyLabel(const std::vector<MajorTick>& ticks, double multiple) const
    {
        std::vector<AxisLabel> labels;
        for (const MajorTick& tick : ticks)
            if (std::fmod(tick.number, multiple) == 0)
                labels.push_back(labelAt(tick.value));
        return labels;
    }

    /// Thins by the outer ticks' labels first: hundreds of ticks must not cost hundreds of texts. Then by those kept.
    std::vector<AxisLabel> placedLabels()
    {
        std::vector<MajorTick> ticks = majorTicks(m_plan, m_in.along);
        std::vector<AxisLabel> labels;
        if (ticks.empty())
            return labels;
        double multiple = multipleFor({labelAt(ticks.front().value), labelAt(ticks.back().value)});
        TickPlan ofTwo = m_plan;  // the coarsest with two ticks
        for (;;) {
            while (multiple > 1 && m_plan.origin == 0 && !isFixed() && ticks.size() > 2) {
                ofTwo = m_plan;
                m_plan = coarserPlan(m_plan);  // automatic ticks: only as many as have room for a label
                ticks = majorTicks(m_plan, m_in.along);
                multiple = ticks.empty() ? 1 : multipleFor({labelAt(ticks.front().value), labelAt(ticks.back().value)});
            }
            labels = everyLabel(ticks, multiple);
            const double needed = multipleFor(labels);
            if (!(needed > multiple))
                break;
            multiple = needed;
        }
        std::erase_if(labels, [this](const AxisLabel& label) {
            return label.text.isEmpty() || !m_in.rectangle.contains(label.box);
        });
        if (labels.size() < 2 && !m_frame.isX() && m_axis.labelingPolicy() == CPTAxisLabelingPolicy::Automatic)
            labelOuterTicks(ofTwo, labels);
        return m_plan.calendarRow ? withoutOverlaps(std::move(labels)) : labels;
    }

    /// A single number says nothing of a scale: where every second tick of a low axis has room for its label, and only
    /// one of them stands in it, the outer ticks are labelled instead, if they are clear of each other.
    void labelOuterTicks(const TickPlan& plan, std::vector<AxisLabel>& labels)
    {
        const TickPlan before = std::exchange(m_plan, plan);
        std::vector<AxisLabel> outer;
        for (const MajorTick& tick : majorTicks(m_plan, m_in.along))
            if (AxisLabel label = labelAt(tick.value); m_in.rectangle.contains(label.box) && !label.text.isEmpty())
                outer.push_back(std::move(label));
        if (outer.size() < 2 || outer.front().box.intersects(outer.back().box)) {
            m_plan = before;
            return;
        }
        labels = {outer.front(), outer.back()};
    }

    /// Where clocks are put forward ticks stand closer together than elsewhere.
    static std::vector<AxisLabel> withoutOverlaps(std::vector<AxisLabel> labels)
    {
        std::vector<AxisLabel> kept;
        for (AxisLabel& label : labels)
            if (kept.empty() || !kept.back().box.intersects(label.box))
                kept.push_back(std::move(label));
        return kept;
    }

    bool isFixed() const
    {
        const double interval = m_axis.majorIntervalLength();
        return m_axis.labelingPolicy() == CPTAxisLabelingPolicy::FixedInterval && std::isfinite(interval) &&
               interval != 0;
    }

    /// How far the labels reach outward.
    double labelReach() const
    {
        double reach = 0;
        for (const AxisLabel& label : m_layout.labels)
            reach = std::max(reach, m_frame.reachOf(label.box));
        return reach;
    }

    /// Where the near side of a title beyond the labels stands, outward from the axis line; `depth` is the height of
    /// its text. It moves a little nearer to the labels before it would cross the frame's border.
    double outerTitleDistance(double depth) const
    {
        const double ticksEnd = tickReach(m_axis.majorTickLength()).outward + kLabelGap;
        const double labelsEnd = m_layout.labels.empty() ? 0 : labelReach();
        const double wanted = std::max({titleOffset(), ticksEnd, labelsEnd > 0 ? labelsEnd + kTitleGap : 0});
        const double nearest = std::max(ticksEnd, labelsEnd + kTitleClearance);
        return std::max(nearest, std::min(wanted, m_frame.reachOf(m_in.frameInside) - depth));
    }

    /// The same for a title inside the plot area, beside the inner ends of the ticks: negative.
    double innerTitleDistance(double depth) const
    {
        return std::min(titleOffset(), -(tickReach(m_axis.majorTickLength()).inward + kTitleClearance + depth));
    }

    double titleOffset() const
    {
        const double offset = std::isfinite(m_axis.titleOffset()) ? m_axis.titleOffset() : 0;
        return m_in.overPlots == TextOverPlots::Allowed ? offset : std::max(0.0, offset);
    }

    PlacedText titleAlongAxis(const QSizeF& size, double distance) const
    {
        const QPointF centre = m_in.plotArea.center();
        PlacedText title;
        title.text = m_title;
        title.readsUpward = !m_frame.isX();
        title.box = m_frame.boxFrom(m_frame.isX() ? centre.x() : centre.y(), distance,
                                    title.readsUpward ? size.transposed() : size);
        return title;
    }

    /// Above the end of a y axis, clear of the label that may stand there.
    PlacedText titleAboveAxis(const QSizeF& size) const
    {
        PlacedText title;
        title.text = m_title;
        title.alignment = m_frame.alignmentAboveEnd();
        const double left = m_frame.lowSideEndingAt(tickReach(m_axis.majorTickLength()).outward, size.width());
        const double room = m_in.plotArea.top() - m_in.frameInside.top() - size.height();
        const double gap = std::max(kTitleClearance, std::min(kTitleGap, room));
        title.box = QRectF(QPointF(left, m_in.plotArea.top() - gap - size.height()), size);
        return title;
    }

    bool hasRoom(const PlacedText& title) const
    {
        return m_in.frameInside.contains(title.box) && m_in.rectangle.contains(title.box) &&
               std::none_of(m_layout.labels.begin(), m_layout.labels.end(),
                            [&title](const AxisLabel& label) { return label.box.intersects(title.box); });
    }

    /// The first variant no longer than the axis; else the last one.
    QString titleThatFits() const
    {
        const QStringList variants = wholeTitle(m_axis).split(kTitleVariants);
        const double length = std::abs(alongEnd() - alongStart());
        const auto fits = [&](const QString& variant) {
            return m_in.measureText(variant, m_axis.titleTextStyle()).width() <= length;
        };
        const auto found = std::find_if(variants.begin(), variants.end() - 1, fits);
        return *found;
    }

    /// Beyond the labels; where they are too wide for that above a y axis, and else inside the plot area, if allowed.
    std::optional<PlacedText> placedTitle() const
    {
        if (m_title.isEmpty())
            return std::nullopt;
        const QSizeF size = m_in.measureText(m_title, m_axis.titleTextStyle());
        std::vector<PlacedText> candidates;
        if (titleOffset() >= 0) {
            candidates.push_back(titleAlongAxis(size, outerTitleDistance(size.height())));
            if (!m_frame.isX())
                candidates.push_back(titleAboveAxis(size));
        }
        if (m_in.overPlots == TextOverPlots::Allowed)
            candidates.push_back(titleAlongAxis(size, innerTitleDistance(size.height())));
        const auto found = std::find_if(candidates.begin(), candidates.end(),
                                        [this](const PlacedText& title) { return hasRoom(title); });
        return found == candidates.end() ? std::nullopt : std::optional(*found);
    }

    const CPTXYAxis& m_axis;
    const AxisSurroundings& m_in;
    const AxisFrame m_frame;
    TickPlan m_plan;
    AxisLayout m_layout;
    QString m_title;  // the variant that is placed
};

}  // namespace

QString wholeTitle(const CPTXYAxis& axis)
{
    const QString& remark = axis.titleRemark();
    if (remark.isEmpty() || axis.title().isEmpty())
        return axis.title() + remark;
    QStringList variants = axis.title().split(kTitleVariants);
    for (QString& variant : variants)
        variant = variant.isEmpty() ? remark : QStringLiteral("%1 (%2)").arg(variant, remark);
    return (variants << remark).join(kTitleVariants);
}

QString tickText(const CPTXYAxis& axis, double value, double step)
{
    return axis.labelFormatter() ? axis.labelFormatter()->stringForTick(value, step) : QString();
}

double depthBesideAxis(const CPTXYAxis& axis, double labelDepth, double titleDepth)
{
    const double ticks = reachOfTicks(axis, axis.majorTickLength()).outward;
    const double labels = labelDepth > 0 ? ticks + kLabelGap + labelDepth : ticks;
    const double offset = std::isfinite(axis.titleOffset()) ? axis.titleOffset() : 0;
    return titleDepth > 0 ? std::max(labels + kTitleGap, offset) + titleDepth : labels;
}

AxisLayout placeAxis(const CPTXYAxis& axis, const AxisSurroundings& surroundings)
{
    return Placement(axis, surroundings).place();
}

}  // namespace plotkit
