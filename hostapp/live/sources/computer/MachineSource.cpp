#include "hostapp/live/sources/computer/MachineSource.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <ctime>
#include <set>
#include <utility>

namespace plotix {

namespace {

/// The kernel's files report a size of 0, so they are read to their end.
std::string contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

QString firstLineOf(const QString& path)
{
    return QString::fromStdString(contentsOf(path)).section(QLatin1Char('\n'), 0, 0).trimmed();
}

class SystemMachineSource : public MachineSource {
public:
    explicit SystemMachineSource(const QString& root) : m_root(root)
    {
        findChips();
        if (m_sensors.empty())
            findZones();
    }

    MachineTexts look() override
    {
        MachineTexts texts;
        timespec time{};
        clock_gettime(CLOCK_BOOTTIME, &time);
        texts.seconds = static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
        texts.load = contentsOf(m_root.filePath(QStringLiteral("proc/loadavg")));
        texts.processor = contentsOf(m_root.filePath(QStringLiteral("proc/stat")));
        texts.memory = contentsOf(m_root.filePath(QStringLiteral("proc/meminfo")));
        texts.disks = contentsOf(m_root.filePath(QStringLiteral("proc/diskstats")));
        texts.network = contentsOf(m_root.filePath(QStringLiteral("proc/net/dev")));
        for (const auto& [name, path] : m_sensors)
            texts.sensors.push_back({name, contentsOf(path)});
        return texts;
    }

private:
    /// Chips with sensors of their own: "coretemp Package id 0", "nvme Composite".
    void findChips()
    {
        const QDir chips(m_root.filePath(QStringLiteral("sys/class/hwmon")));
        for (const QString& chip : chips.entryList(QDir::AllDirs | QDir::NoDotAndDotDot, QDir::Name)) {
            const QDir folder(chips.filePath(chip));
            const QString chipName = firstLineOf(folder.filePath(QStringLiteral("name")));
            for (const QString& input : folder.entryList({QStringLiteral("temp*_input")}, QDir::Files, QDir::Name)) {
                QString label = firstLineOf(folder.filePath(input.chopped(5) + QStringLiteral("label")));
                if (label.isEmpty())
                    label = input.section(QLatin1Char('_'), 0, 0);
                addSensor(chipName + QLatin1Char(' ') + label, folder.filePath(input));
            }
        }
    }

    void findZones()
    {
        const QDir zones(m_root.filePath(QStringLiteral("sys/class/thermal")));
        for (const QString& zone : zones.entryList({QStringLiteral("thermal_zone*")}, QDir::AllDirs, QDir::Name)) {
            const QDir folder(zones.filePath(zone));
            if (folder.exists(QStringLiteral("temp")))
                addSensor(firstLineOf(folder.filePath(QStringLiteral("type"))),
                          folder.filePath(QStringLiteral("temp")));
        }
    }

    /// Sensors with the same name are numbered, in the order the kernel lists them.
    void addSensor(const QString& name, const QString& path)
    {
        const QString whole = QStringLiteral("Temperature %1").arg(name.simplified()).trimmed();
        QString unique = whole;
        for (int number = 2; !m_names.insert(unique).second; ++number)
            unique = QStringLiteral("%1 %2").arg(whole).arg(number);
        m_sensors.emplace_back(unique, path);
    }

    QDir m_root;
    std::set<QString> m_names;
    std::vector<std::pair<QString, QString>> m_sensors;  // name and file
};

}  // namespace

std::unique_ptr<MachineSource> makeSystemMachineSource(const QString& root)
{
    return std::make_unique<SystemMachineSource>(root);
}

}  // namespace plotix
