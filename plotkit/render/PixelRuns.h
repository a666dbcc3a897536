#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtGui/QImage>

#include <cstddef>
#include <vector>

/// An opaque picture as runs of equal pixels, row by row: written at the speed of memory, without reading a second
/// picture. Made for gradients that change from row to row, and frames. One thread at a time.
namespace plotkit {

class PixelRuns {
public:
    PixelRuns() = default;
    /// The runs of a picture of 32-bit pixels. Empty where runs are so short that copying the picture is as good.
    explicit PixelRuns(const QImage& picture) : PixelRuns(picture, 0, 0) {}
    /// The runs of the picture with one column repeated `extra` times more. Requires: a column of the picture, extra
    /// not negative.
    PixelRuns(const QImage& picture, int column, int extra);

    bool isEmpty() const { return m_rowStarts.empty(); }

    /// Writes what lies within `clip` (pixels of `image`) with the picture's top left at `topLeft`. Requires: an image
    /// of 32-bit pixels, not shared.
    void draw(QImage& image, const QPoint& topLeft, const QRect& clip) const;

private:
    struct Run {
        int end;  // one past its last column
        quint32 color;
    };

    void drawRow(quint32* row, int pictureRow, int first, int last) const;

    QSize m_size;
    std::vector<Run> m_runs;
    std::vector<std::size_t> m_rowStarts;  // of each row's first run
};

}  // namespace plotkit
