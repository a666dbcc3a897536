#include "plotkit/raster/DotStroke.h"

#include <algorithm>
#include <cmath>
#include <cstring>

// Distances are whole sixteenths of a pixel. A byte of cells is a pixel's height; its cells are centred on odd
// sixteenths, the pixel's middle is at eight.

namespace plotkit {

namespace {

constexpr int kPhases = DotColumns::kPerPixel;
constexpr int kSteps = 16;
constexpr int kPixelMiddle = kSteps / 2;
constexpr int kTileWidth = 128;  // pixels: a tile's planes stay in a near cache
constexpr int kFar = 180;        // beyond any dot; the sum of two squares of it still fits

/// What a pixel's cells are from its middle, and from the middles of the pixels above and below.
struct CellDistances {
    std::uint8_t own, above, below;
};

constexpr CellDistances distancesOf(unsigned cells)
{
    CellDistances found{kFar, kFar, kFar};
    for (int cell = 0; cell < DotColumns::kRowsPerPixel; ++cell) {
        if ((cells >> cell & 1U) == 0)
            continue;
        const int at = 2 * cell + 1;
        const int own = at < kPixelMiddle ? kPixelMiddle - at : at - kPixelMiddle;
        found.own = std::min(found.own, static_cast<std::uint8_t>(own));
        found.above = std::min(found.above, static_cast<std::uint8_t>(at + kSteps - kPixelMiddle));
        found.below = std::min(found.below, static_cast<std::uint8_t>(kSteps + kPixelMiddle - at));
    }
    return found;
}

struct DistanceTable {
    std::uint8_t own[256], above[256], below[256];
    constexpr DistanceTable() : own(), above(), below()
    {
        for (unsigned cells = 0; cells < 256; ++cells) {
            const CellDistances found = distancesOf(cells);
            own[cells] = found.own;
            above[cells] = found.above;
            below[cells] = found.below;
        }
    }
};
constexpr DistanceTable kDistances;

/// How many bytes are zero at the beginning.
std::size_t emptyBytes(const std::uint8_t* bytes, std::size_t count)
{
    std::size_t at = 0;
    std::uint64_t eight = 0;
    for (; at + sizeof eight <= count; at += sizeof eight) {
        std::memcpy(&eight, bytes + at, sizeof eight);
        if (eight != 0)
            break;
    }
    while (at < count && bytes[at] == 0)
        ++at;
    return at;
}

/// One past the last byte that is not zero; `least` when there is none from there on.
std::size_t heldBytes(const std::uint8_t* bytes, std::size_t count, std::size_t least)
{
    std::uint64_t eight = 0;
    for (; count >= least + sizeof eight; count -= sizeof eight) {
        std::memcpy(&eight, bytes + count - sizeof eight, sizeof eight);
        if (eight != 0)
            break;
    }
    while (count > least && bytes[count - 1] == 0)
        --count;
    return count;
}

/// `carried` becomes the distance to the nearest cell on one side, a row further on.
void carry(std::uint8_t* carried, int width)
{
    for (int x = 0; x < width; ++x) {
        const std::uint8_t nearer = std::min<std::uint8_t>(carried[x], kFar - kSteps);
        carried[x] = static_cast<std::uint8_t>(nearer + kSteps);
    }
}

/// `distances` of the cells of a row, where they are less. Most bytes of cells are empty or full, and so are their
/// neighbours.
void take(std::uint8_t* nearest, const std::uint8_t* cells, const std::uint8_t* distances, int width)
{
    constexpr int kAtOnce = sizeof(std::uint64_t);
    int x = 0;
    for (; x + kAtOnce <= width; x += kAtOnce) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, cells + x, sizeof eight);
        if (eight == 0)
            continue;
        if (eight == ~std::uint64_t{0}) {
            for (int at = x; at < x + kAtOnce; ++at)
                nearest[at] = std::min(nearest[at], distances[0xFF]);
            continue;
        }
        for (int at = x; at < x + kAtOnce; ++at)
            nearest[at] = std::min(nearest[at], distances[cells[at]]);
    }
    for (; x < width; ++x)
        nearest[x] = std::min(nearest[x], distances[cells[x]]);
}

}  // namespace

std::uint8_t* DotStroke::plane(std::vector<std::uint8_t>& planes, int phase, int row)
{
    return planes.data() + (static_cast<std::ptrdiff_t>(phase) * m_rows + row) * m_width;
}

