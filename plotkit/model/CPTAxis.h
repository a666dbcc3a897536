#pragma once

#include "plotkit/model/CPTClock.h"
#include "plotkit/model/CPTFormatter.h"
#include "plotkit/model/CPTPlotRange.h"
#include "plotkit/model/CPTStyles.h"

#include <functional>
#include <memory>
#include <optional>

class CPTXYPlotSpace;

enum class CPTAxisLabelingPolicy { Automatic, FixedInterval, Calendar, Logarithmic };
/// Which ticks of a fixed interval are kept where there is no room for all: those at round multiples, or, for an
/// interval in seconds, those at round times of day and whole days.
enum class CPTTickThinning { RoundNumbers, ClockTimes };
enum class CPTSign { None, Positive, Negative };  ///< None: ticks cross the axis

/// One axis: how it is labelled and styled, as plain state. Every styled value can be read back.
///
/// Fixed interval: majors at whole multiples of `majorIntervalLength` from `labelingOrigin`. Automatic: about five
/// majors at 1, 2 or 5 × 10ⁿ; the stored interval is kept but not used. Calendar, for an axis in seconds since
/// 1970-01-01 UTC: majors at round local times, days, months or years, as many as have room for a label. Logarithmic,
/// for an axis whose numbers are powers of ten: majors at whole powers, or also at their twos and fives, minors at the
/// other digits. Where ticks stand depends on the axis alone, but for the room that its labels take. The axis set
/// *shares* it with whoever added it. Main thread only.
class CPTXYAxis {
public:
    explicit CPTXYAxis(CPTCoordinate coordinate);

    CPTCoordinate coordinate() const { return m_coordinate; }

    /// The space whose range it shows; null is the graph's default one. Held *weakly*.
    std::shared_ptr<const CPTXYPlotSpace> plotSpace() const { return m_plotSpace.lock(); }
    void setPlotSpace(const std::shared_ptr<const CPTXYPlotSpace>& space)
    {
        set(m_plotSpace, std::weak_ptr<const CPTXYPlotSpace>(space));
    }

    /// A hidden axis is not drawn, has no grid and takes no room.
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { set(m_hidden, hidden); }

    CPTAxisLabelingPolicy labelingPolicy() const { return m_labelingPolicy; }
    void setLabelingPolicy(CPTAxisLabelingPolicy policy) { set(m_labelingPolicy, policy); }
    double majorIntervalLength() const { return m_majorIntervalLength; }
    void setMajorIntervalLength(double length) { set(m_majorIntervalLength, length); }
    int minorTicksPerInterval() const { return m_minorTicksPerInterval; }
    void setMinorTicksPerInterval(int count) { set(m_minorTicksPerInterval, count); }
    double labelingOrigin() const { return m_labelingOrigin; }
    void setLabelingOrigin(double origin) { set(m_labelingOrigin, origin); }
    CPTTickThinning tickThinning() const { return m_tickThinning; }
    void setTickThinning(CPTTickThinning thinning) { set(m_tickThinning, thinning); }
    const QTimeZone& timeZone() const { return m_timeZone; }  ///< of Calendar; invalid: the system's
    void setTimeZone(const QTimeZone& zone) { set(m_timeZone, zone); }
    const CPTFormatterPtr& labelFormatter() const { return m_labelFormatter; }
    void setLabelFormatter(CPTFormatterPtr formatter) { set(m_labelFormatter, std::move(formatter)); }
    const CPTTextStyle& labelTextStyle() const { return m_labelTextStyle; }
    void setLabelTextStyle(const CPTTextStyle& style) { set(m_labelTextStyle, style); }

    const QString& title() const { return m_title; }
    void setTitle(const QString& title) { set(m_title, title); }  ///< or variants: layout/AxisPlacement.h
    /// What stands behind the title, or in its place where there is none: about what is said along the axis.
    const QString& titleRemark() const { return m_titleRemark; }
    void setTitleRemark(const QString& remark) { set(m_titleRemark, remark); }
    double titleOffset() const { return m_titleOffset; }  ///< points from the axis away from the plot area
    void setTitleOffset(double offset) { set(m_titleOffset, offset); }
    const CPTTextStyle& titleTextStyle() const { return m_titleTextStyle; }
    void setTitleTextStyle(const CPTTextStyle& style) { set(m_titleTextStyle, style); }

