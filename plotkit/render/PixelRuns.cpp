#include "plotkit/render/PixelRuns.h"

#include <algorithm>
#include <cwchar>

namespace plotkit {

namespace {

/// Pixels on average; shorter runs cost more than copying the pixels.
constexpr std::size_t kShortestRun = 32;

/// The C library's own, which uses the widest stores there are.
void fillPixels(quint32* pixels, quint32 color, std::size_t count)
{
    static_assert(sizeof(wchar_t) == sizeof(quint32));
    std::wmemset(reinterpret_cast<wchar_t*>(pixels), static_cast<wchar_t>(color), count);
}

/// One past the last of the pixels from `x` on that are like the one there.
int endOfRun(const quint32* row, int x, int width)
{
    constexpr int kAtOnce = 16;
    const quint32 color = row[x];
    for (; x + kAtOnce <= width; x += kAtOnce) {
        quint32 different = 0;
        for (int at = 0; at < kAtOnce; ++at)
            different |= row[x + at] ^ color;
        if (different != 0)
            break;
    }
    while (x < width && row[x] == color)
        ++x;
    return x;
}

}  // namespace

PixelRuns::PixelRuns(const QImage& picture, int column, int extra) : m_size(picture.size() + QSize(extra, 0))
{
    Q_ASSERT(picture.depth() == 32);
    const int width = picture.width();
    const int height = picture.height();
    const std::size_t most = static_cast<std::size_t>(m_size.width()) * static_cast<std::size_t>(height) / kShortestRun;
    m_rowStarts.reserve(static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const auto* row = reinterpret_cast<const quint32*>(picture.constScanLine(y));
        m_rowStarts.push_back(m_runs.size());
        for (int x = 0; x < width;) {
            const int end = endOfRun(row, x, width);
            m_runs.push_back({end > column ? end + extra : end, row[x]});
            x = end;
        }
        if (m_runs.size() > most)
            break;
    }
    if (m_runs.size() <= most)
        return;
    m_runs = {};
    m_rowStarts = {};
}

void PixelRuns::drawRow(quint32* row, int pictureRow, int first, int last) const
{
    const Run* run = m_runs.data() + m_rowStarts[static_cast<std::size_t>(pictureRow)];
    while (run->end <= first)
        ++run;
    for (int x = first; x < last; x = (run++)->end)
        fillPixels(row + x, run->color, static_cast<std::size_t>(std::min(run->end, last) - x));
}

void PixelRuns::draw(QImage& image, const QPoint& topLeft, const QRect& clip) const
{
    Q_ASSERT(image.depth() == 32);
    const QRect shown = QRect(topLeft, m_size).intersected(clip).intersected(image.rect());
    if (shown.isEmpty() || isEmpty())
        return;
    const qsizetype stride = image.bytesPerLine();
    uchar* bits = image.bits();
    for (int y = shown.top(); y <= shown.bottom(); ++y) {
        auto* row = reinterpret_cast<quint32*>(bits + y * stride) + topLeft.x();
        drawRow(row, y - topLeft.y(), shown.left() - topLeft.x(), shown.right() + 1 - topLeft.x());
    }
}

}  // namespace plotkit
