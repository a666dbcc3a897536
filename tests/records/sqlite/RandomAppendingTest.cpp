#include "base/ReportableError.h"
#include "records/store/MemoryRecordStore.h"
#include "tests/records/RandomBlocks.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <cmath>
#include <cstring>
#include <map>

namespace {

using plotix::RecordBlock;
using plotix::RowId;

constexpr std::size_t kChunk = 16384;
constexpr std::size_t kMostRows = 1024;

/// A recorder, another one, imports and compaction take turns over one file; connections stay open all the while. The
/// store in memory is told the same, and must answer the same. The parameter is the seed.
class RandomAppendingTest : public ArchiveFixture, public testing::WithParamInterface<unsigned> {
protected:
    RandomAppendingTest()
    {
        for (const RowId property : {air, wind, addProperty(agent, "rain")})
            adopt(agent, property);
        const RowId other = addAgent("Two");
        adopt(other, addProperty(other, "air"));
        adopt(other, addProperty(other, "wind"));
    }

    void adopt(RowId owner, RowId property)
    {
        properties[owner].push_back(property);
        twin->addProperty(owner, property);
    }
    std::size_t below(std::size_t limit) { return random.below(limit); }
    RowId someAgent() { return below(3) == 0 ? properties.rbegin()->first : properties.begin()->first; }
    double end(RowId owner)
    {
        const auto extent = twin->extent(owner);
        return extent ? extent->last : 0;
    }

    std::vector<double> behind(double end, std::size_t count)
    {
        std::vector<double> stamps;
        for (std::size_t i = 1; i <= count; ++i)
            stamps.push_back(end + static_cast<double>(i));
        return stamps;
    }

    /// Times of records that are there and times between them, somewhere among the last ones.
    std::vector<double> late(double end, std::size_t count)
    {
        const double begin = end - std::pow(10, static_cast<double>(below(5)));
        std::vector<double> stamps;
        for (std::size_t i = 0; i < count; ++i)
            stamps.push_back(begin + std::floor(static_cast<double>(below(1000)) / 1000 * (end - begin) * 2) / 2);
        if (below(4) == 0)
            stamps.back() = end;
        return stamps;
    }

    void append(RowId owner, const std::vector<double>& stamps)
    {
        const RecordBlock records = random.block(properties[owner], stamps);
        appenders[below(4) == 0]->append(owner, records);
        twin->appender()->append(owner, records);
    }

    std::size_t rowsOf(RowId owner)
    {
        return static_cast<std::size_t>(ask(QByteArray("SELECT count(*) FROM tail WHERE id / 1048576 = ")
                                                .append(QByteArray::number(owner))
                                                .constData()));
    }

    /// Fills the tail to just before, at, or just behind the length of a chunk.
    void appendAroundAChunk(RowId owner)
    {
        const std::size_t rows = rowsOf(owner);
        std::size_t left = std::max(kChunk - 2 + below(4), rows) - rows;
        while (left > 0) {
            const std::size_t count = std::min<std::size_t>(left, kMostRows - below(3));
            append(owner, behind(end(owner), count));
            left -= count;
        }
    }

    /// Several blocks in one transaction, which may be rolled back.
    void import()
    {
        const auto writer = opened()->begin();
        const auto twins = twin->begin();
        std::map<RowId, double> ends;
        for (std::size_t i = 1 + below(4); i > 0; --i) {
            const RowId owner = someAgent();
            const std::size_t count = 1 + below(std::size_t{1} << below(16));
            const double last = ends.contains(owner) ? ends[owner] : end(owner);
            const std::vector<double> stamps = below(3) == 0 ? late(last, count) : behind(last, count);
            ends[owner] = std::max(last, stamps.back());
            const RecordBlock records = random.block(properties[owner], stamps);
            writer->store(owner, records);
            twins->store(owner, records);
        }
        if (below(4) == 0)
            return;
        writer->commit();
        twins->commit();
    }

    void appendWhatMustFail()
    {
        RecordBlock records = random.block(properties[agent], behind(end(agent), 3));
        records.columns.push_back(ramp(properties.rbegin()->second.front(), 0, 3).columns.front());
        EXPECT_THROW(appenders[0]->append(agent, records), plotix::ReportableError);
        EXPECT_THROW(twin->appender()->append(agent, records), plotix::ReportableError);
    }

