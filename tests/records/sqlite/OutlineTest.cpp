#include "base/PageCache.h"
#include "base/ReportableError.h"
#include "records/sqlite/ChunkStore.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <cmath>
#include <limits>
#include <random>

namespace {

using plotix::RecordColumns;

constexpr std::size_t kChunk = 16384;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// An agent with a hundred chunks and a tail, the first 64 of them in an outline.
class OutlineTest : public ArchiveFixture {
protected:
    static constexpr std::size_t kRecords = 100 * kChunk + 300, kWithWind = 3 * kChunk;

    OutlineTest()
    {
        store(records(0, kWithWind));
        store(records(kWithWind, kRecords - kWithWind));
        opened()->appender()->append(agent, records(kRecords, 20));
    }
    /// Air goes up and down, and now and then there is none; wind is there at the beginning alone.
    plotix::RecordBlock records(std::size_t first, std::size_t count)
    {
        std::vector<double> stamps(count);
        Values some(count), others(count);
        for (std::size_t i = 0; i < count; ++i) {
            const auto at = static_cast<double>(first + i);
            stamps[i] = at;
            if ((first + i) % 5000 < 4000)
                some[i] = std::round(std::sin(at / 20'000) * 1000) / 10 + static_cast<double>(random() % 8) / 10;
            if (first < kWithWind)
                others[i] = (first + i) % 7 == 0 ? kInfinity : (first + i) % 110'000 == 1 ? -kInfinity : -0.0;
        }
        if (first >= kWithWind)
            return block(stamps, {column(air, some)});
        return block(stamps, {column(air, some), column(wind, others)});
    }
    RecordColumns columns(std::optional<double> from = {}, std::optional<double> to = {})
    {
        return *opened()->columns(agent, std::vector{air, wind}, from, to, std::make_shared<plotix::PageCache>());
    }
    qint64 outlines() { return ask("SELECT count(*) FROM outline"); }
    QString findings() { return opened()->verify().findings.join('\n'); }
    void expectSound() { EXPECT_EQ(findings().toStdString(), ""); }

    /// What is known without reading is what reading tells.
    void expectTrue(std::optional<double> from = {}, std::optional<double> to = {})
    {
        const RecordColumns told = columns(from, to);
        const plotix::RecordBlock whole = read({air, wind}, from, to);
        ASSERT_EQ(told.runs->begin.back(), whole.times.size());
        for (std::size_t run = 0; run < told.runs->count(); ++run) {
            ASSERT_EQ(told.runs->first[run], whole.times[told.runs->begin[run]]);
            ASSERT_EQ(told.runs->last[run], whole.times[told.runs->begin[run + 1] - 1]);
        }
        for (std::size_t c = 0; c < 2; ++c)
            expectTrue(told.columns[c], *told.runs, whole.columns[c]);
    }
    static void expectTrue(const RecordColumns::Column& told, const plotix::TimeRuns& times,
                           const plotix::RecordBlock::Column& column)
    {
        const plotix::ValueRuns runs = told.runs->unpacked();
        RecordColumns::Total total;
        ASSERT_EQ(runs.count(), times.count());
        for (std::size_t run = 0; run < runs.count(); ++run) {
            double least = kInfinity, greatest = -kInfinity;
            for (std::size_t i = times.begin[run]; i < times.begin[run + 1]; ++i) {
                if (!column.validity.isValid(i))
                    continue;
                least = std::min(least, column.values[i]);
                greatest = std::max(greatest, column.values[i]);
                total.sum.add(column.values[i]);
                ++total.valid;
            }
            ASSERT_EQ(runs.least[run], least);
            ASSERT_EQ(runs.greatest[run], greatest);
            const bool isKnown = column.validity.isValid(times.begin[run]);
            ASSERT_TRUE(isKnown ? runs.first[run] == column.values[times.begin[run]] : std::isnan(runs.first[run]));
        }
        EXPECT_EQ(told.total->valid, total.valid);
        EXPECT_TRUE(told.total->sum == total.sum);
    }
    /// Nothing is read of the chunks that an outline is of.
    void withoutIndex()
    {
        run("DELETE FROM run WHERE id / 1048576 <= 64");
        run("UPDATE summary SET whole = NULL, minimum = 5, maximum = 5, sum = 5 WHERE id / 1048576 <= 64");
    }

    std::mt19937 random{12};
};

TEST_F(OutlineTest, WhatHasComeToRestIsOutlined)
{
    EXPECT_EQ(outlines(), 1);
    EXPECT_EQ(ask("SELECT count(*) FROM outlined"), 3);
    EXPECT_EQ(ask("SELECT t1 FROM outline"), static_cast<qint64>(64 * kChunk - 1));
    expectSound();
}

TEST_F(OutlineTest, ItTakesAHundredthOfWhatItIsOf)
{
    EXPECT_LT(100 * ask("SELECT sum(length(data)) FROM outlined"),
              ask("SELECT sum(length(data)) FROM segment WHERE id / 1048576 <= 64"));
}

TEST_F(OutlineTest, ItTellsWhatTheRecordsTell)
{
    expectTrue();
    expectTrue(5, 64.0 * kChunk - 2);
    expectTrue(70.0 * kChunk, {});
}

TEST_F(OutlineTest, ItAloneIsReadOfItsChunks)
{
    withoutIndex();
    expectTrue();
}

TEST_F(OutlineTest, WhatComesLaterIsOutlinedWithTheChunksItFills)
{
    for (std::size_t chunk = 0; chunk < 60; ++chunk)
        store(records(200 * kChunk + chunk * 1000 * 16, 1000 * 16));
    EXPECT_EQ(outlines(), 2);
    expectSound();
    expectTrue();
}

TEST_F(OutlineTest, ALateRecordRemovesTheOutlineItFallsInto)
{
    store(block({1000.5}, {column(air, {12'345})}));
    EXPECT_EQ(outlines(), 0);
    EXPECT_EQ(ask("SELECT count(*) FROM outlined"), 0);
    expectSound();
    expectTrue();
}

TEST_F(OutlineTest, ACorrectedValueChangesItsExtremes)
{
    store(block({1000}, {column(air, {12'345})}));
    expectTrue();
}

TEST_F(OutlineTest, RemovedRecordsAreInNoOutline)
{
    const auto transaction = opened()->begin();
    transaction->remove(agent, std::vector{air}, 20'000, 30'000);
    transaction->commit();
    EXPECT_EQ(outlines(), 0);
    expectTrue();
}

TEST_F(OutlineTest, CompactingOutlinesWhatIsInNone)
{
    store(block({1000.5}, {column(air, {12'345})}));
    opened()->compact({});
    EXPECT_EQ(outlines(), 1);
    expectSound();
    expectTrue();
}

TEST_F(OutlineTest, CompactingLeavesSoundOutlinesAlone)
{
    const qint64 before = ask("SELECT id FROM outline");
    opened()->compact({});
    EXPECT_EQ(ask("SELECT id FROM outline"), before);
}

TEST_F(OutlineTest, ADamagedOneIsFoundNotUsedAndMadeAnew)
{
    run("UPDATE outlined SET data = substr(data, 1, 100) || x'55' || substr(data, 102) WHERE id % 1048576 = 1");
    EXPECT_TRUE(findings().contains("outline that is damaged")) << findings().toStdString();
    expectTrue();
    opened()->compact({});
    expectSound();
}

TEST_F(OutlineTest, ADamagedHeadIsFoundNotUsedAndMadeAnew)
{
    run("UPDATE outline SET head = substr(head, 1, 20) || x'55' || substr(head, 22)");
    EXPECT_TRUE(findings().contains("1 outlines of agent 1 are damaged")) << findings().toStdString();
    expectTrue();
    opened()->compact({});
    EXPECT_EQ(outlines(), 1);
    expectSound();
}

TEST_F(OutlineTest, OneThatComesBackAfterACorrectionIsFoundAndNotUsed)
{
    run("CREATE TABLE heads AS SELECT * FROM outline; CREATE TABLE rows AS SELECT * FROM outlined");
    store(block({1000}, {column(air, {12'345})}));
    run("INSERT INTO outline SELECT * FROM heads; INSERT INTO outlined SELECT * FROM rows;"
        "DROP TABLE heads; DROP TABLE rows");
    EXPECT_TRUE(findings().contains("1 outlines of agent 1 are damaged")) << findings().toStdString();
    expectTrue();
}

TEST_F(OutlineTest, AColumnThatAChunkHasNotIsNotLookedForThere)
{
    const RecordColumns told = columns();
    const auto held = told.columns[1].values.hold(10 * kChunk, 11 * kChunk);
    EXPECT_FALSE(told.columns[1].validity.isValid(10 * kChunk));
    EXPECT_EQ(told.failure->message(), std::nullopt);
}

TEST_F(OutlineTest, FiguresOfAChunkThatWasRolledBackAreNotThoseOfTheNextOfItsNumber)
{
    plotix::Database site = database.open();
    plotix::ChunkStore chunks(site);
    const auto written = [&](double value) {
        site.beginWriting();
        return chunks.write(agent, plotix::RecordsView::of(block({1e7}, {column(air, {value})})));
    };
    const plotix::Chunk first = written(1);
    site.rollBack();
    const plotix::Chunk next = written(2);
    ASSERT_EQ(next.id, first.id);
    EXPECT_EQ(chunks.takeFigures(next)->columns[0].runs.greatest[0], 2);
}

TEST_F(OutlineTest, OneOfOtherChunksIsFoundAndNotUsed)
{
    run("UPDATE chunk SET id = 5000 WHERE id = 20");
    for (const char* table : {"segment", "summary", "run"})
        run(QByteArray("UPDATE " + QByteArray(table) +
                       " SET id = 5000 * 1048576 + id % 1048576 WHERE id / 1048576 = 20")
                .constData());
    EXPECT_TRUE(findings().contains("1 outlines of agent 1 are damaged")) << findings().toStdString();
    expectTrue();
}

TEST_F(OutlineTest, AChunkOfAnotherLengthIsNotTakenForItsOwn)
{
    run("UPDATE chunk SET n = 512 WHERE id = 20");
    EXPECT_THROW(columns(), plotix::ReportableError);
}

TEST_F(OutlineTest, AnImpossibleChunkOfItKeepsNoOtherFromBeingVerified)
{
    run("UPDATE chunk SET n = 99999 WHERE id = 20");
    const plotix::VerificationResult result = opened()->verify();
    EXPECT_EQ(result.chunks, static_cast<std::size_t>(ask("SELECT count(*) FROM chunk")));
    EXPECT_EQ(result.findings.size(), 1) << result.findings.join('\n').toStdString();
}

TEST_F(OutlineTest, CompactingRemovesADamagedOneThatFewChunksAreLeftFor)
{
    const auto transaction = opened()->begin();
    transaction->remove(agent, std::vector{air, wind}, 66.0 * kChunk, {});
    transaction->commit();
    run("UPDATE outlined SET data = x'00'");
    opened()->compact({});
    EXPECT_EQ(outlines(), 0);
    expectSound();
}

TEST_F(OutlineTest, OneIsNotTakenForDamagedBecauseChunksBeforeItAre)
{
    store(records(200 * kChunk, 60 * kChunk));
    ASSERT_EQ(outlines(), 2);
    const qint64 next = ask("SELECT id FROM chunk ORDER BY t0 LIMIT 1 OFFSET 64");
    const QByteArray sql = "UPDATE segment SET data = x'00' WHERE id IN (30 * 1048576 + 1, " +
                           QByteArray::number(next) + " * 1048576 + 1)";
    run(sql.constData());
    EXPECT_FALSE(findings().contains("outline")) << findings().toStdString();
}

TEST_F(OutlineTest, RowsOfNoOutlineAreFound)
{
    run("DELETE FROM outline");
    EXPECT_TRUE(findings().contains("3 rows of outlines belong to no chunks")) << findings().toStdString();
}

TEST_F(OutlineTest, AChunkThatCannotBeReadKeepsNobodyFromWriting)
{
    run("DELETE FROM outline; DELETE FROM outlined; UPDATE segment SET data = x'00' WHERE id = 20 * 1048576 + 1");
    EXPECT_NO_THROW(store(records(200 * kChunk, kChunk)));
    EXPECT_EQ(outlines(), 0);
}

TEST_F(OutlineTest, AFileOfAVersionBeforeIsOutlinedChunkByChunk)
{
    run("DROP TABLE outline; DROP TABLE outlined; PRAGMA user_version = 8");
    expectTrue();
    store(records(200 * kChunk, kChunk));
    EXPECT_EQ(outlines(), 1);
    expectSound();
}

}  // namespace
