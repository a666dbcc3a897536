#include "hostapp/live/sources/computer/MachineReadings.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

using plotix::MachineReading;
using plotix::MachineReadings;
using plotix::MachineTexts;

constexpr auto kMemory = "MemTotal:       16000000 kB\n"
                         "MemFree:         1000000 kB\n"
                         "MemAvailable:   12000000 kB\n"
                         "Buffers:          200000 kB\n";

std::string processor(int user, int idle, int waiting = 0)
{
    return "cpu  " + std::to_string(user) + " 10 50 " + std::to_string(idle) + ' ' + std::to_string(waiting) +
           " 0 0 0 7 0\ncpu0 1 2 3 4 5 6 7 0 0 0\nintr 12345\n";
}

std::string disks(std::uint64_t read, std::uint64_t written, const std::string& more = {})
{
    return "   7       0 loop0 14 0 340 6 0 0 99999 0 0 12 6\n"
           " 259       0 nvme0n1 1000 5 " +
           std::to_string(read) + " 300 2000 9 " + std::to_string(written) +
           " 900 0 500 1200 0 0 0 0\n"
           " 259       1 nvme0n1p1 1000 5 77777 300 2000 9 88888 900 0 500 1200 0 0 0 0\n" +
           more;
}

std::string network(std::uint64_t received, std::uint64_t sent)
{
    return "Inter-|   Receive                                                |  Transmit\n"
           " face |bytes    packets errs drop fifo frame compressed multicast|bytes    packets errs\n"
           "    lo: 5555555   100    0    0    0     0          0         0  5555555   100    0\n"
           "  eth0:" +
           std::to_string(received) + "    3000    0    0    0     0          0         2 " + std::to_string(sent) +
           "    2000    0\n"
           "docker0: 123 4 0 0 0 0 0 0 456 7 0\n";
}