    void compact()
    {
        plotix::CompactionRequest request{{}, below(2) == 0};
        if (below(3) == 0 && twin->extent(agent))
            request.dropBefore = end(agent) - static_cast<double>(below(30000));
        const plotix::CompactionResult done = opened()->compact(request), expected = twin->compact(request, {});
        EXPECT_EQ(done.dropped, expected.dropped);
        EXPECT_EQ(done.records, expected.records);
    }

    void doSomething()
    {
        switch (below(12)) {
        case 0: import(); break;
        case 1: compact(); break;
        case 2: appendAroundAChunk(someAgent()); break;
        case 3: appendWhatMustFail(); break;
        case 4: adopt(agent, addProperty(agent, QString::number(properties[agent].size()))); break;
        case 5:
        case 6: appendLate(1 + below(4)); break;
        case 7: appendLate(1 + below(2000)); break;
        default: appendBehind(1 + below(20), 1 + below(std::size_t{1} << below(11))); break;
        }
    }

    void appendLate(std::size_t count)
    {
        const RowId owner = someAgent();
        append(owner, late(end(owner), count));
    }

    void appendBehind(std::size_t times, std::size_t count)
    {
        const RowId owner = someAgent();
        for (; times > 0; --times)
            append(owner, behind(end(owner), count));
    }

    void expectEnds()
    {
        ASSERT_EQ(kept->extent(), twin->extent());
        for (const auto& [owner, all] : properties) {
            ASSERT_EQ(countIn(*kept, owner), countIn(*twin, owner));
            ASSERT_EQ(kept->extent(owner), twin->extent(owner));
            const double from = end(owner) - static_cast<double>(below(3000));
            expectEqual(owner, from, from + static_cast<double>(below(3000)));
        }
    }

    void expectEqual(RowId owner, std::optional<double> from, std::optional<double> to)
    {
        const auto found = kept->read(owner, properties[owner], from, to);
        const auto wanted = twin->read(owner, properties[owner], from, to, {});
        ASSERT_TRUE(sameBits(found->times, wanted->times));
        for (std::size_t i = 0; i < found->columns.size(); ++i) {
            const RecordBlock::Column &one = found->columns[i], &other = wanted->columns[i];
            ASSERT_TRUE(sameBits(one.values, other.values)) << "property " << one.property;
            std::size_t wrong = 0;
            for (std::size_t record = 0; record < one.values.size(); ++record)
                wrong += one.validity.isValid(record) != other.validity.isValid(record);
            ASSERT_EQ(wrong, 0U) << "property " << one.property;
        }
    }
    static bool sameBits(const plotix::SharedArray<double>& one, const plotix::SharedArray<double>& other)
    {
        return one.size() == other.size() &&
               (one.size() == 0 || std::memcmp(one.data(), other.data(), one.size() * sizeof(double)) == 0);
    }

    void expectStatistics()
    {
        for (const auto& [owner, all] : properties)
            for (const RowId property : all) {
                const auto found = kept->statistics(owner, property);
                const auto wanted = twin->statistics(owner, property, {}, {}, plotix::StatisticsFrom::Values);
                EXPECT_EQ(found.valid, wanted.valid);
                EXPECT_EQ(found.minimum, wanted.minimum);
                EXPECT_EQ(found.maximum, wanted.maximum);
            }
    }

    RandomBlocks random{GetParam()};
    std::map<RowId, std::vector<RowId>> properties;
    std::shared_ptr<plotix::MemoryRecordStore> twin = std::make_shared<plotix::MemoryRecordStore>();
    std::shared_ptr<plotix::RecordStore> kept = opened();
    std::unique_ptr<plotix::RecordAppender> appenders[2]{kept->appender(), opened()->appender()};
};

TEST_P(RandomAppendingTest, AnswersWhatTheStoreInMemoryAnswers)
{
    for (int round = 0; round < 4; ++round) {
        for (int i = 0; i < 12; ++i) {
            doSomething();
            ASSERT_NO_FATAL_FAILURE(expectEnds());
        }
        for (const auto& [owner, all] : properties)
            ASSERT_NO_FATAL_FAILURE(expectEqual(owner, {}, {}));
    }
    expectStatistics();
    const plotix::VerificationResult verified = opened()->verify(), expected = twin->verify({}, 0);
    EXPECT_TRUE(verified.isSound()) << verified.findings.join('\n').toStdString();
    EXPECT_EQ(verified.records, expected.records);
    EXPECT_EQ(verified.values, expected.values);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomAppendingTest, testing::Range(1U, 6U));

}  // namespace
