#include "records/columns/ColumnCodec.h"

#include "records/columns/PackedColumn.h"
#include "records/columns/PackedEncoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace plotix::codec {

namespace {

Encoded raw(schema::Codec codec, std::span<const double> values)
{
    Encoded encoded{codec, std::vector<std::byte>(values.size_bytes())};
    if (!values.empty())
        std::memcpy(encoded.bytes.data(), values.data(), values.size_bytes());
    return encoded;
}

bool isConstant(std::span<const double> values)
{
    return values.size() > 1 && std::memcmp(&values[0], &values[1], (values.size() - 1) * sizeof(double)) == 0;
}

PackedEncoder::Result shorter(PackedEncoder::Result one, PackedEncoder::Result other)
{
    const bool isOther = one.bytes.empty() || (!other.bytes.empty() && other.bytes.size() < one.bytes.size());
    return isOther ? std::move(other) : std::move(one);
}

bool decodeRaw(std::span<const std::byte> bytes, std::size_t count, std::size_t first, std::span<double> target)
{
    if (bytes.size() != count * sizeof(double))
        return false;
    if (!target.empty())
        std::memcpy(target.data(), bytes.data() + first * sizeof(double), target.size_bytes());
    return true;
}

bool decodeConstant(std::span<const std::byte> bytes, std::span<double> target)
{
    double value = 0;
    if (bytes.size() != sizeof value)
        return false;
    std::memcpy(&value, bytes.data(), sizeof value);
    std::fill(target.begin(), target.end(), value);
    return true;
}

}  // namespace

Encoded encodedValues(std::span<const double> values, const std::uint64_t* valid, std::size_t firstValid)
{
    if (isConstant(values))
        return raw(schema::Codec::Constant, values.first(1));
    // A handful of values never gets shorter by packing.
    if (values.size() <= ColumnKernels::kRow)
        return raw(schema::Codec::Raw, values);
    PackedEncoder encoder(values, valid, firstValid);
    PackedEncoder::Result result = encoder.decimals();
    if (result.bytes.empty())
        result = shorter(encoder.table(), encoder.patterns());
    if (result.bytes.empty())
        return raw(schema::Codec::Raw, values);
    return {result.codec, std::move(result.bytes)};
}

Encoded plainValues(std::span<const double> values)
{
    return raw(schema::Codec::Raw, values);
}

// Regular times are whole numbers on a line: runs with a slope and nothing left to pack.
Encoded encodedTimes(std::span<const double> times)
{
    return encodedValues(times);
}

bool decode(int codec, std::span<const std::byte> bytes, std::size_t count, const std::uint64_t* valid,
            std::size_t first, std::span<double> target, Into into)
{
    if (codec == static_cast<int>(schema::Codec::Raw))
        return decodeRaw(bytes, count, first, target);
    if (codec == static_cast<int>(schema::Codec::Constant))
        return decodeConstant(bytes, target);
    const std::optional<PackedColumn> column = PackedColumn::read(codec, bytes, count);
    if (column)
        column->decode(valid, first, target, into);
    return column.has_value();
}

bool decodeInPieces(int codec, std::span<const std::byte> bytes, std::size_t count, const std::uint64_t* valid,
                    std::size_t first, std::size_t elements, const TakePiece& take)
{
    const std::optional<PackedColumn> column = PackedColumn::read(codec, bytes, count);
    // Each piece goes through all exceptions: where they are many, once is enough.
    if (!column || column->exceptions() > kPiece / 8) {
        std::vector<double> whole(elements);
        if (!decode(codec, bytes, count, valid, first, whole))
            return false;
        for (std::size_t done = 0; done < elements; done += kPiece)
            take(std::span<const double>(whole).subspan(done, std::min(kPiece, elements - done)));
        return true;
    }
    alignas(64) std::array<double, kPiece> piece;
    for (std::size_t done = 0; done < elements; done += kPiece) {
        const std::span<double> part = std::span(piece).first(std::min(kPiece, elements - done));
        column->decode(valid, first + done, part);
        take(part);
    }
    return true;
}

}  // namespace plotix::codec
