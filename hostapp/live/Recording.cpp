#include "hostapp/live/Recording.h"

#include "base/Date.h"
#include "base/ReportableError.h"
#include "hostapp/document/AgentLock.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/live/Forwarding.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr int kPatience = 200;  // milliseconds for another writer; the next record comes soon and tries again

}  // namespace

Recording::Recording(const QString& site, std::unique_ptr<ReadingSource> source, double interval)
    : m_site(QFileInfo(site).absoluteFilePath()), m_source(std::move(source)), m_agentName(m_source->agentName())
{
    m_recorded.name = m_agentName;
    for (const SourceProperty& property : m_source->start(interval)) {
        m_names << property.name;
        m_recorded.properties.push_back({property.name, property.unit, property.type});
    }
    if (const std::optional<QString> address = addressOfDeskFile(m_site))
        beginOnServer(*address);
    else
        beginInFile();
}

Recording::~Recording()
{
    m_source->stop();
}

void Recording::beginInFile()
{
    m_found = findOrMake(m_site, m_recorded);
    lockAgent();
    m_records = recordsOfSite(m_site);
    openAppender();
    askForLast();
}

/// A server that is away is no reason not to begin; one that refuses is.
void Recording::beginOnServer(const QString& address)
{
    m_records = recordsOfSite(m_site);
    bool isThere = true;
    try {
        storeServer(address)->changeMark();  // does not wait long for one that stands still
        m_found = findOrMake(m_site, m_recorded);
        lockAgent();
        askForLast();
    } catch (const ServerUnreachable&) {
        isThere = false;
        m_found.agent = knownAgent(m_site, m_agentName);
        lockAgent();
    }
    m_forwarding = std::make_unique<Forwarding>(m_site, m_recorded, isThere ? std::optional(m_found) : std::nullopt);
    m_status.file = m_forwarding->path();
    takeOverState();  // what waits since before
}

/// So that nobody deletes it meanwhile.
void Recording::lockAgent()
{
    if (m_found.agent != 0 && !m_lock)
        m_lock = std::make_unique<AgentLock>(m_site, m_found.agent, m_agentName);
}

void Recording::askForLast()
{
    const std::optional<RecordExtent> before = m_records->extent(m_found.agent);
    m_status.last = before ? std::optional(before->last) : std::nullopt;
}

/// Where the last record is, as a command takes it.
QString Recording::placeOfLast() const
{
    const bool isOnDisk = m_status.lastKept && m_status.lastKept >= m_status.last;
    const QString place = isOnDisk ? m_status.file : addressOfDeskFile(m_site).value_or(QFileInfo(m_site).fileName());
    return place.contains(QLatin1Char(' ')) ? QStringLiteral("\"%1\"").arg(place) : place;
}

/// The record that lies ahead may be the wrong one: a clock that once stood wrong.
QString Recording::aheadMessage(double last, double now) const
{
    const auto iso = [](double seconds) {
        return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds * 1000), Qt::UTC).toString(Qt::ISODate);
    };
    return QStringLiteral("The last record lies ahead of the clock: recording goes on after %1. If that time is wrong, "
                          "this takes it out: plotix edit %2 --agent \"%3\" --remove --from %4")
        .arg(iso(last), placeOfLast(), m_agentName, iso(std::ceil(now)));
}

std::optional<double> Recording::lastTime() const
{
    if (!m_waiting.empty())
        return m_waiting.back().time;
    return m_status.lastKept ? std::max(m_status.lastKept, m_status.last) : m_status.last;
}

RecordingStatus Recording::record(double now)
{
    if (isOver())
        return m_status;
    std::vector<Reading> readings;
    QString sourceProblem;
    try {
        // Somebody may have taken out what lies ahead.
        if (m_status.state == RecordingStatus::State::ClockSetBack && m_waiting.empty() && m_status.onDisk == 0)
            askForLast();
    } catch (const ReportableError&) {  // it is asked for again
    }
    try {
        readings = m_source->read(now);
    } catch (const ReportableError& error) {
        sourceProblem = error.message();
    }
    const std::optional<double> last = lastTime();
    const auto isLate = [&last](const Reading& reading) { return last && reading.time <= *last; };
    const bool clockWasSetBack = !readings.empty() && std::all_of(readings.begin(), readings.end(), isLate);
    takeIn(std::move(readings));
    m_status.state = RecordingStatus::State::Recording;
    m_status.message.clear();
    storeWaiting();
    if (isOver())
        return m_status;
    if (!sourceProblem.isEmpty() && m_status.state == RecordingStatus::State::Recording) {
        m_status.state = RecordingStatus::State::WaitingForSource;
        m_status.message = sourceProblem;
    } else if (clockWasSetBack) {
        m_status.state = RecordingStatus::State::ClockSetBack;
        m_status.message = aheadMessage(*last, now);
    }
    return m_status;
}

