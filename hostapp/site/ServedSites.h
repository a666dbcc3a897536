#pragma once

#include "hostapp/core/Defaults.h"
#include "hostapp/document/SiteDocument.h"

#include <QtCore/QString>

#include <functional>
#include <memory>
#include <vector>

class KTVPlugInModule;

/// Serving sites without a window. Free function; main thread only.
namespace plotix {

struct ServeRequest {
    std::vector<std::shared_ptr<SiteDocument>> documents;
    QString address = QString::fromLatin1(kUsualWebAddress);
    int port = kUsualWebPort;  ///< 0: any that is free
    QString tokenFile;         ///< empty: without a token
    std::function<void(const QString& line)> say;
};

/// Trends that the site's window followed are followed here too. Tells the addresses once every view has its records,
/// then serves until SIGINT, SIGTERM or SIGHUP. Nothing is stored in the sites. Throws ReportableError: an address or
/// port that cannot be used, a token that is missing or cannot be read.
void serveSites(const ServeRequest& request, KTVPlugInModule* module);

}  // namespace plotix
