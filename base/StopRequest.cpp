#include "base/StopRequest.h"

#include <QtCore/QEventLoop>

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

namespace plotix {

namespace {

// What a signal handler touches: nothing but these, which need no lock.
std::atomic<int> writeEnd = -1;
std::atomic<bool> wasRequested = false;
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

void passOn(int)
{
    const int kept = errno;  // of the call that was interrupted
    wasRequested = true;
    const char byte = 1;
    // A full pipe has requests enough in it.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = kept;
}

}  // namespace

StopRequest::StopRequest(From from)
{
    Q_ASSERT(writeEnd == -1);
    wasRequested = false;
    if (::pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;  // without a pipe the signals end the process as usual, which loses nothing that is stored
    writeEnd = m_pipe[1];
    m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &StopRequest::read);
    install(SIGINT);
    if (from == From::Anyone) {
        install(SIGTERM);
        install(SIGHUP);
    }
}

StopRequest::~StopRequest()
{
    for (const Handler& handler : m_handlers)
        ::sigaction(handler.signal, &handler.before, nullptr);
    if (!m_notifier)
        return;
    writeEnd = -1;
    m_notifier.reset();
    ::close(m_pipe[0]);
    ::close(m_pipe[1]);
}

void StopRequest::install(int signal)
{
    struct sigaction action {};
    action.sa_handler = passOn;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    Handler& handler = m_handlers.emplace_back(Handler{signal, {}});
    ::sigaction(signal, &action, &handler.before);
}

bool StopRequest::isRequested()
{
    return wasRequested;
}

void StopRequest::wait()
{
    QEventLoop loop;
    connect(this, &StopRequest::requested, &loop, &QEventLoop::quit);
    if (!isRequested())  // a signal that comes after this check wakes the loop
        loop.exec();
}

void StopRequest::read()
{
    char bytes[16];
    while (::read(m_pipe[0], bytes, sizeof bytes) > 0) {
    }
    emit requested();
}

}  // namespace plotix
