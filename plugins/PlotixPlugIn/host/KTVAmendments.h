#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QString>

#include <vector>

/// A stretch of a property's records that came otherwise than in order of time. A value; seconds since 1970-01-01 UTC.
struct KTVAmendment {
    enum class Kind {
        Late,      ///< put between values that were there
        Corrected  ///< another value, or none, took the place of what was there
    };
    Kind kind = Kind::Late;
    double from = 0, to = 0;     ///< of its first and last record; from ≤ to
    double first = 0, last = 0;  ///< when that happened, to the record at `from` and to that at `to`

    friend bool operator==(const KTVAmendment&, const KTVAmendment&) = default;
};

/// An agent that tells which of its records came late or were corrected: a host's agent is one beside KTVAgent if it
/// likes. Main thread only.
class KTVHOST_EXPORT KTVAmendedAgent {
public:
    virtual ~KTVAmendedAgent();
    /// Those that share a time with [from, to], in the order of `from`; quick. None where nothing is known, and where
    /// it cannot be read.
    virtual std::vector<KTVAmendment> amendmentsOf(const QString& propertyName, double from, double to) const = 0;
};
