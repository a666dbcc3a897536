#include "hostapp/live/sources/computer/ComputerSource.h"

#include "tests/hostapp/live/sources/computer/MadeUpMachine.h"

#include <gtest/gtest.h>

namespace plotix {

namespace {

class ComputerSourceTest : public testing::Test {
protected:
    ComputerSourceTest()
    {
        auto made = std::make_unique<MadeUpMachine>();
        machine = made.get();
        source = makeComputerSource(std::move(made));
        properties = source->start(1);
    }

    std::optional<double> value(const char* name)
    {
        const std::vector<Reading> readings = source->read(100);
        for (std::size_t index = 0; index < properties.size(); ++index)
            if (properties[index].name == QLatin1String(name))
                return readings.front().values[index];
        ADD_FAILURE() << "there is no " << name;
        return {};
    }

    MadeUpMachine* machine = nullptr;
    std::unique_ptr<ReadingSource> source;
    std::vector<SourceProperty> properties;
};

TEST_F(ComputerSourceTest, MeasuresThisComputer)
{
    EXPECT_EQ(source->agentName(), "This Computer");
    ASSERT_EQ(properties.size(), 11U);
    EXPECT_EQ(properties.front().name, "Processor");
    EXPECT_EQ(properties.back().unit, "°C");
}

TEST_F(ComputerSourceTest, LooksOnceAReadingAtTheTimeItIsAskedFor)
{
    EXPECT_EQ(source->read(100).front().time, 100);
    EXPECT_EQ(value("Load 1 Minute"), 3);  // the machine was asked first for the properties
}

TEST_F(ComputerSourceTest, ASensorThatGoesHasNoValueMeanwhile)
{
    machine->sensorIsThere = false;
    EXPECT_EQ(value("Temperature Core"), std::nullopt);
    machine->sensorIsThere = true;
    EXPECT_EQ(value("Temperature Core"), 40);
}

TEST_F(ComputerSourceTest, ASensorThatComesLaterHasNoProperty)
{
    machine->sensorIsThere = false;
    properties = source->start(1);
    machine->sensorIsThere = true;
    EXPECT_EQ(properties.size(), 10U);
    EXPECT_EQ(source->read(100).front().values.size(), 10U);
}

}  // namespace

}  // namespace plotix
