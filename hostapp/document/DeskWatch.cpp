#include "hostapp/document/DeskWatch.h"

#include "base/Interruption.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/HandingOver.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteStore.h"

#include <chrono>

namespace plotix {

namespace {

constexpr auto kLookEvery = std::chrono::seconds(1);
constexpr auto kHandOverEvery = std::chrono::seconds(10);
constexpr auto kMarkSetting = "serverMark";  // stored: never change

}  // namespace

DeskWatch::DeskWatch(const QString& desk, const QString& address)
    : m_desk(desk), m_address(address), m_thread([this] { run(); })
{
}

DeskWatch::~DeskWatch()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void DeskWatch::run()
{
    const Interruption whenItEnds(m_ends);
    std::unique_lock lock(m_mutex);
    while (!m_changed.wait_for(lock, kLookEvery, [this] { return m_ends.load(); })) {
        lock.unlock();
        try {
            look();
            handOver();
        } catch (const std::exception&) {  // whoever reads records says what is wrong
        }
        lock.lock();
    }
}

/// A user who may only look keeps it for one who may store.
void DeskWatch::handOver()
{
    const auto now = std::chrono::steady_clock::now();
    if (now < m_handAgain)
        return;
    m_handAgain = now + kHandOverEvery;
    handOverLeft(m_desk, [this](double) { return !m_ends; });
}

void DeskWatch::look() const
{
    const QByteArray mark = storeServer(m_address)->changeMark();
    Database database(m_desk, siteSchema(), Database::Access::ReadWrite);
    SiteStore tables(database);
    if (tables.setting(QLatin1String(kMarkSetting)) == mark)
        return;
    bringUpToDate(m_desk, m_address);
    inTransaction(database, [&] { tables.setSetting(QLatin1String(kMarkSetting), mark); });
}

}  // namespace plotix