void DotStroke::stroke(const PixelBuffer& buffer, const DotColumns& cells, double radius, quint32 color,
                       const QRect& clip)
{
    m_radius = std::min(radius, kWidest / 2);
    // The columns of a pixel's cells may begin up to one of them before it.
    m_reach = static_cast<int>(std::max(std::ceil(m_radius), std::floor(m_radius + 1 + 1.0 / kPhases)));
    for (int left = clip.left(); left < clip.left() + clip.width(); left += kTileWidth) {
        const int width = std::min(kTileWidth, clip.left() + clip.width() - left);
        m_clip = QRect(left, clip.top(), width, clip.height());
        m_clip = m_clip.intersected(reachedRows(cells));
        if (!m_clip.isEmpty())
            strokeTile(buffer, cells, color);
    }
}

/// The part of the picture that dots of the tile's columns reach, as wide as the tile.
QRect DotStroke::reachedRows(const DotColumns& cells) const
{
    const double left = (m_clip.left() - m_reach - cells.left) * kPhases;
    const double right = (m_clip.left() + m_clip.width() + m_reach - cells.left) * kPhases;
    const auto count = static_cast<double>(cells.columns);
    std::size_t first = cells.bytes;
    std::size_t end = 0;
    for (auto column = static_cast<std::ptrdiff_t>(std::clamp(std::floor(left), 0.0, count));
         column < static_cast<std::ptrdiff_t>(std::clamp(std::ceil(right), 0.0, count)); ++column) {
        const std::uint8_t* held = cells.first + column * cells.stride;
        first = std::min(first, emptyBytes(held, first));
        end = std::max(end, heldBytes(held, cells.bytes, end));
    }
    const int top = cells.top + static_cast<int>(first) - m_reach;
    const int bottom = cells.top + static_cast<int>(end) + m_reach;
    return first < end ? QRect(m_clip.left(), top, m_clip.width(), bottom - top) : QRect();
}

void DotStroke::strokeTile(const PixelBuffer& buffer, const DotColumns& cells, quint32 color)
{
    m_width = m_clip.width() + 2 * m_reach;
    m_rows = m_clip.height() + 2 * m_reach;
    prepareTaps(cells);
    gather(cells);
    measureColumns();
    for (int row = 0; row < m_clip.height(); ++row)
        strokeRow(buffer, row, color);
}

/// The distances along x from a pixel's middle to the cell columns of the pixels around it, and what coverage a
/// distance means.
void DotStroke::prepareTaps(const DotColumns& cells)
{
    const double left = (m_clip.left() - m_reach - cells.left) * kPhases;
    m_column = static_cast<std::ptrdiff_t>(std::floor(left));
    const double ahead = (left - std::floor(left)) / kPhases;  // pixels the columns begin before the pixel does
    const int pixels = 2 * m_reach + 1;
    m_taps.resize(static_cast<std::size_t>(kPhases * pixels));
    for (int phase = 0; phase < kPhases; ++phase)
        for (int pixel = 0; pixel < pixels; ++pixel) {
            const double middle = pixel - m_reach + (phase + 0.5) / kPhases - ahead;
            const double distance = std::min<double>(kFar, std::abs(middle - 0.5) * kSteps);
            m_taps[static_cast<std::size_t>(phase * pixels + pixel)] =
                static_cast<std::uint16_t>(std::lround(distance * distance));
        }
    if (m_coverageRadius == m_radius)
        return;
    m_coverageRadius = m_radius;
    const double most = std::min(1.0, 2 * m_radius);  // no dot covers more of a pixel than its own width
    m_coverage.resize(2 * kFar * kFar + 1);
    for (std::size_t square = 0; square < m_coverage.size(); ++square) {
        const double distance = std::sqrt(static_cast<double>(square)) / kSteps;
        m_coverage[square] = static_cast<std::uint8_t>(std::clamp(m_radius + 0.5 - distance, 0.0, most) * 255 + 0.5);
    }
}

