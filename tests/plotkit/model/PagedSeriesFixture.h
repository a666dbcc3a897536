#pragma once

#include "tests/plotkit/model/PagedSeriesMaking.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

namespace plotkit_test {

/// A series in memory, and the same one paged.
class PagedSeriesFixture : public testing::Test {
protected:
    explicit PagedSeriesFixture(unsigned seed) : random(seed) {}

    void make(const OddSeries& wanted) { take(oddTwin(wanted)); }
    void take(TwinSeries made)
    {
        twin = std::move(made);
        resident = twin.inMemory();
        paged = twin.paged();
        looksOfMaking = twin.looks();
    }
    std::size_t looksSinceMade() const { return twin.looks() - looksOfMaking; }

    TwinSeries twin;
    CPTPointSeriesPtr resident, paged;
    std::size_t looksOfMaking = 0;
    std::mt19937 random;
};

}  // namespace plotkit_test
