#pragma once

#include "records/store/TableServer.h"

namespace plotix {

/// The database of an address `clickhouse://[USER@]HOST[:PORT]/DATABASE[?secure=1]`, or of any that PostgreSQL's
/// library understands: `postgresql://[USER@]HOST[:PORT]/DATABASE[?sslmode=verify-full…]`. Nobody is asked yet. Throws
/// ReportableError for what is no address of a kind that is known, and for one that has a password.
std::shared_ptr<TableServer> tableServerAt(const QString& address);

}  // namespace plotix
