#include "base/ReportableError.h"
#include "tests/records/sqlite/RandomArchiveFixture.h"

namespace {

using plotix::RowId;

constexpr std::size_t kChunk = 16384;
constexpr std::size_t kMostRows = 1024;

/// A recorder, another one, imports and compaction take turns over one document; connections stay open all the while.
class RandomAppendingTest : public RandomArchiveFixture {
protected:
    RowId someAgent() { return below(3) == 0 ? properties.rbegin()->first : properties.begin()->first; }

    std::vector<double> behind(RowId owner, std::size_t count)
    {
        std::vector<double> stamps;
        const double end = reference[owner].empty() ? 0 : reference[owner].rbegin()->first;
        for (std::size_t i = 1; i <= count; ++i)
            stamps.push_back(end + static_cast<double>(i));
        return stamps;
    }

    /// Times of records that are there and times between them, somewhere among the last ones.
    std::vector<double> late(RowId owner, std::size_t count)
    {
        const double end = reference[owner].empty() ? 0 : reference[owner].rbegin()->first;
        const double begin = end - std::pow(10, static_cast<double>(below(5)));
        std::vector<double> stamps;
        for (std::size_t i = 0; i < count; ++i)
            stamps.push_back(begin + std::floor(static_cast<double>(below(1000)) / 1000 * (end - begin) * 2) / 2);
        if (below(4) == 0)
            stamps.back() = end;
        return stamps;
    }

    plotix::RecordBlock blockOf(RowId owner, const std::vector<double>& stamps, Reference& into)
    {
        std::vector<plotix::RecordBlock::Column> columns;
        for (const RowId property : properties[owner])
            if (below(4) != 0)
                columns.push_back(fill(property, stamps, into[owner]));
        for (const double stamp : stamps)
            into[owner][stamp];
        return block(stamps, columns);
    }

    void append(RowId owner, const std::vector<double>& stamps)
    {
        appenders[below(4) == 0]->append(owner, blockOf(owner, stamps, reference));
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
            append(owner, behind(owner, count));
            left -= count;
        }
    }

    /// Several blocks in one transaction, which may come to nothing.
    void import()
    {
        Reference after = reference;
        const auto writer = opened()->begin();
        for (std::size_t i = 1 + below(4); i > 0; --i) {
            const RowId owner = someAgent();
            const std::size_t count = 1 + below(std::size_t{1} << below(16));
            const std::vector<double> stamps = below(3) == 0 ? late(owner, count) : behind(owner, count);
            writer->store(owner, blockOf(owner, stamps, after));
        }
        if (below(4) == 0)
            return;
        writer->commit();
        reference = after;
    }

    void appendWhatMustFail()
    {
        Reference nothing = reference;
        plotix::RecordBlock records = blockOf(agent, behind(agent, 3), nothing);
        records.columns.push_back(ramp(properties.rbegin()->second.front(), 0, 3).columns.front());
        EXPECT_THROW(appenders[0]->append(agent, records), plotix::ReportableError);
    }

    void compact()
    {
        plotix::CompactionRequest request{{}, below(2) == 0};
        if (below(3) == 0 && !reference[agent].empty())
            request.dropBefore = reference[agent].rbegin()->first - static_cast<double>(below(30000));
        opened()->compact(request);
        for (auto& [owner, records] : reference)
            if (request.dropBefore)
                records.erase(records.begin(), records.lower_bound(*request.dropBefore));
    }

    void doSomething()
    {
        switch (below(12)) {
        case 0: import(); break;
        case 1: compact(); break;
        case 2: appendAroundAChunk(someAgent()); break;
        case 3: appendWhatMustFail(); break;
        case 4: properties[agent].push_back(addProperty(agent, QString::number(properties[agent].size()))); break;
        case 5:
        case 6: appendLate(1 + below(4)); break;
        case 7: appendLate(1 + below(2000)); break;
        default: appendBehind(1 + below(20), 1 + below(std::size_t{1} << below(11))); break;
        }
    }

    void appendLate(std::size_t count)
    {
        const RowId owner = someAgent();
        append(owner, late(owner, count));
    }

    void appendBehind(std::size_t times, std::size_t count)
    {
        const RowId owner = someAgent();
        for (; times > 0; --times)
            append(owner, behind(owner, count));
    }

    void expectEnds()
    {
        for (const auto& [owner, records] : reference) {
            ASSERT_EQ(countIn(*kept, owner), records.size());
            ASSERT_EQ(kept->extent(owner),
                      records.empty()
                          ? std::nullopt
                          : std::optional(plotix::RecordExtent{records.begin()->first, records.rbegin()->first}));
            const double from = records.empty() ? 0 : records.rbegin()->first - static_cast<double>(below(3000));
            expectEqual(*kept, reference, from, from + static_cast<double>(below(3000)));
        }
    }

    Reference reference;
    std::shared_ptr<plotix::RecordStore> kept = opened();
    std::unique_ptr<plotix::RecordAppender> appenders[2]{kept->appender(), opened()->appender()};
};

TEST_P(RandomAppendingTest, HoldsWhatAMapHolds)
{
    for (int round = 0; round < 4; ++round) {
        for (int i = 0; i < 12; ++i) {
            doSomething();
            ASSERT_NO_FATAL_FAILURE(expectEnds());
        }
        ASSERT_NO_FATAL_FAILURE(expectEqual(*kept, reference, {}, {}));
    }
    expectStatistics(reference);
    const plotix::VerificationResult verified = opened()->verify();
    EXPECT_TRUE(verified.isSound()) << verified.findings.join('\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomAppendingTest, testing::Range(1U, 6U));

}  // namespace
