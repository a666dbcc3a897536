#include "plotkit/model/CPTSeriesRuns.h"
#include "plugins/PlotixPlugIn/reading/values/LineEvents.h"
#include "plugins/PlotixPlugIn/reading/values/LineExtremes.h"
#include "plugins/PlotixPlugIn/reading/values/MissingRecords.h"
#include "plugins/PlotixPlugIn/reading/values/QualityCounts.h"
#include "plugins/PlotixPlugIn/reading/values/RecordSeries.h"
#include "tests/plugins/PlotixPlugIn/reading/values/RecordedLine.h"
#include "tests/support/fakehost/FakeProperty.h"
#include "tests/support/paging/PagedRecords.h"

#include <gtest/gtest.h>

#include <bit>

namespace {

using namespace plotix;

/// The same line twice: in memory, and paged: a short one without room for a page that nobody holds, a long one with
/// little room.
class PagedLineTest : public testing::TestWithParam<unsigned> {
protected:
    void SetUp() override
    {
        m_random.seed(GetParam());
        const bool isLong = GetParam() % 4 == 0;
        m_cache->setBudget(isLong ? kLittle : 0);
        make(plotix_test::arbitraryLine(GetParam(), isLong ? 2 * PagedMemory::kPage + 333 : 2000));
    }
    void make(plotix_test::RecordedLine line)
    {
        const double odd[] = {std::nan(""), HUGE_VAL, -HUGE_VAL, -0.0, 0.0, 1e300};
        const unsigned oddOnes = m_random() % 2 == 0 ? 0 : 3;
        for (std::size_t index = 0; index < line.values.size(); ++index) {
            if (m_random() % 100 < oddOnes)
                line.values[index] = odd[m_random() % 6];
            if (m_random() % 200 < oddOnes)
                line.notValid.push_back(index);
        }
        m_line = std::move(line);
        KTVRecordColumn::Descriptor descriptor;
        descriptor.archivedUnit = descriptor.unit = QStringLiteral("degC");
        m_records.setTime(SharedArray<double>::fromVector(m_line.times));
        m_records.setColumn(
            kKey, std::make_shared<KTVRecordColumn>(descriptor, SharedArray<double>::fromVector(m_line.values),
                                                    m_line.validity(), std::make_shared<fakehost::FakeUnitModel>()));
    }
    void page() { m_paged = plotix_test::paged(m_records, m_cache, m_random); }
    void show(const char* unit = "degC")
    {
        page();
        for (const KTVRecordDictionary* records : {&std::as_const(m_records), &std::as_const(*m_paged)})
            records->columnForKey(kKey)->setUnit(QLatin1String(unit));
        m_one = linesOf(m_records);
        m_other = linesOf(*m_paged);
    }
    LineRecords linesOf(const KTVRecordDictionary& records) const
    {
        const auto column = records.columnForKey(kKey);
        return lineRecords(seriesOfRecords(*records.time(), *column), column, m_join);
    }
    double someTime()
    {
        const double time = m_line.times[m_random() % m_line.times.size()];
        return m_random() % 2 == 0 ? time : time + 0.3;
    }
    double someValue() { return m_line.values[m_random() % m_line.values.size()]; }
    template <class Ask>
    void expectTheSame(const char* what, Ask ask) const
    {
        EXPECT_EQ(ask(m_one), ask(m_other)) << what << ", seed " << GetParam();
    }
    void expectTheSameSeries() const
    {
        const CPTPointSeries &one = *m_one.series, &other = *m_other.series;
        ASSERT_EQ(one.elementCount(), other.elementCount());
        EXPECT_EQ(one.count(), other.count());
        EXPECT_EQ(one.isXSorted(), other.isXSorted());
        ASSERT_EQ(one.extent().has_value(), other.extent().has_value());
        if (one.extent()) {
            EXPECT_EQ(one.extent()->minX, other.extent()->minX);
            EXPECT_EQ(one.extent()->maxX, other.extent()->maxX);
            EXPECT_EQ(one.extent()->minY, other.extent()->minY);
            EXPECT_EQ(one.extent()->maxY, other.extent()->maxY);
        }
        const CPTPointSeries::Hold held = other.hold(0, other.elementCount());
        for (std::size_t element = 0; element < one.elementCount(); ++element) {
            ASSERT_EQ(one.isPoint(element), other.isPoint(element)) << element;
            if (!one.isPoint(element))
                continue;
            ASSERT_EQ(std::bit_cast<std::uint32_t>(one.y()[element]), std::bit_cast<std::uint32_t>(other.y()[element]));
        }
    }

