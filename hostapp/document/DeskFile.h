#pragma once

#include "records/store/StoreServer.h"

#include <QtCore/QString>

#include <optional>
#include <vector>

/// Sites on a server, as one desk has them: a site file of its own beside the user's other data, with the site's agents
/// and properties as they were last seen there, and with what is this desk's alone: trends, colours, units, the window.
/// The records stay on the server. Free functions; any one thread. They throw ReportableError.
namespace plotix {

/// The file of this desk for the site, brought up to date; it is made where there is none yet. It never names a user:
/// one of the address is who asks until the program ends.
QString deskFileOf(const QString& address);

/// The same for who only records: where the server cannot be reached, the file as it is, if there is one.
QString deskFileToRecordInto(const QString& address);

/// The file of this desk, which may not be there yet. Asks nobody.
QString deskFileNameOf(const QString& address);

/// Makes this file like the server's rows where it is not.
void bringUpToDate(const QString& desk, const QString& address);

/// The file of a site: that of this desk where the place is on a server, else the place itself.
QString siteFileOf(const QString& place);

/// What tells it from other desks' files: its name without the ending.
QString nameOfDesk(const QString& path);
/// By its name alone.
bool isDeskFile(const QString& path);
/// Nothing: the file is none, and has its records itself.
std::optional<QString> addressOfDeskFile(const QString& path);

class Database;

/// Of everything that the site's rows on the server say, by kind and id.
QByteArray digestOf(const std::vector<StoreServer::Row>& rows);
/// Of the rows that the file was last made like.
QByteArray seenBy(Database& desk);
void keepSeen(Database& desk, const QByteArray& digest);

}  // namespace plotix
