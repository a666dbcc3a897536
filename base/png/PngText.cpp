#include "base/png/PngText.h"

#include <QtCore/QtEndian>

#include <libdeflate.h>

namespace plotix {

namespace {

// The file begins with eight bytes; then come chunks: length, name, data, check sum. The last one, without data, is
// IEND.
constexpr qsizetype kSignature = 8, kBeforeData = 8, kAfterData = 4, kLastChunk = 12;
const QByteArray kUncompressed(4, '\0');  // not compressed, by no method, in no language, the keyword not translated

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

bool isPng(const QByteArray& png)
{
    return png.startsWith("\x89PNG\r\n\x1a\n") && png.size() >= kSignature + kLastChunk &&
           png.mid(png.size() - kLastChunk + 4, 4) == "IEND";
}

}  // namespace

QByteArray pngWithText(const QByteArray& png, const QByteArray& keyword, const QByteArray& text)
{
    if (!isPng(png))
        return png;
    const QByteArray checked = "iTXt" + keyword + '\0' + kUncompressed + text;
    const quint32 sum = libdeflate_crc32(0, checked.constData(), static_cast<std::size_t>(checked.size()));
    QByteArray with = png;
    with.insert(png.size() - kLastChunk, bigEndian(quint32(checked.size() - 4)) + checked + bigEndian(sum));
    return with;
}

std::optional<QByteArray> textInPng(const QByteArray& png, const QByteArray& keyword)
{
    if (!png.startsWith("\x89PNG\r\n\x1a\n"))
        return std::nullopt;
    const QByteArray beginning = keyword + '\0' + kUncompressed;
    for (qsizetype at = kSignature; at + kLastChunk <= png.size();) {
        const auto length = qsizetype(qFromBigEndian<quint32>(png.constData() + at));
        if (length > png.size() - at - kLastChunk)
            return std::nullopt;  // cut off
        const QByteArray data = png.mid(at + kBeforeData, length);
        if (png.mid(at + 4, 4) == "iTXt" && data.startsWith(beginning))
            return data.mid(beginning.size());
        at += kBeforeData + length + kAfterData;
    }
    return std::nullopt;
}

}  // namespace plotix
