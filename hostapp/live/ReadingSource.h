#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <optional>
#include <vector>

/// What a live source must give so that it can be recorded: its properties, and readings of them as time passes.
///
/// A recording *owns* the source and calls `start` once, `read` again and again, and `stop` once at the end: from one
/// thread at a time, which need not be the one that made it. A source that must listen does so on a thread of its own
/// and keeps what it received until the next `read`. Settings such as an address are given when it is made (see
/// `live/sources/`).
namespace plotix {

/// Name and unit are those of a property in the site. Stored: never change.
struct SourceProperty {
    QString name;            ///< unique among the source's, also as a key
    QString unit;            ///< one that `Units` knows; empty: none
    std::uint32_t type = 0;  ///< of its values; 0: a number
};

/// What was measured at one time.
struct Reading {
    double time = 0;                            ///< seconds since 1970-01-01 UTC
    std::vector<std::optional<double>> values;  ///< by property; absent: not measured. Never NaN
};

class ReadingSource {
public:
    virtual ~ReadingSource() = default;  ///< stops, if nobody did

    /// The name of the site's agent that gets the properties. Stored: never change.
    virtual QString agentName() const = 0;

    /// Starts and answers the properties that all readings will have, in their order. The calls of `read` will be
    /// `interval` seconds apart. Throws ReportableError.
    virtual std::vector<SourceProperty> start(double interval) = 0;

    /// What was measured since the last call, in time order; `now`, seconds since 1970-01-01 UTC, is the time of values
    /// measured by this call. Throws ReportableError when nothing can be measured at present; `read` is called again
    /// later.
    virtual std::vector<Reading> read(double now) = 0;

    /// Ends; `read` is not called afterwards. Does nothing without `start`, or a second time.
    virtual void stop() {}
};

}  // namespace plotix
