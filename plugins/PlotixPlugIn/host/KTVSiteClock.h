#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QObject>
#include <QtCore/QTimeZone>

/// The clocks at the place that a site is about, as its host keeps them. The host *owns* it. Main thread only.
class KTVHOST_EXPORT KTVSiteClock : public QObject {
    Q_OBJECT
public:
    ~KTVSiteClock() override;
    virtual QTimeZone zone() const = 0;  ///< invalid: nobody has said

signals:
    void changed();
};

/// An agent whose site has a clock: a host's agent is one beside KTVAgent if it likes.
class KTVHOST_EXPORT KTVZonedAgent {
public:
    virtual ~KTVZonedAgent();
    virtual KTVSiteClock* siteClock() const = 0;  ///< *borrowed*, lives as long as the agent; null: none
};
