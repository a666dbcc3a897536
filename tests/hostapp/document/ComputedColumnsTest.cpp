#include "base/PagedReading.h"
#include "base/ReportableError.h"
#include "hostapp/document/ComputedRecords.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteTransaction.h"
#include "storage/Database.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

namespace plotix {

namespace {

/// A site with a boiler and a roof station of some pages of records, with computed properties: as promises, from pages
/// that nobody keeps, beside everything read at once.
class ComputedColumnsTest : public testing::Test {
protected:
    static constexpr std::size_t kRecords = 3 * PagedMemory::kPage + 1234;

    ComputedColumnsTest()
    {
        put("Boiler", {"Supply", "Return"}, kRecords, 8);
        put("Roof", {"Air"}, kRecords / 2, 17);
        compute("Spread", "Supply - Return");
        compute("Smooth", "mean(Spread, 2 h)");
        compute("Total", "integral(Smooth)");
        compute("Daily", "daily_maximum(Supply)");
        compute("Lift", "Supply - Roof.Air");
        compute("Change", "Supply - earlier(Supply, 1 d)");
        compute("Same", "Supply");
    }

    QString site() const { return m_folder.filePath("site.plotix"); }

    void put(const char* agentName, std::initializer_list<const char*> names, std::size_t count, double longestStep)
    {
        std::vector<double> times(count);
        double time = 1e9;
        for (double& each : times)
            each = time += 0.5 + uniform() * (random() % 9000 == 0 ? 50'000 : longestStep);
        SiteTransaction transaction(site());
        const RowId agent = transaction.findOrCreateAgent(agentName);
        RecordBlock block{SharedArray<double>::fromVector(std::move(times)), {}};
        for (const char* name : names)
            block.columns.push_back({transaction.findOrCreateProperty(agent, name, "").id,
                                     SharedArray<double>::fromVector(values(count)),
                                     {}});
        transaction.records().store(agent, block);
        transaction.commit();
    }
    double uniform() { return static_cast<double>(random() % 10'000) / 10'000; }
    std::vector<double> values(std::size_t count)
    {
        std::vector<double> made(count);
        for (std::size_t i = 0; i < count; ++i)
            made[i] = i / 5000 % 7 == 3 || random() % 500 == 0 ? std::nan("") : 60 * uniform();
        return made;
    }
    void compute(const char* name, const char* formula)
    {
        computeProperty(site(), agent()->id(), {QString::fromUtf8(name), {QString::fromUtf8(formula)}});
    }
    std::shared_ptr<SiteAgent> agent() const
    {
        document = SiteDocument::open(site());
        return document->agentNamed("Boiler");
    }
    std::vector<RowId> ids(const std::vector<const char*>& names) const
    {
        std::vector<RowId> found;
        const auto owner = agent();
        for (const char* name : names)
            for (const auto& each : owner->siteProperties())
                if (each->name() == QLatin1String(name))
                    found.push_back(each->description().id);
        return found;
    }
    RecordColumns columns(const std::vector<const char*>& names, std::optional<double> from = {},
                          std::optional<double> to = {}, const ArchiveProgress& progress = {}) const
    {
        const std::vector<RowId> asked = ids(names);
        const RowId owner = agent()->id();
        return document->records()->columns(owner, asked, from, to, cache, progress).value_or(RecordColumns());
    }
    RecordBlock readAtOnce(const std::vector<const char*>& names, std::optional<double> from = {},
                           std::optional<double> to = {}) const
    {
        const std::vector<RowId> asked = ids(names);
        const RowId owner = agent()->id();
        return *document->records()->read(owner, asked, from, to);
    }
    void expectSameAsAtOnce(const std::vector<const char*>& names, std::optional<double> from = {},
                            std::optional<double> to = {}) const
    {
        const RecordColumns found = columns(names, from, to);
        const RecordBlock wanted = readAtOnce(names, from, to);
        ASSERT_EQ(found.times.size(), wanted.times.size());
        ASSERT_GT(found.times.size(), 0U);
        const PagedMemory::Hold times = found.times.holdAll();
        EXPECT_TRUE(std::equal(wanted.times.span().begin(), wanted.times.span().end(), found.times.span().begin()));
        for (std::size_t i = 0; i < names.size(); ++i) {
            EXPECT_EQ(othersThan(wanted.columns[i], found.columns[i]), 0U) << names[i];
            expectTrueRuns(found, found.columns[i]);
            EXPECT_EQ(found.columns[i].property, wanted.columns[i].property);
        }
    }
    static std::size_t othersThan(const RecordBlock::Column& wanted, const RecordColumns::Column& found)
    {
        const PagedMemory::Hold held = found.values.holdAll();
        std::size_t others = 0;
        for (std::size_t i = 0; i < wanted.values.size(); ++i) {
            const bool isThere = wanted.validity.isValid(i) && !std::isnan(wanted.values[i]);
            const bool isFound = found.validity.isValid(i) && !std::isnan(found.values[i]);
            const bool areSame =
                std::bit_cast<std::uint64_t>(wanted.values[i]) == std::bit_cast<std::uint64_t>(found.values[i]);
            others += isThere != isFound || (isThere && !areSame) ? 1 : 0;
        }
        return others;
    }
    /// What is said of runs and of the whole, against the values.
    static void expectTrueRuns(const RecordColumns& all, const RecordColumns::Column& column)
    {
        const PagedMemory::Hold times = all.times.holdAll(), values = column.values.holdAll();
        const ValueRuns runs = column.runs->unpacked();
        ASSERT_EQ(runs.count(), all.runs->count());
        RecordColumns::Total total;
        std::size_t wrong = 0;
        for (std::size_t run = 0; run < runs.count(); ++run) {
            double least = HUGE_VAL, greatest = -HUGE_VAL;
            const std::size_t begin = all.runs->begin[run], end = all.runs->begin[run + 1];
            for (std::size_t i = begin; i < end; ++i)
                if (column.validity.isValid(i) && !std::isnan(column.values[i])) {
                    least = std::min(least, column.values[i]);
                    greatest = std::max(greatest, column.values[i]);
                    total.sum.add(column.values[i]);
                    ++total.valid;
                }
            wrong += all.runs->first[run] != all.times[begin] || all.runs->last[run] != all.times[end - 1] ? 1 : 0;
            wrong += runs.least[run] != least || runs.greatest[run] != greatest ? 1 : 0;
            const bool isFirstThere = column.validity.isValid(begin) && !std::isnan(column.values[begin]);
            wrong += (isFirstThere ? runs.first[run] == column.values[begin] : std::isnan(runs.first[run])) ? 0 : 1;
        }
        EXPECT_EQ(wrong, 0U);
        EXPECT_EQ(column.total->valid, total.valid);
        EXPECT_TRUE(column.total->sum == total.sum);
    }

    mutable std::shared_ptr<SiteDocument> document;
    std::shared_ptr<PageCache> cache = std::make_shared<PageCache>(0);
    std::mt19937 random;

private:
    QTemporaryDir m_folder;
};

TEST_F(ComputedColumnsTest, PromisesAreWhatIsReadAtOnce)
{
    for (const char* name : {"Spread", "Smooth", "Total", "Daily", "Lift", "Change", "Same"})
        expectSameAsAtOnce({name});
}

TEST_F(ComputedColumnsTest, SoAreThoseOfASpan)
{
    for (const char* name : {"Spread", "Smooth", "Total", "Daily", "Lift", "Change"})
        expectSameAsAtOnce({name}, 1e9 + 100'000.25, 1e9 + 400'000);
}

TEST_F(ComputedColumnsTest, SoAreComputedOnesBesideRecordedOnes)
{
    expectSameAsAtOnce({"Return", "Spread", "Supply"});
    expectSameAsAtOnce({"Supply", "Lift", "Smooth"}, 1e9 + 50'000, {});
    expectSameAsAtOnce({"Total", "Supply"}, 1e9 + 300'000, 1e9 + 400'000);
}

TEST_F(ComputedColumnsTest, NothingStaysInMemoryThatNobodyLooksAt)
{
    const RecordColumns found = columns({"Smooth", "Lift"});
    EXPECT_FALSE(found.times.isResident() || found.columns[0].values.isResident());
    EXPECT_EQ(cache->inUse(), 0U);
}

TEST_F(ComputedColumnsTest, WhatIsRecordedLaterChangesNothing)
{
    const RecordBlock before = readAtOnce({"Smooth"});
    const RecordColumns found = columns({"Smooth"});
    put("Boiler", {"Supply", "Return"}, 10'000, 3);
    EXPECT_EQ(othersThan(before.columns[0], found.columns[0]), 0U);
    EXPECT_NE(columns({"Smooth"}).times.size(), found.times.size());
}

TEST_F(ComputedColumnsTest, ProgressRisesAndStopsIt)
{
    double last = 0;
    columns({"Smooth", "Lift"}, {}, {}, [&](double fraction) { return fraction >= last && (last = fraction) >= 0; });
    EXPECT_EQ(last, 1);
    EXPECT_EQ(columns({"Lift"}, {}, {}, [](double fraction) { return fraction < 0.5; }).columns.size(), 0U);
}

TEST_F(ComputedColumnsTest, SourcesThatCannotBeReadAreAnError)
{
    Database(site(), siteSchema(), Database::Access::ReadWrite)
        .execute("UPDATE segment SET data = zeroblob(length(data))");
    EXPECT_THROW(columns({"Smooth"}), ReportableError);
}

TEST_F(ComputedColumnsTest, SourcesThatCannotBeReadLaterAreToldWhereTheyAreLookedAt)
{
    const RecordColumns found = columns({"Spread"});
    Database(site(), siteSchema(), Database::Access::ReadWrite)
        .execute("UPDATE segment SET data = zeroblob(length(data))");
    const PagedMemory::Hold held = found.columns[0].values.hold(0, 10);
    EXPECT_TRUE(std::isnan(found.columns[0].values[5]));
    EXPECT_TRUE(found.failure->message());
}

TEST_F(ComputedColumnsTest, WhatDependsOnRecordsThatCannotBeReadIsNoNumber)
{
    const RecordColumns found = columns({"Smooth"});
    Database(site(), siteSchema(), Database::Access::ReadWrite)
        .execute("UPDATE segment SET data = zeroblob(length(data)) WHERE id % 1048576 > 0 AND id / 1048576 = 2");
    const PagedMemory::Hold held = found.columns[0].values.hold(0, 32'000);
    const std::span<const double> page = found.columns[0].values.span().first(32'000);
    EXPECT_TRUE(std::all_of(page.begin(), page.end(), [](double value) { return std::isnan(value); }));
}

}  // namespace
}  // namespace plotix