    double orthogonalPosition() const { return m_orthogonalPosition; }
    void setOrthogonalPosition(double position) { set(m_orthogonalPosition, position); }
    const std::optional<CPTConstraints>& axisConstraints() const { return m_axisConstraints; }
    void setAxisConstraints(const std::optional<CPTConstraints>& constraints) { set(m_axisConstraints, constraints); }
    CPTSign tickDirection() const { return m_tickDirection; }
    void setTickDirection(CPTSign direction) { set(m_tickDirection, direction); }

    /// Lines, ticks, texts and directions as the other's; place, plot space, labelling and title stay.
    void takeStyleOf(const CPTXYAxis& other);

    const std::optional<CPTLineStyle>& axisLineStyle() const { return m_axisLineStyle; }
    void setAxisLineStyle(const std::optional<CPTLineStyle>& style) { set(m_axisLineStyle, style); }
    const std::optional<CPTLineStyle>& majorGridLineStyle() const { return m_majorGridLineStyle; }
    void setMajorGridLineStyle(const std::optional<CPTLineStyle>& style) { set(m_majorGridLineStyle, style); }
    const std::optional<CPTLineStyle>& minorGridLineStyle() const { return m_minorGridLineStyle; }
    void setMinorGridLineStyle(const std::optional<CPTLineStyle>& style) { set(m_minorGridLineStyle, style); }
    const std::optional<CPTLineStyle>& majorTickLineStyle() const { return m_majorTickLineStyle; }
    void setMajorTickLineStyle(const std::optional<CPTLineStyle>& style) { set(m_majorTickLineStyle, style); }
    const std::optional<CPTLineStyle>& minorTickLineStyle() const { return m_minorTickLineStyle; }
    void setMinorTickLineStyle(const std::optional<CPTLineStyle>& style) { set(m_minorTickLineStyle, style); }
    double majorTickLength() const { return m_majorTickLength; }
    void setMajorTickLength(double length) { set(m_majorTickLength, length); }
    double minorTickLength() const { return m_minorTickLength; }
    void setMinorTickLength(double length) { set(m_minorTickLength, length); }

    /// Called after every change.
    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }

private:
    template <class T>
    void set(T& field, T value)
    {
        field = std::move(value);
        if (m_changeHandler)
            m_changeHandler();
    }

    CPTCoordinate m_coordinate;
    std::weak_ptr<const CPTXYPlotSpace> m_plotSpace;
    bool m_hidden = false;
    CPTAxisLabelingPolicy m_labelingPolicy = CPTAxisLabelingPolicy::Automatic;
    double m_majorIntervalLength = 1;
    int m_minorTicksPerInterval = 1;
    double m_labelingOrigin = 0;
    CPTTickThinning m_tickThinning = CPTTickThinning::RoundNumbers;
    QTimeZone m_timeZone;
    CPTFormatterPtr m_labelFormatter;  ///< the default: one decimal
    CPTTextStyle m_labelTextStyle;
    QString m_title;
    QString m_titleRemark;
    double m_titleOffset = 30;
    CPTTextStyle m_titleTextStyle;
    double m_orthogonalPosition = 0;
    std::optional<CPTConstraints> m_axisConstraints;
    CPTSign m_tickDirection = CPTSign::None;
    std::optional<CPTLineStyle> m_axisLineStyle = CPTLineStyle{};
    std::optional<CPTLineStyle> m_majorGridLineStyle;
    std::optional<CPTLineStyle> m_minorGridLineStyle;
    std::optional<CPTLineStyle> m_majorTickLineStyle = CPTLineStyle{};
    std::optional<CPTLineStyle> m_minorTickLineStyle = CPTLineStyle{};
    double m_majorTickLength = 5;
    double m_minorTickLength = 3;
    std::function<void()> m_changeHandler;
};

using CPTXYAxisPtr = std::shared_ptr<CPTXYAxis>;
