#pragma once

#include "records/store/StoreServer.h"

/// Sites on servers, by their addresses. Free functions; any thread. They throw ReportableError.
namespace plotix {

/// Whether the text is the address of a server rather than the name of a file.
bool isServerAddress(const QString& place);

/// The server that an address such as `clickhouse://host/database/site` names. Nobody is asked yet. Throws
/// for what is no address.
std::shared_ptr<StoreServer> storeServer(const QString& address);

/// The same of a site that is there; throws where there is none.
std::shared_ptr<StoreServer> siteOnServer(const QString& address);

}  // namespace plotix
