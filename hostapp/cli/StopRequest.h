#pragma once

#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>

#include <array>
#include <csignal>
#include <memory>

/// While one lives, an interrupt from the keyboard, a hang-up or a request to terminate is an event of the event loop
/// instead of the process's end. At most one at a time; main thread.
namespace plotix {

class StopRequest : public QObject {
    Q_OBJECT
public:
    StopRequest();
    ~StopRequest() override;

signals:
    void requested();

private:
    static constexpr std::array<int, 3> kSignals = {SIGINT, SIGTERM, SIGHUP};

    std::array<int, 2> m_pipe{-1, -1};  // a handler may do nothing but write; the loop reads
    std::array<struct sigaction, kSignals.size()> m_before{};
    std::unique_ptr<QSocketNotifier> m_notifier;
};

}  // namespace plotix
