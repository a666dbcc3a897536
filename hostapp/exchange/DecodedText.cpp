#include "hostapp/exchange/DecodedText.h"

#include <QtCore/QStringDecoder>

#include <unicode/unistr.h>

namespace plotix {

QString decodedText(std::string_view bytes)
{
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(view);
    if (!decoder.hasError())
        return text;
    const icu::UnicodeString western(bytes.data(), static_cast<int32_t>(bytes.size()), "windows-1252");
    return QString::fromUtf16(western.getBuffer(), western.length());
}

}  // namespace plotix
