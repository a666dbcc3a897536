#pragma once

#include "tests/records/sqlite/ArchiveFixture.h"

#include <cmath>
#include <map>
#include <random>

struct Element {
    std::uint64_t bits = 0;
    bool valid = false;

    friend bool operator==(const Element&, const Element&) = default;
};

/// What the archive should hold, kept the simplest way: agent → time → property → element.
using Reference = std::map<plotix::RowId, std::map<double, std::map<plotix::RowId, Element>>>;

/// Blocks by chance, and what reading should answer after them. The parameter is the seed.
class RandomArchiveFixture : public ArchiveFixture, public testing::WithParamInterface<unsigned> {
protected:
    RandomArchiveFixture() : random(GetParam())
    {
        properties[agent] = {air, wind, addProperty(agent, "rain")};
        const plotix::RowId other = addAgent("Two");
        properties[other] = {addProperty(other, "air"), addProperty(other, "wind")};
    }

    std::size_t below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random); }

    double time(double begin, std::size_t spread) { return begin + static_cast<double>(below(spread)) / 4; }

    Element element()
    {
        switch (below(8)) {
        case 0: return {bitsOf(-0.0), true};
        case 1: return {0x7FF8000000000000 | below(1000), below(2) == 0};
        case 2: return {random(), true};
        default: return {bitsOf(static_cast<double>(below(1000)) / 10), below(10) != 0};
        }
    }

    plotix::RecordBlock::Column fill(plotix::RowId property, const std::vector<double>& stamps,
                                     std::map<double, std::map<plotix::RowId, Element>>& into)
    {
        std::vector<double> values;
        std::vector<std::uint64_t> words((stamps.size() + 63) / 64, 0);
        for (std::size_t i = 0; i < stamps.size(); ++i) {
            const Element stored = element();
            values.push_back(std::bit_cast<double>(stored.bits));
            words[i / 64] |= std::uint64_t(stored.valid) << (i % 64);
            into[stamps[i]][property] = stored;
        }
        return {property, plotix::SharedArray<double>::fromVector(values),
                plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(words))};
    }

    void expectEqual(const Reference& reference, std::optional<double> from, std::optional<double> to)
    {
        expectEqual(*opened(), reference, from, to);
    }
    void expectEqual(plotix::RecordStore& reader, const Reference& reference, std::optional<double> from,
                     std::optional<double> to)
    {
        for (const auto& [owner, records] : reference) {
            const auto read = reader.read(owner, properties[owner], from, to);
            std::size_t index = 0;
            auto record = from ? records.lower_bound(*from) : records.begin();
            for (; record != records.end() && (!to || record->first <= *to); ++record, ++index) {
                ASSERT_LT(index, read->times.size());
                ASSERT_EQ(read->times[index], record->first);
                expectRecord(*read, index, record->second);
            }
            ASSERT_EQ(index, read->times.size());
        }
    }

    static void expectRecord(const plotix::RecordBlock& read, std::size_t index,
                             const std::map<plotix::RowId, Element>& elements)
    {
        for (const plotix::RecordBlock::Column& column : read.columns) {
            const auto stored = elements.find(column.property);
            const Element found{bitsOf(column.values[index]), column.validity.isValid(index)};
            ASSERT_TRUE(stored == elements.end() ? !found.valid : found == stored->second)
                << "property " << column.property << " at " << read.times[index];
        }
    }

    void expectStatistics(const Reference& reference)
    {
        const auto reader = opened();
        for (const auto& [owner, records] : reference)
            for (const plotix::RowId property : properties[owner]) {
                std::size_t valid = 0;
                for (const auto& [stamp, elements] : records) {
                    const auto stored = elements.find(property);
                    valid += stored != elements.end() && stored->second.valid &&
                             !std::isnan(std::bit_cast<double>(stored->second.bits));
                }
                ASSERT_EQ(reader->statistics(owner, property).valid, valid);
            }
    }

    std::mt19937_64 random;
    std::map<plotix::RowId, std::vector<plotix::RowId>> properties;
};
