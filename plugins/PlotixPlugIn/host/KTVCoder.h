#pragma once

#include "base/KeyedCoder.h"
#include "plugins/PlotixPlugIn/host/KTVAgent.h"

#include <optional>

/// A keyed encoder that also knows how the host archives properties. Its maker *owns* it. Main thread only.
class KTVHOST_EXPORT KTVEncoder : public plotix::KeyedEncoder {
public:
    ~KTVEncoder() override;
    virtual void encodeProperties(const QString& key, const KTVPropertyList& properties) = 0;
};

/// A keyed decoder that finds the host's own objects again: properties, agents, the window. Its maker *owns* it. Main
/// thread only.
class KTVHOST_EXPORT KTVDecoder : public plotix::KeyedDecoder {
public:
    ~KTVDecoder() override;

    /// The agent's own property objects; a property that the agent no longer has is still listed under its key, without
    /// data. Absent when the key is missing.
    virtual std::optional<KTVPropertyList> decodeProperties(const QString& key) const = 0;

    virtual KTVAgentPtr agentWithIdentifier(const QString& uniqueIdentifier) const = 0;  ///< null when unknown
    virtual KTVSiteWindowController* siteWindowController() const = 0;                   ///< null without a window
};
