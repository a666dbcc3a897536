#include "hostapp/document/ArchivedReferences.h"

#include "base/ReportableError.h"
#include "plugins/PlotixPlugIn/host/KTVArchiveNode.h"

#include <algorithm>

namespace plotix {

namespace {

bool isNamed(const QVariant& value, const QString& agent)
{
    if (value.typeId() == QMetaType::QVariantList) {
        const QVariantList values = value.toList();
        return std::any_of(values.begin(), values.end(), [&](const QVariant& each) { return isNamed(each, agent); });
    }
    return value.typeId() == QMetaType::QString && value.toString() == agent;
}

bool isNamed(const KTVArchiveNode& node, const QString& agent)
{
    if (node.kind == KTVArchiveNode::Kind::Properties)
        return node.agent == agent;
    if (node.kind == KTVArchiveNode::Kind::Value)
        return isNamed(node.value, agent);
    return std::any_of(node.members.begin(), node.members.end(),
                       [&](const auto& member) { return isNamed(member.second, agent); });
}

/// Changes a state in place and remembers whether there was anything to change.
class Moving {
public:
    Moving(const std::vector<MovedProperty>& properties, const QString& fromAgent, const QString& toAgent)
        : m_properties(properties), m_fromAgent(fromAgent), m_toAgent(toAgent)
    {
    }

    bool hasChanged() const { return m_changed; }

    void change(KTVArchiveNode& node)
    {
        switch (node.kind) {
        case KTVArchiveNode::Kind::Properties: changeList(node); break;
        case KTVArchiveNode::Kind::Value: node.value = changed(node.value); break;
        case KTVArchiveNode::Kind::Object:
            for (auto& [key, member] : node.members)
                change(member);
        }
    }

private:
    void changeList(KTVArchiveNode& node)
    {
        std::vector<KTVArchivedProperty> properties;
        for (KTVArchivedProperty& property : node.properties) {
            for (const MovedProperty& moved : m_properties)
                if (moved.agent == node.agent && moved.key == property.key) {
                    property.key = moved.toKey;
                    property.name = moved.toName;
                    m_changed = true;
                    break;
                }
            if (std::none_of(properties.begin(), properties.end(),
                             [&](const KTVArchivedProperty& known) { return known.key == property.key; }))
                properties.push_back(property);
        }
        node.properties = std::move(properties);
        if (!m_fromAgent.isEmpty() && node.agent == m_fromAgent) {
            node.agent = m_toAgent;
            m_changed = true;
        }
    }

    /// Dictionaries with a property's name as the key say something about that property.
    QVariant changed(const QVariant& value)
    {
        if (value.typeId() == QMetaType::QVariantMap) {
            QVariantMap result;
            const QVariantMap map = value.toMap();
            for (auto entry = map.begin(); entry != map.end(); ++entry)
                result.insert(nameAfterwards(entry.key()), changed(entry.value()));
            return result;
        }
        if (value.typeId() == QMetaType::QVariantList) {
            QVariantList result;
            for (const QVariant& each : value.toList())
                result << changed(each);
            return result;
        }
        if (m_fromAgent.isEmpty() || value.typeId() != QMetaType::QString || value.toString() != m_fromAgent)
            return value;
        m_changed = true;
        return m_toAgent;
    }

    QString nameAfterwards(const QString& name)
    {
        for (const MovedProperty& moved : m_properties)
            if (moved.name == name)
                return moved.toName;
        return name;
    }

    const std::vector<MovedProperty>& m_properties;
    const QString m_fromAgent, m_toAgent;
    bool m_changed = false;
};

std::optional<KTVArchiveNode> readable(const QByteArray& state)
{
    try {
        return readKeyedArchive(state);
    } catch (const ReportableError&) {
        return std::nullopt;
    }
}

/// Agent and key of every property that is listed, in order.
void collectListed(const KTVArchiveNode& node, QStringList& into)
{
    for (const KTVArchivedProperty& property : node.properties)
        into << node.agent << property.key << property.name;
    for (const auto& [key, member] : node.members)
        collectListed(member, into);
}

// Stored: never change.
const QString kTitle = QStringLiteral("title");
const QString kIdentifier = QStringLiteral("uniqueIdentifier");
const QString kDates = QStringLiteral("dataClusterViewController");
const QString kFromDate = QStringLiteral("fromDate");
const QString kToDate = QStringLiteral("toDate");

QString titleOf(const KTVArchiveNode& root)
{
    const KTVArchiveNode* title = root.find(kTitle);
    return title ? title->value.toString() : QString();
}

QStringList titleAndListed(const KTVArchiveNode& root)
{
    QStringList found(titleOf(root));
    collectListed(root, found);
    return found;
}

}  // namespace

bool showTheSame(const QByteArray& one, const QByteArray& other)
{
    const std::optional<KTVArchiveNode> left = readable(one), right = readable(other);
    return left && right ? titleAndListed(*left) == titleAndListed(*right) : one == other;
}

QString titleIn(const QByteArray& state)
{
    const std::optional<KTVArchiveNode> root = readable(state);
    return root ? titleOf(*root) : QString();
}

std::optional<QByteArray> copyOfView(const QByteArray& state, const QString& identifier, const QString& title)
{
    std::optional<KTVArchiveNode> root = readable(state);
    if (!root)
        return std::nullopt;
    root->set(kIdentifier, KTVArchiveNode::of(identifier));
    root->set(kTitle, KTVArchiveNode::of(title));
    return writeKeyedArchive(*root);
}

std::optional<QByteArray> withDates(const QByteArray& state, double from, double to)
{
    std::optional<KTVArchiveNode> root = readable(state);
    if (!root)
        return std::nullopt;
    const KTVArchiveNode* archived = root->find(kDates);
    KTVArchiveNode dates = archived ? *archived : KTVArchiveNode{};
    dates.kind = KTVArchiveNode::Kind::Object;
    dates.set(kFromDate, KTVArchiveNode::of(from));
    dates.set(kToDate, KTVArchiveNode::of(to));
    root->set(kDates, dates);
    return writeKeyedArchive(*root);
}

bool namesAgent(const QByteArray& state, const QString& agentIdentifier)
{
    const std::optional<KTVArchiveNode> root = readable(state);
    return root && isNamed(*root, agentIdentifier);
}

std::optional<QByteArray> withMoved(const QByteArray& state, const std::vector<MovedProperty>& properties,
                                    const QString& fromAgent, const QString& toAgent)
{
    std::optional<KTVArchiveNode> root = readable(state);
    if (!root)
        return std::nullopt;
    Moving moving(properties, fromAgent, toAgent);
    moving.change(*root);
    return moving.hasChanged() ? std::optional(writeKeyedArchive(*root)) : std::nullopt;
}

}  // namespace plotix
