#pragma once

#include "plugins/PlotixPlugIn/host/KTVArchiveManager.h"
#include "plugins/PlotixPlugIn/host/KTVProperty.h"

#include <optional>

class KTVSiteWindowController;

/// The agent's measured quantities: looked up by key, enumerated in the host's order. A value that *shares* the
/// properties. Main thread only.
class KTVHOST_EXPORT KTVPropertyCollection {
public:
    KTVPropertyCollection() = default;
    explicit KTVPropertyCollection(KTVPropertyList properties) : m_properties(std::move(properties)) {}

    /// Null when the agent has no property of that key.
    KTVPropertyPtr objectForKey(const QString& propertyName) const;
    const KTVPropertyList& objects() const { return m_properties; }

private:
    KTVPropertyList m_properties;
};

/// One monitored source of measurements. The site document *owns* it, plug-ins *share* it. Main thread only.
class KTVHOST_EXPORT KTVAgent {
public:
    virtual ~KTVAgent();

    virtual KTVPropertyCollection properties() const = 0;
    virtual QString uniqueIdentifier() const = 0;
    virtual KTVArchiveManager* archiveManager() const = 0;  ///< *borrowed*; lives as long as the agent
    virtual std::optional<QString> siteName() const = 0;
    virtual std::optional<QString> siteLocation() const = 0;
    virtual KTVSiteWindowController* siteWindowController() const = 0;  ///< borrowed; null without a window
};

using KTVAgentPtr = std::shared_ptr<KTVAgent>;
