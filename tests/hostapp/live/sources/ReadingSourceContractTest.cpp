#include "base/Date.h"
#include "hostapp/core/Units.h"
#include "hostapp/live/sources/ReadingSources.h"
#include "hostapp/live/sources/computer/ComputerSource.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"
#include "tests/hostapp/live/MadeUpSource.h"
#include "tests/hostapp/live/sources/computer/MadeUpMachine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <set>
#include <thread>

// What a recording relies on, tested on a made-up source and on every source of the table.

namespace plotix {

namespace {

struct ContractCase {
    std::string name;
    std::function<std::unique_ptr<ReadingSource>()> make;
};

class ReadingSourceContract : public testing::TestWithParam<ContractCase> {
protected:
    ReadingSourceContract() : source(GetParam().make()), properties(source->start(1)) {}

    std::vector<Reading> readTwice()
    {
        std::vector<Reading> readings = source->read(kNow);
        for (Reading& reading : source->read(kNow + 1))
            readings.push_back(std::move(reading));
        return readings;
    }

    static constexpr double kNow = 1'700'000'000;

    std::unique_ptr<ReadingSource> source;
    std::vector<SourceProperty> properties;
};

TEST_P(ReadingSourceContract, HasAnAgentAndProperties)
{
    EXPECT_FALSE(source->agentName().trimmed().isEmpty());
    EXPECT_FALSE(properties.empty());
}

TEST_P(ReadingSourceContract, NamesDifferAlsoAsKeys)
{
    std::set<QString> keys;
    for (const SourceProperty& property : properties) {
        EXPECT_FALSE(camelCaseString(property.name).isEmpty()) << property.name.toStdString();
        EXPECT_TRUE(keys.insert(camelCaseString(property.name)).second) << property.name.toStdString();
    }
}

TEST_P(ReadingSourceContract, UnitsAreKnown)
{
    for (const SourceProperty& property : properties) {
        if (!property.unit.isEmpty()) {
            EXPECT_EQ(Units::shared()->normalise(property.unit), property.unit) << property.name.toStdString();
        }
    }
}

TEST_P(ReadingSourceContract, AnotherOneHasTheSameProperties)
{
    const std::unique_ptr<ReadingSource> other = GetParam().make();
    const std::vector<SourceProperty> others = other->start(60);
    ASSERT_EQ(others.size(), properties.size());
    for (std::size_t index = 0; index < others.size(); ++index) {
        EXPECT_EQ(others[index].name, properties[index].name);
        EXPECT_EQ(others[index].unit, properties[index].unit);
    }
    EXPECT_EQ(other->agentName(), source->agentName());
}

TEST_P(ReadingSourceContract, ReadingsHaveAValueForEachPropertyAndNoNaN)
{
    const std::vector<Reading> readings = readTwice();
    EXPECT_FALSE(readings.empty());
    for (const Reading& reading : readings) {
        EXPECT_EQ(reading.values.size(), properties.size());
        for (const std::optional<double>& value : reading.values)
            EXPECT_FALSE(value && std::isnan(*value));
    }
}

TEST_P(ReadingSourceContract, TimesAreFiniteAndNeverFallAndNeverLieAhead)
{
    double last = -1e300;
    for (const Reading& reading : readTwice()) {
        EXPECT_TRUE(std::isfinite(reading.time));
        EXPECT_GE(reading.time, last);
        EXPECT_LE(reading.time, kNow + 1);
        last = reading.time;
    }
}

TEST_P(ReadingSourceContract, MayBeReadOnAnotherThread)
{
    std::vector<Reading> readings;
    std::thread([&] { readings = readTwice(); }).join();
    EXPECT_FALSE(readings.empty());
    for (const Reading& reading : readings)
        EXPECT_EQ(reading.values.size(), properties.size());
}

TEST_P(ReadingSourceContract, StopsOnceOrTwiceOrWithoutAStart)
{
    EXPECT_NO_THROW(source->stop());
    EXPECT_NO_THROW(source->stop());
    EXPECT_NO_THROW(GetParam().make()->stop());
}

std::vector<ContractCase> sources()
{
    std::vector<ContractCase> all = {
        {"MadeUp", [] { return std::make_unique<MadeUpSource>(); }},
        {"ComputerMadeUp", [] { return makeComputerSource(std::make_unique<MadeUpMachine>()); }},
    };
    for (const ReadingSourceKind& kind : readingSourceKinds())
        if (kind.needs.empty())
            all.push_back({std::string("Kind_") + kind.name, [kind] { return makeReadingSource(kind); }});
    return all;
}

INSTANTIATE_TEST_SUITE_P(Sources, ReadingSourceContract, testing::ValuesIn(sources()),
                         [](const auto& row) { return row.param.name; });

}  // namespace

}  // namespace plotix
