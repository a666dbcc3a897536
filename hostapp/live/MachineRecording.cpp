#include "hostapp/live/MachineRecording.h"

#include "base/ReportableError.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteTransaction.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <limits>

namespace plotix {

namespace {

constexpr double kShortestSleep =
    10;                         // seconds; shorter gaps are a busy machine's, and their rates still mean something
constexpr int kPatience = 200;  // milliseconds for another writer; the next record comes soon and tries again

}  // namespace

MachineRecording::MachineRecording(const QString& site, std::unique_ptr<MachineSource> source, double interval)
    : m_site(QFileInfo(site).absoluteFilePath()),
      m_source(std::move(source)),
      m_readings(std::max(kShortestSleep, 5 * interval))
{
    makeProperties(m_site, m_readings.read(m_source->look()));
    openAppender();
    if (const std::optional<RecordExtent> before = recordsOfSite(m_site)->extent(m_agent))
        m_status.last = before->last;
}

void MachineRecording::makeProperties(const QString& site, const std::vector<MachineReading>& readings)
{
    SiteTransaction transaction(site);
    m_agent = transaction.findOrCreateAgent(QLatin1String(kMachineAgentName));
    for (const MachineReading& reading : readings) {
        m_names << reading.name;
        m_properties.push_back(transaction.findOrCreateProperty(m_agent, reading.name, reading.unit).id);
    }
    transaction.commit();
}

std::optional<double> MachineRecording::lastTime() const
{
    return m_waiting.empty() ? m_status.last : std::optional(m_waiting.back().time);
}

RecordingStatus MachineRecording::record(double now)
{
    const std::vector<MachineReading> readings = m_readings.read(m_source->look());
    const std::optional<double> last = lastTime();
    if (last && now <= *last) {
        storeWaiting();
        m_status.state = RecordingStatus::State::ClockSetBack;
        m_status.message =
            QStringLiteral("The clock stands before the last record: recording goes on after %1.")
                .arg(QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(*last * 1000)).toString(Qt::ISODate));
        return m_status;
    }
    Waiting fresh{now, std::vector<std::optional<double>>(m_properties.size())};
    for (const MachineReading& reading : readings) {
        // A sensor that was not there at the beginning has no property; one that went has no value.
        const qsizetype place = m_names.indexOf(reading.name);
        if (place >= 0)
            fresh.values[static_cast<std::size_t>(place)] = reading.value;
    }
    m_waiting.push_back(std::move(fresh));
    if (m_waiting.size() > kMostWaiting) {
        m_waiting.pop_front();
        ++m_status.lost;
    }
    return storeWaiting();
}

RecordingStatus MachineRecording::storeWaiting()
{
    m_status.state = RecordingStatus::State::Recording;
    m_status.message.clear();
    if (!m_waiting.empty()) {
        try {
            append();
            m_status.stored += m_waiting.size();
            m_status.last = m_waiting.back().time;
            m_waiting.clear();
        } catch (const ReportableError& error) {
            m_appender.reset();  // what stands in the way may be the connection itself
            m_status.state = RecordingStatus::State::WaitingForSite;
            m_status.message = error.message();
        }
    }
    m_status.waiting = m_waiting.size();
    return m_status;
}

void MachineRecording::append()
{
    // A file that was removed goes on taking records which nobody would ever find.
    if (!QFileInfo::exists(m_site))
        m_appender.reset();
    if (!m_appender)
        openAppender();
    m_appender->append(m_agent, waitingAsBlock());
}

void MachineRecording::openAppender()
{
    m_appender = recordsOfSite(m_site)->appender();
    m_appender->setPatience(kPatience);
}

RecordBlock MachineRecording::waitingAsBlock() const
{
    const std::size_t count = m_waiting.size();
    std::vector<double> times;
    for (const Waiting& record : m_waiting)
        times.push_back(record.time);
    RecordBlock block{SharedArray<double>::fromVector(std::move(times)), {}};
    for (std::size_t property = 0; property < m_properties.size(); ++property) {
        std::vector<double> values(count);
        std::vector<std::uint64_t> valid((count + 63) / 64, 0);
        for (std::size_t i = 0; i < count; ++i) {
            const std::optional<double>& value = m_waiting[i].values[property];
            values[i] = value.value_or(std::numeric_limits<double>::quiet_NaN());
            valid[i / 64] |= std::uint64_t{value.has_value()} << (i % 64);
        }
        block.columns.push_back({m_properties[property], SharedArray<double>::fromVector(std::move(values)),
                                 ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(valid)))});
    }
    return block;
}

}  // namespace plotix
