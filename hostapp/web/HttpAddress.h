#pragma once

#include "hostapp/core/Defaults.h"

#include <QtCore/QString>

#include <cstdint>

namespace plotix {

/// Where a server listens. A value; any thread.
struct HttpAddress {
    QString host = QLatin1String(kUsualWebAddress);  ///< an IPv4 or IPv6 address, or "localhost"
    std::uint16_t port = 0;                          ///< 0: any that is free

    /// Whether only this machine can reach it. False for an invalid address.
    bool isLoopback() const;
};

}  // namespace plotix
