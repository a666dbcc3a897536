#pragma once

#include "plugins/PlotixPlugIn/host/KTVCoder.h"
#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>
#include <memory>

struct KTVArchiveNode;

/// Keyed archives as bytes: CBOR that holds data only; nothing in it can name a class to be made.
///
/// Doubles and floats come back bit for bit and with their type; integers come back as int if they fit, else as qint64;
/// colours as their "#aarrggbb" text. A properties list is archived as the agent's identifier plus, for each property,
/// its key and what is needed to list it when it no longer exists. `docs/formats.md` has the grammar. Main thread only.
namespace plotix {

class Encoder : public KTVEncoder {
public:
    /// `agentIdentifier` is the agent whose properties are archived.
    explicit Encoder(const QString& agentIdentifier);
    ~Encoder() override;

    /// A key written twice keeps the later value.
    void encodeBool(const QString& key, bool value) override;
    void encodeValue(const QString& key, const QVariant& value) override;
    void encodeObject(const QString& key, const std::function<void(KeyedEncoder&)>& write) override;
    void encodeProperties(const QString& key, const KTVPropertyList& properties) override;

    QByteArray data() const;

private:
    std::unique_ptr<KTVArchiveNode> m_root;
    QString m_agentIdentifier;
};

class Decoder : public KTVDecoder {
public:
    /// The objects that archived names refer to. `agent` may be empty (then every property is a placeholder).
    struct Surroundings {
        std::function<KTVAgentPtr(const QString& uniqueIdentifier)> agent;
        KTVSiteWindowController* siteWindowController = nullptr;  ///< borrowed; null without a window
    };

    /// Throws ReportableError when the bytes are not an archive, or one of a newer version.
    Decoder(const QByteArray& data, Surroundings surroundings);
    ~Decoder() override;

    bool containsKey(const QString& key) const override;
    bool decodeBool(const QString& key) const override;
    QVariant decodeValue(const QString& key) const override;
    bool decodeObject(const QString& key, const std::function<void(KeyedDecoder&)>& read) const override;
    std::optional<KTVPropertyList> decodeProperties(const QString& key) const override;
    KTVAgentPtr agentWithIdentifier(const QString& uniqueIdentifier) const override;
    KTVSiteWindowController* siteWindowController() const override { return m_surroundings.siteWindowController; }

private:
    std::unique_ptr<KTVArchiveNode> m_root;
    Surroundings m_surroundings;
};

/// The plug-in's state as the document stores it.
QByteArray encodedPlugIn(const KTVPlugIn& plugIn);

}  // namespace plotix
