#pragma once

#include "hostapp/exchange/Export.h"

#include <cstdint>
#include <string>

/// Moments as the clock of an export has them. Remembers the present quarter of an hour, hence one thread at a time.
namespace plotix {

class ExportClock {
public:
    /// `zone`: of local times; an invalid one is the user's.
    explicit ExportClock(ExportForm::Clock clock, const QTimeZone& zone = {}) : m_clock(clock), m_zone(zone) {}

    /// Seconds east of UTC at this moment; 0 for one outside all calendars.
    int offset(double seconds);

    /// ISO 8601 with as many decimals as the double has: "2015-02-02T14:19:00.25Z", "2015-02-02T15:19:00.25+01:00".
    /// Requires: hasCalendarText(seconds).
    std::string text(double seconds);

    /// What to call the times: "time (UTC)", "time (Europe/Berlin)".
    std::string name() const;

private:
    ExportForm::Clock m_clock;
    QTimeZone m_zone;
    std::int64_t m_quarter = 0;  // of an hour since 1970 UTC
    int m_offset = 0;
    bool m_isKnown = false;
};

/// The name as it is written into a cell; a guarded one that begins like a formula gets an apostrophe before it.
QString cellName(const QString& name, bool guarded);

}  // namespace plotix
