#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <ctime>

namespace plotix {

/// The time zone of this process, for as long as the object lives; then it is again what it was. For the main thread,
/// while no other one asks what time it is.
class PinnedZone {
public:
    /// Without a name the zone stays what it is until use() is called.
    PinnedZone() : m_before(qgetenv("TZ")) {}
    explicit PinnedZone(const QByteArray& zone) : PinnedZone() { use(zone); }
    ~PinnedZone() { use(m_before); }
    PinnedZone(const PinnedZone&) = delete;
    PinnedZone& operator=(const PinnedZone&) = delete;

    void use(const QByteArray& zone)
    {
        qputenv("TZ", zone);
        tzset();
    }

private:
    QByteArray m_before;
};

}  // namespace plotix
