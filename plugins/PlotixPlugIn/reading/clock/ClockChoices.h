#pragma once

#include "plotkit/model/CPTClock.h"

#include <QtCore/QVariant>

#include <optional>

/// What can be chosen about the clock of a trend. A value; any thread.
namespace plotix {

struct ClockChoices {
    static constexpr auto kSite = "site";

    QString zone = {};  ///< a name, or "site"; empty: the user's
    CPTHourForm hours = CPTHourForm::Usual;
    std::optional<bool> marksChanges = {};  ///< absent: nobody has chosen, and counts as off

    bool isSite() const { return zone == QLatin1String(kSite); }
    bool doesMarkChanges() const { return marksChanges.value_or(false); }

    friend bool operator==(const ClockChoices&, const ClockChoices&) = default;
};

/// By their names: "zone", "form" ("24-hour", "locale"), "changes". Stored: never change. Unknown names, values of
/// another kind, and zones that nobody here knows, are passed over.
QVariantMap mapFromClockChoices(const ClockChoices& choices);
ClockChoices clockChoicesFromMap(const QVariantMap& map);

}  // namespace plotix
