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

/// Trends that the site's window followed end now here too, with the records stored since. Says the addresses once
/// every view has its records, then serves until SIGINT, SIGTERM or SIGHUP. Sites stay as they are stored. Throws
/// ReportableError: an address or port that cannot be had, a token that is missing or cannot be read.
void serveSites(const ServeRequest& request, KTVPlugInModule* module);

}  // namespace plotix
