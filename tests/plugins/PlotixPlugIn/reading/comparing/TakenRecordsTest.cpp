#include "plugins/PlotixPlugIn/reading/comparing/EarlierRecords.h"
#include "tests/support/paging/PagedRecords.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>

namespace {

using namespace plotix;

/// Stretches of earlier records, taken from memory and from pages.
class TakenRecordsTest : public testing::TestWithParam<unsigned> {
protected:
    void SetUp() override
    {
        m_random.seed(GetParam());
        std::vector<double> times, values;
        std::vector<std::uint64_t> words((kCount + 63) / 64);
        for (std::size_t index = 0; index < kCount; ++index) {
            times.push_back(static_cast<double>(index) + (m_random() % 3) / 4.0);
            values.push_back(m_random() % 30 == 0 ? std::nan("") : static_cast<double>(m_random() % 1000) - 500);
            words[index / 64] |= std::uint64_t{GetParam() % 2 == 0 || m_random() % 20 != 0} << (index % 64);
        }
        const std::size_t size = GetParam() % 3 == 0 ? kCount - 1000 : kCount;
        m_records.setTime(SharedArray<double>::fromVector(times));
        values.resize(size);
        m_records.setColumn(kKey, std::make_shared<KTVRecordColumn>(
                                      KTVRecordColumn::Descriptor(), SharedArray<double>::fromVector(values),
                                      ValidityBitmap(SharedArray<std::uint64_t>::fromVector(words)), nullptr));
        m_paged = plotix_test::paged(m_records, std::make_shared<PageCache>(0), m_random);
    }
    static KTVRecordDictionaryPtr beside(const KTVRecordDictionary& records,
                                         const std::vector<EarlierStretch>& stretches)
    {
        return recordsBeside(records, stretches, nullptr, [](const QString& key) { return key; });
    }
    void expectTheSame(const std::vector<EarlierStretch>& stretches)
    {
        const auto one = beside(m_records, stretches), other = beside(*m_paged, stretches);
        ASSERT_TRUE(one && other);
        const SharedArray<double> times = one->time()->allHeld(), otherTimes = other->time()->allHeld();
        ASSERT_TRUE(std::ranges::equal(times.span(), otherTimes.span()));
        const auto column = one->columnForKey(kKey), otherColumn = other->columnForKey(kKey);
        ASSERT_EQ(column->size(), otherColumn->size());
        std::int64_t valid = 0;
        const auto held = otherColumn->hold(0, otherColumn->size());
        for (std::size_t index = 0; index < column->size(); ++index) {
            ASSERT_EQ(column->isValid(index), otherColumn->isValid(index)) << index;
            ASSERT_EQ(std::bit_cast<std::uint64_t>(column->unitValue(index)),
                      std::bit_cast<std::uint64_t>(otherColumn->unitValue(index)));
            valid += column->isValid(index) ? 1 : 0;
        }
        expectRunsOf(*other, valid);
    }
    /// What is known is so.
    void expectRunsOf(const KTVRecordDictionary& taken, std::int64_t valid) const
    {
        const auto column = taken.columnForKey(kKey);
        ASSERT_TRUE(taken.time()->runs() && column->known().runs);
        EXPECT_EQ(column->known().count, valid);
        const TimeRuns& runs = *taken.time()->runs();
        const ValueRuns known = column->known().runs->unpacked();
        const auto held = column->hold(0, column->size());
        for (std::size_t run = 0; run < runs.count(); ++run) {
            EXPECT_EQ(runs.first[run], taken.time()->valueAt(runs.begin[run]));
            EXPECT_EQ(runs.last[run], taken.time()->valueAt(runs.begin[run + 1] - 1));
            for (std::size_t index = runs.begin[run]; index < std::min(column->size(), runs.begin[run + 1]); ++index)
                if (column->isValid(index)) {
                    ASSERT_LE(known.least[run], column->archivedValues()[index]);
                    ASSERT_GE(known.greatest[run], column->archivedValues()[index]);
                }
        }
    }

    static constexpr std::size_t kCount = PagedMemory::kPage + 5000;
    const QString kKey = QStringLiteral("power");
    std::mt19937 m_random;
    KTVRecordDictionary m_records;
    KTVRecordDictionaryPtr m_paged;
};

TEST_P(TakenRecordsTest, APartIsTheSame)
{
    expectTheSame({{{100, 20'000.5}, 86'400}});
}

TEST_P(TakenRecordsTest, AllOfThemAreTheSame)
{
    expectTheSame({{{-10, 1e9}, 3600}});
}

TEST_P(TakenRecordsTest, SeveralStretchesAreTheSame)
{
    expectTheSame({{{3, 700}, 50}, {{1000, 30'000}, 60}, {{33'000, 1e9}, 70}});
}

INSTANTIATE_TEST_SUITE_P(Records, TakenRecordsTest, testing::Range(1U, 5U));

}  // namespace
