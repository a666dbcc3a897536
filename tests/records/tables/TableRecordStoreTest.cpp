#include "records/tables/TableRecordStore.h"
#include "base/PageCache.h"
#include "base/ReportableError.h"
#include "records/store/RecordStore.h"
#include "records/tables/AnyTableServer.h"
#include "tests/records/tables/PostgresForTests.h"
#include "tests/records/tables/TablesUnderTest.h"

#include <cmath>
#include <random>

using namespace plotix;

namespace {

/// One table of each kind of database, filled by statements, as its owner would.
class TablesTest : public testing::TestWithParam<std::unique_ptr<DatabaseForTests> (*)()> {
protected:
    using Rows = std::vector<std::vector<std::string>>;

    void makeTable(std::size_t columns, const Rows& rows)
    {
        m_database->makeTable("readings", columns);
        if (!rows.empty())
            m_database->addRows("readings", rows);
    }
    std::shared_ptr<TableServer> server() { return tableServerAt(m_database->address()); }
    AttachedTable wide(std::size_t columns)
    {
        AttachedTable table{m_database->address(), "readings", "time", {}, {}, {}, {}};
        for (std::size_t i = 1; i <= columns; ++i)
            table.columns[static_cast<RowId>(i)] = QStringLiteral("v%1").arg(i);
        return table;
    }
    std::shared_ptr<RecordStore> opened(const AttachedTable& table) { return server()->records(table); }
    static std::vector<double> valuesOf(const RecordBlock& block, std::size_t column)
    {
        return {block.columns[column].values.span().begin(), block.columns[column].values.span().end()};
    }
    static std::vector<double> timesOf(const RecordBlock& block)
    {
        return {block.times.span().begin(), block.times.span().end()};
    }
    /// Name and value a row, under names that are hard to quote.
    AttachedTable makeLongTable()
    {
        makeTable(2, {{"1", "7", "10"}, {"1", "8", "20"}, {"2", "7", "11"}, {"3", "9", "12"}});
        AttachedTable table{m_database->address(), "readings", "time", {}, "v1", "v2", {}};
        table.columns = {{1, "7"}, {2, "8"}};
        return table;
    }

