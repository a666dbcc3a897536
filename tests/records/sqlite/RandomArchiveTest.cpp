#include "tests/records/sqlite/RandomArchiveFixture.h"

namespace {

using plotix::RowId;

class RandomArchiveTest : public RandomArchiveFixture {
protected:
    std::size_t blockSize()
    {
        constexpr std::size_t kSizes[] = {1, 2, 63, 64, 65, 500, 5000, 20000, 40000};
        return kSizes[below(std::size(kSizes))];
    }

    /// A block for some of an agent's properties: in order behind everything, or anywhere, with repeated times.
    void storeSomething(plotix::RecordTransaction& writer, Reference& into)
    {
        const RowId owner = below(3) == 0 ? properties.rbegin()->first : properties.begin()->first;
        const std::size_t count = blockSize();
        const bool behind = below(2) == 0;
        const double end = into[owner].empty() ? 0 : into[owner].rbegin()->first;
        std::vector<double> stamps;
        for (std::size_t i = 0; i < count; ++i)
            stamps.push_back(behind ? end + 1 + static_cast<double>(i) : time(end / 2 - 1000, 8000));
        std::vector<plotix::RecordBlock::Column> columns;
        for (const RowId property : properties[owner])
            if (below(3) != 0)
                columns.push_back(fill(property, stamps, into[owner]));
        for (const double stamp : stamps)
            into[owner][stamp];
        writer.store(owner, block(stamps, columns));
    }
};

TEST_P(RandomArchiveTest, HoldsWhatAMapHolds)
{
    Reference reference;
    for (int session = 0; session < 8; ++session) {
        Reference after = reference;
        const bool kept = below(4) != 0;
        {
            const auto writer = opened()->begin();
            const std::size_t blocks = 1 + below(4);
            for (std::size_t i = 0; i < blocks; ++i)
                storeSomething(*writer, after);
            if (kept)
                writer->commit();
        }
        if (kept)
            reference = after;
        expectEqual(reference, {}, {});
    }
    for (int range = 0; range < 10; ++range) {
        const double from = time(-2000, 200000);
        expectEqual(reference, from, from + static_cast<double>(below(30000)));
    }
    expectStatistics(reference);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomArchiveTest, testing::Range(1U, 7U));

}  // namespace
