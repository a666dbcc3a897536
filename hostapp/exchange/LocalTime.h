#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <memory>
#include <optional>

/// Converts local times of one zone to UTC, row by row.
///
/// A local time that a clock change skips is read as if the clock had not been changed yet: 02:30 in the missing hour
/// means 03:30; whoever must not take it for that asks `wasSkipped`. A time that a clock change repeats means its first
/// occurrence, unless the row before is already later than that: then it means the second, so that a sorted file stays
/// sorted through the repeated hour. Remembers the current period between two clock changes, hence one thread at a
/// time.
namespace plotix {

class LocalTime {
public:
    /// An IANA name, an offset such as +02:00, or a clock's short name, which is that clock all the year as in headers
    /// and cells: CET is +01:00 in summer too. Empty: the user's zone. Throws ImportFailure for anything else.
    explicit LocalTime(const QString& zone);
    ~LocalTime();
    LocalTime(LocalTime&&) noexcept;
    LocalTime& operator=(LocalTime&&) noexcept;

    /// Both are seconds since 1970-01-01 00:00:00, by the local clock and in UTC. `previous` is the row before, in UTC.
    std::int64_t utcFromLocal(std::int64_t local, std::optional<double> previous = {});

    /// Whether no clock of the zone showed the local time converted last;
    bool wasSkipped() const { return m_wasSkipped; }
    /// then the offset before that change, such as "+01:00".
    QString offsetBeforeSkip() const;
    /// The zone as it was given, or the user's.
    const QString& name() const { return m_name; }

private:
    struct Zone;
    std::unique_ptr<Zone> m_zone;
    QString m_name;
    bool m_wasSkipped = false;
    std::int64_t m_beforeSkip = 0;        // seconds east of UTC
    std::int64_t m_begin = 0, m_end = 0;  // local times in [begin, end) have this one offset
    std::int64_t m_offset = 0;            // seconds east of UTC
};

}  // namespace plotix
