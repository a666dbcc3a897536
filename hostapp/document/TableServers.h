#pragma once

#include "records/store/TableServer.h"

/// Databases whose tables can be read, by their addresses. Free functions; any thread.
namespace plotix {

/// Nobody is asked yet. Throws ReportableError for what is no such address.
std::shared_ptr<TableServer> tableServer(const QString& address);

/// Somebody at this desk has named the place: sites that come from others may have it asked from now on, with the user
/// and the password that are here. Kept among the program's settings.
void trustPlace(const TableServer& server);

/// The records of an attached table, as a site keeps it. Nobody is asked yet. Throws ReportableError, also for a place
/// that nobody at this desk has named.
std::shared_ptr<RecordStore> recordsOfTable(const QByteArray& table);

}  // namespace plotix
