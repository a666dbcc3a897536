#include "plugins/PlotixPlugIn/host/KTVArchiveNode.h"

#include "base/ReportableError.h"

#include <QtCore/QCborStreamReader>
#include <QtCore/QCborStreamWriter>
#include <QtCore/QMetaType>
#include <QtCore/QStringList>

#include <limits>

using plotix::ReportableError;

namespace {

// Stored: never change.
constexpr const char* kFormatName = "plotix-archive";
constexpr int kFormatVersion = 1;
constexpr QCborTag kObjectTag{20559};
constexpr QCborTag kPropertiesTag{20560};

constexpr int kDeepest = 64;  // levels; deeper nesting is an attack

void writeVariant(QCborStreamWriter& writer, const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool: return writer.append(value.toBool());
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt: return writer.append(value.toLongLong());
    case QMetaType::Double: return writer.append(value.toDouble());
    case QMetaType::Float: return writer.append(value.value<float>());
    case QMetaType::QString: return writer.append(value.toString());
    case QMetaType::QByteArray: return writer.append(value.toByteArray());
    case QMetaType::QColor: return writer.append(value.value<QColor>().name(QColor::HexArgb));
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        const QVariantList list = value.toList();
        writer.startArray(static_cast<quint64>(list.size()));
        for (const QVariant& element : list)
            writeVariant(writer, element);
        writer.endArray();
        return;
    }
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        writer.startMap(static_cast<quint64>(map.size()));
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            writer.append(entry.key());
            writeVariant(writer, entry.value());
        }
        writer.endMap();
        return;
    }
    default: return writer.appendNull();
    }
}

void writeProperties(QCborStreamWriter& writer, const KTVArchiveNode& node)
{
    writer.append(kPropertiesTag);
    writer.startArray(1 + node.properties.size());
    writer.append(node.agent);
    for (const KTVArchivedProperty& property : node.properties) {
        writer.startArray(6);
        writer.append(property.key);
        writer.append(property.name);
        writer.append(property.unit);
        writer.append(property.color.name(QColor::HexArgb));
        writer.append(static_cast<quint64>(property.type));
        writer.append(property.visible);
        writer.endArray();
    }
    writer.endArray();
}

void writeNode(QCborStreamWriter& writer, const KTVArchiveNode& node)
{
    if (node.kind == KTVArchiveNode::Kind::Value)
        return writeVariant(writer, node.value);
    if (node.kind == KTVArchiveNode::Kind::Properties)
        return writeProperties(writer, node);
    writer.append(kObjectTag);
    writer.startMap(node.members.size());
    for (const auto& [key, member] : node.members) {
        writer.append(key);
        writeNode(writer, member);
    }
    writer.endMap();
}

/// Parses the bytes; anything unexpected is reported as a damaged archive.
class Parser {
public:
    explicit Parser(const QByteArray& data) : m_size(data.size()), m_reader(data) {}

    KTVArchiveNode archive()
    {
        expect(m_reader.isTag() && m_reader.toTag() == QCborTag(QCborKnownTags::Signature));
        next();
        enter(m_reader.isArray());
        expect(text() == QLatin1String(kFormatName));
        const qint64 version = integer();
        if (version > kFormatVersion)
            throw ReportableError(QStringLiteral("A stored view was made by a newer Plotix: update Plotix to see it."));
        expect(version == kFormatVersion);
        KTVArchiveNode root = node(0);
        expect(root.kind == KTVArchiveNode::Kind::Object);
        leave();
        expect(m_reader.lastError() == QCborError::NoError && m_reader.currentOffset() == m_size);
        return root;
    }

private:
    [[noreturn]] static void fail()
    {
        throw ReportableError(QStringLiteral("A stored view is damaged: delete it and make it anew."));
    }
    static void expect(bool condition)
    {
        if (!condition)
            fail();
    }
    void next() { expect(m_reader.next()); }
    void enter(bool condition) { expect(condition && m_reader.enterContainer()); }
    void leave() { expect(!m_reader.hasNext() && m_reader.leaveContainer()); }

    QString text()
    {
        expect(m_reader.isString());
        QString text;
        auto part = m_reader.readString();
        for (; part.status == QCborStreamReader::Ok; part = m_reader.readString())
            text += part.data;
        expect(part.status == QCborStreamReader::EndOfString);
        return text;
    }

