#include "plugins/PlotixPlugIn/reading/lanes/PagedLogarithms.h"

#include "base/PagedReading.h"
#include "plotkit/model/CPTPagedPoints.h"
#include "plotkit/model/CPTSeriesRuns.h"
#include "plotkit/model/PagedSeries.h"

#include <array>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kBlock = 4096;  // a multiple of 64

class LogarithmPoints : public CPTPagedPoints {
public:
    explicit LogarithmPoints(const CPTPointSeries& series)
        : CPTPagedPoints(series.y().memory()->cache(), series.elementCount()),
          m_y(series.y()),
          m_points(series.points())
    {
    }

private:
    bool writePoints(CPTPointWriter& into) const noexcept override
    {
        bool areRead = true;
        inStretches(m_y, into.first(), into.end(), [&](std::size_t first, std::size_t end) {
            PagedMemory::Hold read;
            if (m_y.memory()->holdIfThere(first, end, read))
                writeStretch(into, first, end);
            else
                areRead = false;
        });
        return areRead;
    }
    /// Of elements that are held.
    void writeStretch(CPTPointWriter& into, std::size_t first, std::size_t end) const
    {
        std::array<double, kBlock> block;
        for (; first < end; first += kBlock) {
            const std::span<double> values(block.data(), std::min(kBlock, end - first));
            for (std::size_t index = 0; index < values.size(); ++index) {
                const auto value = static_cast<double>(m_y[first + index]);
                values[index] = value > 0 ? std::log10(value) : kNone;
            }
            into.setBlock(first, values, m_points);
        }
    }
    PagedArray<float> m_y;
    ValidityBitmap m_points;
};

ValueRuns logarithmsOf(const CPTSeriesRuns& runs)
{
    const auto logarithm = [](float value) { return value > 0 ? std::log10(static_cast<double>(value)) : kNone; };
    ValueRuns found;
    for (std::size_t run = 0; run < runs.count(); ++run) {
        const CPTMinMax pair = runs.minMaxOf(run);
        const bool isEmpty = pair.isEmpty() || !(pair.max > 0);
        found.least.push_back(isEmpty ? kInfinity : logarithm(pair.min));
        found.greatest.push_back(isEmpty ? -kInfinity : logarithm(pair.max));
        found.first.push_back(logarithm(runs.firstValue(run)));
    }
    return found;
}

std::size_t positivePoints(const CPTPointSeries& series)
{
    const CPTSeriesRuns& runs = *series.runs();
    const bool areAllPoints = series.count() == series.elementCount();
    std::size_t count = 0;
    CPTPointSeries::Hold held;  // until the next one is: mostly the same page
    for (std::size_t run = 0; run < runs.count(); ++run) {
        if (areAllPoints && !runs.isEmpty(run) && runs.minMaxOf(run).min > 0) {
            count += runs.end(run) - runs.begin(run);
            continue;
        }
        held = series.hold(runs.begin(run), runs.end(run));
        for (std::size_t element = runs.begin(run); element < runs.end(run); ++element)
            count += series.isPoint(element) && series.y()[element] > 0 ? 1 : 0;
    }
    return count;
}

}  // namespace

CPTPointSeriesPtr pagedLogarithms(const CPTPointSeries& series)
{
    const std::shared_ptr<const KeptRuns> runs = KeptRuns::of(logarithmsOf(*series.runs()));
    return plotkit::pagedSeries(series.x(), {series.runs()->times(), runs},
                                std::make_shared<const LogarithmPoints>(series), positivePoints(series));
}

}  // namespace plotix