    static constexpr std::size_t kLittle = 1 << 20;  // bytes
    const QString kKey = QStringLiteral("airTemperature");
    double m_join = 5;
    std::mt19937 m_random;
    std::shared_ptr<PageCache> m_cache = std::make_shared<PageCache>(0);
    plotix_test::RecordedLine m_line;
    KTVRecordDictionary m_records;
    KTVRecordDictionaryPtr m_paged;
    LineRecords m_one, m_other;
};

TEST_P(PagedLineTest, TheSeriesIsTheSameInEveryUnit)
{
    for (const char* unit : {"degC", "degF", "K"}) {
        show(unit);
        EXPECT_TRUE(m_other.series->runs());
        expectTheSameSeries();
    }
}

TEST_P(PagedLineTest, ExceptionsStandWhereTheyAre)
{
    const auto units = std::make_shared<fakehost::FakeUnitModel>();
    for (int each = 0; each < 5; ++each) {
        fakehost::FakeProperty::Description odd{.name = "Odd", .unit = "degC", .value = 1000.0 * each};
        if (each == 3)
            odd.type = kPropertyTypeNeverPlotted;
        m_records.columnForKey(kKey)->setException(m_random() % m_line.values.size(),
                                                   each == 4 ? nullptr
                                                             : std::make_shared<fakehost::FakeProperty>(odd, units));
    }
    show();
    expectTheSameSeries();
}

TEST_P(PagedLineTest, AUnitReachedByNoLinearMapIsReadWhole)
{
    KTVRecordColumn::Descriptor descriptor;
    descriptor.archivedUnit = descriptor.unit = QStringLiteral("bel");
    m_records.setColumn(
        kKey, std::make_shared<KTVRecordColumn>(descriptor, SharedArray<double>::fromVector(m_line.values),
                                                m_line.validity(), std::make_shared<fakehost::FakeUnitModel>()));
    show("ratio");
    expectTheSameSeries();
}

TEST_P(PagedLineTest, AShortColumnEndsTheSeriesThere)
{
    const auto whole = m_records.columnForKey(kKey);
    m_records.setColumn(kKey, std::make_shared<KTVRecordColumn>(
                                  whole->descriptor(),
                                  SharedArray<double>(whole->archivedValues().allHeld().shared(), whole->size() / 2),
                                  whole->validity(), whole->unitModel()));
    show();
    expectTheSameSeries();
}

TEST_P(PagedLineTest, RecordsAtATimeAreTheSame)
{
    show("degF");
    for (int asked = 0; asked < 100; ++asked) {
        const double time = someTime();
        expectTheSame("at", [&](const LineRecords& line) { return recordAtOrBefore(line, time); });
        expectTheSame("before", [&](const LineRecords& line) { return recordBefore(line, time); });
        expectTheSame("after", [&](const LineRecords& line) { return recordAfter(line, time); });
        expectTheSame("nearest", [&](const LineRecords& line) { return nearestRecord(line, time); });
        expectTheSame("reading", [&](const LineRecords& line) { return readingAt(line, time, 2).record; });
        expectTheSame("valid", [&](const LineRecords& line) { return isNotValidAt(line, time); });
    }
}

TEST_P(PagedLineTest, GapsAreTheSame)
{
    show();
    for (int asked = 0; asked < 20; ++asked) {
        const double time = someTime();
        expectTheSame("after", [&](const LineRecords& line) { return gapAfter(line, time); });
        expectTheSame("before", [&](const LineRecords& line) { return gapBefore(line, time); });
    }
}

TEST_P(PagedLineTest, CrossingsAreTheSame)
{
    show("K");
    for (int asked = 0; asked < 20; ++asked) {
        const double time = someTime(), limit = someValue() + 273.15;
        expectTheSame("after", [&](const LineRecords& line) { return crossingAfter(line, time, limit); });
        expectTheSame("before", [&](const LineRecords& line) { return crossingBefore(line, time, limit); });
    }
}

TEST_P(PagedLineTest, ExtremesAreTheSame)
{
    show();
    for (int asked = 0; asked < 20; ++asked) {
        const double time = someTime();
        const ExtremeSize size{double(m_random() % 20), double(m_random() % 30)};
        for (const Extreme kind : {Extreme::Maximum, Extreme::Minimum, Extreme::Either}) {
            expectTheSame("after",
                          [&](const LineRecords& line) { return extremeAfter(*line.series, time, kind, size); });
            expectTheSame("before",
                          [&](const LineRecords& line) { return extremeBefore(*line.series, time, kind, size); });
        }
    }
}

TEST_P(PagedLineTest, WhatIsMissingIsTheSame)
{
    show();
    for (const double least : {1.0, 7.0, 60.0, 3000.0}) {
        const double one = someTime(), other = someTime();
        const TimeSpan within{std::min(one, other), std::max(one, other)};
        expectTheSame("missing", [&](const LineRecords& line) { return missingStretches(line, within, least); });
    }
}

TEST_P(PagedLineTest, WhatIsMissingIsLookedForFromRunToRun)
{
    plotix_test::RecordedLine line;
    for (std::size_t index = 0; index < 16 * PagedMemory::kPage; ++index)
        line.add(double(index), 1);
    make(std::move(line));
    show();
    m_cache->setBudget(0);
    m_cache->setBudget(std::size_t{64} << 20);  // what is looked at stays
    missingStretches(m_other, {0, m_line.times.back()}, 2000);
    EXPECT_LE(m_cache->inUse(), 6 * PagedMemory::kPage * sizeof(double));  // at both ends: times, values, points
}

TEST_P(PagedLineTest, QualityIsCountedTheSame)
{
    show();
    for (int asked = 0; asked < 5; ++asked) {
        const TimeSpan within{someTime(), someTime()};
        const std::vector<KTVAmendment> amendments{{KTVAmendment::Kind::Late, someTime(), someTime(), 0, 0}};
        EXPECT_EQ(countQuality(*m_records.columnForKey(kKey), *m_records.time(), within, amendments),
                  countQuality(*m_paged->columnForKey(kKey), *m_paged->time(), within, amendments));
    }
}

TEST_P(PagedLineTest, TheSameRecordsInTheSameUnitAreOneSeries)
{
    page();
    const auto column = m_paged->columnForKey(kKey);
    const CPTPointSeriesPtr shown = seriesOfRecords(*m_paged->time(), *column);
    const auto other = std::make_shared<KTVRecordColumn>(*column);
    EXPECT_EQ(seriesOfRecords(*m_paged->time(), *other), shown);
    other->setUnit(QStringLiteral("degF"));
    EXPECT_NE(seriesOfRecords(*m_paged->time(), *other), shown);
    other->setUnit(QStringLiteral("degC"));
    other->setException(0, nullptr);
    EXPECT_NE(seriesOfRecords(*m_paged->time(), *other), shown);
}

TEST_P(PagedLineTest, NothingIsKeptInTheEnd)
{
    show();
    m_cache->setBudget(0);
    recordAfter(m_other, someTime());
    EXPECT_EQ(m_cache->inUse(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Lines, PagedLineTest, testing::Range(1U, 13U));

}  // namespace
