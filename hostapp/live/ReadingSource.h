#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <optional>
#include <vector>

/// What a live source must give so that it can be recorded: its properties, and readings of them as time passes.
///
/// A recording *owns* the source and calls `start` once, `read` again and again, and `stop` once at the end: from one
/// thread at a time, which need not be the one that made it. A source that has to listen does so on a thread of its own
/// and keeps what it heard until the next `read`. What a source needs to be made, such as an address, it gets when it
/// is made (see `live/sources/`).
namespace plotix {

/// Name and unit are those of a property in the site. Stored: never change.
struct SourceProperty {
    QString name;            ///< unlike the others', also as a key
    QString unit;            ///< one that `Units` knows; empty: none
    std::uint32_t type = 0;  ///< of its values: 0 a number
};

/// What was measured at one time.
struct Reading {
    double time = 0;                            ///< seconds since 1970-01-01 UTC
    std::vector<std::optional<double>> values;  ///< by property; absent: not measured. Never NaN
};

class ReadingSource {
public:
    virtual ~ReadingSource() = default;  ///< of one that was not stopped: stops

    /// Of the agent in the site whose properties these are. Stored: never change.
    virtual QString agentName() const = 0;

    /// Begins, and answers the properties that every reading will have, the same ones in the same order. The calls of
    /// `read` will be `interval` seconds apart. Throws ReportableError.
    virtual std::vector<SourceProperty> start(double interval) = 0;

    /// What was measured since the last call, in the order of time; `now`, seconds since 1970-01-01 UTC, is the time of
    /// what is measured by this call. Throws ReportableError where nothing can be measured at present; it is asked
    /// again.
    virtual std::vector<Reading> read(double now) = 0;

    /// Ends; nothing is read afterwards. Without `start`, and twice, it does nothing.
    virtual void stop() {}
};

}  // namespace plotix