void Recording::takeIn(std::vector<Reading> readings)
{
    for (Reading& reading : readings) {
        const std::optional<double> last = lastTime();
        if (last && reading.time <= *last)
            continue;
        m_waiting.push_back(std::move(reading));
        if (m_waiting.size() > kMostWaiting) {
            m_waiting.pop_front();
            ++m_status.lost;
        }
    }
}

RecordingStatus Recording::watch()
{
    if (isOver())
        return m_status;
    if (m_forwarding) {
        takeOverState();
        return m_status;
    }
    try {
        m_records->requireInPlace();
    } catch (const FileReplaced&) {
        tryToStore();  // also nothing: the appender knows where the records are now
    }
    return m_status;
}

RecordingStatus Recording::storeWaiting()
{
    if (isOver())
        return m_status;
    if (!m_waiting.empty()) {
        m_status.state = RecordingStatus::State::Recording;
        m_status.message.clear();
        tryToStore();
    }
    m_status.waiting = m_waiting.size();
    if (m_forwarding)
        takeOverState();
    return m_status;
}

RecordingStatus Recording::finish()
{
    storeWaiting();
    if (m_forwarding)
        m_forwarding->finish();
    return storeWaiting();
}

void Recording::tryToStore()
{
    try {
        append();
        if (!m_forwarding) {
            m_status.stored += m_waiting.size();
            m_status.last = m_waiting.empty() ? m_status.last : m_waiting.back().time;
        }
        m_waiting.clear();
    } catch (const FileReplaced& replaced) {
        m_appender.reset();
        m_status.state = RecordingStatus::State::SiteReplaced;
        m_status.message = replaced.message();
    } catch (const ReportableError& error) {
        // The connection itself may be the cause. Without the file it is the only way to what was stored.
        if (QFileInfo::exists(m_site))
            m_appender.reset();
        m_status.state = RecordingStatus::State::WaitingForSite;
        m_status.message = error.message();
    }
}

void Recording::append()
{
    if (m_forwarding)
        return m_forwarding->store(waitingByPlace());
    if (!m_appender)
        openAppender();
    m_appender->append(m_found.agent, blockFor(m_found, waitingByPlace()));
}

/// What became of the records meanwhile, on another thread.
void Recording::takeOverState()
{
    const Forwarding::State now = m_forwarding->state();
    m_status.stored = now.stored;
    m_status.others = now.others;
    m_status.onDisk = now.onDisk;
    m_status.onDiskSince = now.extent ? std::optional(now.extent->first) : std::nullopt;
    m_status.lastKept = now.extent ? std::optional(now.extent->last) : std::nullopt;
    if (now.last)
        m_status.last = std::max(m_status.last, now.last);
    if (now.found && !m_lock) {
        m_found = *now.found;
        try {
            lockAgent();
        } catch (const AgentIsRecorded&) {  // somebody changes it just now: the next time
        }
    }
    using State = RecordingStatus::State;
    if (m_status.state == State::KeptBeside) {
        m_status.state = State::Recording;
        m_status.message.clear();
    }
    if (m_status.state == State::Recording && now.onDisk > 0) {
        m_status.state = State::KeptBeside;
        m_status.message = now.problem.isEmpty()
                               ? QStringLiteral("The server answers: what waited on this disk is being handed over.")
                               : QStringLiteral("%1 Records are kept on this disk until then.").arg(now.problem);
    }
}

void Recording::openAppender()
{
    m_appender = m_records->appender();
    m_appender->setPatience(kPatience);
    m_appender->noteAmendments([] { return currentDate().seconds; });
}

RecordBlock Recording::waitingByPlace() const
{
    const std::size_t count = m_waiting.size();
    std::vector<double> times;
    for (const Reading& record : m_waiting)
        times.push_back(record.time);
    RecordBlock block{SharedArray<double>::fromVector(std::move(times)), {}};
    for (std::size_t property = 0; property < m_recorded.properties.size(); ++property) {
        std::vector<double> values(count);
        std::vector<std::uint64_t> valid((count + 63) / 64, 0);
        for (std::size_t i = 0; i < count; ++i) {
            const std::optional<double>& value = m_waiting[i].values[property];
            values[i] = value.value_or(std::numeric_limits<double>::quiet_NaN());
            valid[i / 64] |= std::uint64_t{value.has_value()} << (i % 64);
        }
        block.columns.push_back({numberOfPlace(property), SharedArray<double>::fromVector(std::move(values)),
                                 ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(valid)))});
    }
    return block;
}

}  // namespace plotix
