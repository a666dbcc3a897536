#include "hostapp/document/KeptRecords.h"

#include "base/ReportableError.h"
#include "records/store/EncodedChunk.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

#include <algorithm>

namespace plotix {

namespace {

[[noreturn]] void failAsDamaged()
{
    throw ReportableError(QStringLiteral("What was kept to undo this is damaged: it cannot be undone."));
}

void writeSegment(QDataStream& out, const EncodedChunk::Segment& segment, std::size_t count)
{
    out << static_cast<quint32>(segment.property) << static_cast<quint8>(segment.storedCodec())
        << static_cast<quint8>(segment.valid.empty() ? 0 : 1) << static_cast<quint32>(segment.values.bytes.size());
    if (!segment.valid.empty())
        out.writeRawData(reinterpret_cast<const char*>(segment.valid.data()), static_cast<int>((count + 7) / 8));
    out.writeRawData(reinterpret_cast<const char*>(segment.values.bytes.data()),
                     static_cast<int>(segment.values.bytes.size()));
}

struct Segment {
    quint32 property = 0;
    std::vector<double> values;
    std::vector<std::uint64_t> valid;  // empty: every element
};

Segment readSegment(QDataStream& in, std::size_t count)
{
    Segment segment;
    quint8 codec = 0, hasValid = 0;
    quint32 size = 0;
    in >> segment.property >> codec >> hasValid >> size;
    const auto left = static_cast<quint64>(in.device()->bytesAvailable());
    const std::size_t validBytes = hasValid ? (count + 7) / 8 : 0;
    if (in.status() != QDataStream::Ok || size + validBytes > left)
        failAsDamaged();
    if (hasValid) {
        segment.valid.assign((count + 63) / 64, 0);
        in.readRawData(reinterpret_cast<char*>(segment.valid.data()), static_cast<int>(validBytes));
    }
    std::vector<std::byte> bytes(size);
    in.readRawData(reinterpret_cast<char*>(bytes.data()), static_cast<int>(size));
    segment.values.resize(count);
    const auto valid = std::as_bytes(std::span(segment.valid)).first(validBytes);
    const auto column = sealed::opened(codec, bytes, {segment.property, count, valid});
    if (!column || !codec::decode(column->codec, column->bytes, count,
                                  segment.valid.empty() ? nullptr : segment.valid.data(), 0, segment.values))
        failAsDamaged();
    return segment;
}

}  // namespace

std::vector<QByteArray> keptBytes(const RecordBlock& block)
{
    std::vector<QByteArray> pieces;
    const RecordsView all = RecordsView::of(block);
    for (std::size_t first = 0; first < all.size; first += schema::kRecordsPerChunk) {
        const std::size_t count = std::min<std::size_t>(schema::kRecordsPerChunk, all.size - first);
        const EncodedChunk chunk = encodedChunk(all.slice(first, count));
        QDataStream out(&pieces.emplace_back(), QIODevice::WriteOnly);
        out.setByteOrder(QDataStream::LittleEndian);
        out << static_cast<quint32>(count);
        for (const EncodedChunk::Segment& segment : chunk.segments)
            writeSegment(out, segment, count);
    }
    return pieces;
}

RecordBlock keptRecords(const QByteArray& bytes)
{
    QDataStream in(bytes);
    in.setByteOrder(QDataStream::LittleEndian);
    quint32 count = 0;
    in >> count;
    if (count == 0 || count > schema::kRecordsPerChunk)
        failAsDamaged();
    RecordBlock block;
    while (!in.atEnd()) {
        Segment segment = readSegment(in, count);
        SharedArray<double> values = SharedArray<double>::fromVector(std::move(segment.values));
        if (segment.property == kTimes)
            block.times = std::move(values);
        else
            block.columns.push_back({segment.property, std::move(values),
                                     segment.valid.empty() ? ValidityBitmap()
                                                           : ValidityBitmap(SharedArray<std::uint64_t>::fromVector(
                                                                 std::move(segment.valid)))});
    }
    if (block.times.size() != count)
        failAsDamaged();
    return block;
}

}  // namespace plotix
