#pragma once

#include "plugins/PlotixPlugIn/reading/figures/LimitSummary.h"
#include "plugins/PlotixPlugIn/reading/figures/LineSummary.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

/// A line of a few records or of many, and its figures one by one, as nobody would make them quick.
class LineFixture : public testing::Test {
protected:
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    /// A value that is NaN is recorded and invalid.
    void record(double time, double value)
    {
        times.push_back(time);
        values.push_back(value);
    }
    /// Records about a second apart, some of them invalid, with gaps now and then.
    void recordMany(std::size_t count)
    {
        double time = 1e9;
        double value = 20;
        for (std::size_t i = 0; i < count; ++i) {
            time += random() % 997 == 0 ? 500 : 0.5 + static_cast<double>(random() % 1000) / 1000;
            value += std::normal_distribution<double>()(random);
            record(time, random() % 50 == 0 ? kNone : value);
        }
    }
    /// Which of them are valid is told by a bitmap, with values of no meaning beneath, or by NaNs.
    void summarise(double longestJoin, bool asBitmap = true)
    {
        join = longestJoin;
        std::vector<double> stored = values;
        std::vector<std::uint64_t> words((values.size() + 63) / 64, ~std::uint64_t{0});
        for (std::size_t i = 0; asBitmap && i < values.size(); ++i)
            if (std::isnan(values[i])) {
                stored[i] = -1e300;
                words[i / 64] &= ~(std::uint64_t{1} << (i % 64));
            }
        using plotix::SharedArray;
        line = plotix::LineSummary::make(
            plotix::FigureRecords(SharedArray<double>::fromVector(times), SharedArray<double>::fromVector(stored),
                                  plotix::ValidityBitmap(SharedArray<std::uint64_t>::fromVector(words))),
            longestJoin);
    }

    /// Records of the span that have a value.
    std::vector<plotix::LineSummary::Point> points(double from, double to) const
    {
        std::vector<plotix::LineSummary::Point> inside;
        for (std::size_t i = 0; i < times.size(); ++i)
            if (!std::isnan(values[i]) && times[i] >= from && times[i] <= to)
                inside.push_back({times[i], values[i]});
        return inside;
    }
    /// Calls `take` with each joined way's part inside the span: its times and its values there.
    template <class Take>
    void forEachWay(double from, double to, const Take& take) const
    {
        const auto all = points(-HUGE_VAL, HUGE_VAL);
        for (std::size_t i = 0; i + 1 < all.size(); ++i) {
            const double first = std::max(from, all[i].time);
            const double last = std::min(to, all[i + 1].time);
            if (all[i + 1].time - all[i].time > join || !(last > first))
                continue;
            const double slope = (all[i + 1].value - all[i].value) / (all[i + 1].time - all[i].time);
            take(last - first, all[i].value, all[i].value + slope * (first - all[i].time),
                 all[i].value + slope * (last - all[i].time));
        }
    }

    std::mt19937_64 random{3};
    std::vector<double> times, values;
    double join = 0;
    std::shared_ptr<const plotix::LineSummary> line;
};
