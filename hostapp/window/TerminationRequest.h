#pragma once

#include <QtCore/QObject>

/// Tells of SIGTERM, SIGINT and SIGHUP inside the event loop, so that what is on screen can be stored before the
/// program ends. At most one at a time; destruction puts back what handled the signals before. Main thread only.
namespace plotix {

class TerminationRequest : public QObject {
    Q_OBJECT
public:
    explicit TerminationRequest(QObject* parent = nullptr);
    ~TerminationRequest() override;

signals:
    void received();

private:
    void read();
    void (*m_before[3])(int) = {};
};

}  // namespace plotix
