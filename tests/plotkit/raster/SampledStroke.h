#pragma once

#include <QtGui/QColor>
#include <QtGui/QImage>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

/// What a stroke is by its definition, sampled on a fine grid, and how far two pictures lie apart.
namespace sampled_stroke {

inline constexpr int kWidth = 400;
inline constexpr int kHeight = 240;
inline constexpr int kScale = 20;  // samples per pixel and direction

struct Difference {
    double mean = 0;    // of the largest channel error, over the pixels either picture touched
    double farOff = 0;  // fraction of them off by more than 128
    int touched = 0;
};

inline Difference differenceOf(const QImage& a, const QImage& b)
{
    Difference difference;
    double sum = 0;
    int farOff = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb first = reinterpret_cast<const QRgb*>(a.constScanLine(y))[x];
            const QRgb second = reinterpret_cast<const QRgb*>(b.constScanLine(y))[x];
            if (first == 0 && second == 0)
                continue;
            const int error =
                std::max({std::abs(qAlpha(first) - qAlpha(second)), std::abs(qRed(first) - qRed(second)),
                          std::abs(qGreen(first) - qGreen(second)), std::abs(qBlue(first) - qBlue(second))});
            sum += error;
            farOff += error > 128 ? 1 : 0;
            ++difference.touched;
        }
    }
    if (difference.touched > 0) {
        difference.mean = sum / difference.touched;
        difference.farOff = static_cast<double>(farOff) / difference.touched;
    }
    return difference;
}

inline QImage emptyImage()
{
    QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The fraction of each pixel's samples within half a pen of the line, as a colour of that alpha.
class SampledStroke {
public:
    explicit SampledStroke(double width)
        : m_radius(width / 2 * kScale), m_inside(static_cast<std::size_t>(kColumns) * kRows, 0)
    {
    }

    void addSegment(const QPointF& from, const QPointF& to)
    {
        const QPointF start = from * kScale;
        const QPointF delta = to * kScale - start;
        const double length = QPointF::dotProduct(delta, delta);
        const QRect box = QRectF(start, start + delta)
                              .normalized()
                              .adjusted(-m_radius, -m_radius, m_radius, m_radius)
                              .toAlignedRect()
                              .intersected(QRect(0, 0, kColumns, kRows));
        for (int row = box.top(); row <= box.bottom(); ++row) {
            for (int column = box.left(); column <= box.right(); ++column) {
                const QPointF offset = QPointF(column + 0.5, row + 0.5) - start;
                const double along = length > 0 ? std::clamp(QPointF::dotProduct(offset, delta) / length, 0.0, 1.0) : 0;
                const QPointF gap = offset - delta * along;
                if (QPointF::dotProduct(gap, gap) <= m_radius * m_radius)
                    m_inside[static_cast<std::size_t>(row) * kColumns + static_cast<std::size_t>(column)] = 1;
            }
        }
    }

    QImage image(const QColor& color) const
    {
        QImage image = emptyImage();
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const double alpha = color.alphaF() * samplesInside(x, y) / (kScale * kScale);
                const QColor covered(color.red(), color.green(), color.blue(), qRound(alpha * 255));
                reinterpret_cast<QRgb*>(image.scanLine(y))[x] = qPremultiply(covered.rgba());
            }
        }
        return image;
    }

private:
    int samplesInside(int x, int y) const
    {
        int inside = 0;
        for (int row = 0; row < kScale; ++row)
            for (int column = 0; column < kScale; ++column)
                inside += m_inside[static_cast<std::size_t>(y * kScale + row) * kColumns +
                                   static_cast<std::size_t>(x * kScale + column)];
        return inside;
    }

    static constexpr int kColumns = kWidth * kScale;
    static constexpr int kRows = kHeight * kScale;
    double m_radius;
    std::vector<unsigned char> m_inside;
};

}  // namespace sampled_stroke
