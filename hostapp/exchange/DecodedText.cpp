#include "hostapp/exchange/DecodedText.h"

#include <QtCore/QStringDecoder>

namespace plotix {

QString decodedText(std::string_view bytes)
{
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(view);
    return decoder.hasError() ? QString::fromLatin1(view) : text;
}

}  // namespace plotix
