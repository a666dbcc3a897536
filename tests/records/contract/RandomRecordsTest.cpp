#include "tests/records/RandomBlocks.h"
#include "tests/records/contract/RecordStoreContract.h"

#include <cmath>
#include <map>

namespace {

using plotix::RecordBlock;
using plotix::RowId;

struct Element {
    std::uint64_t bits = 0;
    bool valid = false;

    friend bool operator==(const Element&, const Element&) = default;
};
using Timeline = std::map<double, std::map<RowId, Element>>;

/// What a store should hold, kept the simplest way: agent → time → property → element.
using Reference = std::map<RowId, Timeline>;

/// Random blocks in transactions, some of which are rolled back.
class RandomRecordsTest : public StoreFixture, public testing::WithParamInterface<std::tuple<StoreKind, unsigned>> {
protected:
    RandomRecordsTest() : StoreFixture(std::get<StoreKind>(GetParam())), random(std::get<unsigned>(GetParam()))
    {
        properties[agent] = {air, wind, addProperty(agent)};
        const RowId other = addAgent();
        properties[other] = {addProperty(other), addProperty(other)};
    }

    std::size_t blockSize()
    {
        constexpr std::size_t kSizes[] = {1, 2, 63, 64, 65, 500, 5000, 20000, 40000};
        return kSizes[random.below(std::size(kSizes))];
    }
    double time(double begin, std::size_t spread) { return begin + static_cast<double>(random.below(spread)) / 4; }

    /// A block for some of an agent's properties: in order behind everything, or anywhere, with repeated times.
    void storeSomething(plotix::RecordTransaction& writer, Reference& into)
    {
        const RowId owner = random.below(3) == 0 ? properties.rbegin()->first : properties.begin()->first;
        Timeline& timeline = into[owner];
        const bool behind = random.below(2) == 0;
        const double end = timeline.empty() ? 0 : timeline.rbegin()->first;
        std::vector<double> stamps(blockSize());
        for (std::size_t i = 0; i < stamps.size(); ++i)
            stamps[i] = behind ? end + 1 + static_cast<double>(i) : time(end / 2 - 1000, 8000);
        const RecordBlock made = random.block(properties[owner], stamps);
        for (std::size_t i = 0; i < stamps.size(); ++i) {
            auto& elements = timeline[stamps[i]];
            for (const RecordBlock::Column& column : made.columns)
                elements[column.property] = {bitsOf(column.values[i]), column.validity.isValid(i)};
        }
        writer.store(owner, made);
    }

    void storeRound()
    {
        Reference after = reference;
        const bool isKept = random.below(4) != 0;
        const auto writer = opened()->begin();
        for (std::size_t blocks = 1 + random.below(4); blocks > 0; --blocks)
            storeSomething(*writer, after);
        if (!isKept)
            return;
        writer->commit();
        reference = std::move(after);
    }

    void expectStored(std::optional<double> from, std::optional<double> to)
    {
        const auto records = opened();
        for (const auto& [owner, timeline] : reference) {
            const auto found = records->read(owner, properties[owner], from, to);
            std::size_t index = 0;
            auto record = from ? timeline.lower_bound(*from) : timeline.begin();
            for (; record != timeline.end() && (!to || record->first <= *to); ++record, ++index) {
                ASSERT_LT(index, found->times.size());
                ASSERT_EQ(found->times[index], record->first);
                expectRecord(*found, index, record->second);
            }
            ASSERT_EQ(index, found->times.size());
        }
    }
    static void expectRecord(const RecordBlock& found, std::size_t index, const std::map<RowId, Element>& elements)
    {
        for (const RecordBlock::Column& column : found.columns) {
            const auto stored = elements.find(column.property);
            const Element element{bitsOf(column.values[index]), column.validity.isValid(index)};
            ASSERT_TRUE(stored == elements.end() ? !element.valid : element == stored->second)
                << "property " << column.property << " at " << found.times[index];
        }
    }

    void expectCounted()
    {
        const auto records = opened();
        for (const auto& [owner, timeline] : reference)
            for (const RowId property : properties[owner]) {
                std::size_t valid = 0;
                for (const auto& [stamp, elements] : timeline) {
                    const auto stored = elements.find(property);
                    valid += stored != elements.end() && stored->second.valid &&
                             !std::isnan(std::bit_cast<double>(stored->second.bits));
                }
                ASSERT_EQ(records->statistics(owner, property).valid, valid);
            }
    }

    RandomBlocks random;
    std::map<RowId, std::vector<RowId>> properties;
    Reference reference;
};

TEST_P(RandomRecordsTest, HoldsWhatAMapHolds)
{
    for (int round = 0; round < 8; ++round) {
        ASSERT_NO_FATAL_FAILURE(storeRound());
        ASSERT_NO_FATAL_FAILURE(expectStored({}, {}));
    }
    for (int range = 0; range < 10; ++range) {
        const double from = time(-2000, 200000);
        expectStored(from, from + static_cast<double>(random.below(30000)));
    }
    expectCounted();
}

INSTANTIATE_TEST_SUITE_P(Stores, RandomRecordsTest,
                         testing::Combine(testing::ValuesIn(storesUnderTest()), testing::Range(1U, 7U)),
                         [](const auto& each) {
                             return std::get<StoreKind>(each.param).name +
                                    std::to_string(std::get<unsigned>(each.param));
                         });

}  // namespace
