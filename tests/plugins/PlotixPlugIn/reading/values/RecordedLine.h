#pragma once

#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"
#include "plugins/PlotixPlugIn/reading/values/LineRecords.h"
#include "tests/support/fakehost/FakeUnitModel.h"

#include <cmath>
#include <random>
#include <vector>

/// A line of records, made as a trend makes it: a column, and a series of what is valid in it. Values that are not
/// numbers are what was not recorded.
namespace plotix_test {

struct RecordedLine {
    std::vector<double> times, values;
    std::vector<std::size_t> notValid = {};  ///< elements that keep their values and are marked

    void add(double time, double value)
    {
        times.push_back(time);
        values.push_back(value);
    }
    plotix::ValidityBitmap validity() const
    {
        if (notValid.empty())
            return {};
        std::vector<std::uint64_t> words((values.size() + 63) / 64, ~std::uint64_t{0});
        for (const std::size_t element : notValid)
            words[element / 64] &= ~(std::uint64_t{1} << (element % 64));
        return plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(words));
    }
    bool isRecord(std::size_t element) const { return std::isfinite(static_cast<float>(values[element])); }

    plotix::LineRecords records(double longestJoin = std::numeric_limits<double>::infinity(),
                                const QString& unit = QStringLiteral("degC")) const
    {
        const auto time = plotix::SharedArray<double>::fromVector(times);
        KTVRecordColumn::Descriptor descriptor;
        descriptor.archivedUnit = descriptor.unit = QStringLiteral("degC");
        const auto column =
            std::make_shared<KTVRecordColumn>(descriptor, plotix::SharedArray<double>::fromVector(values), validity(),
                                              std::make_shared<fakehost::FakeUnitModel>());
        column->setUnit(unit);
        std::vector<double> shown(values.size());
        column->copyUnitValues(0, shown);
        plotix::SeriesBuilder builder(time, shown.size());
        builder.setBlock(0, shown, column->validity());
        return plotix::lineRecords(builder.finish(), column, longestJoin);
    }
};

/// Lines that are hard on whoever searches them: smooth, noisy, in steps, in plateaus, with holes and jumps in time.
inline RecordedLine arbitraryLine(unsigned seed, std::size_t count)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> part(0, 1);
    const double noise = part(random) < 0.5 ? 0 : part(random) * 4;
    const bool inSteps = part(random) < 0.4;
    const double holes = part(random) < 0.4 ? part(random) * 0.9 : 0;
    const double swing = part(random) * 20;
    const double turns = part(random) * 0.2;
    RecordedLine line;
    double time = 0;
    for (std::size_t index = 0; index < count; ++index) {
        time += part(random) < 0.02 ? part(random) * 40 : part(random) < 0.05 ? 0 : 1;
        double value = swing * std::sin(turns * static_cast<double>(index)) + noise * part(random);
        value = inSteps ? std::round(value) : value;
        line.add(time, part(random) < holes ? std::nan("") : value);
    }
    return line;
}

}  // namespace plotix_test
