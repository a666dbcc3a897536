#include "plugins/PlotixPlugIn/reading/values/LineExtremes.h"

#include "plugins/PlotixPlugIn/reading/values/SeriesWalk.h"

#include <algorithm>
#include <limits>

namespace plotix {

namespace {

using Element = std::optional<std::size_t>;

/// Finds peaks; minima are the peaks of the line upside down. *Borrows* the series.
class PeakSearch {
public:
    enum class Way { Up, Down };

    PeakSearch(const CPTPointSeries& series, Way way, ExtremeSize size)
        : m_series(series),
          m_sign(way == Way::Up ? 1 : -1),
          m_fall(std::max(size.prominence, std::numeric_limits<double>::min())),
          m_reach(std::max(0.0, size.reach)),
          m_count(series.elementCount())
    {
    }

    Element after(double time) const
    {
        std::size_t from = firstLaterThan(time);
        while (const Element peak = prominentFrom(from)) {
            const std::size_t highest = highestAround(*peak);
            if (highest == *peak)
                return peak;
            from = highest > *peak ? highest : firstFreeOf(highest, *peak);
        }
        return std::nullopt;
    }

    Element before(double time) const
    {
        std::size_t end = firstNotEarlierThan(time);
        while (const Element peak = prominentBefore(end)) {
            const std::size_t highest = highestAround(*peak);
            if (highest == *peak)
                return peak;
            end = highest < *peak ? highest + 1 : lastFreeOf(highest, *peak);
        }
        return std::nullopt;
    }

private:
    /// A peak, and where the line has fallen from it as far as it must.
    struct Fall {
        std::size_t peak, fallen;
    };

    double height(float y) const { return m_sign * static_cast<double>(y); }
    double heightAt(std::size_t element) const { return height(m_series.y().valueAt(element)); }
    double timeOf(std::size_t element) const { return m_series.x().valueAt(element); }
    /// The heights of a block.
    double lowOf(float least, float greatest) const { return m_sign > 0 ? height(least) : height(greatest); }
    double highOf(float least, float greatest) const { return m_sign > 0 ? height(greatest) : height(least); }

    std::size_t firstNotEarlierThan(double time) const { return m_series.elementFrom(time); }
    std::size_t firstLaterThan(double time) const { return m_series.elementAfter(time); }

    /// The first, or last, point of [first, last) that is at least as high.
    Element firstAsHigh(std::size_t first, std::size_t last, double wanted) const
    {
        return walkForward(
            m_series, first, last,
            [&](float least, float greatest, auto...) { return highOf(least, greatest) < wanted; },
            [&](std::size_t, float y) { return height(y) >= wanted; });
    }
    Element lastAsHigh(std::size_t first, std::size_t last, double wanted) const
    {
        return walkBackward(
            m_series, first, last,
            [&](float least, float greatest, auto...) { return highOf(least, greatest) < wanted; },
            [&](std::size_t, float y) { return height(y) >= wanted; });
    }
    Element firstHigher(std::size_t first, std::size_t last, double than) const
    {
        return walkForward(
            m_series, first, last,
            [&](float least, float greatest, auto...) { return highOf(least, greatest) <= than; },
            [&](std::size_t, float y) { return height(y) > than; });
    }

    /// The first of the highest points within reach of a point.
    std::size_t highestAround(std::size_t element) const
    {
        const double time = timeOf(element);
        const std::size_t first = firstNotEarlierThan(time - m_reach);
        const std::size_t last = firstLaterThan(time + m_reach);
        const CPTSeriesIndex::MinMax extent = m_series.index().minMax(first, last);
        return firstAsHigh(first, last, highOf(extent.min, extent.max)).value_or(element);
    }
    /// Beyond `peak`, the first point that is higher than `higher` or out of its reach.
    std::size_t firstFreeOf(std::size_t higher, std::size_t peak) const
    {
        const std::size_t beyond = std::max(peak + 1, firstLaterThan(timeOf(higher) + m_reach));
        return firstHigher(peak + 1, beyond, heightAt(higher)).value_or(beyond);
    }
    /// Before `peak`, the end of the points that are as high as `higher` or out of its reach.
    std::size_t lastFreeOf(std::size_t higher, std::size_t peak) const
    {
        const std::size_t beyond = std::min(peak, firstNotEarlierThan(timeOf(higher) - m_reach));
        const Element asHigh = lastAsHigh(beyond, peak, heightAt(higher));
        return asHigh ? *asHigh + 1 : beyond;
    }

    /// Passes blocks that neither reach above `top` nor fall far enough below it.
    template <class IsAbove>
    auto passing(double top, IsAbove isAbove) const
    {
        return [this, top, isAbove](float least, float greatest, auto...) {
            return !isAbove(highOf(least, greatest)) && top - lowOf(least, greatest) < m_fall;
        };
    }

