#include "base/PngEncoding.h"

#include <QtCore/QtEndian>
#include <libdeflate.h>

#include <algorithm>
#include <memory>
#include <vector>

// Every row is stored as its difference to the row above: what stands upright in a graph, and its even ground, become
// zeros, whatever the colours.

namespace plotix {

namespace {

constexpr quint8 kUpFilter = 2;
constexpr int kCompressionLevel = 2;  // on drawings quicker than 1, and smaller
constexpr char kSignature[] = "\x89PNG\r\n\x1a\n";

struct CompressorDeleter {
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

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

/// Packs one row into its bytes; kBytes a pixel.
template <int kBytes>
void packRow(quint8* bytes, const quint32* pixels, int width)
{
    for (int column = 0; column < width; ++column, bytes += kBytes) {
        const quint32 pixel = pixels[column];
        bytes[0] = static_cast<quint8>(pixel >> 16);
        bytes[1] = static_cast<quint8>(pixel >> 8);
        bytes[2] = static_cast<quint8>(pixel);
        if constexpr (kBytes == 4)
            bytes[3] = static_cast<quint8>(pixel >> 24);
    }
}

/// All rows, filtered, each with the filter's number in front.
template <int kBytes>
std::vector<quint8> filteredRows(const PngPixels& picture)
{
    const auto length = static_cast<std::size_t>(picture.width) * kBytes;
    std::vector<quint8> filtered((length + 1) * static_cast<std::size_t>(picture.height));
    std::vector<quint8> above(length, 0);
    std::vector<quint8> row(length);
    std::vector<quint32> converted(kBytes == 4 ? static_cast<std::size_t>(picture.width) : 0);
    quint8* to = filtered.data();
    for (int number = 0; number < picture.height; ++number) {
        const quint32* pixels = picture.pixels + number * picture.stride;
        if (kBytes == 4 && picture.alpha == PngAlpha::Premultiplied) {
            std::transform(pixels, pixels + picture.width, converted.begin(), straight);
            pixels = converted.data();
        }
        packRow<kBytes>(row.data(), pixels, picture.width);
        *to++ = kUpFilter;
        for (std::size_t index = 0; index < length; ++index)
            to[index] = static_cast<quint8>(row[index] - above[index]);
        to += length;
        std::swap(row, above);
    }
    return filtered;
}

QByteArray compressed(const std::vector<quint8>& bytes)
{
    const std::unique_ptr<libdeflate_compressor, CompressorDeleter> compressor(
        libdeflate_alloc_compressor(kCompressionLevel));
    if (!compressor)
        return {};
    QByteArray data(static_cast<qsizetype>(libdeflate_zlib_compress_bound(compressor.get(), bytes.size())),
                    Qt::Uninitialized);
    const std::size_t size = libdeflate_zlib_compress(compressor.get(), bytes.data(), bytes.size(), data.data(),
                                                      static_cast<std::size_t>(data.size()));
    data.truncate(static_cast<qsizetype>(size));
    return data;
}

void appendNumber(QByteArray& file, quint32 number)
{
    const quint32 bigEndian = qToBigEndian(number);
    file.append(reinterpret_cast<const char*>(&bigEndian), sizeof bigEndian);
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
    const QByteArray data = compressed(opaque ? filteredRows<3>(picture) : filteredRows<4>(picture));
    if (data.isEmpty())
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
