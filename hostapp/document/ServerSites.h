#pragma once

#include "records/store/StoreServer.h"

#include <functional>
#include <optional>
#include <vector>

/// Sites on servers, by their addresses. Free functions; any thread. They throw ReportableError.
namespace plotix {

/// Whether the text is the address of a server rather than the name of a file.
bool isServerAddress(const QString& place);

/// The server that an address such as `clickhouse://host/database/site` names. Nobody is asked yet. Throws
/// for what is no address.
std::shared_ptr<StoreServer> storeServer(const QString& address);

/// The sites of the server that the address names, as `database/site`; the address's own need not be there. Waits for
/// the server.
std::vector<QString> sitesOnServer(const QString& address);

/// From here on the program asks the address's hosts as this user, until it ends; no site file has anything of it. No
/// password: the one entered before, else the environment's. Answers what takes it back.
std::function<void()> enterCredentials(const QString& address, const QString& user,
                                       const std::optional<QString>& password);
/// Empty: nobody was entered for the address's hosts.
QString enteredUser(const QString& address);

/// The address as it may be kept: a user it names is entered, and left out.
QString withoutUser(const QString& address);

/// The same of a site that is there; throws where there is none.
std::shared_ptr<StoreServer> siteOnServer(const QString& address);

/// Has what comes from servers kept in a file of this computer from now on, as much as serverCacheBudget() says; 0:
/// nothing. To be called before any site is opened. Never throws.
void keepWhatServersSend();

}  // namespace plotix
