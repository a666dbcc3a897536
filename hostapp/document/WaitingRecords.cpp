#include "hostapp/document/WaitingRecords.h"

#include "base/ReportableError.h"
#include "hostapp/document/AgentLock.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/MemoryBudget.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteStore.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

namespace plotix {

namespace {

// Stored: never change.
constexpr auto kWaitingEnding = ".waiting.plotix";
constexpr RowId kWaitingAgent = 1;  // the only one of its file

constexpr std::uint64_t kUsualLargest = std::uint64_t{1} << 30;
constexpr std::size_t kMostInBatch = 5000, kMostValuesInBatch = 500'000;  // at once

/// What the names of all files of a desk begin with. The folder by its true name, as locks go by names.
QString baseOf(const QString& desk)
{
    const QFileInfo info(desk);
    const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath();
    return (folder.isEmpty() ? info.absolutePath() : folder) + QLatin1Char('/') + nameOfDesk(desk) + QLatin1Char(' ');
}

QString pathFor(const QString& desk, const QString& agentName)
{
    return baseOf(desk) + QString::fromLatin1(QUrl::toPercentEncoding(agentName, " ")) + QLatin1String(kWaitingEnding);
}

void removeFile(const QString& path)
{
    for (const char* part : {"-wal", "-shm", "-journal", ""})
        QFile::remove(path + QLatin1String(part));
}

/// Both the bytes of a file and its name; what is not there needs none.
void bringToDisk(const QString& path)
{
    const int file = ::open(path.toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return;
    const bool isDone = ::fsync(file) == 0;
    ::close(file);
    if (!isDone)
        throw ReportableError(QStringLiteral("“%1” cannot be written: is the disk full?").arg(path));
}

std::uint64_t largestFile()
{
    return sizeFromText(qEnvironmentVariable("PLOTIX_WAITING_LIMIT")).value_or(kUsualLargest);
}

/// Of records that were handed over: room for others.
qint64 freeBytesIn(const QString& path)
{
    if (!QFileInfo::exists(path))
        return 0;
    const Database database(path, siteSchema(), Database::Access::ReadOnly);
    Statement free(database, "PRAGMA freelist_count");
    return free.step() ? free.integer(0) * siteSchema().pageSize : 0;
}

/// What is in the file, by the numbers it has there; nothing: its making was interrupted.
std::optional<SiteStore::Agent> agentIn(Database& database)
{
    const std::vector<SiteStore::Agent> agents = SiteStore(database).agents();
    return agents.empty() ? std::nullopt : std::optional(agents.front());
}

}  // namespace

/// While something waits. Numbers are the file's own.
struct WaitingRecords::File {
    std::shared_ptr<RecordStore> records;
    std::unique_ptr<RecordAppender> appender;
    RecordedAgent made;  // what `numbers` are of
    FoundAgent numbers;  // of the agent that records now; none before the first record
    RecordedAgent all;   // everything that is in the file
    std::vector<RowId> allNumbers;
    std::size_t count = 0;
    std::optional<RecordExtent> extent;

