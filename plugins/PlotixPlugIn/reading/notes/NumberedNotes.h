#pragma once

#include "plotkit/model/CPTClock.h"
#include "plugins/PlotixPlugIn/host/KTVAnnotations.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <optional>
#include <vector>

/// The notes of a trend, with the numbers by which flags and footnotes name them. Values and free functions; any
/// thread.
namespace plotix {

struct NumberedNote {
    int number = 0;  ///< from 1, in the order of time
    KTVNote note;

    bool isSpan() const { return note.to > note.from; }
};

/// Those about all properties, or one of these; numbers do not depend on what is shown at the moment.
std::vector<NumberedNote> numberedNotes(const std::vector<KTVNote>& notes, const QStringList& propertyNames);

/// Those that overlap a span, bounds included; without one all of them.
std::vector<NumberedNote> notesIn(const std::vector<NumberedNote>& notes, const std::optional<TimeSpan>& span);

/// "14:00", or "14:00 – 15:00", with the date where it is not said by the first one; in the user's locale,
/// by a clock.
QString timeTextOf(const KTVNote& note, const CPTClock& clock);

/// A footnote for a report: "number", "time", "text", "author".
QVariantMap footnoteOf(const NumberedNote& note, const CPTClock& clock);

/// Everything of some notes as plain text, for a tool tip or to be spoken.
QString spokenText(const std::vector<NumberedNote>& notes, const CPTClock& clock);

}  // namespace plotix
