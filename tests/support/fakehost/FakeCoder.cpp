#include "tests/support/fakehost/FakeCoder.h"

namespace fakehost {

QVariant FakeArchive::value(const QString& key) const
{
    const auto found = m_entries.find(key);
    const auto* value = found == m_entries.end() ? nullptr : std::get_if<QVariant>(&found->second);
    return value ? *value : QVariant();
}

std::shared_ptr<FakeArchive> FakeArchive::object(const QString& key) const
{
    const auto found = m_entries.find(key);
    const auto* object = found == m_entries.end() ? nullptr : std::get_if<std::shared_ptr<FakeArchive>>(&found->second);
    return object ? *object : nullptr;
}

std::optional<std::vector<FakeArchive::ArchivedProperty>> FakeArchive::properties(const QString& key) const
{
    const auto found = m_entries.find(key);
    if (found == m_entries.end() || !std::holds_alternative<std::vector<ArchivedProperty>>(found->second))
        return std::nullopt;
    return std::get<std::vector<ArchivedProperty>>(found->second);
}

void FakeArchive::setValue(const QString& key, const QVariant& value)
{
    set(key, value);
}

void FakeArchive::setObject(const QString& key, std::shared_ptr<FakeArchive> object)
{
    set(key, std::move(object));
}

void FakeArchive::setProperties(const QString& key, std::vector<ArchivedProperty> properties)
{
    set(key, std::move(properties));
}

void FakeArchive::remove(const QString& key)
{
    m_keys.removeAll(key);
    m_entries.erase(key);
}

void FakeArchive::set(const QString& key, Entry entry)
{
    m_keys.append(key);
    m_entries[key] = std::move(entry);
}

void FakeEncoder::encodeObject(const QString& key, const std::function<void(plotix::KeyedEncoder&)>& write)
{
    auto object = std::make_shared<FakeArchive>();
    FakeEncoder encoder(*object);
    write(encoder);
    m_archive.setObject(key, std::move(object));
}

void FakeEncoder::encodeProperties(const QString& key, const KTVPropertyList& properties)
{
    std::vector<FakeArchive::ArchivedProperty> archived;
    for (const KTVPropertyPtr& property : properties)
        archived.push_back({property->propertyName(), property->name(), property->unit()});
    m_archive.setProperties(key, std::move(archived));
}

FakeDecoder::FakeDecoder(const FakeArchive& archive, std::shared_ptr<FakeAgent> agent,
                         KTVSiteWindowController* siteWindowController)
    : m_archive(archive), m_agent(std::move(agent)), m_siteWindowController(siteWindowController)
{
}

bool FakeDecoder::decodeObject(const QString& key, const std::function<void(plotix::KeyedDecoder&)>& read) const
{
    const auto object = m_archive.object(key);
    if (!object)
        return false;
    FakeDecoder decoder(*object, m_agent, m_siteWindowController);
    read(decoder);
    return true;
}

std::optional<KTVPropertyList> FakeDecoder::decodeProperties(const QString& key) const
{
    const auto archived = m_archive.properties(key);
    if (!archived)
        return std::nullopt;
    KTVPropertyList properties;
    for (const FakeArchive::ArchivedProperty& one : *archived) {
        KTVPropertyPtr property = m_agent ? m_agent->properties().objectForKey(one.propertyName) : nullptr;
        if (!property)
            property = std::make_shared<FakeProperty>(
                FakeProperty::Description{.name = one.name, .unit = one.unit, .propertyName = one.propertyName},
                std::make_shared<FakeUnitModel>());
        properties.push_back(std::move(property));
    }
    return properties;
}

KTVAgentPtr FakeDecoder::agentWithIdentifier(const QString& uniqueIdentifier) const
{
    return m_agent && m_agent->uniqueIdentifier() == uniqueIdentifier ? m_agent : nullptr;
}

}  // namespace fakehost
