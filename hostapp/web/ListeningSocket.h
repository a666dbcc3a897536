#pragma once

#include "hostapp/web/HttpAddress.h"

#include <QtCore/QByteArray>

struct sockaddr;  // the system's

/// Opens the port that the server listens on. Free functions; any thread.
namespace plotix {

struct ListeningSocket {
    int socket = -1;  ///< the caller closes it
    std::uint16_t port = 0;
};

/// Throws ReportableError of one line.
ListeningSocket listenOn(const HttpAddress& address);

/// The numeric address of the other end, without its port; empty when there is none.
QByteArray addressText(const sockaddr* address);

}  // namespace plotix
