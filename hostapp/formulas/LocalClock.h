#pragma once

#include <QtCore/QTimeZone>

/// What the clock on the wall shows at many times, one after the other: the offset of the period between two clock
/// changes is remembered. One thread.
namespace plotix {

class LocalClock {
public:
    explicit LocalClock(const QTimeZone& zone) : m_zone(zone) {}

    /// Seconds east of UTC at this time.
    double offsetAt(double time);
    /// The local day, counted from 1970-01-01.
    double dayOf(double time);
    /// Its first moment, in seconds since 1970-01-01 UTC; a midnight that a clock change skips is the moment of it.
    double beginOf(double day);
    /// The same time of day so many days earlier.
    double daysEarlier(double time, double days);

private:
    /// The time at which the clock shows this.
    double timeAt(double local);

    QTimeZone m_zone;
    double m_begin = 0, m_end = 0, m_offset = 0;  // times in [begin, end) have this offset
};

}  // namespace plotix
