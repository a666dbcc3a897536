#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QImage>

class QPainter;

/// Where drawing goes while somebody is asked to draw: a surface and the direction of its y axis.
///
/// Coordinates are points. In an unflipped context y grows upward from the surface's lower edge, as page coordinates
/// do; in a flipped one downward from the upper edge. This class is the one place where either becomes the painter's
/// own coordinates. A value over a *borrowed* painter, whose unit must be a point and whose origin the surface's upper
/// left corner. Main thread only.
class KTVHOST_EXPORT KTVGraphicsContext {
public:
    enum class YAxis { Unflipped, Flipped };
    enum class Surface {
        Pixels,  ///< copying an image copies its transparency too
        Paper    ///< blank, and stays opaque: what is transparent shows the white sheet
    };

    KTVGraphicsContext(QPainter* painter, double surfaceHeight, YAxis yAxis, Surface surface = Surface::Pixels)
        : m_painter(painter), m_height(surfaceHeight), m_yAxis(yAxis), m_surface(surface)
    {
    }

    /// Null while nobody draws.
    static KTVGraphicsContext* currentContext();
    /// Returns the context that was current before. The context is *borrowed* until the next call.
    static KTVGraphicsContext* setCurrentContext(KTVGraphicsContext* context);

    bool isFlipped() const { return m_yAxis == YAxis::Flipped; }
    /// The same drawing surface with that direction of the y axis.
    KTVGraphicsContext withYAxis(YAxis yAxis) const { return {m_painter, m_height, yAxis, m_surface}; }

    /// Copies the part `source` of the image (points, its lower left corner being 0, 0; what lies outside the image is
    /// left alone) so that the lower left corner of `source` comes to lie on `point`. The image's device pixel ratio
    /// says how many pixels make a point. A null image draws nothing.
    void copyImage(const QImage& image, const QPointF& point, const QRectF& source, double opacity);

    /// One line of text, the lower left corner of its box on `point`.
    void drawText(const QString& text, const QPointF& point, const QFont& font, const QColor& color);

private:
    QPointF toPainter(const QPointF& lowerLeft, double height) const;

    QPainter* m_painter;
    double m_height;
    YAxis m_yAxis;
    Surface m_surface;
};

/// How the box of a text is measured. The numbers are part of the contract: never change.
enum KTVStringDrawingOptions { KTVStringUsesLineFragmentOrigin = 1, KTVStringUsesFontLeading = 2 };

/// The size one line of text takes, in points; no larger than the box.
KTVHOST_EXPORT QSizeF boundingSizeOfText(const QString& text, const QSizeF& box, int options, const QFont& font);

/// A font by name at a size in points of the page; the nearest sans serif where there is none of that name.
KTVHOST_EXPORT QFont pageFont(const QString& name, double points);
