#pragma once

#include "plugins/PlotixPlugIn/host/KTVCoder.h"
#include "tests/support/fakehost/FakeAgent.h"

#include <QtCore/QStringList>

#include <map>
#include <variant>

/// Keyed archives in memory, open to tests: which keys were written, in which order, with what. Main thread only.
namespace fakehost {

/// What was archived. A value, except that nested objects are shared between copies.
class FakeArchive {
public:
    struct ArchivedProperty {
        QString propertyName, name, unit;
    };

    const QStringList& keys() const { return m_keys; }  ///< in the order written; a key written twice twice
    bool contains(const QString& key) const { return m_entries.contains(key); }
    QVariant value(const QString& key) const;  ///< invalid for a missing key, an object or properties
    /// The object under the key; null when there is none.
    std::shared_ptr<FakeArchive> object(const QString& key) const;
    std::optional<std::vector<ArchivedProperty>> properties(const QString& key) const;

    void setValue(const QString& key, const QVariant& value);
    void setObject(const QString& key, std::shared_ptr<FakeArchive> object);
    void setProperties(const QString& key, std::vector<ArchivedProperty> properties);
    void remove(const QString& key);  ///< as if it had never been written

private:
    using Entry = std::variant<QVariant, std::shared_ptr<FakeArchive>, std::vector<ArchivedProperty>>;
    void set(const QString& key, Entry entry);

    QStringList m_keys;
    std::map<QString, Entry> m_entries;
};

/// Writes into an archive, *borrowed*.
class FakeEncoder : public KTVEncoder {
public:
    explicit FakeEncoder(FakeArchive& archive) : m_archive(archive) {}

    void encodeBool(const QString& key, bool value) override { m_archive.setValue(key, value); }
    void encodeValue(const QString& key, const QVariant& value) override { m_archive.setValue(key, value); }
    void encodeObject(const QString& key, const std::function<void(plotix::KeyedEncoder&)>& write) override;
    void encodeProperties(const QString& key, const KTVPropertyList& properties) override;

private:
    FakeArchive& m_archive;
};

/// Reads an archive, *borrowed*. Properties resolve to the agent's own objects; those it no longer has become
/// properties without a value under their old key.
class FakeDecoder : public KTVDecoder {
public:
    FakeDecoder(const FakeArchive& archive, std::shared_ptr<FakeAgent> agent,
                KTVSiteWindowController* siteWindowController);

    bool containsKey(const QString& key) const override { return m_archive.contains(key); }
    bool decodeBool(const QString& key) const override { return m_archive.value(key).toBool(); }
    QVariant decodeValue(const QString& key) const override { return m_archive.value(key); }
    bool decodeObject(const QString& key, const std::function<void(plotix::KeyedDecoder&)>& read) const override;
    std::optional<KTVPropertyList> decodeProperties(const QString& key) const override;
    KTVAgentPtr agentWithIdentifier(const QString& uniqueIdentifier) const override;
    KTVSiteWindowController* siteWindowController() const override { return m_siteWindowController; }

private:
    const FakeArchive& m_archive;
    std::shared_ptr<FakeAgent> m_agent;
    KTVSiteWindowController* m_siteWindowController;  // borrowed
};

}  // namespace fakehost
