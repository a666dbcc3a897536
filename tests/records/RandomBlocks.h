#pragma once

#include "records/store/RecordBlock.h"

#include <bit>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

/// Random blocks of records: odd values among plain ones, some of them not valid. The same seed gives the same blocks.
class RandomBlocks {
public:
    explicit RandomBlocks(unsigned seed) : m_random(seed) {}

    std::size_t below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(m_random); }

    /// One column for each property of a random selection.
    plotix::RecordBlock block(std::span<const plotix::RowId> properties, const std::vector<double>& times)
    {
        plotix::RecordBlock made{plotix::SharedArray<double>::fromVector(times), {}};
        for (const plotix::RowId property : properties)
            if (below(3) != 0)
                made.columns.push_back(column(property, times.size()));
        return made;
    }

private:
    struct Element {
        std::uint64_t bits = 0;
        bool valid = false;
    };

    plotix::RecordBlock::Column column(plotix::RowId property, std::size_t size)
    {
        std::vector<double> values;
        std::vector<std::uint64_t> words((size + 63) / 64, 0);
        for (std::size_t i = 0; i < size; ++i) {
            const Element made = element();
            values.push_back(std::bit_cast<double>(made.bits));
            words[i / 64] |= std::uint64_t(made.valid) << (i % 64);
        }
        return {property, plotix::SharedArray<double>::fromVector(values),
                plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(words))};
    }
    Element element()
    {
        switch (below(8)) {
        case 0: return {std::bit_cast<std::uint64_t>(-0.0), true};
        case 1: return {0x7FF8000000000000 | below(1000), below(2) == 0};
        case 2: return {m_random(), true};
        default: return {std::bit_cast<std::uint64_t>(static_cast<double>(below(1000)) / 10), below(10) != 0};
        }
    }

    std::mt19937_64 m_random;
};
