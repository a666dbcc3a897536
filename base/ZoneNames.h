#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTimeZone>

#include <optional>

/// Time zones as people name them. Free functions; any thread.
namespace plotix {

/// The names of all zones there are, such as "Europe/Berlin", sorted; "UTC" among them. Kept after the first call.
const QStringList& zoneNames();

/// The zone of a name, whatever its case, with blanks for underscores; or of a city that only one zone is named after:
/// "berlin". Nothing for another text.
std::optional<QTimeZone> zoneNamed(const QString& text);

/// The name of a zone that a mistyped text most likely means; never empty.
QString nearestZoneName(const QString& text);

}  // namespace plotix
