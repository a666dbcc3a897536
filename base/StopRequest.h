#pragma once

#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>

#include <array>
#include <csignal>
#include <memory>
#include <vector>

/// The signals that ask a program to end, handed to its event loop.
///
/// While one lives, its signals end nothing: the handler sets a flag and wakes the event loop, which sends `requested`.
/// A program with a loop listens, one in the middle of long work looks at the flag now and then. What handled the
/// signals before handles them again afterwards; a call that a signal interrupts keeps its errno, or goes on. At most
/// one at a time. Main thread, inside a QCoreApplication, but for `isRequested`.
namespace plotix {

class StopRequest : public QObject {
    Q_OBJECT
public:
    enum class From {
        Keyboard,  ///< SIGINT: the others end the process as ever
        Anyone     ///< SIGINT, SIGTERM and SIGHUP: the user, the system, or a terminal that is gone
    };

    explicit StopRequest(From from = From::Anyone);
    ~StopRequest() override;

    /// Whether a signal has come since the last one was made; it keeps the answer beyond its end. Any thread.
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
