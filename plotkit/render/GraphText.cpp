#include "plotkit/render/GraphText.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>
#include <vector>

namespace plotkit {

namespace {

/// Room for rounding between the measured and the drawn width, in points, before a line counts as too long.
constexpr double kElisionTolerance = 2.0;

constexpr double kLargestFont = 2000.0;  // painter units

constexpr double kHaloWidth = 3.0;  // points
constexpr float kHaloOpacity = 0.5F;

double lineHeight(const QFontMetricsF& metrics)
{
    return metrics.ascent() + metrics.descent();
}

struct PlacedLine {
    QString text;
    QPointF baseline;  ///< where the first glyph stands, painter units
};

/// The lines of a text in a box, read from left to right.
std::vector<PlacedLine> placeLines(const PlacedText& text, const QRectF& box, const QFontMetricsF& metrics,
                                   const TextPlacing& placing)
{
    const QStringList texts = text.text.split(u'\n');
    const double step = lineHeight(metrics);
    double baseline = box.center().y() - step * double(texts.size()) / 2 + metrics.ascent();
    std::vector<PlacedLine> lines;
    for (const QString& whole : texts) {
        QString line = whole;
        if (metrics.horizontalAdvance(line) > box.width() + kElisionTolerance * placing.density)
            line = metrics.elidedText(line, Qt::ElideRight, box.width());
        const double width = metrics.horizontalAdvance(line);
        double left = box.center().x() - width / 2;
        if (text.alignment & Qt::AlignRight)
            left = box.right() - width;
        else if (text.alignment & Qt::AlignLeft)
            left = box.left();
        const QPointF start(left, baseline);
        lines.push_back({line, placing.snaps ? QPointF(std::round(left), std::round(baseline)) : start});
        baseline += step;
    }
    return lines;
}

/// Sets a text off from what lies beneath it. On a page by a plate: how the toolkit strokes outlines there depends on
/// what was drawn before, and the same graph is to give the same bytes.
void drawHalo(QPainter& painter, const std::vector<PlacedLine>& lines, const QColor& textColor,
              const TextPlacing& placing)
{
    QColor color = textColor.lightnessF() > 0.5F ? QColor(Qt::black) : QColor(Qt::white);
    color.setAlphaF(kHaloOpacity);
    if (!placing.snaps) {
        const QFontMetricsF metrics(painter.font(), painter.device());
        for (const PlacedLine& line : lines)
            painter.fillRect(QRectF(line.baseline - QPointF(kHaloWidth / 2, metrics.ascent()),
                                    QSizeF(metrics.horizontalAdvance(line.text) + kHaloWidth, lineHeight(metrics))),
                             color);
        return;
    }
    QPainterPath outline;
    for (const PlacedLine& line : lines)
        outline.addText(line.baseline, painter.font(), line.text);
    painter.strokePath(outline, QPen(color, kHaloWidth * placing.density, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

/// A drawing names its fonts and embeds none: outlines look the same wherever it is opened.
void drawOutlines(QPainter& painter, const std::vector<PlacedLine>& lines, const QColor& color)
{
    QPainterPath outlines;
    outlines.setFillRule(Qt::WindingFill);
    for (const PlacedLine& line : lines)
        outlines.addText(line.baseline, painter.font(), line.text);
    painter.fillPath(outlines, color);
}

void drawLines(QPainter& painter, const PlacedText& text, const QRectF& box, const CPTTextStyle& style,
               const TextPlacing& placing)
{
    const std::vector<PlacedLine> lines =
        placeLines(text, box, QFontMetricsF(painter.font(), painter.device()), placing);
    if (placing.hasHalo)
        drawHalo(painter, lines, style.color, placing);
    if (painter.paintEngine()->type() == QPaintEngine::SVG)
        return drawOutlines(painter, lines, style.color);
    painter.setPen(style.color);
    for (const PlacedLine& line : lines)
        painter.drawText(line.baseline, line.text);
}

}  // namespace

QFont fontForStyle(const CPTTextStyle& style, double density)
{
    const qsizetype dash = style.fontName.lastIndexOf(u'-');
    const QString face = dash < 0 ? QString() : style.fontName.mid(dash + 1);
    const bool bold = face.contains(u"Bold", Qt::CaseInsensitive);
    const bool slanted =
        face.contains(u"Oblique", Qt::CaseInsensitive) || face.contains(u"Italic", Qt::CaseInsensitive);
    const bool isFace = bold || slanted || face == u"Regular";
    QFont font(isFace ? style.fontName.left(dash) : style.fontName);
    font.setStyleHint(QFont::SansSerif, QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    font.setHintingPreference(QFont::PreferVerticalHinting);
    const double atLeastOne = std::max(1.0, style.fontSize * density);  // also for a size that is not a number
    font.setPixelSize(int(std::lround(std::min(atLeastOne, kLargestFont))));
    font.setBold(bold);
    font.setItalic(slanted);
    return font;
}

QSizeF sizeOfText(const QString& text, const CPTTextStyle& style)
{
    if (text.isEmpty())
        return {0, 0};
    const QFontMetricsF metrics(fontForStyle(style));
    const QStringList lines = text.split(u'\n');
    double width = 0;
    for (const QString& line : lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    return {width, lineHeight(metrics) * double(lines.size())};
}

void drawPlacedText(QPainter& painter, const PlacedText& text, const CPTTextStyle& style, const TextPlacing& placing)
{
    if (!style.color.isValid() || text.text.isEmpty())
        return;
    painter.setFont(fontForStyle(style, placing.density));
    const QRectF& box = placing.box;
    if (!text.readsUpward) {
        drawLines(painter, text, box, style, placing);
        return;
    }
    painter.save();
    painter.translate(placing.snaps ? QPointF(std::round(box.left()), std::round(box.bottom())) : box.bottomLeft());
    painter.rotate(-90);
    drawLines(painter, text, QRectF(0, 0, box.height(), box.width()), style, placing);
    painter.restore();
}

}  // namespace plotkit
