#pragma once

#include "base/ReportableError.h"
#include "records/clickhouse/ClickHouseRecordStore.h"
#include "tests/e2e/writer/WrittenValues.h"

#include <chrono>
#include <cstdio>
#include <thread>

/// What programs that write to a site on servers have in common: they are killed, and try until it can be done.
namespace plotix {

inline std::shared_ptr<RecordStore> recordsAt(const char* address)
{
    return std::make_shared<ClickHouseRecordStore>(
        std::make_shared<SiteOnServer>(ServerAddress::parsed(QString::fromLocal8Bit(address)), ServerCredentials(),
                                       [](RowId, RowId) { return true; }));
}

inline WrittenAgent agentNumbered(int number)
{
    return {number, 2 * number - 1};
}

/// Tries until it can be done.
template <class Work>
auto atLast(const Work& work)
{
    constexpr auto kPause = std::chrono::milliseconds(200);
    for (;;)
        try {
            return work();
        } catch (const ReportableError& error) {
            std::fprintf(stderr, "%s\n", error.what());
            std::this_thread::sleep_for(kPause);
        }
}

}  // namespace plotix
