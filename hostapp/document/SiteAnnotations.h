#pragma once

#include "plugins/PlotixPlugIn/host/KTVAnnotations.h"
#include "storage/Database.h"

#include <vector>

/// Limits and notes as a site file keeps them. Values, and functions that work inside the caller's transaction; any one
/// thread. They throw ReportableError.
namespace plotix {

/// Of one property. Names are unique in it, whatever their case.
struct SiteLimit {
    qint64 id = 0;  ///< 0: not stored yet
    qint64 property = 0;
    QString name;
    double value = 0;
    QString unit;  ///< of the value: the property's when the limit was set
    KTVLimit::Side side = KTVLimit::Side::Above;
    KTVLimit::Severity severity = KTVLimit::Severity::Warning;

    friend bool operator==(const SiteLimit&, const SiteLimit&) = default;
};

struct SiteNote {
    qint64 id = 0;            ///< 0: not stored yet
    double from = 0, to = 0;  ///< seconds since 1970-01-01 UTC; the same for a note about a time
    QString author, text;
    std::vector<qint64> properties;    ///< none: about all; one that is gone stays named
    double created = 0, modified = 0;  ///< seconds since 1970-01-01 UTC

    friend bool operator==(const SiteNote&, const SiteNote&) = default;
};

/// In the order they were set; none in a file of an older version.
std::vector<SiteLimit> storedLimits(const Database& database);
/// In the order of time; none in a file of an older version.
std::vector<SiteNote> storedNotes(const Database& database);

/// Answers the id. Throws when name or value do not serve, or the name is taken.
qint64 storeLimit(Database& database, const SiteLimit& limit);
void removeStoredLimit(Database& database, qint64 id);

/// Answers the id. Throws where there is no text, or times are none.
qint64 storeNote(Database& database, const SiteNote& note);
void removeStoredNote(Database& database, qint64 id);

/// What was said of a property goes on with the one it was merged into. A limit the other has already is dropped, and
/// one of the same name gets a number.
void moveAnnotations(Database& database, qint64 from, qint64 into);

/// Notes that overlap a span, and are about one of these properties or all; bounds included.
std::vector<SiteNote> notesWithin(const std::vector<SiteNote>& notes, double from, double to,
                                  const std::vector<qint64>& properties);

}  // namespace plotix
