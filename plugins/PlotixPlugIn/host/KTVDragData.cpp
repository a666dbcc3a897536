#include "plugins/PlotixPlugIn/host/KTVDragData.h"

#include <QtCore/QMimeData>
#include <QtCore/QStringDecoder>
#include <QtCore/QtEndian>

namespace {

const QByteArray kMagic = QByteArrayLiteral("KTVKEYS1");

void appendNumber(QByteArray& data, qsizetype number)
{
    const quint32 bytes = qToLittleEndian(static_cast<quint32>(number));
    data.append(reinterpret_cast<const char*>(&bytes), sizeof bytes);
}

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

}  // namespace

QByteArray dragDataFromPropertyNames(const QStringList& propertyNames)
{
    QByteArray data = kMagic;
    appendNumber(data, propertyNames.size());
    for (const QString& name : propertyNames) {
        const QByteArray bytes = name.toUtf8();
        appendNumber(data, bytes.size());
        data.append(bytes);
    }
    return data;
}

std::optional<QStringList> propertyNamesFromDragData(const QByteArray& data)
{
    Reader reader(data);
    const auto magic = reader.take(kMagic.size());
    if (!magic || *magic != kMagic)
        return std::nullopt;
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

std::unique_ptr<QMimeData> mimeDataForPropertyNames(const QString& dragType, const QStringList& propertyNames)
{
    auto mimeData = std::make_unique<QMimeData>();
    mimeData->setData(dragType, dragDataFromPropertyNames(propertyNames));
    return mimeData;
}
