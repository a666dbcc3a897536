#include "plugins/PlotixPlugIn/reading/figures/LimitSummary.h"
#include "plugins/PlotixPlugIn/reading/figures/Percentiles.h"
#include "tests/support/fakehost/FakeProperty.h"
#include "tests/support/fakehost/FakeUnitModel.h"
#include "tests/support/paging/PagedRecords.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>

namespace {

using namespace plotix;

/// The figures of the same records in memory and paged, bit for bit.
class PagedFiguresTest : public testing::TestWithParam<unsigned> {
protected:
    struct TimeSpan {
        double from, to;
    };
    PagedFiguresTest() : m_random(GetParam())
    {
        const double odd[] = {std::nan(""), -0.0, 0.0, 1e300};
        double time = 1e9, value = 20;
        std::vector<double> times, values;
        std::vector<std::uint64_t> words((kCount + 63) / 64);
        for (std::size_t index = 0; index < kCount; ++index) {
            time += m_random() % 997 == 0 ? 500 : static_cast<double>(m_random() % 1000) / 1000;
            value += std::normal_distribution<double>()(m_random);
            times.push_back(time);
            values.push_back(m_random() % 50 == 0 ? odd[m_random() % 4] : value);
            words[index / 64] |= std::uint64_t{m_random() % 40 != 0} << (index % 64);
        }
        KTVRecordColumn::Descriptor descriptor;
        descriptor.archivedUnit = descriptor.unit = QStringLiteral("degC");
        m_records.setTime(SharedArray<double>::fromVector(times));
        m_records.setColumn(
            kKey, std::make_shared<KTVRecordColumn>(descriptor, SharedArray<double>::fromVector(values),
                                                    GetParam() % 3 == 0
                                                        ? ValidityBitmap()
                                                        : ValidityBitmap(SharedArray<std::uint64_t>::fromVector(words)),
                                                    std::make_shared<fakehost::FakeUnitModel>()));
    }
    void sum(const char* unit = "degC")
    {
        m_records.columnForKey(kKey)->setUnit(QLatin1String(unit));
        m_paged = plotix_test::paged(m_records, std::make_shared<PageCache>(0), m_random);
        m_one = lineOf(m_records);
        m_other = lineOf(*m_paged);
    }
    std::shared_ptr<const LineSummary> lineOf(const KTVRecordDictionary& records) const
    {
        return LineSummary::make(FigureRecords(*records.time(), *records.columnForKey(kKey)), 30);
    }
    TimeSpan someSpan()
    {
        const double* times = m_records.time()->data();
        const double one = times[m_random() % kCount], other = times[m_random() % kCount] + 0.01;
        return {std::min(one, other), std::max(one, other)};
    }
    static std::vector<std::uint64_t> bitsOf(const LineFigures& of)
    {
        std::vector<std::uint64_t> bits{std::uint64_t(of.points), std::uint64_t(of.gaps)};
        for (const double each : {of.minimum, of.minimumTime, of.maximum, of.maximumTime, of.first, of.firstTime,
                                  of.last, of.lastTime, of.sum, of.mean, of.deviation, of.heldMean, of.straightMean,
                                  of.heldIntegral, of.straightIntegral, of.covered})
            bits.push_back(std::isnan(each) ? 1 : std::bit_cast<std::uint64_t>(each));
        return bits;
    }
    void expectTheSame()
    {
        for (int asked = 0; asked < 10; ++asked) {
            const auto [from, to] = someSpan();
            EXPECT_EQ(bitsOf(m_one->figures(from, to)), bitsOf(m_other->figures(from, to)));
        }
    }

    static constexpr std::size_t kCount = 2 * PagedMemory::kPage + 1234;
    const QString kKey = QStringLiteral("airTemperature");
    std::mt19937 m_random;
    KTVRecordDictionary m_records;
    KTVRecordDictionaryPtr m_paged;
    std::shared_ptr<const LineSummary> m_one, m_other;
};

TEST_P(PagedFiguresTest, OverAnySpanAreTheSame)
{
    sum();
    expectTheSame();
}

TEST_P(PagedFiguresTest, InAnotherUnitAreTheSame)
{
    sum("degF");
    expectTheSame();
}

TEST_P(PagedFiguresTest, WithExceptionsAreTheSame)
{
    const auto units = std::make_shared<fakehost::FakeUnitModel>();
    for (int each = 0; each < 4; ++each)
        m_records.columnForKey(kKey)->setException(
            m_random() % kCount,
            each == 0
                ? nullptr
                : std::make_shared<fakehost::FakeProperty>(
                      fakehost::FakeProperty::Description{.name = "Odd", .unit = "degC", .value = 77.0 * each}, units));
    sum();
    expectTheSame();
}

TEST_P(PagedFiguresTest, PercentilesAndLimitsAreTheSame)
{
    sum();
    const auto [from, to] = someSpan();
    const double shares[] = {0, 0.05, 0.5, 0.95, 1};
    EXPECT_EQ(percentiles(*m_one, from, to, shares), percentiles(*m_other, from, to, shares));
    const auto one = LimitSummary::make(m_one, 20)->figures(from, to);
    const auto other = LimitSummary::make(m_other, 20)->figures(from, to);
    EXPECT_EQ(one.heldAbove, other.heldAbove);
    EXPECT_EQ(one.straightBelow, other.straightBelow);
    EXPECT_EQ(one.crossings, other.crossings);
}

TEST_P(PagedFiguresTest, APartThatWasReadAnswersAsTheWholeLine)
{
    sum();
    const FigureRecords records(*m_paged->time(), *m_paged->columnForKey(kKey));
    std::shared_ptr<const LineSummary> part;
    for (int asked = 0; asked < 10; ++asked) {
        const auto [from, to] = someSpan();
        const LineSummary::Elements inside = m_one->elements(from, to);
        const std::size_t beside = 3000;  // more than are ever not valid in a row
        const LineSummary::Elements wanted{inside.first - std::min(inside.first, beside),
                                           std::min(kCount, inside.last + beside)};
        part = LineSummary::makePart(records, 30, wanted, part.get());
        EXPECT_TRUE(part->hasRead(wanted));
        EXPECT_EQ(bitsOf(part->figures(from, to)), bitsOf(m_one->figures(from, to)));
    }
}

INSTANTIATE_TEST_SUITE_P(Lines, PagedFiguresTest, testing::Range(1U, 5U));

}  // namespace
