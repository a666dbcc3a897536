#include "base/PageCache.h"
#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"
#include "tests/records/sqlite/FlippedBit.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iostream>
#include <limits>
#include <map>
#include <random>
#include <set>

namespace {

using plotix::PageCache;
using plotix::PagedMemory;
using plotix::RecordBlock;
using plotix::RecordColumns;
using plotix::ReportableError;
using plotix::RowId;

constexpr std::size_t kManyRecords = 100 * 16'384;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// What reading gives, bit for bit; nothing where it says that it cannot.
using Image = std::optional<std::vector<std::uint64_t>>;

/// A site of every kind of column, in which bits change anywhere. PLOTIX_FLIPS says how many; 200 without it.
class RandomDamageTest : public ArchiveFixture {
protected:
    RandomDamageTest()
    {
        for (const char* name : {"counter", "noise", "product", "states", "steady", "bits"})
            properties.push_back(addProperty(agent, name));
        other = addAgent("Two");
        for (const char* name : {"one", "two"})
            ofOther.push_back(addProperty(other, name));
        for (const std::size_t count : {16'384, 12'000, 5'000, 3'000, 1'100})
            store(records(count, properties));
        for (int single = 0; single < 60; ++single)
            opened()->appender()->append(agent, records(1, properties));
        storeFor(other, records(2'000, ofOther));
        for (int single = 0; single < 20; ++single)
            opened()->appender()->append(other, records(1, ofOther));
        whole = images();
    }

    static int flips()
    {
        bool isNumber = false;
        const int number = qEnvironmentVariableIntValue("PLOTIX_FLIPS", &isNumber);
        return isNumber ? number : 200;
    }

    /// Some stretches of time are regular, some are not, and there are gaps between and within them.
    RecordBlock records(std::size_t count, const std::vector<RowId>& of)
    {
        const bool isRegular = random() % 2 == 0;
        std::vector<double> times;
        for (std::size_t i = 0; i < count; ++i)
            times.push_back(clock += isRegular            ? 10
                                     : random() % 50 == 0 ? 3600
                                                          : 1 + std::uniform_real_distribution<double>()(random));
        RecordBlock made = block(times, {});
        const bool hasDropOut = random() % 4 == 0;  // of one property, for the whole block
        for (std::size_t kind = 0; kind < of.size(); ++kind)
            if (!(hasDropOut && kind == 1))
                made.columns.push_back(column(of[kind], elements(kind, count)));
        return made;
    }
    Values elements(std::size_t kind, std::size_t count)
    {
        Values made;
        for (std::size_t i = 0; i < count; ++i)
            made.emplace_back(element(kind, i));
        for (std::size_t i = random() % 40; i < count && kind < 4; i += 1 + random() % 400)
            made[i] = random() % 2 == 0 ? std::nullopt : std::optional(odd[random() % odd.size()]);
        return made;
    }
    double element(std::size_t kind, std::size_t i)
    {
        switch (kind) {
        case 0: return std::round(200 + 30 * std::sin(static_cast<double>(i) / 300)) / 10;
        case 1: return walk += std::normal_distribution<double>()(random);
        case 2: return static_cast<double>(random() % 99) * 0.1;
        case 3: return states[random() % states.size()];
        case 4: return 21.5;
        default: return std::bit_cast<double>(random());
        }
    }

    /// Of all tables that records and their indexes stand in, whichever version brought them.
    std::vector<StoredCell> cells(const char* types)
    {
        std::vector<StoredCell> all;
        const plotix::Database opened = database.open(plotix::Database::Access::ReadOnly);
        const QByteArray sql = QByteArray("SELECT name FROM pragma_table_info(?) WHERE type ") + types;
        for (const plotix::SchemaPart::Table& table : plotix::schema::kTables) {
            if (const QByteArray name = table.name; name == "amendment" || name == "retired")
                continue;  // they say nothing of what records are
            plotix::Statement columns(opened, sql.constData());
            columns.bind(1, QString::fromLatin1(table.name));
            while (columns.step())
                for (StoredCell& cell : cellsOf(database, table.name, columns.text(0).toLatin1()))
                    all.push_back(std::move(cell));
        }
        return all;
    }
    std::vector<StoredCell> blobs() { return cells("= 'BLOB'"); }
    std::vector<StoredCell> numbers() { return cells("IN ('INTEGER', 'REAL')"); }

    /// Another agent whose chunks are so many that what is known of them is kept for many at once.
    void storeManyChunks()
    {
        many = addAgent("Many");
        ofMany = {addProperty(many, "level")};
        Values levels;
        for (std::size_t i = 0; i < kManyRecords; ++i)
            levels.emplace_back(i % 900 == 0 ? std::nullopt : std::optional(std::round(element(1, i))));
        RecordBlock block = ramp(ofMany.front(), clock, kManyRecords);
        block.columns.front() = column(ofMany.front(), levels);
        storeFor(many, block);
        whole = images();
    }

    /// Every way to the values and to what is said of them.
    std::vector<Image> images()
    {
        return {imageOf([&](auto& image) { addValues(image, agent, properties); }),
                imageOf([&](auto& image) { addValues(image, other, ofOther); }),
                imageOf([&](auto& image) { addPages(image, agent, properties); }),
                imageOf([&](auto& image) { addStatistics(image, agent, properties); }),
                imageOf([&](auto& image) { addPages(image, many, ofMany); }),
                imageOf([&](auto& image) { addStatistics(image, many, ofMany); })};
    }
    static Image imageOf(const std::function<void(std::vector<std::uint64_t>&)>& add)
    {
        Image image(std::in_place);
        try {
            add(*image);
        } catch (const ReportableError&) {
            return {};
        }
        return image;
    }
    void addValues(std::vector<std::uint64_t>& image, RowId owner, const std::vector<RowId>& of)
    {
        const RecordBlock records = *opened()->read(owner, of, {}, {});
        for (const double time : records.times.span())
            image.push_back(bitsOf(time));
        for (const RecordBlock::Column& each : records.columns)
            for (std::size_t i = 0; i < records.times.size(); ++i) {
                image.push_back(bitsOf(each.values[i]));
                image.push_back(each.validity.isValid(i) ? 1 : 0);
            }
    }
    void addPages(std::vector<std::uint64_t>& image, RowId owner, const std::vector<RowId>& of)
    {
        if (of.empty())
            return;
        const RecordColumns told = *opened()->columns(owner, of, {}, {}, std::make_shared<PageCache>(0));
        const PagedMemory::Hold times = told.times.holdAll();
        for (const double time : told.times.span())
            image.push_back(bitsOf(time));
        for (const RecordColumns::Column& each : told.columns) {
            const PagedMemory::Hold values = each.values.holdAll();
            for (std::size_t i = 0; i < told.times.size(); ++i) {
                image.push_back(bitsOf(each.values[i]));
                image.push_back(each.validity.isValid(i) ? 1 : 0);
            }
            if (each.total) {
                image.push_back(each.total->valid);
                image.push_back(bitsOf(canonical(each.total->sum.value())));
            }
            if (each.runs)
                addExtremes(image, *each.runs);
        }
        if (const auto failure = told.failure->message())
            throw ReportableError(*failure);
    }
    /// Of figures that are worked out, all that are no number are the same.
    static double canonical(double figure) { return std::isnan(figure) ? kNaN : figure; }
    /// Of all runs, since there may be longer ones where less is known. They may be packed.
    template <class Runs>
    static void addExtremes(std::vector<std::uint64_t>& image, const Runs& runs)
    {
        if constexpr (requires { runs.unpacked(); }) {
            addExtremes(image, runs.unpacked());
        } else if (!runs.least.empty()) {
            image.push_back(bitsOf(*std::min_element(runs.least.begin(), runs.least.end())));
            image.push_back(bitsOf(*std::max_element(runs.greatest.begin(), runs.greatest.end())));
        }
    }
    void addStatistics(std::vector<std::uint64_t>& image, RowId owner, const std::vector<RowId>& of)
    {
        for (const RowId property : of) {
            const plotix::ColumnStatistics figures = opened()->statistics(owner, property);
            for (const double figure : {double(figures.valid), figures.minimum, figures.maximum, figures.average})
                image.push_back(bitsOf(canonical(figure)));
        }
    }

    struct Tally {
        int flips = 0, found = 0, refused = 0, changed = 0;
        int missed = 0;  ///< reading gave something else or nothing, and verifying found nothing

        void operator+=(const Tally& more)
        {
            flips += more.flips;
            found += more.found;
            refused += more.refused;
            changed += more.changed;
            missed += more.missed;
        }
    };
    using Tallies = std::map<QByteArray, Tally>;  // by column

    void flip(const StoredCell& cell, Tallies& tallies)
    {
        const std::size_t bit = random() % cell.bits();
        SCOPED_TRACE(testing::Message() << "bit " << bit << " of " << cell.table.constData() << '.'
                                        << cell.column.constData() << " in row " << cell.id);
        std::optional<FlippedBit> damage;
        try {
            damage.emplace(database, cell, bit);
        } catch (const ReportableError&) {
            return;  // a key that another row has, or a number that is none: no such row can be stored
        }
        const bool isFound = !opened()->verify().isSound();
        const std::vector<Image> now = images();
        const bool isRefused = std::count(now.begin(), now.end(), std::nullopt) > 0;
        bool isChanged = false;
        for (std::size_t i = 0; i < now.size(); ++i)
            isChanged = isChanged || (now[i] && now[i] != whole[i]);
        const bool isOther = isRefused || isChanged;
        tallies[cell.table + '.' + cell.column] +=
            Tally{1, isFound ? 1 : 0, isRefused ? 1 : 0, isChanged ? 1 : 0, isOther && !isFound ? 1 : 0};
        EXPECT_TRUE(isFound || !isOther);
    }
    static Tally printed(const Tallies& tallies)
    {
        Tally sum;
        const auto print = [](const char* name, const Tally& tally) {
            std::cout << name << ": " << tally.flips << " flips, " << tally.found << " found, " << tally.refused
                      << " refused when read, " << tally.changed << " read as something else, " << tally.missed
                      << " missed\n";
        };
        for (const auto& [name, tally] : tallies) {
            print(name.constData(), tally);
            sum += tally;
        }
        print("all", sum);
        return sum;
    }
    bool isWhole() { return images() == whole; }

    std::mt19937_64 random{20'260};
    double clock = 1'700'000'000, walk = 0;
    const std::vector<double> odd{kNaN, kInfinity, -kInfinity, -0.0, 0.0, 1e300, 5e-324};
    const std::vector<double> states{1.7182818284, -2.302585093, 3.1415926535, 1e-9 / 3};
    std::vector<RowId> properties, ofOther, ofMany;
    RowId other = 0, many = 0;
    std::vector<Image> whole;
};

TEST_F(RandomDamageTest, TheSiteHasColumnsOfEveryCodecAndAllThatStandsBesideThem)
{
    EXPECT_EQ(ask("SELECT count(DISTINCT codec) FROM segment WHERE codec BETWEEN 16 AND 21"), 6);
    std::set<QByteArray> kinds;
    for (const StoredCell& cell : blobs())
        kinds.insert(cell.table + '.' + cell.column);
    for (const char* kind : {"segment.data", "segment.valid", "summary.whole", "run.data", "tail.data"})
        EXPECT_EQ(kinds.count(kind), 1U) << kind;
    EXPECT_TRUE(opened()->verify().isSound());
    EXPECT_GT(ask("SELECT count(*) FROM chunk"), 3);
    EXPECT_FALSE(opened()->columns(agent, properties, {}, {}, std::make_shared<PageCache>(0))->times.isResident());
}

/// Half of them anywhere, each byte as likely as any other; half in any row, since most rows are short.
TEST_F(RandomDamageTest, WhatChangesAValueIsFoundAndNeverReadAsAnother)
{
    const std::vector<StoredCell> all = blobs();
    std::vector<double> sizes;
    for (const StoredCell& cell : all)
        sizes.push_back(static_cast<double>(cell.bytes));
    std::discrete_distribution<std::size_t> anyByte(sizes.begin(), sizes.end());
    Tallies tallies;
    for (int i = 0; i < flips() && !HasFailure(); ++i)
        flip(all[i % 2 == 0 ? anyByte(random) : random() % all.size()], tallies);
    const Tally tally = printed(tallies);
    EXPECT_EQ(tally.changed, 0);
    EXPECT_GE(tally.found, tally.flips);
    EXPECT_TRUE(isWhole());
}

TEST_F(RandomDamageTest, WhatIsSaidOfManyChunksIsNotBelievedWhenItChanges)
{
    storeManyChunks();
    std::map<QByteArray, std::vector<StoredCell>> byColumn;
    for (StoredCell& cell : blobs())
        if (cell.table != "segment" && cell.table != "tail")
            byColumn[cell.table + '.' + cell.column].push_back(std::move(cell));
    Tallies tallies;
    for (int i = 0; i < flips() / 20 && !HasFailure(); ++i)
        for (const auto& [name, all] : byColumn)
            flip(all[random() % all.size()], tallies);
    const Tally tally = printed(tallies);
    EXPECT_EQ(tally.changed, 0);
    EXPECT_EQ(tally.found, tally.flips);
}

TEST_F(RandomDamageTest, ANumberBesideTheColumnsThatChangesWhatIsReadIsFound)
{
    const std::vector<StoredCell> all = numbers();
    Tallies tallies;
    for (int i = 0; i < flips() && !HasFailure(); ++i)
        flip(all[random() % all.size()], tallies);
    const Tally tally = printed(tallies);
    EXPECT_GT(tally.found, tally.flips / 2);
    EXPECT_TRUE(isWhole());
}

}  // namespace
