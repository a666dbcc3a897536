#include "base/png/PngEncoding.h"

#include "base/png/PngBlock.h"
#include "base/png/PngRows.h"

#include <QtCore/QtEndian>
#include <libdeflate.h>

#include <algorithm>
#include <iterator>
#include <vector>

// Every row is stored as its difference to the row above: vertical lines and plain background become zeros, whatever
// the colours.

namespace plotix {

namespace {

constexpr quint8 kUpFilter = 2;
constexpr qsizetype kLongestChunk = 0x7fffffff;
constexpr char kSignature[] = "\x89PNG\r\n\x1a\n";

quint32 straight(quint32 pixel)
{
    const quint32 alpha = pixel >> 24;
    if (alpha == 255U)
        return pixel;
    if (alpha == 0U)
        return 0;
    const quint32 factor = 0x00ff00ffU / alpha;
    // A channel above its alpha is no premultiplied colour; it is cut off rather than carried into its neighbour.
    const auto channel = [&](int shift) {
        return std::min(255U, (((pixel >> shift) & 0xffU) * factor + 0x8000U) >> 16) << shift;
    };
    return alpha << 24 | channel(16) | channel(8) | channel(0);
}

bool isOpaque(const PngPixels& picture)
{
    if (picture.alpha == PngAlpha::None)
        return true;
    for (int row = 0; row < picture.height; ++row) {
        const quint32* pixels = picture.pixels + row * picture.stride;
        quint32 all = ~quint32{0};
        for (int column = 0; column < picture.width; ++column)
            all &= pixels[column];
        if (all >> 24 != 255U)
            return false;
    }
    return true;
}

/// The picture with its colours as they were meant, row after row.
std::vector<quint32> straightPixels(const PngPixels& picture)
{
    std::vector<quint32> converted;
    converted.reserve(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
    for (int row = 0; row < picture.height; ++row) {
        const quint32* pixels = picture.pixels + row * picture.stride;
        std::transform(pixels, pixels + picture.width, std::back_inserter(converted), straight);
    }
    return converted;
}

void appendNumber(QByteArray& file, quint32 number)
{
    const quint32 bigEndian = qToBigEndian(number);
    file.append(reinterpret_cast<const char*>(&bigEndian), sizeof bigEndian);
}

/// The picture's rows in zlib's envelope: two bytes, the block, a checksum over what was compressed.
QByteArray compressedRows(const PngPixels& picture, int bytesPerPixel)
{
    const auto width = static_cast<std::size_t>(picture.width);
    const std::vector<quint32> nothing(width, 0);
    std::vector<quint64> repeats((width + 63) / 64);
    const std::size_t length = 1 + width * static_cast<std::size_t>(bytesPerPixel);
    std::vector<quint8> bytes(length + kPngRowSlack);
    bytes[0] = kUpFilter;
    PngBlock block(picture.width, bytesPerPixel, kUpFilter);
    const PngRowKernels& kernels = PngRowKernels::best();
    const auto subtract = bytesPerPixel == 3 ? kernels.color : kernels.colorAndAlpha;
    quint32 checksum = 1;
    for (int row = 0; row < picture.height; ++row) {
        const quint32* pixels = picture.pixels + row * picture.stride;
        subtract({pixels, row > 0 ? pixels - picture.stride : nothing.data(), picture.width, block.nextRow(),
                  bytes.data() + 1, repeats.data()});
        block.addRow(repeats.data());
        checksum = libdeflate_adler32(checksum, bytes.data(), length);
    }
    QByteArray data("\x78\x01", 2);
    data.resize(data.size() + static_cast<qsizetype>(block.finish()));
    auto* const begin = reinterpret_cast<quint8*>(data.data());
    data.truncate(block.write(begin + 2) - begin);
    appendNumber(data, checksum);
    return data;
}

QByteArray compressedColorAndAlpha(const PngPixels& picture)
{
    if (picture.alpha != PngAlpha::Premultiplied)
        return compressedRows(picture, 4);
    const std::vector<quint32> pixels = straightPixels(picture);
    PngPixels meant = picture;
    meant.pixels = pixels.data();
    meant.stride = picture.width;
    return compressedRows(meant, 4);
}

/// A chunk: length, four letters, content, checksum over letters and content.
void appendChunk(QByteArray& file, const char* letters, const QByteArray& content)
{
    appendNumber(file, static_cast<quint32>(content.size()));
    const qsizetype start = file.size();
    file.append(letters, 4);
    file.append(content);
    appendNumber(file, libdeflate_crc32(0, file.constData() + start, static_cast<std::size_t>(file.size() - start)));
}

QByteArray headerOf(const PngPixels& picture, bool opaque)
{
    QByteArray header;
    appendNumber(header, static_cast<quint32>(picture.width));
    appendNumber(header, static_cast<quint32>(picture.height));
    header.append(char(8));                     // bits a channel
    header.append(opaque ? char(2) : char(6));  // colour, with alpha or without
    header.append(3, char(0));                  // the one compression, the one set of filters, not interlaced
    return header;
}

}  // namespace

QByteArray encodedPng(const PngPixels& picture)
{
    if (picture.pixels == nullptr || picture.width <= 0 || picture.height <= 0)
        return {};
    const bool opaque = isOpaque(picture);
    const QByteArray data = opaque ? compressedRows(picture, 3) : compressedColorAndAlpha(picture);
    if (data.size() > kLongestChunk)
        return {};
    QByteArray file;
    file.reserve(data.size() + 128);
    file.append(kSignature, 8);
    appendChunk(file, "IHDR", headerOf(picture, opaque));
    if (picture.dotsPerMetreX > 0 && picture.dotsPerMetreY > 0) {
        QByteArray density;
        appendNumber(density, static_cast<quint32>(picture.dotsPerMetreX));
        appendNumber(density, static_cast<quint32>(picture.dotsPerMetreY));
        density.append(char(1));  // metres
        appendChunk(file, "pHYs", density);
    }
    appendChunk(file, "IDAT", data);
    appendChunk(file, "IEND", {});
    return file;
}

}  // namespace plotix
