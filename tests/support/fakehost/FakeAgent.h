#pragma once

#include "plugins/PlotixPlugIn/host/KTVAgent.h"
#include "plugins/PlotixPlugIn/host/KTVAmendments.h"
#include "plugins/PlotixPlugIn/host/KTVSiteClock.h"
#include "tests/support/fakehost/FakeAnnotations.h"
#include "tests/support/fakehost/FakeArchiveManager.h"
#include "tests/support/fakehost/FakeProperty.h"

#include <utility>

/// The fake host's agent: properties a test adds and removes, one fake archive manager, site texts to set. Plug-ins
/// *share* it, as they do a real one. Main thread only.
namespace fakehost {

/// The clocks of a site, in a zone that a test sets.
class FakeSiteClock : public KTVSiteClock {
public:
    QTimeZone zone() const override { return m_zone; }
    void setZone(const QTimeZone& zone)
    {
        m_zone = zone;
        emit changed();
    }
    bool isHeard() const { return receivers(SIGNAL(changed())) > 0; }

private:
    QTimeZone m_zone;
};

class FakeAgent : public KTVAgent, public KTVAnnotatedAgent, public KTVAmendedAgent, public KTVZonedAgent {
public:
    FakeAgent(QString uniqueIdentifier, std::shared_ptr<const FakeUnitModel> units, CallLog* log);

    KTVPropertyCollection properties() const override { return KTVPropertyCollection(asked(m_properties)); }
    QString uniqueIdentifier() const override { return asked(m_uniqueIdentifier); }
    FakeArchiveManager* archiveManager() const override { return asked(m_archiveManager).get(); }
    std::optional<QString> siteName() const override { return asked(m_siteName); }
    std::optional<QString> siteLocation() const override { return asked(m_siteLocation); }
    KTVSiteWindowController* siteWindowController() const override { return asked(m_siteWindowController); }

    KTVAnnotations* annotations() const override { return m_annotations.get(); }
    FakeAnnotations& annotate();  ///< has limits and notes from now on; none before

    std::vector<KTVAmendment> amendmentsOf(const QString& propertyName, double from, double to) const override;
    int timesAskedForAmendments() const { return m_amendmentsAsked; }
    void setAmendments(const QString& propertyName, std::vector<KTVAmendment> amendments);
    FakeSiteClock* siteClock() const override { return m_siteClock.get(); }            ///< of no zone at first
    std::unique_ptr<FakeSiteClock> setSiteClock(std::unique_ptr<FakeSiteClock> clock)  ///< answers the former one
    {
        return std::exchange(m_siteClock, std::move(clock));
    }

    FakePropertyPtr addProperty(FakeProperty::Description description);
    void removeProperty(const QString& propertyName);             ///< none of that key: nothing happens
    FakePropertyPtr property(const QString& propertyName) const;  ///< null when there is none

    void setSite(std::optional<QString> name, std::optional<QString> location);
    void setSiteWindowController(KTVSiteWindowController* controller) { m_siteWindowController = controller; }

private:
    /// The answer, once the log has seen on which thread it was asked for.
    template <class T>
    const T& asked(const T& answer) const
    {
        if (m_log)
            m_log->pass();
        return answer;
    }

    QString m_uniqueIdentifier;
    std::shared_ptr<const FakeUnitModel> m_units;
    CallLog* m_log;  // borrowed
    std::unique_ptr<FakeArchiveManager> m_archiveManager;
    std::unique_ptr<FakeAnnotations> m_annotations;
    std::map<QString, std::vector<KTVAmendment>> m_amendments;
    mutable int m_amendmentsAsked = 0;
    std::unique_ptr<FakeSiteClock> m_siteClock = std::make_unique<FakeSiteClock>();
    KTVPropertyList m_properties;  // each a FakeProperty
    std::optional<QString> m_siteName = QStringLiteral("Meadow Station");
    std::optional<QString> m_siteLocation = QStringLiteral("Hillside");
    KTVSiteWindowController* m_siteWindowController = nullptr;  // borrowed
};

}  // namespace fakehost