/// The cells around the clip, turned from columns into rows.
void DotStroke::gather(const DotColumns& cells)
{
    constexpr int kTile = 64;
    m_cells.assign(
        static_cast<std::size_t>(kPhases) * static_cast<std::size_t>(m_rows) * static_cast<std::size_t>(m_width), 0);
    m_isHeld.assign(static_cast<std::size_t>(m_rows), 0);
    const int skipped = m_clip.top() - m_reach - cells.top;  // bytes above the first row
    const int end = std::min<int>(m_rows, static_cast<int>(cells.bytes) - skipped);
    for (int tile = std::max(0, -skipped); tile < end; tile += kTile)
        for (int column = 0; column < m_width * kPhases; ++column) {
            const std::ptrdiff_t number = m_column + column;
            if (number < 0 || number >= static_cast<std::ptrdiff_t>(cells.columns))
                continue;
            const std::uint8_t* held = cells.first + number * cells.stride + skipped;
            std::uint8_t* turned = plane(m_cells, column % kPhases, 0) + column / kPhases;
            const int tileEnd = std::min(tile + kTile, end);
            for (int row = tile; row < tileEnd; ++row) {
                row += static_cast<int>(emptyBytes(held + row, static_cast<std::size_t>(tileEnd - row)));
                if (row == tileEnd)
                    break;
                turned[static_cast<std::ptrdiff_t>(row) * m_width] = held[row];
                m_isHeld[static_cast<std::size_t>(row)] = 1;
            }
        }
}

/// From every pixel's middle to the nearest cell of each phase above, below or beside it.
void DotStroke::measureColumns()
{
    m_distance.resize(m_cells.size());
    const auto width = static_cast<std::size_t>(m_width);
    for (int phase = 0; phase < kPhases; ++phase) {
        m_carried.assign(width, kFar);
        for (int row = 0; row < m_rows; ++row) {
            const std::uint8_t* cells = plane(m_cells, phase, row);
            std::uint8_t* distance = plane(m_distance, phase, row);
            const bool isHeld = m_isHeld[static_cast<std::size_t>(row)] != 0;
            std::copy_n(m_carried.data(), width, distance);
            carry(m_carried.data(), m_width);
            if (!isHeld)
                continue;
            take(distance, cells, kDistances.own, m_width);
            take(m_carried.data(), cells, kDistances.below, m_width);
        }
        m_carried.assign(width, kFar);
        for (int row = m_rows - 1; row >= 0; --row) {
            std::uint8_t* distance = plane(m_distance, phase, row);
            for (std::size_t x = 0; x < width; ++x)
                distance[x] = std::min(distance[x], m_carried[x]);
            carry(m_carried.data(), m_width);
            if (m_isHeld[static_cast<std::size_t>(row)] != 0)
                take(m_carried.data(), plane(m_cells, phase, row), kDistances.above, m_width);
        }
    }
}

void DotStroke::strokeRow(const PixelBuffer& buffer, int row, quint32 color)
{
    const auto held = m_isHeld.begin() + row;
    if (std::find(held, held + 2 * m_reach + 1, 1) == held + 2 * m_reach + 1)
        return;
    const int width = m_clip.width();
    const int pixels = 2 * m_reach + 1;
    m_squares.resize(static_cast<std::size_t>(m_width));
    m_nearest.assign(static_cast<std::size_t>(width), 2 * kFar * kFar);
    std::uint16_t* nearest = m_nearest.data();
    for (int phase = 0; phase < kPhases; ++phase) {
        const std::uint8_t* distance = plane(m_distance, phase, row + m_reach);
        for (int x = 0; x < m_width; ++x)
            m_squares[static_cast<std::size_t>(x)] = static_cast<std::uint16_t>(distance[x] * distance[x]);
        for (int pixel = 0; pixel < pixels; ++pixel) {
            const std::uint16_t along = m_taps[static_cast<std::size_t>(phase * pixels + pixel)];
            const std::uint16_t* squares = m_squares.data() + pixel;
            for (int x = 0; x < width; ++x)
                nearest[x] = std::min(nearest[x], static_cast<std::uint16_t>(squares[x] + along));
        }
    }
    m_mask.resize(static_cast<std::size_t>(width));
    for (int x = 0; x < width; ++x)
        m_mask[static_cast<std::size_t>(x)] = m_coverage[nearest[x]];
    quint32* line = buffer.pixels + (m_clip.top() + row) * buffer.stride + m_clip.left();
    m_kernels.blendMask(line, m_mask.data(), width, color);
}

}  // namespace plotkit
