#include "hostapp/cli/StopRequest.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace plotix {

namespace {

volatile std::sig_atomic_t writeEnd = -1;

void passOn(int)
{
    const int kept = errno;
    const char byte = 1;
    // A full pipe has requests enough in it.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = kept;
}

}  // namespace

StopRequest::StopRequest()
{
    if (::pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;  // without a pipe the signals end the process as ever, which loses nothing that is stored
    writeEnd = m_pipe[1];
    m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (::read(m_pipe[0], &byte, 1) == 1) {
        }
        emit requested();
    });
    struct sigaction action {};
    action.sa_handler = passOn;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kSignals.size(); ++i)
        ::sigaction(kSignals[i], &action, &m_before[i]);
}

StopRequest::~StopRequest()
{
    if (!m_notifier)
        return;
    for (std::size_t i = 0; i < kSignals.size(); ++i)
        ::sigaction(kSignals[i], &m_before[i], nullptr);
    writeEnd = -1;
    m_notifier.reset();
    ::close(m_pipe[0]);
    ::close(m_pipe[1]);
}

}  // namespace plotix
