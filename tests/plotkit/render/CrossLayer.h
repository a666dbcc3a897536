#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/model/CPTGraphLayer.h"

#include <QtGui/QPainter>

/// A vertical line of two points through the plot area at an x value of the default plot space; counts how often it is
/// drawn.
class CrossLayer : public CPTGraphLayer {
public:
    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override
    {
        ++drawings;
        const double x = geometry.pointForValue(geometry.graph.plotSpace(), {value, 0}).x();
        painter.translate(1000, 1000);  // a layer may leave its painter as it likes
        painter.translate(-1000, -1000);
        painter.fillRect(QRectF(x - 1, geometry.plotArea.top(), 2, geometry.plotArea.height()), color);
        painter.translate(500, 500);
    }

    double value = 50;
    QColor color = Qt::magenta;
    int drawings = 0;
};

/// Counts how often labels are written: a graph that is laid out and painted again asks for them.
class CountingFormatter : public CPTFormatter {
public:
    QString stringForNumber(double) const override
    {
        ++written;
        return QStringLiteral("8");
    }
    QString pattern() const override { return {}; }

    mutable int written = 0;
};
