#include "base/png/PngBlock.h"

#include "base/png/DeflateSymbols.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <bit>

namespace plotix {

namespace {

constexpr int kLongestCode = 12;  // four of them and what is left of a byte fit the writer's 64 bits
constexpr int kLongestLengthCode = 7;
constexpr std::size_t kEndOfBlock = 256;
constexpr int kSlotBits = 10;
constexpr std::array<std::size_t, 19> kLengthOrder{16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};

/// The slot that remembers where a pixel was seen. Knuth's multiplicative hashing.
std::size_t slotOf(quint32 pixel)
{
    return pixel * 0x9e3779b1U >> (32 - kSlotBits);
}

/// The first column from `from` on whose bit is not `bit`, or `width`.
int endOfStretch(const quint64* words, int from, int width, bool bit)
{
    const quint64 flip = bit ? ~quint64{0} : 0;
    int word = from >> 6;
    quint64 changes = ((words[word] ^ flip) >> (from & 63)) << (from & 63);
    while (changes == 0 && (word + 1) * 64 < width)
        changes = words[++word] ^ flip;
    return changes == 0 ? width : std::min(width, word * 64 + std::countr_zero(changes));
}

/// Calls for the stretches of a row in turn, with their first column and length; some may be empty.
template <class OnLiterals, class OnRun>
inline void eachStretch(const quint64* repeats, int width, const OnLiterals& onLiterals, const OnRun& onRun)
{
    for (int column = 0; column < width;) {
        const int run = endOfStretch(repeats, column, width, false);
        onLiterals(column, run - column);
        column = run < width ? endOfStretch(repeats, run, width, true) : width;
        onRun(column - run);
    }
}

}  // namespace

/// Bits to bytes, lowest first. Each call may write eight bytes ahead.
class PngBlock::Writer {
public:
    explicit Writer(quint8* to) : m_to(to) {}
    /// Requires: no bits beyond length; length <= 56.
    void put(quint64 bits, int length)
    {
        m_bits |= bits << m_count;
        m_count += length;
        qToLittleEndian(m_bits, m_to);
        m_to += m_count >> 3;
        m_bits >>= m_count & ~7;
        m_count &= 7;
    }
    quint8* end() const { return m_to + (m_count > 0 ? 1 : 0); }

private:
    quint8* m_to;
    quint64 m_bits = 0;
    int m_count = 0;
};

PngBlock::PngBlock(int width, int bytesPerPixel, quint8 filter)
    : m_width(static_cast<std::size_t>(width)),
      m_bytesPerPixel(static_cast<std::size_t>(bytesPerPixel)),
      m_filter(filter),
      m_rowBytes(1 + m_width * m_bytesPerPixel),
      m_rowsKept(kFarthestMatch / m_rowBytes + 2),
      m_longest(kLongestMatch / m_bytesPerPixel),
      m_shortest(bytesPerPixel == 3 ? 2 : 1),  // a distance is as long as the three bytes it would stand for
      m_window(m_rowsKept * m_width),
      m_lastSeen(std::size_t{1} << kSlotBits)
{
    m_lastSeen[slotOf(0)].pixel = 1;  // a pixel of another slot, as 0 is for all others: nothing was seen yet
    m_distanceCounts[distanceSymbol(m_bytesPerPixel).symbol] = 1;  // so that there is a code for distances
}

void PngBlock::addRow(const quint64* repeats)
{
    const auto position = [](int column) { return static_cast<std::size_t>(column); };
    eachStretch(
        repeats, static_cast<int>(m_width),
        [&](int first, int count) { addUnlikeTheirNeighbours(position(first), position(first + count)); },
        [&](int pixels) { addRun(position(pixels)); });
    m_rowEnds.push_back(m_tokens.size());
}

void PngBlock::addRun(std::size_t pixels)
{
    if (pixels == 0)
        return;
    m_tokens.push_back({static_cast<quint32>(m_bytesPerPixel), static_cast<quint32>(pixels)});
    const std::size_t whole = (pixels - 1) / m_longest;
    m_lengthCounts[m_longest] += static_cast<quint32>(whole);
    ++m_lengthCounts[pixels - whole * m_longest];
    m_distanceCounts[m_bytesPerPixel - 1] += static_cast<quint32>(whole + 1);
}

void PngBlock::addUnlikeTheirNeighbours(std::size_t first, std::size_t end)
{
    const std::size_t row = m_rowEnds.size();
    const quint32* pixels = rowAt(row);
    for (std::size_t column = first; column < end;) {
        const quint32 pixel = pixels[column];
        LastSeen& seen = m_lastSeen[slotOf(pixel)];
        const std::size_t repeated = seen.pixel == pixel ? repeatedAt(seen, column, end) : 0;
        const bool isMatch = repeated >= m_shortest;
        if (isMatch) {
            addMatch(repeated, (row - seen.row) * m_rowBytes + (column - seen.column) * m_bytesPerPixel);
        } else {
            m_tokens.push_back({pixel, 0});
            countPixel(pixel);
        }
        seen = {pixel, static_cast<quint32>(row), static_cast<quint32>(column)};
        column += isMatch ? repeated : 1;
    }
}

/// How many pixels from the column on are like those at a place where the first of them was seen; 0 when it is too far.
std::size_t PngBlock::repeatedAt(const LastSeen& seen, std::size_t column, std::size_t end)
{
    const std::size_t row = m_rowEnds.size();
    if ((row - seen.row) * m_rowBytes + column * m_bytesPerPixel > kFarthestMatch + seen.column * m_bytesPerPixel)
        return 0;
    const quint32* before = rowAt(seen.row) + seen.column;
    const quint32* now = rowAt(row) + column;
    const std::size_t most = std::min({m_longest, end - column, m_width - seen.column});
    std::size_t pixels = 1;
    while (pixels < most && before[pixels] == now[pixels])
        ++pixels;
    return pixels;
}

void PngBlock::addMatch(std::size_t pixels, std::size_t distance)
{
    m_tokens.push_back({static_cast<quint32>(distance), static_cast<quint32>(pixels)});
    ++m_lengthCounts[pixels];
    ++m_distanceCounts[distanceSymbol(distance).symbol];
}

void PngBlock::countPixel(quint32 pixel)
{
    for (std::size_t channel = 0; channel < m_bytesPerPixel; ++channel)
        ++m_channelCounts[channel][pixel >> (8 * channel) & 0xffU];
}

void PngBlock::makeCodes()
{
    std::array<quint32, kLengthSymbols> counts{};
    for (std::size_t channel = 0; channel < m_bytesPerPixel; ++channel)
        for (std::size_t value = 0; value < 256; ++value)
            counts[value] += m_channelCounts[channel][value];
    counts[m_filter] += static_cast<quint32>(m_rowEnds.size());
    counts[kEndOfBlock] = 1;
    for (std::size_t pixels = 1; pixels <= m_longest; ++pixels)
        counts[lengthSymbol(pixels * m_bytesPerPixel).symbol] += m_lengthCounts[pixels];
    makePrefixCode(counts, kLongestCode, m_codes);
    makePrefixCode(m_distanceCounts, kLongestCode, m_distanceCodes);
    for (std::size_t pixels = 1; pixels <= m_longest; ++pixels) {
        const DeflateSymbol length = lengthSymbol(pixels * m_bytesPerPixel);
        const PrefixBits code = m_codes[length.symbol];
        m_lengthCodes[pixels] = {code.bits | length.extra << code.length, code.length + length.extraBits};
    }
}

std::size_t PngBlock::finish()
{
    makeCodes();
    constexpr std::size_t kHeaderAndSlack = 1024;
    std::size_t bits = m_rowEnds.size() * m_codes[m_filter].length;
    for (std::size_t channel = 0; channel < m_bytesPerPixel; ++channel)
        for (std::size_t value = 0; value < 256; ++value)
            bits += std::size_t{m_channelCounts[channel][value]} * m_codes[value].length;
    for (std::size_t pixels = 1; pixels <= m_longest; ++pixels)
        bits += std::size_t{m_lengthCounts[pixels]} * static_cast<std::size_t>(m_lengthCodes[pixels].length);
    for (std::size_t symbol = 0; symbol < kDistanceSymbols; ++symbol)
        bits += std::size_t{m_distanceCounts[symbol]} *
                static_cast<std::size_t>(m_distanceCodes[symbol].length + extraBitsOfDistance(symbol));
    return bits / 8 + kHeaderAndSlack;
}

/// Only the lengths of the codes are written, in a code of their own.
void PngBlock::writeHeader(Writer& writer) const
{
    std::array<quint8, kLengthSymbols + kDistanceSymbols> lengths{};
    const auto lengthOf = [](const PrefixBits& code) { return static_cast<quint8>(code.length); };
    std::transform(m_codes.begin(), m_codes.end(), lengths.begin(), lengthOf);
    std::transform(m_distanceCodes.begin(), m_distanceCodes.end(), lengths.begin() + kLengthSymbols, lengthOf);
    std::array<quint32, kLengthOrder.size()> counts{};
    for (const quint8 length : lengths)
        ++counts[length];
    std::array<PrefixBits, kLengthOrder.size()> codes{};
    makePrefixCode(counts, kLongestLengthCode, codes);
    writer.put(1 | 2 << 1, 3);  // the last block, with its codes
    writer.put(kLengthSymbols - 257, 5);
    writer.put(kDistanceSymbols - 1, 5);
    writer.put(kLengthOrder.size() - 4, 4);
    for (const std::size_t length : kLengthOrder)
        writer.put(codes[length].length, 3);
    for (const quint8 length : lengths)
        writer.put(codes[length].bits, codes[length].length);
}

/// Whole matches first, then what is left of the run.
void PngBlock::writeRun(Writer& writer, std::size_t pixels) const
{
    const PrefixBits distance = m_distanceCodes[m_bytesPerPixel - 1];
    const auto put = [&](const Bits& length) {
        writer.put(length.bits | quint64{distance.bits} << length.length, length.length + distance.length);
    };
    for (; pixels > m_longest; pixels -= m_longest)
        put(m_lengthCodes[m_longest]);
    put(m_lengthCodes[pixels]);
}

template <std::size_t kBytes>
void PngBlock::writeRows(Writer& writer) const
{
    constexpr std::array<int, 4> kShifts{16, 8, 0, 24};  // to red, green, blue, alpha
    const Token* token = m_tokens.data();
    for (const std::size_t rowEnd : m_rowEnds) {
        writer.put(m_codes[m_filter].bits, m_codes[m_filter].length);
        for (const Token* const end = m_tokens.data() + rowEnd; token < end; ++token) {
            quint64 bits = 0;
            int length = 0;
            const auto append = [&](quint64 more, int count) {
                bits |= more << length;
                length += count;
            };
            if (token->length == 0) {
                for (std::size_t channel = 0; channel < kBytes; ++channel) {
                    const PrefixBits code = m_codes[token->pixelOrDistance >> kShifts[channel] & 0xffU];
                    append(code.bits, code.length);
                }
            } else if (token->pixelOrDistance == kBytes) {
                writeRun(writer, token->length);
                continue;
            } else {
                append(m_lengthCodes[token->length].bits, m_lengthCodes[token->length].length);
                const DeflateSymbol distance = distanceSymbol(token->pixelOrDistance);
                append(m_distanceCodes[distance.symbol].bits, m_distanceCodes[distance.symbol].length);
                append(distance.extra, distance.extraBits);
            }
            writer.put(bits, length);
        }
    }
}

quint8* PngBlock::write(quint8* to) const
{
    Writer writer(to);
    writeHeader(writer);
    if (m_bytesPerPixel == 3)
        writeRows<3>(writer);
    else
        writeRows<4>(writer);
    writer.put(m_codes[kEndOfBlock].bits, m_codes[kEndOfBlock].length);
    return writer.end();
}

}  // namespace plotix