class MachineReadingsTest : public testing::Test {
protected:
    MachineReadingsTest()
    {
        texts.seconds = 1000;
        texts.load = "0.52 0.58 0.59 1/467 12345\n";
        texts.processor = processor(100, 800);
        texts.memory = kMemory;
        texts.disks = disks(2000, 4000);
        texts.network = network(1'000'000, 500'000);
    }

    void look() { last = readings.read(texts); }
    void lookAfter(double seconds)
    {
        texts.seconds += seconds;
        look();
    }
    std::optional<double> value(const char* name) const
    {
        for (const MachineReading& reading : last)
            if (reading.name == QLatin1String(name))
                return reading.value;
        ADD_FAILURE() << "there is no " << name;
        return std::nullopt;
    }
    static constexpr const char* kRates[] = {"Processor", "Disk Read", "Disk Write", "Network Receive", "Network Send"};
    void expectNoRates() const
    {
        for (const char* rate : kRates)
            EXPECT_EQ(value(rate), std::nullopt) << rate;
    }

    MachineTexts texts;
    MachineReadings readings;
    std::vector<MachineReading> last;
};

TEST_F(MachineReadingsTest, LoadAndMemoryAreThereAtOnce)
{
    look();
    EXPECT_EQ(value("Load 1 Minute"), 0.52);
    EXPECT_EQ(value("Load 5 Minutes"), 0.58);
    EXPECT_EQ(value("Load 15 Minutes"), 0.59);
    EXPECT_EQ(value("Memory"), 25);
    EXPECT_DOUBLE_EQ(*value("Memory Used"), 4.096);
}

TEST_F(MachineReadingsTest, TheFirstLookHasNoRates)
{
    look();
    expectNoRates();
}

TEST_F(MachineReadingsTest, RatesAreBetweenTwoLooks)
{
    look();
    texts.disks = disks(2000 + 4000, 4000 + 2000);
    texts.network = network(1'000'000 + 3'000'000, 500'000 + 1'000'000);
    lookAfter(2);
    EXPECT_DOUBLE_EQ(*value("Disk Read"), 4000 * 512 / 2 / 1e6);
    EXPECT_DOUBLE_EQ(*value("Disk Write"), 2000 * 512 / 2 / 1e6);
    EXPECT_DOUBLE_EQ(*value("Network Receive"), 1.5);
    EXPECT_DOUBLE_EQ(*value("Network Send"), 0.5);
}

TEST_F(MachineReadingsTest, TheProcessorIsBusyWhereItIsNeitherIdleNorWaiting)
{
    look();
    texts.processor = processor(130, 860, 10);
    lookAfter(1);
    EXPECT_DOUBLE_EQ(*value("Processor"), 30);
}

TEST_F(MachineReadingsTest, CountersThatFellGiveNoRate)
{
    look();
    texts.disks = disks(10, 5000);
    texts.network = network(2'000'000, 7);
    texts.processor = processor(0, 10);
    lookAfter(1);
    expectNoRates();
    texts.disks = disks(20, 5000);
    texts.network = network(3'000'000, 7);
    texts.processor = processor(50, 60);
    lookAfter(1);
    EXPECT_DOUBLE_EQ(*value("Disk Read"), 10 * 512 / 1e6);
    EXPECT_DOUBLE_EQ(*value("Network Receive"), 1);
    EXPECT_DOUBLE_EQ(*value("Processor"), 50);
}

TEST_F(MachineReadingsTest, ACounterThatWrapsIsNoGiganticRate)
{
    texts.network = network(std::numeric_limits<std::uint64_t>::max() - 5, 500'000);
    look();
    texts.network = network(5, 500'100);
    lookAfter(1);
    EXPECT_EQ(value("Network Receive"), std::nullopt);
    EXPECT_EQ(value("Network Send"), std::nullopt);
}

TEST_F(MachineReadingsTest, AfterASleepThereAreNoRates)
{
    look();
    texts.disks = disks(2001, 4001);
    lookAfter(3600);
    expectNoRates();
    lookAfter(1);
    EXPECT_EQ(value("Disk Read"), 0);
}

TEST_F(MachineReadingsTest, TwoLooksAtOneMomentHaveNoRates)
{
    look();
    lookAfter(0);
    expectNoRates();
}

TEST_F(MachineReadingsTest, ADiskThatIsPluggedInDoesNotBringItsPast)
{
    look();
    texts.disks = disks(2010, 4000, "   8      16 sdb 1 0 1000000 0 1 0 2000000 0 0 0 0\n");
    lookAfter(1);
    EXPECT_DOUBLE_EQ(*value("Disk Read"), 10 * 512 / 1e6);
    EXPECT_EQ(value("Disk Write"), 0);
}

TEST_F(MachineReadingsTest, MissingAndBrokenTextsLeaveTheirReadingsAbsent)
{
    texts = {};
    texts.memory = "MemTotal: many kB\nMemAvailable:";
    texts.processor = "cpu  1 2 x 4\n";
    texts.disks = "garbage\n\n 1 2 sda";
    texts.network = "eth0: 1 2\n:::\n";
    look();
    lookAfter(1);
    EXPECT_EQ(last.size(), 10U);
    for (const MachineReading& reading : last)
        EXPECT_EQ(reading.value, std::nullopt) << reading.name.toStdString();
}

TEST_F(MachineReadingsTest, TemperaturesAreThousandthsAndImpossibleOnesAbsent)
{
    texts.sensors = {{"Temperature A", "45250\n"}, {"Temperature B", "-128000\n"}, {"Temperature C", ""}};
    look();
    EXPECT_DOUBLE_EQ(*value("Temperature A"), 45.25);
    EXPECT_EQ(value("Temperature B"), std::nullopt);
    EXPECT_EQ(value("Temperature C"), std::nullopt);
}

TEST_F(MachineReadingsTest, ReadingsKeepTheirOrder)
{
    look();
    const std::vector<MachineReading> before = last;
    texts.memory.clear();
    lookAfter(1);
    ASSERT_EQ(last.size(), before.size());
    for (std::size_t i = 0; i < last.size(); ++i)
        EXPECT_EQ(last[i].name, before[i].name);
}

TEST(MachineCountersTest, OnlyWholeDisksCount)
{
    std::string text;
    for (const char* name : {"sda", "sda1", "vdb", "xvda", "xvda2", "nvme1n1", "nvme1n1p3", "mmcblk0", "mmcblk0p1",
                             "mmcblk0boot0", "dm-0", "md127", "zram0", "loop1", "sr0"})
        text += std::string(" 8 0 ") + name + " 1 2 3 4 5 6 7 8 9 10 11\n";
    std::string names;
    for (const auto& [name, counter] : plotix::diskCounters(text))
        names += name + ' ';
    EXPECT_EQ(names, "mmcblk0 nvme1n1 sda vdb xvda ");
}

TEST(MachineCountersTest, OnlyAdaptersThatLeadOutCount)
{
    std::string text;
    for (const char* name : {"lo", "lorawan0", "eth0", "wlp2s0", "veth12ab", "br-77", "docker0", "virbr0", "tun0"})
        text += std::string(name) + ": 1 0 0 0 0 0 0 0 2 0 0\n";
    std::string names;
    for (const auto& [name, counter] : plotix::networkCounters(text))
        names += name + ' ';
    EXPECT_EQ(names, "eth0 lorawan0 wlp2s0 ");
}

}  // namespace
