#include "records/sqlite/SegmentReader.h"

#include "records/columns/SealedColumn.h"
#include "records/columns/ValidityBits.h"
#include "records/sqlite/ChangedColumn.h"
#include "records/sqlite/RecordSchema.h"

#include <sqlite3.h>

#include <array>
#include <cstring>

namespace plotix {

SegmentReader::~SegmentReader()
{
    sqlite3_blob_close(m_blob);
}

bool SegmentReader::read(const ChunkPart& part, RowId property, double* values, codec::Into into)
{
    const std::span<double> target(values, part.count);
    const auto room = [target] { return target; };
    return readWith(part, property, room, [&](int codec, std::span<const std::byte> bytes) {
        return codec::decode(codec, bytes, part.chunk.n, valid(), part.first, target, into);
    });
}

bool SegmentReader::readInPieces(const ChunkPart& part, RowId property, const codec::TakePiece& take)
{
    bool isTaken = false;
    const auto room = [&] {
        m_plain.resize(part.count);
        return std::span<double>(m_plain);
    };
    const bool isThere = readWith(part, property, room, [&](int codec, std::span<const std::byte> bytes) {
        isTaken = true;
        return codec::decodeInPieces(codec, bytes, part.chunk.n, valid(), part.first, part.count, take);
    });
    for (std::size_t done = 0; isThere && !isTaken && done < part.count; done += codec::kPiece)
        take(std::span<const double>(m_plain).subspan(done, std::min(codec::kPiece, part.count - done)));
    return isThere;
}

/// Plain doubles go to `room()`; all else is handed to `decode`, which answers false where it does not fit.
template <class RoomForPlain, class Decode>
bool SegmentReader::readWith(const ChunkPart& part, RowId property, const RoomForPlain& room, const Decode& decode)
{
    const qint64 id = part.chunk.id * schema::kPropertiesPerChunk + property;
    if (!readHead(part, id))
        return false;
    const std::size_t size = openBlob(id);
    const std::size_t plain = part.chunk.n * sizeof(double);
    const std::size_t seal = sealed::isSealed(m_codec) ? checksum::kBytes : 0;
    // No segment takes more bytes than its plain doubles would.
    if (size > plain + seal || size < seal)
        failAsWrongLength(part);
    constexpr int kRaw = static_cast<int>(schema::Codec::Raw);
    if (m_codec == kRaw && size == plain) {
        readBlob(part.first * sizeof(double), std::as_writable_bytes(room()));
        return true;
    }
    const bool isPlain = m_codec == kRaw + sealed::kSealed && part.isWhole() && size == plain + seal;
    const std::span<std::byte> bytes = m_connection.room(isPlain ? 0 : size);
    if (!isPlain)
        readBlob(0, bytes);
    const int codec = m_codec - (seal > 0 ? sealed::kSealed : 0);
    const bool isIntact = isPlain     ? readWholeRaw(part, property, room())
                          : seal == 0 ? true
                                      : checksum::isIntact(bytes, checksumBefore(part, property, codec));
    if (!isIntact)
        failAsChanged(m_connection.database, property, part.chunk);
    if (!isPlain && !decode(codec, bytes.first(size - seal)))
        failAsWrongLength(part);
    return true;
}

/// Plain doubles go straight to where they belong; whether their checksum is right.
bool SegmentReader::readWholeRaw(const ChunkPart& part, RowId property, std::span<double> target)
{
    std::array<std::byte, checksum::kBytes> wanted;
    readBlob(0, std::as_writable_bytes(target));
    readBlob(target.size_bytes(), wanted);
    const std::uint64_t sum = checksum::of(std::as_bytes(target), checksumBefore(part, property, 0));
    return std::memcmp(&sum, wanted.data(), sizeof sum) == 0;
}

std::uint64_t SegmentReader::checksumBefore(const ChunkPart& part, RowId property, int codec) const
{
    const auto bytes = std::as_bytes(std::span(m_valid));
    return sealed::checksumBefore(
        {static_cast<std::uint64_t>(property), part.chunk.n, bytes.first(m_hasValid ? (part.chunk.n + 7) / 8 : 0)},
        codec);
}

bool SegmentReader::readHead(const ChunkPart& part, qint64 id)
{
    Statement& head = m_connection.segmentHead;
    head.bind(1, id);
    const bool found = head.step();
    if (found) {
        m_codec = static_cast<int>(head.integer(0));
        m_hasValid = !head.isNothing(1);
        if (m_hasValid) {
            if (head.byteCount(1) != (part.chunk.n + 7) / 8)
                failAsWrongLength(part);
            m_valid.assign(bits::wordsFor(part.chunk.n), 0);
            std::memcpy(m_valid.data(), head.rawBytes(1), head.byteCount(1));
        }
    }
    head.reset();
    return found;
}

// A statement's column would assemble every blob in memory of its own first; a blob that stays open copies the pages
// straight to where they go, and finds the next segment beside the last one.
std::size_t SegmentReader::openBlob(qint64 id)
{
    const int found =
        m_blob ? sqlite3_blob_reopen(m_blob, id)
               : sqlite3_blob_open(m_connection.database.handle(), "main", "segment", "data", id, 0, &m_blob);
    if (found != SQLITE_OK)
        m_connection.database.fail(found);
    return static_cast<std::size_t>(sqlite3_blob_bytes(m_blob));
}

void SegmentReader::readBlob(std::size_t first, std::span<std::byte> target)
{
    const int done = sqlite3_blob_read(m_blob, target.data(), static_cast<int>(target.size()), static_cast<int>(first));
    if (done != SQLITE_OK)
        m_connection.database.fail(done);
}

void SegmentReader::readTimes(const ChunkPart& part, double* times, codec::Into into)
{
    if (!findTimes(part, times, into))
        m_connection.database.failAsDamaged(QStringLiteral("chunk %1 has no times").arg(part.chunk.id));
}

bool SegmentReader::findTimes(const ChunkPart& part, double* times, codec::Into into)
{
    if (!read(part, kTimes, times, into))
        return false;
    const bool fits = (part.first > 0 || times[0] == part.chunk.t0) &&
                      (part.first + part.count < part.chunk.n || times[part.count - 1] == part.chunk.t1);
    if (!fits)
        m_connection.database.failAsDamaged(QStringLiteral("chunk %1 has other times than it says").arg(part.chunk.id));
    return true;
}

void SegmentReader::failAsWrongLength(const ChunkPart& part) const
{
    m_connection.database.failAsDamaged(
        QStringLiteral("chunk %1 has a segment that cannot be read").arg(part.chunk.id));
}

}  // namespace plotix
