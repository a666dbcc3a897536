#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"

#include "plotkit/render/GraphText.h"

#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>

#include <algorithm>

namespace plotix {

namespace {

const CPTTextStyle& labelStyle(const CPTXYGraph& graph)
{
    return graph.axes().axes().front()->labelTextStyle();
}

}  // namespace

bool isDark(const CPTXYGraph& graph)
{
    const QColor labels = labelStyle(graph).color;
    return !labels.isValid() || labels.lightnessF() > 0.5F;
}

double textScale(const CPTXYGraph& graph)
{
    static const double usual = CPTTextStyle().fontSize;
    return std::clamp(labelStyle(graph).fontSize / usual, 0.5, 2.0);
}

bool drawsPixels(const QPainter& painter)
{
    const QPaintEngine* engine = painter.paintEngine();
    return engine && engine->type() == QPaintEngine::Raster;
}

bool isOnScreen(const QPainter& painter)
{
    return drawsPixels(painter) && painter.device() && painter.device()->devType() == QInternal::Widget;
}

QFont textFont(const CPTXYGraph& graph, TextWeight weight, double usualSize)
{
    const QString name = weight == TextWeight::Bold ? QStringLiteral("Helvetica-Bold") : QStringLiteral("Helvetica");
    return plotkit::fontForStyle({.fontName = name, .fontSize = usualSize * textScale(graph), .color = CPTColor()});
}

}  // namespace plotix
