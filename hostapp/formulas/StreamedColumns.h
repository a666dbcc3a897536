#pragma once

#include "hostapp/formulas/FormulaProgram.h"
#include "hostapp/formulas/FormulaWindows.h"
#include "hostapp/formulas/PagedSeries.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// Values that are worked out page by page, where somebody looks, of others that may be paged themselves: what formulas
/// are made of, each with the bits that working out everything at once gives.
///
/// What needs the elements before keeps, at each page, the state of a pass that came by; the first one who looks far
/// behind goes through everything before. So whoever makes columns looks at all of them once, from the beginning.
/// A page that is made of stand-ins is one itself. *Shares* what it reads; any thread.
namespace plotix {

/// Which step of a program is worked out, and where its pages take room.
struct StreamedStep {
    std::shared_ptr<const FormulaProgram> program;
    int position = 0;
    std::shared_ptr<PageCache> cache;
};

/// A pointwise step with all pointwise ones that it is made of. `leaves`: those at `leavesOf`, at these times.
PagedSeries pointwiseColumn(const StreamedStep& step, const PagedTimes& times, std::vector<PagedSeries> leaves);
/// The steps whose values such a step begins with. Requires: it is pointwise.
std::vector<int> leavesOf(const FormulaProgram& program, int position);

/// A step over time.
PagedSeries columnOverTime(const StreamedStep& step, const PagedSeries& argument, const QTimeZone& zone);

/// What the functions of these names in FormulaSeries.h answer. Those look at the times to find out whether they are
/// the same.
PagedSeries joined(const PagedSeries& series, const PagedTimes& times, PropertyFormula::Join join, double longestGap,
                   const std::shared_ptr<PageCache>& cache);
PagedSeries placed(const PagedSeries& series, const PagedTimes& times, const std::shared_ptr<PageCache>& cache);
PagedSeries cutTo(const PagedSeries& series, std::optional<double> from, std::optional<double> to);
/// Goes through times that are not the same. Nothing when `goesOn` stopped it, which is called now and then.
std::optional<PagedTimes> unionOfTimes(const std::vector<PagedTimes>& times, const std::shared_ptr<PageCache>& cache,
                                       const std::function<bool()>& goesOn);

/// The same elements as whole arrays of their own, paged: times with what is known of their runs; values bit for bit,
/// with their validity.
PagedTimes wholeTimes(const PagedTimes& times, const std::shared_ptr<PageCache>& cache);
PagedSeries wholeSeries(const PagedSeries& series, const std::shared_ptr<PageCache>& cache);

/// Whether these are the same times, in one array or in two.
bool areSame(const PagedTimes& one, const PagedTimes& other);

}  // namespace plotix