    const std::unique_ptr<DatabaseForTests> m_database = GetParam()();
};

TEST_P(TablesTest, OfRowsOfOneTimeTheGreatestValueCounts)
{
    makeTable(2, {{"1", "3", "\\N"}, {"2", "5", "1"}, {"1", "4", "-2"}, {"1", "\\N", "-3"}});
    const auto store = opened(wide(2));
    const RecordBlock block = *store->read(1, std::vector<RowId>{1, 2}, {}, {});
    EXPECT_EQ(timesOf(block), (std::vector<double>{1, 2}));
    EXPECT_EQ(valuesOf(block, 0), (std::vector<double>{4, 5}));
    EXPECT_EQ(valuesOf(block, 1), (std::vector<double>{-2, 1}));
    EXPECT_EQ(store->statistics(1, 1).average, 4.5);
    EXPECT_EQ(store->statistics(1, 2).minimum, -2);
    EXPECT_EQ(store->overview(1, {}).records(), 2U);
}

TEST_P(TablesTest, WhatIsNoTimeIsNoRecord)
{
    makeTable(1, {{"nan", "1"}, {"inf", "2"}, {"-inf", "3"}, {"5", "4"}});
    const auto store = opened(wide(1));
    EXPECT_EQ(timesOf(*store->read(1, std::vector<RowId>{1}, {}, {})), (std::vector<double>{5}));
    EXPECT_EQ(store->extent(1), (RecordExtent{5, 5}));
    EXPECT_EQ(store->statistics(1, 1).valid, 1U);
}

TEST_P(TablesTest, RowsThatNameTheirPropertyMakeARecordOfOneTime)
{
    const auto store = opened(makeLongTable());
    const RecordBlock block = *store->read(1, std::vector<RowId>{2, 1}, {}, {});
    EXPECT_EQ(timesOf(block), (std::vector<double>{1, 2}));
    EXPECT_EQ(valuesOf(block, 0)[0], 20);
    EXPECT_FALSE(block.columns[0].validity.isValid(1));
    EXPECT_EQ(valuesOf(block, 1), (std::vector<double>{10, 11}));
    EXPECT_EQ(store->statistics(1, 1).valid, 2U);
    EXPECT_EQ(store->extent(1), (RecordExtent{1, 2}));
}

TEST_P(TablesTest, NamesAreListedInOrder)
{
    makeLongTable();
    EXPECT_EQ(server()->names("readings", "v1", 2), (QStringList{"7", "8"}));
}

TEST_P(TablesTest, ColumnsAreTold)
{
    makeTable(1, {});
    const std::vector<TableServer::Column> columns = server()->columns("readings");
    ASSERT_EQ(columns.size(), 2U);
    EXPECT_EQ(columns[1].name, "v1");
    EXPECT_EQ(columns[1].kind, TableServer::Column::Kind::Number);
    EXPECT_TRUE(server()->tables().contains("readings"));
}

TEST_P(TablesTest, AColumnThatIsGoneIsNamed)
{
    makeTable(1, {{"1", "1"}});
    try {
        opened(wide(2))->read(1, std::vector<RowId>{1}, {}, {});
        FAIL();
    } catch (const ReportableError& error) {
        EXPECT_TRUE(error.message().contains("“v2”")) << error.what();
    }
}

TEST_P(TablesTest, NothingIsEverWritten)
{
    makeTable(1, {});
    const auto store = opened(wide(1));
    EXPECT_THROW(store->begin(), ReportableError);
    EXPECT_THROW(store->appender(), ReportableError);
    EXPECT_THROW(store->compact({}), ReportableError);
}

TEST_P(TablesTest, TimesInMillisecondsAreSeconds)
{
    makeTable(1, {{"1500", "1"}, {"2500", "2"}});
    AttachedTable table = wide(1);
    table.timeUnit = AttachedTable::TimeUnit::Milliseconds;
    EXPECT_EQ(timesOf(*opened(table)->read(1, std::vector<RowId>{1}, 1.5, 2.0)), (std::vector<double>{1.5}));
}

/// Every answer of a table is that of the records in memory which it is made of.
TEST_P(TablesTest, WhateverIsAskedIsAsOfTheSameRecordsInMemory)
{
    std::mt19937 random(7);
    const auto upTo = [&](int most) { return std::uniform_int_distribution<>(0, most)(random); };
    MemoryRecordStore twin;
    twin.addProperty(1, 1);
    std::map<double, std::optional<double>> kept;
    Rows rows;
    for (int i = 0; i < 5000; ++i) {
        const double time = upTo(4000) / 7.0;
        const auto value = upTo(5) == 0 ? std::nullopt : std::optional(upTo(1000) / 7.0 - 70);
        rows.push_back({cellOf(time), cellOf(value)});
        std::optional<double>& greatest = kept[time];
        greatest = value && greatest ? std::max(value, greatest) : value ? value : greatest;
    }
    std::vector<double> times, values;
    std::vector<std::uint64_t> valid((kept.size() + 63) / 64);
    for (const auto& [time, value] : kept) {
        valid[times.size() / 64] |= std::uint64_t{value.has_value()} << (times.size() % 64);
        times.push_back(time);
        values.push_back(value.value_or(0));
    }
    const auto transaction = twin.begin();
    transaction->store(1, {SharedArray<double>::fromVector(times),
                           {{1, SharedArray<double>::fromVector(values),
                             ValidityBitmap(SharedArray<std::uint64_t>::fromVector(valid))}}});
    transaction->commit();
    makeTable(1, rows);
    const auto store = opened(wide(1));
    const std::vector<RowId> asked{1};
    for (int i = 0; i < 40; ++i) {
        const double from = (upTo(4400) - 100) / 7.0, to = from + upTo(2000) / 7.0;
        const RecordBlock found = *store->read(1, asked, from, to), wanted = *twin.read(1, asked, from, to, {});
        ASSERT_EQ(timesOf(found), timesOf(wanted)) << from << " to " << to;
        for (std::size_t at = 0; at < wanted.times.size(); ++at) {
            const bool isValid = wanted.columns[0].validity.isValid(at);
            ASSERT_EQ(found.columns[0].validity.isValid(at), isValid);
            if (isValid) {
                ASSERT_EQ(found.columns[0].values[at], wanted.columns[0].values[at]);
            }
        }
        const ColumnStatistics told = store->statistics(1, 1, from, to),
                               known = static_cast<RecordStore&>(twin).statistics(1, 1, from, to);
        EXPECT_EQ(told.valid, known.valid);
        EXPECT_EQ(told.minimum, known.minimum);
        EXPECT_EQ(told.maximum, known.maximum);
        EXPECT_NEAR(told.average, known.average, 1e-9);
        EXPECT_EQ(store->overview(1, {}, from, to).records(), wanted.times.size());
    }
}

/// A table that is too long to be read at once.
class LongTablesTest : public TablesTest {
protected:
    static constexpr std::size_t kRows = 100'000;

