#pragma once

#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/MajorTick.h"
#include "plotkit/model/CPTAxis.h"

#include <optional>
#include <vector>

/// Choosing where ticks stand, apart from placing, labelling and drawing them.
///
/// Pure; main thread only where an axis is read. Lengths are in the axis's value unit unless said otherwise.
namespace plotkit {

/// Majors at whole multiples of `step` from `origin`, each step divided by `minors` ticks. Step 0: no ticks at all.
struct TickPlan {
    double origin = 0;
    double step = 0;
    int minors = 0;
    bool isTime = false;  ///< thinned to round times of day and whole days
    /// Majors stand at local times instead, by a row of CalendarTicks.h; `step` is about their distance.
    std::optional<std::size_t> calendarRow = {};
    QTimeZone zone = {};  ///< of those times; invalid: the local one
    /// Of an axis whose numbers are powers of ten. Decades: steps are whole powers. Values: majors stand at multiples
    /// of `step` among the values that the powers stand for.
    enum class Logarithm { None, Decades, Values };
    Logarithm logarithm = Logarithm::None;
    double nearest = 0;  ///< the least distance of majors along the axis where `step` is none; 0: `step` is one

    double spacing() const { return nearest > 0 ? nearest : step; }
    bool isEmpty() const { return !(step > 0); }
};

/// Majors never stand closer than this many units of the mapping, and never more of them than `kMostMajors`.
inline constexpr double kLeastMajorSpacing = 4;
inline constexpr double kLeastMinorSpacing = 2;
inline constexpr double kMostMajors = 4000;
/// Majors of a calendar do not stand closer, as their labels would have no room.
inline constexpr double kLeastCalendarSpacing = 40;

/// The ticks an axis asks for, thinned so that they stand apart. A fixed interval's sign does not matter; one that is
/// zero or not finite gives automatic ticks, so that an axis is never blank for want of an interval. An improper
/// mapping, and a range too far from zero for doubles to tell its ticks apart, have none.
TickPlan planTicks(const CPTXYAxis& axis, const AxisMapping& mapping);

/// About five majors over a length at 1, 2 or 5 × 10ⁿ. A length that is zero or not finite gives an empty plan.
TickPlan automaticPlan(double length);

/// The next coarser of the automatic plans, or of the calendar's.
TickPlan coarserPlan(const TickPlan& plan);

/// The least readable count of steps, at least `wanted`, to keep one tick of: 1, 2 or 5 × 10ⁿ, and for times such that
/// kept ticks stand at whole minutes, hours or days. Wanting less than one answers 1; infinity is answered as it is.
double readableMultiple(const TickPlan& plan, double wanted);

/// The ticks within the mapping's range, ascending in value.
std::vector<MajorTick> majorTicks(const TickPlan& plan, const AxisMapping& mapping);
std::vector<double> minorTicks(const TickPlan& plan, const AxisMapping& mapping);

}  // namespace plotkit
