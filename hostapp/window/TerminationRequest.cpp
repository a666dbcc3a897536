#include "hostapp/window/TerminationRequest.h"

#include <QtCore/QSocketNotifier>

#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

namespace plotix {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

// A handler may do next to nothing but write; the other end wakes the event loop.
int theSockets[2] = {-1, -1};

void passOn(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(theSockets[0], &byte, 1);
}

}  // namespace

TerminationRequest::TerminationRequest(QObject* parent) : QObject(parent)
{
    Q_ASSERT(theSockets[0] < 0);
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, theSockets) != 0)
        return;  // the signals then end the program as they always do
    auto* notifier = new QSocketNotifier(theSockets[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &TerminationRequest::read);
    for (std::size_t index = 0; index < std::size(kSignals); ++index)
        m_before[index] = std::signal(kSignals[index], passOn);
}

TerminationRequest::~TerminationRequest()
{
    if (theSockets[0] < 0)
        return;
    for (std::size_t index = 0; index < std::size(kSignals); ++index)
        std::signal(kSignals[index], m_before[index]);
    qDeleteAll(findChildren<QSocketNotifier*>());
    for (int& socket : theSockets) {
        ::close(socket);
        socket = -1;
    }
}

void TerminationRequest::read()
{
    char bytes[16];
    if (::read(theSockets[1], bytes, sizeof bytes) > 0)
        emit received();
}

}  // namespace plotix