    void SetUp() override
    {
        Rows rows;
        for (std::size_t i = 0; i < kRows; ++i) {
            const double at = static_cast<double>(i) / 7;
            rows.push_back({cellOf(1e9 + at), i % 1000 < 30 ? "\\N" : cellOf(std::sin(at)), cellOf(at)});
        }
        makeTable(2, rows);
        const bool isClickHouse = m_database->address().startsWith(QLatin1String("clickhouse"));
        m_store = std::make_shared<TableRecordStore>(isClickHouse ? clickHouseTables(m_database->address())
                                                                  : postgresTables(m_database->address()),
                                                     wide(2), 1000);
    }
    RecordColumns columns(std::optional<double> from = {}, std::optional<double> to = {})
    {
        return *m_store->columns(1, std::vector<RowId>{1, 2}, from, to, std::make_shared<PageCache>(), {});
    }

    std::shared_ptr<RecordStore> m_store;
};

TEST_P(LongTablesTest, WhatIsUnpackedIsWhatIsRead)
{
    const RecordColumns told = columns(1e9 + 10, 1e9 + 14'000);
    const RecordBlock all = *m_store->read(1, std::vector<RowId>{1, 2}, 1e9 + 10, 1e9 + 14'000);
    ASSERT_EQ(told.times.size(), all.times.size());
    const auto times = told.times.hold(0, all.times.size());
    const auto values = told.columns[0].values.hold(0, all.times.size());
    for (std::size_t i = 0; i < all.times.size(); ++i) {
        ASSERT_EQ(told.times[i], all.times[i]);
        ASSERT_EQ(told.columns[0].validity.isValid(i), all.columns[0].validity.isValid(i));
        if (all.columns[0].validity.isValid(i)) {
            ASSERT_EQ(told.columns[0].values[i], all.columns[0].values[i]);
        }
    }
    EXPECT_FALSE(told.failure->message());
}

TEST_P(LongTablesTest, WhatIsToldOfRunsIsTrue)
{
    const RecordColumns told = columns();
    const RecordBlock all = *m_store->read(1, std::vector<RowId>{1}, {}, {});
    const ValueRuns runs = told.columns[0].runs->unpacked();
    ASSERT_EQ(runs.count(), told.runs->count());
    EXPECT_EQ(told.runs->begin.back(), kRows);
    for (std::size_t run = 0; run < runs.count(); ++run) {
        const std::size_t begin = told.runs->begin[run], end = told.runs->begin[run + 1];
        EXPECT_EQ(told.runs->first[run], all.times[begin]);
        EXPECT_EQ(told.runs->last[run], all.times[end - 1]);
        double least = HUGE_VAL, greatest = -HUGE_VAL;
        for (std::size_t i = begin; i < end; ++i)
            if (all.columns[0].validity.isValid(i)) {
                least = std::min(least, all.columns[0].values[i]);
                greatest = std::max(greatest, all.columns[0].values[i]);
            }
        ASSERT_EQ(runs.least[run], least);
        ASSERT_EQ(runs.greatest[run], greatest);
        const bool isFirst = all.columns[0].validity.isValid(begin);
        ASSERT_TRUE(isFirst ? runs.first[run] == all.columns[0].values[begin] : std::isnan(runs.first[run]));
    }
    EXPECT_EQ(told.columns[0].total->valid, kRows - kRows / 1000 * 30);
}

TEST_P(LongTablesTest, RowsThatCameBetweenAreToldAndStandInsRise)
{
    const RecordColumns told = columns();
    m_database->addRows("readings", {{cellOf(1e9 + 0.05), "1", "1"}});
    const auto times = told.times.hold(0, 100);
    ASSERT_TRUE(told.failure->message());
    EXPECT_TRUE(told.failure->message()->contains("changed"));
    for (std::size_t i = 1; i < 100; ++i)
        ASSERT_GT(told.times[i], told.times[i - 1]);
}

INSTANTIATE_TEST_SUITE_P(Databases, LongTablesTest, testing::Values(&clickHouseForTables, &postgresForTables),
                         [](const auto& kind) { return kind.index == 0 ? "ClickHouse" : "Postgres"; });
INSTANTIATE_TEST_SUITE_P(Databases, TablesTest, testing::Values(&clickHouseForTables, &postgresForTables),
                         [](const auto& kind) { return kind.index == 0 ? "ClickHouse" : "Postgres"; });

}  // namespace
