#include "base/PagedReading.h"
#include "tests/support/fakehost/FakeProperty.h"
#include "tests/support/fakehost/FakeUnitModel.h"
#include "tests/support/paging/PagedRecords.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>

namespace {

using plotix::PageCache;
using plotix::PagedMemory;
using plotix::SharedArray;

/// A column of values of every kind, in memory and paged without any room to keep pages.
class PagedRecordColumnTest : public testing::Test {
protected:
    PagedRecordColumnTest()
    {
        std::vector<double> values;
        std::vector<std::uint64_t> words((kCount + 63) / 64);
        const double odd[] = {std::nan(""), HUGE_VAL, -HUGE_VAL, -0.0, 0.0};
        for (std::size_t index = 0; index < kCount; ++index) {
            values.push_back(m_random() % 10 == 0 ? odd[m_random() % 5] : m_random() % 1000 / 7.0);
            words[index / 64] |= std::uint64_t{m_random() % 20 != 0} << (index % 64);
        }
        KTVRecordColumn::Descriptor descriptor;
        descriptor.archivedUnit = descriptor.unit = QStringLiteral("degC");
        m_resident =
            std::make_shared<KTVRecordColumn>(descriptor, SharedArray<double>::fromVector(values),
                                              plotix::ValidityBitmap(SharedArray<std::uint64_t>::fromVector(words)),
                                              std::make_shared<fakehost::FakeUnitModel>());
        m_paged = plotix_test::paged(*m_resident, plotix_test::randomRuns(kCount, m_random), m_cache);
    }
    void setUnit(const char* unit)
    {
        m_resident->setUnit(QLatin1String(unit));
        m_paged->setUnit(QLatin1String(unit));
    }
    void expectTheSame(std::size_t index) const
    {
        const auto bits = [](double value) { return std::bit_cast<std::uint64_t>(value); };
        EXPECT_EQ(m_paged->isValid(index), m_resident->isValid(index));
        EXPECT_EQ(bits(m_paged->unitValue(index)), bits(m_resident->unitValue(index)));
        EXPECT_EQ(bits(m_paged->snapshotAt(index)->unitValue()), bits(m_resident->snapshotAt(index)->unitValue()));
    }
    void expectTheSame() const
    {
        for (std::size_t index = 0; index < kCount; index += 97)
            expectTheSame(index);
        std::vector<double> one(kCount), other(kCount);
        m_resident->copyUnitValues(0, one);
        m_paged->copyUnitValues(0, other);
        EXPECT_EQ(std::memcmp(one.data(), other.data(), kCount * sizeof(double)), 0);
    }

    static constexpr std::size_t kCount = 2 * PagedMemory::kPage + 100;
    std::mt19937 m_random{5};
    std::shared_ptr<PageCache> m_cache = std::make_shared<PageCache>(0);
    std::shared_ptr<KTVRecordColumn> m_resident, m_paged;
};

TEST_F(PagedRecordColumnTest, AnswersWhatAColumnInMemoryDoes)
{
    expectTheSame();
}

TEST_F(PagedRecordColumnTest, AnswersItInEveryUnit)
{
    for (const char* unit : {"degF", "K", "degC"}) {
        setUnit(unit);
        expectTheSame();
    }
}

TEST_F(PagedRecordColumnTest, KeepsNothingThatNobodyLooksAt)
{
    m_paged->unitValue(7);
    m_paged->isValid(7);
    EXPECT_EQ(m_cache->inUse(), 0U);
}

TEST_F(PagedRecordColumnTest, AnExceptionStandsInForItsElement)
{
    const auto odd = std::make_shared<fakehost::FakeProperty>(
        fakehost::FakeProperty::Description{.name = "Odd", .unit = "degC", .value = 5}, nullptr);
    m_paged->setException(70'000 % kCount, odd);
    EXPECT_EQ(m_paged->snapshotAt(70'000 % kCount), odd);
}

TEST_F(PagedRecordColumnTest, IsReadInStretchesThatAreHeld)
{
    std::size_t next = 10, stretches = 0;
    plotix::inStretches(*m_paged, 10, kCount, [&](std::size_t first, std::size_t end) {
        EXPECT_EQ(first, next);
        for (std::size_t index = first; index < end; ++index)
            ASSERT_EQ(m_paged->validity().isValid(index), m_resident->validity().isValid(index));
        next = end;
        ++stretches;
    });
    EXPECT_EQ(next, kCount);
    EXPECT_EQ(stretches, 3U);
}

TEST_F(PagedRecordColumnTest, AColumnInMemoryIsReadInOneStretch)
{
    int stretches = 0;
    plotix::inStretches(*m_resident, 0, kCount, [&](std::size_t, std::size_t) { ++stretches; });
    EXPECT_EQ(stretches, 1);
}

TEST_F(PagedRecordColumnTest, IsReadValueByValueInAnyOrder)
{
    const plotix::PagedReader<double> reader(m_paged->archivedValues());
    for (int looked = 0; looked < 1000; ++looked) {
        const std::size_t index = m_random() % kCount;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(reader[index]),
                  std::bit_cast<std::uint64_t>(m_resident->archivedValues()[index]));
    }
}

TEST_F(PagedRecordColumnTest, IsHeldWholeForWhoeverCannotReadInStretches)
{
    const SharedArray<double> all = m_paged->archivedValues().allHeld();
    m_paged.reset();
    EXPECT_EQ(std::memcmp(all.data(), m_resident->archivedValues().data(), kCount * sizeof(double)), 0);
}

}  // namespace
