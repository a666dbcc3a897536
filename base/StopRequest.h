#pragma once

#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>

#include <array>
#include <csignal>
#include <memory>
#include <vector>

/// The signals that ask a program to end, handed to its event loop.
///
/// While one lives, its signals do not end the process: the handler sets a flag and wakes the event loop, which sends
/// `requested`. A program with a loop listens, one in the middle of long work looks at the flag now and then. Its end
/// restores the former handlers. A system call that a signal interrupts goes on, or keeps its errno. At most one at a
/// time. Main thread, inside a QCoreApplication, except `isRequested`.
namespace plotix {

class StopRequest : public QObject {
    Q_OBJECT
public:
    enum class From {
        Keyboard,  ///< SIGINT; other signals end the process as usual
        Anyone     ///< SIGINT, SIGTERM and SIGHUP: the user, the system, or a terminal that is gone
    };

    explicit StopRequest(From from = From::Anyone);
    ~StopRequest() override;

    /// Whether a signal has come since the last StopRequest was made, also after that one has ended. Any thread.
    static bool isRequested();

    /// Runs an event loop until a signal comes; returns at once when one has come already.
    void wait();

signals:
    void requested();

private:
    struct Handler {
        int signal;
        struct sigaction before;
    };
    void install(int signal);
    void read();

    std::array<int, 2> m_pipe{-1, -1};  // a handler may do next to nothing but write; the loop reads
    std::vector<Handler> m_handlers;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

}  // namespace plotix
