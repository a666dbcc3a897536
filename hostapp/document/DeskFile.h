#pragma once

#include <QtCore/QString>

#include <optional>

/// Sites on a server, as one desk has them: a site file of its own beside the user's other data, with the site's agents
/// and properties as they were last seen there, and with what is this desk's alone: trends, colours, units, the window.
/// The records stay on the server. Free functions; any one thread. They throw ReportableError.
namespace plotix {

/// The file of this desk for the site, brought up to date; it is made where there is none yet.
QString deskFileOf(const QString& address);

/// By its name alone.
bool isDeskFile(const QString& path);
/// Nothing: the file is none, and has its records itself.
std::optional<QString> addressOfDeskFile(const QString& path);

}  // namespace plotix
