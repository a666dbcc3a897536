#pragma once

#include "records/clickhouse/AgentReading.h"
#include "records/clickhouse/RowBinary.h"
#include "tests/records/clickhouse/ClickHouseUnderTest.h"

#include <limits>

namespace plotix {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// What no other store has: tables that others write too, and a server that may be gone.
class RecordsOnServerTest : public RecordsFixture {
protected:
    RecordsOnServerTest() : site(m_store.site()), server(site->address(), {})
    {
        agent = m_store.addAgent();
        air = m_store.addProperty(agent);
        wind = m_store.addProperty(agent);
    }
    std::shared_ptr<RecordStore> opened() override { return m_store.opened(); }

    AgentReading::Rows rows() { return AgentReading(server, site->tables(), agent).rows(-kInfinity, kInfinity); }
    std::size_t chunks() { return stretchesOf(rows().chunks).size(); }
    /// So many records by one appender, a second apart.
    void append(RecordAppender& appender, double first, std::size_t records, std::size_t each)
    {
        for (std::size_t done = 0; done < records; done += each)
            appender.append(agent, ramp(air, first + static_cast<double>(done), each));
    }
    std::uint64_t countIn(const std::string& table)
    {
        const auto answer = server.ask("SELECT count() FROM " + table + " FORMAT RowBinary");
        return rowbinary::Reader(answer).number<std::uint64_t>();
    }

private:
    ClickHouseUnderTest m_store;

protected:
    const std::shared_ptr<SiteOnServer> site;
    ServerConnection server;
};

}  // namespace plotix
