#pragma once

#include "plotkit/render/GraphText.h"

#include <QtCore/QPoint>
#include <QtCore/QSizeF>
#include <QtGui/QImage>
#include <QtGui/QRgb>

#include <map>
#include <tuple>

/// Texts as images, and their sizes, kept from frame to frame: shaping a label and stroking its halo cost far more than
/// copying its image. Whoever paints frames *owns* one. Main thread only.
namespace plotkit {

class TextImages {
public:
    /// The size in points, as `sizeOfText` answers it.
    QSizeF sizeOf(const QString& text, const CPTTextStyle& style);

    /// Draws a text into its box, which is moved to the nearest whole pixel. Requires: the painter's units are pixels.
    void draw(QPainter& painter, const PlacedText& text, const CPTTextStyle& style, TextPlacing placing);

private:
    using StyleKey = std::tuple<QString, double, QRgb>;
    using ImageKey = std::tuple<QString, StyleKey, double, double, double, int, bool, bool>;
    struct Drawn {
        QImage image;
        QPoint corner;  // of the image, from the box's
    };
    static StyleKey keyOf(const CPTTextStyle& style);
    static Drawn drawn(const PlacedText& text, const CPTTextStyle& style, TextPlacing placing);

    std::map<std::tuple<QString, StyleKey>, QSizeF> m_sizes;
    std::map<ImageKey, Drawn> m_images;
};

}  // namespace plotkit
