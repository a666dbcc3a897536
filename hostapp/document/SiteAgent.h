#pragma once

#include "hostapp/core/SiteProperty.h"
#include "plugins/PlotixPlugIn/host/KTVAgent.h"
#include "plugins/PlotixPlugIn/host/KTVAmendments.h"
#include "plugins/PlotixPlugIn/host/KTVAnnotations.h"
#include "plugins/PlotixPlugIn/host/KTVSiteClock.h"

#include <QtCore/QObject>

#include <memory>
#include <optional>
#include <vector>

namespace plotix {

class ArchiveManager;
class SiteDocument;

/// One source of measurements in a site document. The document *owns* it; plug-ins *share* it. Main thread only.
class SiteAgent : public QObject,
                  public KTVAgent,
                  public KTVAnnotatedAgent,
                  public KTVAmendedAgent,
                  public KTVZonedAgent {
    Q_OBJECT
public:
    ~SiteAgent() override;

    SiteDocument* document() const { return m_document; }  ///< null once it is closed
    qint64 id() const { return m_id; }
    const QString& name() const { return m_name; }
    const std::vector<std::shared_ptr<SiteProperty>>& siteProperties() const { return m_properties; }

    /// Stores a new property after the others and makes its key unique in the agent. Colours come from a fixed palette,
    /// in turn.
    std::shared_ptr<SiteProperty> addProperty(const QString& name, const QString& unit, std::uint32_t type = 0);

    KTVPropertyCollection properties() const override;
    QString uniqueIdentifier() const override { return m_uniqueIdentifier; }
    KTVArchiveManager* archiveManager() const override;
    ArchiveManager* siteArchiveManager() const { return m_archiveManager.get(); }
    KTVAnnotations* annotations() const override { return m_annotations.get(); }
    std::vector<KTVAmendment> amendmentsOf(const QString& propertyName, double from, double to) const override;
    KTVSiteClock* siteClock() const override { return m_siteClock.get(); }
    std::optional<QString> siteName() const override;
    std::optional<QString> siteLocation() const override;
    KTVSiteWindowController* siteWindowController() const override { return m_siteWindowController; }
    void setSiteWindowController(KTVSiteWindowController* controller) { m_siteWindowController = controller; }

signals:
    void propertiesChanged();

private:
    friend class SiteDocument;
    SiteAgent(SiteDocument* document, qint64 id, QString uniqueIdentifier, QString name);

    SiteDocument* m_document;  // borrowed; null once it is closed, which a plug-in's agent may outlive
    qint64 m_id;
    QString m_uniqueIdentifier;
    QString m_name;
    std::vector<std::shared_ptr<SiteProperty>> m_properties;
    std::unique_ptr<ArchiveManager> m_archiveManager;
    std::unique_ptr<KTVAnnotations> m_annotations;
    std::unique_ptr<KTVSiteClock> m_siteClock;
    KTVSiteWindowController* m_siteWindowController = nullptr;
};

}  // namespace plotix
