#include "plugins/PlotixPlugIn/host/KTVDragData.h"

#include "base/ReportableError.h"
#include "plugins/PlotixPlugIn/host/KTVArchiveNode.h"

#include <QtCore/QMimeData>
#include <QtCore/QStringDecoder>
#include <QtCore/QtEndian>

namespace {

// Stored: never change.
const QString kRoot = QStringLiteral("root");
const QByteArray kOldMagic = QByteArrayLiteral("KTVKEYS1");

/// Walks over bytes and never past their end.
class Reader {
public:
    explicit Reader(QByteArrayView bytes) : m_rest(bytes) {}

    bool isAtEnd() const { return m_rest.isEmpty(); }

    std::optional<QByteArrayView> take(qsizetype length)
    {
        if (length > m_rest.size())
            return std::nullopt;
        const QByteArrayView taken = m_rest.first(length);
        m_rest = m_rest.sliced(length);
        return taken;
    }

    std::optional<quint32> takeNumber()
    {
        const auto bytes = take(sizeof(quint32));
        if (!bytes)
            return std::nullopt;
        return qFromLittleEndian<quint32>(bytes->data());
    }

    std::optional<QString> takeString()
    {
        const auto length = takeNumber();
        const auto bytes = length ? take(*length) : std::nullopt;
        if (!bytes)
            return std::nullopt;
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        QString text = decoder(*bytes);
        if (decoder.hasError())
            return std::nullopt;
        return text;
    }

private:
    QByteArrayView m_rest;
};

std::optional<QStringList> propertyNamesFromOldData(const QByteArray& data)
{
    Reader reader(data);
    reader.take(kOldMagic.size());
    const auto count = reader.takeNumber();
    if (!count)
        return std::nullopt;
    QStringList names;  // grows with what is really there, so that a huge count costs nothing
    for (quint32 index = 0; index < *count; ++index) {
        const auto name = reader.takeString();
        if (!name)
            return std::nullopt;
        names.append(*name);
    }
    if (!reader.isAtEnd())
        return std::nullopt;
    return names;
}

/// The root object of an archive; null for bytes that are none.
QVariant rootOfArchive(const QByteArray& data)
{
    try {
        const KTVArchiveNode archive = readKeyedArchive(data);
        const KTVArchiveNode* root = archive.find(kRoot);
        return root && root->kind == KTVArchiveNode::Kind::Value ? root->value : QVariant();
    } catch (const plotix::ReportableError&) {
        return {};  // its words are about stored views
    }
}

}  // namespace

QByteArray dragDataFromPropertyNames(const QStringList& propertyNames)
{
    KTVArchiveNode archive;
    archive.kind = KTVArchiveNode::Kind::Object;
    archive.set(kRoot, KTVArchiveNode::of(propertyNames));
    return writeKeyedArchive(archive);
}

std::optional<QStringList> propertyNamesFromDragData(const QByteArray& data)
{
    if (data.startsWith(kOldMagic))
        return propertyNamesFromOldData(data);
    const QVariant root = rootOfArchive(data);
    if (root.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    QStringList names;
    for (const QVariant& element : root.toList()) {
        if (element.typeId() != QMetaType::QString)
            return std::nullopt;
        names.append(element.toString());
    }
    return names;
}

std::unique_ptr<QMimeData> mimeDataForPropertyNames(const QString& dragType, const QStringList& propertyNames)
{
    auto mimeData = std::make_unique<QMimeData>();
    mimeData->setData(dragType, dragDataFromPropertyNames(propertyNames));
    return mimeData;
}
