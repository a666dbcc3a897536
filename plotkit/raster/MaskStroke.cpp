#include "plotkit/raster/MaskStroke.h"

#include <algorithm>
#include <cmath>

namespace plotkit {

void MaskStroke::stroke(const PixelBuffer& buffer, const PolylineSet& lines, double radius, quint32 color,
                        const QRect& clip)
{
    m_radius = radius;
    m_clip = clip;
    m_mask.resize(static_cast<std::size_t>(clip.width()) * static_cast<std::size_t>(clip.height()));
    m_touched.assign(static_cast<std::size_t>(clip.height()), QPoint(clip.width(), 0));
    std::size_t start = 0;
    for (const std::size_t partEnd : lines.partEnds) {
        const std::size_t end = std::min(partEnd, lines.points.size());
        if (start + 1 == end)
            addSegment(lines.points[start], lines.points[start]);
        for (std::size_t index = start + 1; index < end; ++index)
            addSegment(lines.points[index - 1], lines.points[index]);
        start = std::max(start, end);
    }
    for (int row = 0; row < clip.height(); ++row) {
        const QPoint columns = m_touched[static_cast<std::size_t>(row)];
        if (columns.x() >= columns.y())
            continue;
        quint8* mask = m_mask.data() + static_cast<std::ptrdiff_t>(row) * clip.width() + columns.x();
        quint32* pixels = buffer.pixels + (clip.top() + row) * buffer.stride + clip.left() + columns.x();
        m_kernels.blendMask(pixels, mask, columns.y() - columns.x(), color);
        std::fill_n(mask, columns.y() - columns.x(), quint8{0});
    }
}

void MaskStroke::addSegment(const QPointF& from, const QPointF& to)
{
    const double reach = m_radius + 1;
    const double top = std::max<double>(m_clip.top(), std::floor(std::min(from.y(), to.y()) - reach));
    const double bottom =
        std::min<double>(m_clip.top() + m_clip.height(), std::ceil(std::max(from.y(), to.y()) + reach));
    if (!(top < bottom))
        return;
    for (int row = static_cast<int>(top); row < static_cast<int>(bottom); ++row)
        addRow(from, to, row);
}

/// Only the stretch of the segment within the pen's reach of this row can touch it.
void MaskStroke::addRow(const QPointF& from, const QPointF& to, int row)
{
    const double y = row + 0.5;
    const double reach = m_radius + 1;
    const QPointF delta = to - from;
    double first = 0;
    double last = 1;
    if (delta.y() != 0) {
        const double above = (y - reach - from.y()) / delta.y();
        const double below = (y + reach - from.y()) / delta.y();
        first = std::max(first, std::min(above, below));
        last = std::min(last, std::max(above, below));
        if (first > last)
            return;
    }
    const double xFirst = from.x() + delta.x() * first;
    const double xLast = from.x() + delta.x() * last;
    const double left = std::max<double>(m_clip.left(), std::floor(std::min(xFirst, xLast) - reach));
    const double right = std::min<double>(m_clip.left() + m_clip.width(), std::ceil(std::max(xFirst, xLast) + reach));
    if (!(left < right))
        return;

    const auto firstColumn = static_cast<int>(left) - m_clip.left();
    const auto lastColumn = static_cast<int>(right) - m_clip.left();
    QPoint& touched = m_touched[static_cast<std::size_t>(row - m_clip.top())];
    touched = {std::min(touched.x(), firstColumn), std::max(touched.y(), lastColumn)};
    quint8* mask = m_mask.data() + static_cast<std::ptrdiff_t>(row - m_clip.top()) * m_clip.width();
    const double lengthSquared = QPointF::dotProduct(delta, delta);
    const double most = std::min(1.0, 2 * m_radius);  // a hairline never covers more than its own width
    for (int column = firstColumn; column < lastColumn; ++column) {
        const QPointF offset(m_clip.left() + column + 0.5 - from.x(), y - from.y());
        const double along = lengthSquared > 0 ? QPointF::dotProduct(offset, delta) / lengthSquared : 0;
        const QPointF gap = offset - delta * std::clamp(along, 0.0, 1.0);
        const double distance = std::sqrt(QPointF::dotProduct(gap, gap));
        const double coverage = std::clamp(m_radius + 0.5 - distance, 0.0, most);
        mask[column] = std::max(mask[column], static_cast<quint8>(coverage * 255 + 0.5));
    }
}

}  // namespace plotkit
