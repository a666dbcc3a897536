#include "hostapp/core/Coder.h"

#include "base/ReportableError.h"
#include "hostapp/core/SiteProperty.h"
#include "hostapp/core/Units.h"
#include "plugins/PlotixPlugIn/host/KTVArchiveNode.h"

namespace plotix {

namespace {

KTVArchivedProperty archived(const KTVProperty& property)
{
    return {property.propertyName(), property.name(), property.unit(),
            property.color(),        property.type(), property.visible()};
}

/// Keeps the position, name and colour of a property that no longer exists; it has no row, so no records are found for
/// it.
KTVPropertyPtr placeholder(const KTVArchivedProperty& property)
{
    SiteProperty::Description description;
    description.name = property.name;
    description.propertyName = property.key;
    description.unit = description.archivedUnit = property.unit;
    description.color = property.color;
    description.type = property.type;
    description.visible = property.visible;
    return std::make_shared<SiteProperty>(description, Units::shared());
}

void writeObject(KTVArchiveNode& parent, const QString& key, const std::function<void(KeyedEncoder&)>& write);

/// Writes into one node; the root encoder and those of nested objects are alike.
class NodeEncoder : public KeyedEncoder {
public:
    explicit NodeEncoder(KTVArchiveNode& node) : m_node(node) {}
    void encodeBool(const QString& key, bool value) override { m_node.set(key, KTVArchiveNode::of(value)); }
    void encodeValue(const QString& key, const QVariant& value) override { m_node.set(key, KTVArchiveNode::of(value)); }
    void encodeObject(const QString& key, const std::function<void(KeyedEncoder&)>& write) override
    {
        writeObject(m_node, key, write);
    }

private:
    KTVArchiveNode& m_node;
};

void writeObject(KTVArchiveNode& parent, const QString& key, const std::function<void(KeyedEncoder&)>& write)
{
    KTVArchiveNode object;
    object.kind = KTVArchiveNode::Kind::Object;
    NodeEncoder encoder(object);
    if (write)
        write(encoder);
    parent.set(key, std::move(object));
}

QVariant valueIn(const KTVArchiveNode& object, const QString& key)
{
    const KTVArchiveNode* node = object.find(key);
    return node && node->kind == KTVArchiveNode::Kind::Value ? node->value : QVariant();
}

bool readObject(const KTVArchiveNode& parent, const QString& key, const std::function<void(KeyedDecoder&)>& read);

class NodeDecoder : public KeyedDecoder {
public:
    explicit NodeDecoder(const KTVArchiveNode& node) : m_node(node) {}
    bool containsKey(const QString& key) const override { return m_node.find(key) != nullptr; }
    bool decodeBool(const QString& key) const override { return valueIn(m_node, key).toBool(); }
    QVariant decodeValue(const QString& key) const override { return valueIn(m_node, key); }
    bool decodeObject(const QString& key, const std::function<void(KeyedDecoder&)>& read) const override
    {
        return readObject(m_node, key, read);
    }

private:
    const KTVArchiveNode& m_node;
};

bool readObject(const KTVArchiveNode& parent, const QString& key, const std::function<void(KeyedDecoder&)>& read)
{
    const KTVArchiveNode* node = parent.find(key);
    if (!node || node->kind != KTVArchiveNode::Kind::Object)
        return false;
    NodeDecoder decoder(*node);
    if (read)
        read(decoder);
    return true;
}

}  // namespace

Encoder::Encoder(const QString& agentIdentifier)
    : m_root(std::make_unique<KTVArchiveNode>()), m_agentIdentifier(agentIdentifier)
{
    m_root->kind = KTVArchiveNode::Kind::Object;
}

Encoder::~Encoder() = default;

void Encoder::encodeBool(const QString& key, bool value)
{
    m_root->set(key, KTVArchiveNode::of(value));
}

void Encoder::encodeValue(const QString& key, const QVariant& value)
{
    m_root->set(key, KTVArchiveNode::of(value));
}

void Encoder::encodeObject(const QString& key, const std::function<void(KeyedEncoder&)>& write)
{
    writeObject(*m_root, key, write);
}

void Encoder::encodeProperties(const QString& key, const KTVPropertyList& properties)
{
    KTVArchiveNode node;
    node.kind = KTVArchiveNode::Kind::Properties;
    node.agent = m_agentIdentifier;
    for (const KTVPropertyPtr& property : properties)
        if (property)
            node.properties.push_back(archived(*property));
    m_root->set(key, std::move(node));
}

QByteArray Encoder::data() const
{
    return writeKeyedArchive(*m_root);
}

Decoder::Decoder(const QByteArray& data, Surroundings surroundings)
    : m_root(std::make_unique<KTVArchiveNode>(readKeyedArchive(data))), m_surroundings(std::move(surroundings))
{
}

Decoder::~Decoder() = default;

bool Decoder::containsKey(const QString& key) const
{
    return m_root->find(key) != nullptr;
}

bool Decoder::decodeBool(const QString& key) const
{
    return valueIn(*m_root, key).toBool();
}

QVariant Decoder::decodeValue(const QString& key) const
{
    return valueIn(*m_root, key);
}

bool Decoder::decodeObject(const QString& key, const std::function<void(KeyedDecoder&)>& read) const
{
    return readObject(*m_root, key, read);
}

std::optional<KTVPropertyList> Decoder::decodeProperties(const QString& key) const
{
    const KTVArchiveNode* node = m_root->find(key);
    if (!node || node->kind != KTVArchiveNode::Kind::Properties)
        return std::nullopt;
    const KTVAgentPtr agent = agentWithIdentifier(node->agent);
    const KTVPropertyCollection own = agent ? agent->properties() : KTVPropertyCollection();
    KTVPropertyList properties;
    for (const KTVArchivedProperty& property : node->properties) {
        const KTVPropertyPtr found = own.objectForKey(property.key);
        properties.push_back(found ? found : placeholder(property));
    }
    return properties;
}

KTVAgentPtr Decoder::agentWithIdentifier(const QString& uniqueIdentifier) const
{
    return m_surroundings.agent ? m_surroundings.agent(uniqueIdentifier) : KTVAgentPtr();
}

QByteArray encodedPlugIn(const KTVPlugIn& plugIn)
{
    Encoder encoder(plugIn.agent() ? plugIn.agent()->uniqueIdentifier() : QString());
    plugIn.encodeWithCoder(encoder);
    return encoder.data();
}

}  // namespace plotix
