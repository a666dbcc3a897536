#pragma once

#include "records/store/RecordBlock.h"

#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

/// Blocks of records in short form. Values are optional: an absent one is an element that is not valid.
class BlockFixture : public testing::Test {
protected:
    using Values = std::vector<std::optional<double>>;

    static plotix::RecordBlock::Column column(plotix::RowId property, const Values& elements)
    {
        std::vector<double> values;
        std::vector<std::uint64_t> words((elements.size() + 63) / 64, 0);
        for (std::size_t i = 0; i < elements.size(); ++i) {
            values.push_back(elements[i].value_or(-999));
            words[i / 64] |= std::uint64_t(elements[i].has_value()) << (i % 64);
        }
        return {property, plotix::SharedArray<double>::fromVector(values),
                plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(words))};
    }
    static plotix::RecordBlock block(std::vector<double> times, std::vector<plotix::RecordBlock::Column> columns)
    {
        return {plotix::SharedArray<double>::fromVector(std::move(times)), std::move(columns)};
    }
    /// Times first, first + 1, …; values equal to the times.
    static plotix::RecordBlock ramp(plotix::RowId property, double first, std::size_t count)
    {
        std::vector<double> times;
        for (std::size_t i = 0; i < count; ++i)
            times.push_back(first + static_cast<double>(i));
        return block(times, {{property, plotix::SharedArray<double>::fromVector(times), {}}});
    }
};

inline std::uint64_t bitsOf(double value)
{
    return std::bit_cast<std::uint64_t>(value);
}