    void learnProperties(const QString& path)
    {
        Database database(path, siteSchema(), Database::Access::ReadOnly);
        all = {};
        allNumbers.clear();
        if (const auto agent = agentIn(database))
            all.name = agent->name;
        for (const SiteProperty::Description& each : SiteStore(database).properties(kWaitingAgent)) {
            all.properties.push_back({each.name, each.archivedUnit, each.type});
            allNumbers.push_back(each.id);
        }
    }
    void recount()
    {
        count = records->overview(kWaitingAgent, {}).records();
        extent = records->extent(kWaitingAgent);
    }
};

WaitingRecords::WaitingRecords(const QString& desk, const QString& agentName)
    : m_path(pathFor(desk, agentName)), m_lock(std::make_unique<AgentLock>(m_path, kWaitingAgent, agentName))
{
    if (!m_lock->isHeld())
        throw ReportableError(
            QStringLiteral("“%1” cannot be locked: is the disk full, or the folder not yours?").arg(m_path));
    if (QFileInfo::exists(m_path))
        open();
}

WaitingRecords::~WaitingRecords() = default;

/// One without records is left by a program that was ended just then.
void WaitingRecords::open()
{
    m_file = std::make_unique<File>();
    m_file->learnProperties(m_path);
    m_file->records = recordsOfSite(m_path);
    m_file->recount();
    if (m_file->count == 0)
        discard();
}

/// Under another name first: whoever sees the file sees all of it.
void WaitingRecords::make(const RecordedAgent& agent)
{
    const QString unfinished = m_path + QStringLiteral(".new");
    removeFile(unfinished);
    removeFile(m_path);
    createSiteFile(unfinished, agent.name);
    bringToDisk(unfinished);
    if (!QFile::rename(unfinished, m_path))
        throw ReportableError(QStringLiteral("“%1” cannot be made: check the folder's permissions.").arg(m_path));
    m_file = std::make_unique<File>();
}

void WaitingRecords::requireRoom() const
{
    const qint64 size = QFileInfo(m_path).size() + QFileInfo(m_path + QStringLiteral("-wal")).size();
    if (static_cast<std::uint64_t>(size) >= largestFile() &&
        size - freeBytesIn(m_path) >= static_cast<qint64>(largestFile()))
        throw ReportableError(
            QStringLiteral("“%1” is as large as it may be: start the server, or set PLOTIX_WAITING_LIMIT to more.")
                .arg(m_path));
}

void WaitingRecords::keep(const RecordedAgent& agent, const RecordBlock& byPlace)
{
    const std::lock_guard lock(m_mutex);
    // Somebody may have taken it away by hand.
    if (m_file && !QFileInfo::exists(m_path))
        m_file.reset();
    requireRoom();
    if (!m_file)
        make(agent);
    try {
        if (m_file->numbers.agent == 0 || m_file->made != agent) {
            m_file->numbers = findOrMake(m_path, agent);
            m_file->made = agent;
            m_file->learnProperties(m_path);
        }
        if (!m_file->records)
            m_file->records = recordsOfSite(m_path);
        if (!m_file->appender)
            m_file->appender = m_file->records->appender();
        m_file->appender->append(kWaitingAgent, blockFor(m_file->numbers, byPlace));
        bringToDisk(m_path + QStringLiteral("-wal"));
        bringToDisk(QFileInfo(m_path).absolutePath());
    } catch (...) {
        m_file->appender.reset();
        if (m_file->count == 0)
            discard();
        throw;
    }
    const std::size_t records = byPlace.times.size();
    m_file->count += records;
    if (records > 0)
        m_file->extent = united(m_file->extent, RecordExtent{byPlace.times[0], byPlace.times[records - 1]});
}

std::optional<WaitingRecords::Batch> WaitingRecords::oldest()
{
    const std::lock_guard lock(m_mutex);
    if (!m_file || m_file->count == 0)
        return std::nullopt;
    RecordStore& records = *m_file->records;
    const RecordOverview overview = records.overview(kWaitingAgent, {});
    if (overview.runs.empty())
        return std::nullopt;
    const std::size_t most = std::clamp<std::size_t>(
        kMostValuesInBatch / std::max<std::size_t>(m_file->allNumbers.size(), 1), 1, kMostInBatch);
    const std::optional<RecordBlock> run = records.read(kWaitingAgent, {}, {}, overview.runs.front().t1);
    const std::size_t count = std::min(most, run->times.size());
    Batch batch{m_file->all, {}};
    batch.byPlace = records.read(kWaitingAgent, m_file->allNumbers, {}, run->times[count - 1]).value_or(RecordBlock());
    for (std::size_t place = 0; place < batch.byPlace.columns.size(); ++place)
        batch.byPlace.columns[place].property = numberOfPlace(place);
    return batch;
}

void WaitingRecords::remove(const Batch& batch)
{
    const std::lock_guard lock(m_mutex);
    const std::size_t records = batch.byPlace.times.size();
    if (!m_file || records == 0)
        return;
    if (records >= m_file->count)
        return discard();
    const std::unique_ptr<RecordTransaction> transaction = m_file->records->begin();
    transaction->remove(kWaitingAgent, m_file->allNumbers, {}, batch.byPlace.times[records - 1]);
    transaction->commit();
    m_file->recount();
    if (m_file->count == 0)
        discard();
}

void WaitingRecords::discard()
{
    m_file.reset();  // closed, so that its log is gone
    removeFile(m_path);
}

std::size_t WaitingRecords::count() const
{
    const std::lock_guard lock(m_mutex);
    return m_file ? m_file->count : 0;
}

std::optional<RecordExtent> WaitingRecords::extent() const
{
    const std::lock_guard lock(m_mutex);
    return m_file ? m_file->extent : std::nullopt;
}

std::vector<WaitingFile> waitingBeside(const QString& desk)
{
    const QString base = baseOf(desk);
    std::vector<WaitingFile> found;
    const QFileInfoList files = QFileInfo(base).dir().entryInfoList(
        {QStringLiteral("*%1").arg(QLatin1String(kWaitingEnding))}, QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        const QString path = file.absoluteFilePath();
        if (!path.startsWith(base))
            continue;
        WaitingFile waiting{path, {}};
        try {
            {
                Database database(path, siteSchema(), Database::Access::ReadOnly);
                const auto agent = agentIn(database);
                waiting.agentName = agent ? agent->name : SiteStore(database).site().name;
            }
            const std::shared_ptr<RecordStore> records = recordsOfSite(path);
            waiting.records = records->overview(kWaitingAgent, {}).records();
            waiting.extent = records->extent(kWaitingAgent);
        } catch (const ReportableError& error) {
            if (!QFileInfo::exists(path))  // its records were handed over just now
                continue;
            waiting.problem = error.message();
        }
        found.push_back(std::move(waiting));
    }
    return found;
}

}  // namespace plotix
