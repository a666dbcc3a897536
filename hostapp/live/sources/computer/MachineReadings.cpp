#include "hostapp/live/sources/computer/MachineReadings.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace plotix {

namespace {

constexpr double kBytesPerSector = 512;
constexpr double kMega = 1e6;
constexpr double kKibiPerGiga = 1e9 / 1024;

std::vector<std::string_view> split(std::string_view text, std::string_view separators)
{
    std::vector<std::string_view> parts;
    for (std::size_t first = 0; first < text.size();) {
        const std::size_t begin = text.find_first_not_of(separators, first);
        if (begin == std::string_view::npos)
            break;
        const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        first = end;
    }
    return parts;
}

template <class Number>
std::optional<Number> numberFrom(std::string_view text)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

bool isDigits(std::string_view text)
{
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char letter) { return letter >= '0' && letter <= '9'; });
}

/// "sda", "vdb", "xvda", "nvme0n1", "mmcblk0"; neither "sda1" nor "nvme0n1p2" nor "dm-0" nor "loop3".
bool isWholeDisk(std::string_view name)
{
    for (const std::string_view prefix : {"sd", "hd", "vd", "xvd"})
        if (name.starts_with(prefix) && name.size() > prefix.size())
            return std::all_of(name.begin(), name.end(), [](char letter) { return letter >= 'a' && letter <= 'z'; });
    if (name.starts_with("mmcblk"))
        return isDigits(name.substr(6));
    const std::size_t space = name.find('n', 4);
    return name.starts_with("nvme") && space != std::string_view::npos && isDigits(name.substr(4, space - 4)) &&
           isDigits(name.substr(space + 1));
}

bool leadsOut(std::string_view adapter)
{
    constexpr std::array<std::string_view, 9> kInside = {"lo",    "veth", "br-", "docker", "virbr",
                                                         "dummy", "tun",  "tap", "cni"};
    return std::none_of(kInside.begin(), kInside.end(), [adapter](std::string_view prefix) {
        return prefix == "lo" ? adapter == prefix : adapter.starts_with(prefix);
    });
}

std::optional<double> kibibytes(std::string_view text, std::string_view name)
{
    for (const std::string_view line : split(text, "\n")) {
        const auto words = split(line, " :");
        if (words.size() >= 2 && words[0] == name)
            return numberFrom<double>(words[1]);
    }
    return std::nullopt;
}

struct Rates {
    std::optional<double> in, out;  ///< counts a second
};

/// Over the devices in both snapshots: one that was just plugged in has counted before.
Rates ratesBetween(const MachineCounters& before, const MachineCounters& now, double seconds)
{
    std::uint64_t in = 0, out = 0;
    bool known = false;
    for (const auto& [name, counter] : now) {
        const auto old = before.find(name);
        if (old == before.end())
            continue;
        if (counter.in < old->second.in || counter.out < old->second.out)
            return {};
        known = true;
        in += counter.in - old->second.in;
        out += counter.out - old->second.out;
    }
    if (!known)
        return {};
    return {static_cast<double>(in) / seconds, static_cast<double>(out) / seconds};
}

std::optional<double> scaled(const std::optional<double>& value, double factor)
{
    return value ? std::optional(*value * factor) : std::nullopt;
}

void addLoad(std::vector<MachineReading>& readings, std::string_view text)
{
    const auto words = split(text, " \n");
    const char* names[] = {"Load 1 Minute", "Load 5 Minutes", "Load 15 Minutes"};
    for (std::size_t i = 0; i < std::size(names); ++i)
        readings.push_back(
            {QLatin1String(names[i]), QString(), i < words.size() ? numberFrom<double>(words[i]) : std::nullopt});
}

void addMemory(std::vector<MachineReading>& readings, std::string_view text)
{
    const std::optional<double> total = kibibytes(text, "MemTotal");
    const std::optional<double> available = kibibytes(text, "MemAvailable");
    const bool known = total && available && *total > 0;
    const double used = known ? *total - *available : 0;
    readings.push_back(
        {QStringLiteral("Memory"), QStringLiteral("%"), known ? std::optional(used / *total * 100) : std::nullopt});
    readings.push_back({QStringLiteral("Memory Used"), QStringLiteral("GB"),
                        known ? std::optional(used / kKibiPerGiga) : std::nullopt});
}

