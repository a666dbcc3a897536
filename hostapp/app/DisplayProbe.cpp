#include "hostapp/app/DisplayProbe.h"

#include <QtCore/QLibrary>
#include <QtCore/QString>

#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace plotix {

namespace {

bool isWaylandReachable()
{
    QString path = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (path.isEmpty())
        return false;
    if (!path.startsWith(QLatin1Char('/')))
        path = qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1Char('/') + path;
    const QByteArray bytes = path.toLocal8Bit();
    sockaddr_un address{};
    if (bytes.size() >= static_cast<int>(sizeof address.sun_path))
        return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    const int socketHandle = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socketHandle < 0)
        return false;
    const bool connected = ::connect(socketHandle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socketHandle);
    return connected;
}

/// Asks the X client library itself, so that host names, sockets and permissions are judged as the toolkit will.
bool isXServerReachable()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    QLibrary library(QStringLiteral("xcb"), 1);
    using Connect = void* (*)(const char*, int*);
    using HasError = int (*)(void*);
    using Disconnect = void (*)(void*);
    const auto connect = reinterpret_cast<Connect>(library.resolve("xcb_connect"));
    const auto hasError = reinterpret_cast<HasError>(library.resolve("xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<Disconnect>(library.resolve("xcb_disconnect"));
    if (!connect || !hasError || !disconnect)
        return false;
    void* connection = connect(nullptr, nullptr);
    const bool reachable = connection && hasError(connection) == 0;
    disconnect(connection);
    return reachable;
}

}  // namespace

bool isDisplayReachable()
{
    const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM").section(QLatin1Char(':'), 0, 0);
    if (!platform.isEmpty() && platform != QLatin1String("xcb") && !platform.startsWith(QLatin1String("wayland")))
        return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
    if (platform != QLatin1String("xcb") && isWaylandReachable())
        return true;
    return !platform.startsWith(QLatin1String("wayland")) && isXServerReachable();
}

}  // namespace plotix
