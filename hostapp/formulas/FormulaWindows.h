#pragma once

#include "hostapp/core/PropertyFormula.h"
#include "hostapp/formulas/FormulaProgram.h"
#include "hostapp/formulas/IntegralCourse.h"
#include "hostapp/formulas/LocalClock.h"
#include "hostapp/formulas/PagedSeries.h"
#include "hostapp/formulas/PlainSeries.h"

#include <QtCore/QTimeZone>

#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <variant>
#include <vector>

/// Steps over time: each result needs a stretch of its argument. Time in one pass over the values, whatever the span.
///
/// A NaN is no value. Every function but `hold` and `earlier` gives a value only where its argument has one. Sums are
/// carried with their rounding errors, so that a window long after a huge value is not off. A pass may end anywhere and
/// go on later from a copy of its state, to the same bits. Free functions; any thread.
namespace plotix {

struct WindowRules {
    PropertyFormula::Join join{};  ///< how a value goes on until the next one
    double longestGap = 0;         ///< seconds that are bridged, at most
    QTimeZone zone;                ///< of local days
};

/// What a pass knows of the elements that it has gone through.
namespace windows {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

struct Last {  ///< of hold and derivative
    double value = kNone, time = 0;
};
struct RunningIntegral {
    ExactSum area;
    Last last;
};
struct TrailingSum {
    ExactSum sum;
    std::size_t first = 0, count = 0;  ///< the window's first element, and how many values there are in it
};
struct TrailingExtreme {
    struct Candidate {
        double time = 0, value = 0;
        std::size_t element = 0;
    };
    std::vector<Candidate> candidates;  ///< that may still become the extreme, the present one at `head`
    std::size_t head = 0;
    std::optional<std::size_t> since;  ///< the element with which candidates that were let go begin
};
struct TrailingIntegral {
    IntegralCourse now, before;
};
struct Stretches {
    std::size_t first = 0, last = 0;  ///< elements of the day or the part of it gone through last
    double value = kNone;             ///< of all of it
    LocalClock clock;
    IntegralCourse integral = {};
    double integratedTo = -std::numeric_limits<double>::infinity();
    std::vector<std::pair<double, double>> days = {};  ///< the last ones, and the integral up to where they begin
};
struct Earlier {
    LocalClock clock;
    std::size_t next = 0;  ///< the first element behind the time asked for last
};

}  // namespace windows

using WindowState =
    std::variant<std::monostate, windows::Last, windows::RunningIntegral, windows::TrailingSum,
                 windows::TrailingExtreme, windows::TrailingIntegral, windows::Stretches, windows::Earlier>;

/// Before the first element of one of Window, Hold, Earlier and Derivative.
WindowState begunState(const FormulaStep& step, const WindowRules& rules);

/// Lets go what takes much memory and can be had again from the elements before.
void makeSmall(WindowState& state);

/// Where one pass over time stands: in an argument that it reads in two places at once.
template <class Series>
struct WindowInput {
    const Series& now;     ///< where the results are, and a little behind them
    const Series& around;  ///< the same values, as far away as windows reach
};

/// Elements [first, first + to.size()). `later`: what the state will be behind them, if that is known. Requires: the
/// state is that of the element `first`; `to` is other memory.
template <class Series>
void runOverTime(const FormulaStep& step, const WindowRules& rules, const WindowInput<Series>& input,
                 WindowState& state, std::size_t first, std::span<double> to, const WindowState* later = nullptr);

extern template void runOverTime(const FormulaStep&, const WindowRules&, const WindowInput<PlainSeries>&, WindowState&,
                                 std::size_t, std::span<double>, const WindowState*);
extern template void runOverTime(const FormulaStep&, const WindowRules&, const WindowInput<SeriesReader>&, WindowState&,
                                 std::size_t, std::span<double>, const WindowState*);

}  // namespace plotix