    QByteArray byteArray()
    {
        QByteArray bytes;
        auto part = m_reader.readByteArray();
        for (; part.status == QCborStreamReader::Ok; part = m_reader.readByteArray())
            bytes += part.data;
        expect(part.status == QCborStreamReader::EndOfString);
        return bytes;
    }

    qint64 integer()
    {
        expect(m_reader.isInteger());
        const qint64 value = m_reader.toInteger();
        next();
        return value;
    }

    bool boolean()
    {
        expect(m_reader.isBool());
        const bool value = m_reader.toBool();
        next();
        return value;
    }

    KTVArchiveNode node(int depth)
    {
        expect(depth < kDeepest);
        KTVArchiveNode result;
        if (!m_reader.isTag()) {
            result.value = variant(depth);
            return result;
        }
        const QCborTag tag = m_reader.toTag();
        next();
        if (tag == kPropertiesTag)
            return properties();
        expect(tag == kObjectTag);
        result.kind = KTVArchiveNode::Kind::Object;
        enter(m_reader.isMap());
        while (m_reader.hasNext()) {
            const QString key = text();
            result.members[key] = node(depth + 1);
        }
        leave();
        return result;
    }

    KTVArchiveNode properties()
    {
        KTVArchiveNode result;
        result.kind = KTVArchiveNode::Kind::Properties;
        enter(m_reader.isArray());
        result.agent = text();
        while (m_reader.hasNext()) {
            enter(m_reader.isArray());
            KTVArchivedProperty property;
            property.key = text();
            property.name = text();
            property.unit = text();
            property.color = QColor(text());
            property.type = static_cast<std::uint32_t>(integer());
            property.visible = boolean();
            leave();
            result.properties.push_back(property);
        }
        leave();
        return result;
    }

    QVariant variant(int depth)
    {
        expect(depth < kDeepest && m_reader.lastError() == QCborError::NoError);
        if (m_reader.isArray() || m_reader.isMap())
            return container(depth);
        if (m_reader.isString())
            return text();
        if (m_reader.isByteArray())
            return byteArray();
        if (m_reader.isInteger())
            return number(integer());
        QVariant value;
        if (m_reader.isBool())
            value = m_reader.toBool();
        else if (m_reader.isDouble())
            value = m_reader.toDouble();
        else if (m_reader.isFloat())
            value = QVariant::fromValue(m_reader.toFloat());
        else
            expect(m_reader.isNull());
        next();
        return value;
    }

    QVariant container(int depth)
    {
        const bool isMap = m_reader.isMap();
        QVariantMap map;
        QVariantList list;
        enter(true);
        while (m_reader.hasNext()) {
            if (!isMap) {
                list.append(variant(depth + 1));
                continue;
            }
            const QString key = text();
            map.insert(key, variant(depth + 1));
        }
        leave();
        return isMap ? QVariant(map) : QVariant(list);
    }

    static QVariant number(qint64 value)
    {
        const bool fits = value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
        return fits ? QVariant(static_cast<int>(value)) : QVariant(value);
    }

    qint64 m_size;
    QCborStreamReader m_reader;
};

}  // namespace

KTVArchiveNode KTVArchiveNode::of(const QVariant& value)
{
    KTVArchiveNode node;
    node.value = value;
    return node;
}

const KTVArchiveNode* KTVArchiveNode::find(const QString& key) const
{
    const auto found = members.find(key);
    return found == members.end() ? nullptr : &found->second;
}

void KTVArchiveNode::set(const QString& key, KTVArchiveNode node)
{
    members.insert_or_assign(key, std::move(node));
}

QByteArray writeKeyedArchive(const KTVArchiveNode& root)
{
    QByteArray data;
    QCborStreamWriter writer(&data);
    writer.append(QCborKnownTags::Signature);
    writer.startArray(3);
    writer.append(QString::fromLatin1(kFormatName));
    writer.append(static_cast<qint64>(kFormatVersion));
    writeNode(writer, root);
    writer.endArray();
    return data;
}

KTVArchiveNode readKeyedArchive(const QByteArray& data)
{
    return Parser(data).archive();
}
