#pragma once

#include "base/png/PrefixCode.h"

#include <array>
#include <cstddef>
#include <vector>

/// The pixels of a PNG as one deflate block that uses two kinds of repeats: a pixel equal to the one before it, and
/// pixels equal to some a little earlier. For those it tries only the last place that begins with the same pixel.
///
/// Rows of differences are mostly the first kind; a search for the longest repeat takes several times as long as all
/// the rest and gains nothing on graphs. The block's prefix codes are made from exactly what is in it, so all rows are
/// gathered before any is written. RFC 1951. One thread at a time.
namespace plotix {

class PngBlock {
public:
    /// Requires: width > 0; 3 or 4 bytes a pixel.
    PngBlock(int width, int bytesPerPixel, quint8 filter);

    /// Where the next row's differences are to be written before `addRow`; see `PngRow`.
    quint32* nextRow() { return rowAt(m_rowEnds.size()); }
    /// Takes the next row over: its differences, and the repeats among them.
    void addRow(const quint64* repeats);

    /// Makes the codes; answers the most bytes that `write` may touch. Once, after the last row.
    std::size_t finish();
    /// Writes the block; answers its end.
    quint8* write(quint8* to) const;

private:
    class Writer;
    struct Bits {
        quint32 bits = 0;
        int length = 0;
    };
    /// Pixels to be written: one as it is, or a repeat of those at a distance.
    struct Token {
        quint32 pixelOrDistance;  ///< distance in bytes
        quint32 length;           ///< of the repeat, in pixels; 0: a pixel itself
    };
    /// Where a pixel was seen last.
    struct LastSeen {
        quint32 pixel = 0;
        quint32 row = 0;
        quint32 column = 0;
    };

    static constexpr std::size_t kLengthSymbols = 286;  ///< bytes, the block's end, and lengths
    static constexpr std::size_t kDistanceSymbols = 30;
    static constexpr std::size_t kLongestMatch = 258;  ///< bytes
    static constexpr std::size_t kFarthestMatch = 32768;

    quint32* rowAt(std::size_t row) { return m_window.data() + row % m_rowsKept * m_width; }
    void addRun(std::size_t pixels);
    void addUnlikeTheirNeighbours(std::size_t first, std::size_t end);
    std::size_t repeatedAt(const LastSeen& seen, std::size_t column, std::size_t end);
    void addMatch(std::size_t pixels, std::size_t distance);
    void countPixel(quint32 pixel);
    void makeCodes();
    void writeHeader(Writer& writer) const;
    template <std::size_t kBytes>
    void writeRows(Writer& writer) const;
    void writeRun(Writer& writer, std::size_t pixels) const;

    std::size_t m_width;
    std::size_t m_bytesPerPixel;
    quint8 m_filter;  ///< stands in front of each row
    std::size_t m_rowBytes;
    std::size_t m_rowsKept;  ///< how many rows hold all that a match can reach
    std::size_t m_longest;   ///< match, in pixels
    std::size_t m_shortest;  ///< match at a distance, in pixels
    std::vector<quint32> m_window;
    std::vector<LastSeen> m_lastSeen;
    std::vector<Token> m_tokens;
    std::vector<std::size_t> m_rowEnds;  ///< in the tokens
    std::array<std::array<quint32, 256>, 4> m_channelCounts{};
    std::array<quint32, kLongestMatch / 3 + 1> m_lengthCounts{};  ///< by pixels
    std::array<quint32, kDistanceSymbols> m_distanceCounts{};
    std::array<PrefixBits, kLengthSymbols> m_codes{};
    std::array<PrefixBits, kDistanceSymbols> m_distanceCodes{};
    std::array<Bits, kLongestMatch / 3 + 1> m_lengthCodes{};  ///< by pixels, extra bits included
};

}  // namespace plotix