    bool fallsAfter(std::size_t peak) const
    {
        const double top = heightAt(peak);
        const Element end =
            walkForward(m_series, peak + 1, m_count, passing(top, [&](double high) { return high > top; }),
                        [&](std::size_t, float y) { return height(y) > top || top - height(y) >= m_fall; });
        return end && heightAt(*end) < top;
    }
    bool fallsBefore(std::size_t peak) const
    {
        const double top = heightAt(peak);
        const Element end =
            walkBackward(m_series, 0, peak, passing(top, [&](double high) { return high >= top; }),
                         [&](std::size_t, float y) { return height(y) >= top || top - height(y) >= m_fall; });
        return end && heightAt(*end) < top;
    }
    /// The highest point since `first`, as soon as the line has fallen from it. A block without such a fall is passed
    /// whole; where in it the highest point lies is found out at the end.
    std::optional<Fall> fallFrom(std::size_t first) const
    {
        double top = -std::numeric_limits<double>::infinity();
        std::size_t begin = first;  // the highest point stands from here on
        const Element fallen = walkForward(
            m_series, first, m_count,
            [&](float least, float greatest, std::size_t blockBegin, std::size_t) {
                const double high = std::max(top, highOf(least, greatest));
                if (high - lowOf(least, greatest) >= m_fall)
                    return false;
                if (high > top)
                    begin = blockBegin;
                top = high;
                return true;
            },
            [&](std::size_t element, float y) {
                if (height(y) > top) {
                    top = height(y);
                    begin = element;
                }
                return top - height(y) >= m_fall;
            });
        if (!fallen)
            return std::nullopt;
        return Fall{firstAsHigh(begin, *fallen, top).value_or(begin), *fallen};
    }
    /// The same backwards: the highest point before `end`, of equal ones the first.
    std::optional<Fall> fallBefore(std::size_t end) const
    {
        double top = -std::numeric_limits<double>::infinity();
        const Element fallen = walkBackward(
            m_series, 0, end,
            [&](float least, float greatest, auto...) {
                const double high = std::max(top, highOf(least, greatest));
                if (high - lowOf(least, greatest) >= m_fall)
                    return false;
                top = high;
                return true;
            },
            [&](std::size_t, float y) {
                top = std::max(top, height(y));
                return top - height(y) >= m_fall;
            });
        if (!fallen)
            return std::nullopt;
        return Fall{firstAsHigh(*fallen, end, top).value_or(*fallen), *fallen};
    }

    PeakSearch upsideDown() const { return {m_series, m_sign > 0 ? Way::Down : Way::Up, {m_fall, m_reach}}; }

    /// The first point at or after `from` that is prominent, whatever is within its reach.
    Element prominentFrom(std::size_t from) const
    {
        std::optional<Fall> fall = fallFrom(from);
        while (fall) {
            if (fallsBefore(fall->peak))
                return fall->peak;
            const std::optional<Fall> rise = upsideDown().fallFrom(fall->fallen);
            fall = rise ? fallFrom(rise->fallen) : std::nullopt;
        }
        return std::nullopt;
    }
    Element prominentBefore(std::size_t end) const
    {
        std::optional<Fall> fall = fallBefore(end);
        while (fall) {
            if (fallsAfter(fall->peak))
                return fall->peak;
            const std::optional<Fall> rise = upsideDown().fallBefore(fall->fallen + 1);
            fall = rise ? fallBefore(rise->fallen + 1) : std::nullopt;
        }
        return std::nullopt;
    }

    const CPTPointSeries& m_series;
    double m_sign;
    double m_fall;  // positive
    double m_reach;
    std::size_t m_count;
};

using Way = PeakSearch::Way;

bool canBeSearched(const CPTPointSeries& series, double time)
{
    return series.isXSorted() && series.elementCount() > 0 && !std::isnan(time);
}

}  // namespace

std::optional<std::size_t> extremeAfter(const CPTPointSeries& series, double time, Extreme kind, ExtremeSize size)
{
    if (!canBeSearched(series, time))
        return std::nullopt;
    const Element top = kind == Extreme::Minimum ? Element() : PeakSearch(series, Way::Up, size).after(time);
    const Element bottom = kind == Extreme::Maximum ? Element() : PeakSearch(series, Way::Down, size).after(time);
    if (!top || !bottom)
        return top ? top : bottom;
    return std::min(*top, *bottom);
}

std::optional<std::size_t> extremeBefore(const CPTPointSeries& series, double time, Extreme kind, ExtremeSize size)
{
    if (!canBeSearched(series, time))
        return std::nullopt;
    const Element top = kind == Extreme::Minimum ? Element() : PeakSearch(series, Way::Up, size).before(time);
    const Element bottom = kind == Extreme::Maximum ? Element() : PeakSearch(series, Way::Down, size).before(time);
    if (!top || !bottom)
        return top ? top : bottom;
    return std::max(*top, *bottom);
}

}  // namespace plotix
