#pragma once

#include "plotkit/model/CPTGraphLayer.h"

#include <QtCore/QRectF>

#include <optional>

/// The box that is drawn while somebody zooms by one. A layer; main thread only.
namespace plotix {

class ZoomBox : public CPTGraphLayer {
public:
    void show(const std::optional<QRectF>& box);  ///< points of the view; nothing: no box
    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;

private:
    std::optional<QRectF> m_box;
};

}  // namespace plotix
