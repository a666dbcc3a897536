#pragma once

#include "records/store/TableServer.h"

/// Databases whose tables can be read, by their addresses. Free functions; any thread.
namespace plotix {

/// Nobody is asked yet. Throws ReportableError for what is no such address.
std::shared_ptr<TableServer> tableServer(const QString& address);

/// The records of an attached table, as a site keeps it. Nobody is asked yet. Throws ReportableError.
std::shared_ptr<RecordStore> recordsOfTable(const QByteArray& table);

}  // namespace plotix
