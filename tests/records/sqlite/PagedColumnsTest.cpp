#include "base/PagedReading.h"
#include "base/ReportableError.h"
#include "tests/records/sqlite/LongColumnsFixture.h"

#include <QtCore/QFile>

#include <cmath>

namespace {

using plotix::PageCache;
using plotix::PagedMemory;
using plotix::RecordColumns;

/// Columns of a file that somebody looks at later, when not everything is there any more.
class PagedColumnsTest : public LongColumnsFixture {
protected:
    PagedColumnsTest()
    {
        plotix::RecordBlock records = ramp(air, 0, kRecords);
        Values gaps(kRecords, 5);
        gaps[7] = std::nullopt;
        records.columns.push_back(column(wind, gaps));
        store(records);
        told = columns();
    }
    RecordColumns columns() { return columnsOf({air, wind}); }
    /// Of the third and fourth chunk, which are a page.
    void damage(plotix::RowId property)
    {
        run(qPrintable(QString("UPDATE segment SET data = substr(data, 1, length(data) - 1) || x'77' "
                               "WHERE id IN (3 * 1048576 + %1, 4 * 1048576 + %1)")
                           .arg(property)));
    }
    double valueAt(std::size_t element) { return told.columns[0].values.valueAt(element); }
    /// From a multiple of 64 on, read past the pages; whether it could be read.
    bool pass(std::size_t first, std::vector<double>& values) const
    {
        return plotix::inPieces(told.columns[0].values, told.columns[0].validity, first, kRecords,
                                [&](const PagedMemory::Piece& piece) {
                                    values.insert(values.end(), piece.values.begin(), piece.values.end());
                                });
    }
    bool fails() { return told.failure->message().has_value(); }

    RecordColumns told;
};

TEST_F(PagedColumnsTest, TheyArePaged)
{
    EXPECT_FALSE(told.times.isResident());
    EXPECT_EQ(told.runs->count(), kRecords / 512);
    EXPECT_TRUE(told.columns[0].validity.isAllValid());
    EXPECT_FALSE(told.columns[1].validity.isAllValid());
}

TEST_F(PagedColumnsTest, WhatHasChangedIsNotAnsweredAsAValue)
{
    damage(air);
    EXPECT_TRUE(std::isnan(valueAt(2 * kChunk)));
    ASSERT_TRUE(fails());
    EXPECT_TRUE(told.failure->message()->contains("the values of “air”")) << qPrintable(*told.failure->message());
}

TEST_F(PagedColumnsTest, AllElseIsReadAsEver)
{
    damage(air);
    EXPECT_EQ(valueAt(2 * kChunk - 1), 2.0 * kChunk - 1);
    EXPECT_EQ(valueAt(4 * kChunk), 4.0 * kChunk);
    EXPECT_FALSE(fails());
}

TEST_F(PagedColumnsTest, WhereAColumnHasABitmapWhatHasChangedIsNotValid)
{
    damage(wind);
    const PagedMemory::Hold held = told.columns[1].values.holdAll();
    EXPECT_FALSE(told.columns[1].validity.isValid(2 * kChunk + 5));
    EXPECT_TRUE(told.columns[1].validity.isValid(2 * kChunk - 1));
    EXPECT_FALSE(told.columns[1].validity.isValid(7));
}

TEST_F(PagedColumnsTest, TimesThatHaveChangedStillRise)
{
    damage(plotix::kTimes);
    const PagedMemory::Hold held = told.times.holdAll();
    EXPECT_TRUE(fails());
    for (std::size_t i = 1; i < kRecords; ++i)
        ASSERT_LT(told.times[i - 1], told.times[i]);
}

TEST_F(PagedColumnsTest, OnceItCanBeReadItIs)
{
    run("CREATE TABLE kept AS SELECT * FROM segment");
    damage(air);
    EXPECT_TRUE(std::isnan(valueAt(2 * kChunk)));
    run("DELETE FROM segment; INSERT INTO segment SELECT * FROM kept");
    EXPECT_EQ(valueAt(2 * kChunk), 2.0 * kChunk);
}

TEST_F(PagedColumnsTest, PastThePagesWhatHasChangedIsNoValueEither)
{
    run("CREATE TABLE kept AS SELECT * FROM segment");
    damage(air);
    std::vector<double> damaged, whole;
    EXPECT_FALSE(pass(64, damaged));
    EXPECT_EQ(damaged[2 * kChunk - 65], 2.0 * kChunk - 1);
    EXPECT_TRUE(std::isnan(damaged[2 * kChunk - 64]));
    EXPECT_EQ(damaged[4 * kChunk - 64], 4.0 * kChunk);
    run("DELETE FROM segment; INSERT INTO segment SELECT * FROM kept");
    EXPECT_TRUE(pass(64, whole));
    EXPECT_EQ(whole[2 * kChunk - 64], 2.0 * kChunk);
}

TEST_F(PagedColumnsTest, TheFirstFailureIsToldOnce)
{
    QStringList heard;
    const auto owner = std::make_shared<int>();
    told.failure->addListener(owner, [&](const QString& message) { heard << message; });
    damage(air);
    valueAt(2 * kChunk);
    valueAt(2 * kChunk);
    EXPECT_EQ(heard, QStringList(*told.failure->message()));
}

TEST_F(PagedColumnsTest, WhoeverListensLaterIsToldAtOnce)
{
    damage(air);
    valueAt(2 * kChunk);
    QStringList heard;
    const auto owner = std::make_shared<int>();
    told.failure->addListener(owner, [&](const QString& message) { heard << message; });
    EXPECT_EQ(heard.size(), 1);
}

TEST_F(PagedColumnsTest, AFileThatIsGoneIsAFailureAndNoEnd)
{
    QFile::remove(file());
    EXPECT_TRUE(std::isnan(valueAt(0)));
    EXPECT_TRUE(fails());
}

TEST_F(PagedColumnsTest, NoFileStaysOpenForThem)
{
    valueAt(0);
    EXPECT_FALSE(QFile::exists(file() + "-wal"));
}

TEST_F(PagedColumnsTest, ADamagedIndexCostsTimeOnly)
{
    run("UPDATE run SET data = x'00'");
    run("UPDATE summary SET whole = x'00'");
    const RecordColumns other = columns();
    EXPECT_EQ(other.columns[0].runs->unpacked().greatest, told.columns[0].runs->unpacked().greatest);
    EXPECT_EQ(*other.runs, *told.runs);
    EXPECT_TRUE(other.columns[0].total->sum == told.columns[0].total->sum);
}

TEST_F(PagedColumnsTest, WhatIsNeededAtOnceAndHasChangedIsAnError)
{
    damage(plotix::kTimes);
    EXPECT_THROW(opened()->columns(agent, std::vector{air}, 2.0 * kChunk + 5, {}, std::make_shared<PageCache>()),
                 plotix::ReportableError);
}

TEST_F(PagedColumnsTest, ALongColumnIsFilledByManyThreadsAtOnce)
{
    store(ramp(air, kRecords, 4'000'000));
    const RecordColumns longer = columns();
    const PagedMemory::Hold held = longer.columns[0].values.holdAll();
    std::size_t wrong = 0;
    for (std::size_t i = 0; i < longer.times.size(); ++i)
        wrong += longer.columns[0].values[i] != static_cast<double>(i) ? 1 : 0;
    EXPECT_EQ(wrong, 0U);
}

}  // namespace