void addSensors(std::vector<MachineReading>& readings, const std::vector<MachineTexts::Sensor>& sensors)
{
    for (const MachineTexts::Sensor& sensor : sensors) {
        const auto words = split(sensor.value, " \n");
        const std::optional<double> thousandths = words.empty() ? std::nullopt : numberFrom<double>(words[0]);
        // A sensor that is not connected says −128 °C, or more than any chip survives.
        const bool possible = thousandths && *thousandths > -100'000 && *thousandths < 200'000;
        readings.push_back({sensor.name, QStringLiteral("°C"), possible ? scaled(thousandths, 1e-3) : std::nullopt});
    }
}

}  // namespace

MachineCounters diskCounters(std::string_view text)
{
    constexpr std::size_t kName = 2, kSectorsRead = 5, kSectorsWritten = 9;
    MachineCounters counters;
    for (const std::string_view line : split(text, "\n")) {
        const auto words = split(line, " ");
        if (words.size() <= kSectorsWritten || !isWholeDisk(words[kName]))
            continue;
        const auto in = numberFrom<std::uint64_t>(words[kSectorsRead]);
        const auto out = numberFrom<std::uint64_t>(words[kSectorsWritten]);
        if (in && out)
            counters[std::string(words[kName])] = {*in, *out};
    }
    return counters;
}

MachineCounters networkCounters(std::string_view text)
{
    constexpr std::size_t kReceived = 0, kSent = 8;
    MachineCounters counters;
    for (const std::string_view line : split(text, "\n")) {
        const std::size_t colon = line.find(':');  // the number may stand right behind it
        if (colon == std::string_view::npos)
            continue;
        const auto names = split(line.substr(0, colon), " ");
        const auto words = split(line.substr(colon + 1), " ");
        if (names.size() != 1 || words.size() <= kSent || !leadsOut(names[0]))
            continue;
        const auto in = numberFrom<std::uint64_t>(words[kReceived]);
        const auto out = numberFrom<std::uint64_t>(words[kSent]);
        if (in && out)
            counters[std::string(names[0])] = {*in, *out};
    }
    return counters;
}

std::optional<MachineReadings::Processor> MachineReadings::processorOf(std::string_view text)
{
    constexpr std::size_t kIdle = 4, kWaiting = 5, kStolen = 8;
    const auto words = split(text.substr(0, text.find('\n')), " ");
    if (words.size() <= kIdle || words[0] != "cpu")
        return std::nullopt;
    Processor processor;
    // The guests' time, in the columns after the stolen time, is already part of the user's.
    for (std::size_t i = 1; i < words.size() && i <= kStolen; ++i) {
        const auto ticks = numberFrom<std::uint64_t>(words[i]);
        if (!ticks)
            return std::nullopt;
        processor.total += *ticks;
        if (i != kIdle && i != kWaiting)
            processor.busy += *ticks;
    }
    return processor;
}

std::vector<MachineReading> MachineReadings::read(const MachineTexts& texts)
{
    const Counted now{texts.seconds, processorOf(texts.processor), diskCounters(texts.disks),
                      networkCounters(texts.network)};
    const double gap = m_before ? now.seconds - m_before->seconds : 0;
    const bool comparable = gap > 0 && gap <= m_longestGap;
    std::optional<double> busy;
    if (comparable && now.processor && m_before->processor && now.processor->total > m_before->processor->total &&
        now.processor->busy >= m_before->processor->busy) {
        const auto total = static_cast<double>(now.processor->total - m_before->processor->total);
        busy = std::min(static_cast<double>(now.processor->busy - m_before->processor->busy) / total * 100, 100.0);
    }
    const Rates disks = comparable ? ratesBetween(m_before->disks, now.disks, gap) : Rates{};
    const Rates network = comparable ? ratesBetween(m_before->network, now.network, gap) : Rates{};
    m_before = now;

    const QString rate = QStringLiteral("MB/s");
    std::vector<MachineReading> readings{{QStringLiteral("Processor"), QStringLiteral("%"), busy}};
    addMemory(readings, texts.memory);
    addLoad(readings, texts.load);
    readings.push_back({QStringLiteral("Disk Read"), rate, scaled(disks.in, kBytesPerSector / kMega)});
    readings.push_back({QStringLiteral("Disk Write"), rate, scaled(disks.out, kBytesPerSector / kMega)});
    readings.push_back({QStringLiteral("Network Receive"), rate, scaled(network.in, 1 / kMega)});
    readings.push_back({QStringLiteral("Network Send"), rate, scaled(network.out, 1 / kMega)});
    addSensors(readings, texts.sensors);
    return readings;
}

}  // namespace plotix
