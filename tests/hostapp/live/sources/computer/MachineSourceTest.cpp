#include "hostapp/live/sources/computer/MachineSource.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class SystemMachineSourceTest : public testing::Test {
protected:
    void write(const QString& name, const QByteArray& text)
    {
        ASSERT_TRUE(QDir(root.path()).mkpath(QFileInfo(name).path()));
        QFile file(root.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    plotix::MachineTexts look() { return plotix::makeSystemMachineSource(root.path())->look(); }

    QTemporaryDir root;
};

TEST_F(SystemMachineSourceTest, ReadsTheKernelsFiles)
{
    write("proc/loadavg", "0.1 0.2 0.3 1/2 3\n");
    write("proc/net/dev", "eth0: 1\n");
    const plotix::MachineTexts texts = look();
    EXPECT_EQ(texts.load, "0.1 0.2 0.3 1/2 3\n");
    EXPECT_EQ(texts.network, "eth0: 1\n");
    EXPECT_EQ(texts.disks, "");
    EXPECT_GT(texts.seconds, 0);
}

TEST_F(SystemMachineSourceTest, SensorsAreNamedByChipAndLabelAndNumberedWhereTheyAreEqual)
{
    for (const char* chip : {"hwmon0", "hwmon1"}) {
        const QString folder = QStringLiteral("sys/class/hwmon/%1/").arg(QLatin1String(chip));
        write(folder + "name", "nvme\n");
        write(folder + "temp1_input", "41000\n");
        write(folder + "temp1_label", "Composite\n");
        write(folder + "temp2_input", "42000\n");
    }
    QStringList names;
    for (const auto& sensor : look().sensors)
        names << sensor.name;
    EXPECT_EQ(names, (QStringList{"Temperature nvme Composite", "Temperature nvme temp2",
                                  "Temperature nvme Composite 2", "Temperature nvme temp2 2"}));
}

TEST_F(SystemMachineSourceTest, WithoutChipsTheThermalZonesCount)
{
    write("sys/class/thermal/thermal_zone0/type", "x86_pkg_temp\n");
    write("sys/class/thermal/thermal_zone0/temp", "50000\n");
    const plotix::MachineTexts texts = look();
    ASSERT_EQ(texts.sensors.size(), 1U);
    EXPECT_EQ(texts.sensors[0].name, "Temperature x86_pkg_temp");
    EXPECT_EQ(texts.sensors[0].value, "50000\n");
}

}  // namespace
