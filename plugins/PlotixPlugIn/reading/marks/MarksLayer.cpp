#include "plugins/PlotixPlugIn/reading/marks/MarksLayer.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr QSizeF kFlag(17, 16);
constexpr double kAbovePlots = 2;  // points between flag and plot area
constexpr double kFromFlag = 8;    // between a flag and the heading
constexpr double kTextSize = 11;   // all lengths are those in a graph of the usual text size
constexpr double kDash = 3;        // widths of the line
constexpr double kGrab = 3;        // points beside a flag that count as it

struct MarkLook {
    QColor line, flag, letter, text, shade;
};

MarkLook lookFor(const CPTXYGraph& graph)
{
    if (isDark(graph))
        return {QColor(138, 184, 255), QColor(138, 184, 255), QColor(16, 24, 40), QColor(160, 198, 255),
                QColor(138, 184, 255, 30)};
    return {QColor(30, 90, 190), QColor(30, 90, 190), QColor(255, 255, 255), QColor(20, 70, 160),
            QColor(30, 90, 190, 26)};
}

QFont fontIn(const CPTXYGraph& graph)
{
    return textFont(graph, TextWeight::Bold, kTextSize);
}

double xOf(const plotkit::GraphGeometry& geometry, double time)
{
    return geometry.pointForValue(geometry.graph.plotSpace(), {time, 0}).x();
}

bool isShown(const plotkit::GraphGeometry& geometry, double x)
{
    return x >= geometry.plotArea.left() - 0.5 && x <= geometry.plotArea.right() + 0.5;
}

void drawMark(QPainter& painter, const plotkit::GraphGeometry& geometry, double time, QString letter, bool isCurrent)
{
    const MarkLook look = lookFor(geometry.graph);
    const double x = xOf(geometry, time);
    const QRectF& area = geometry.plotArea;
    const QRectF flag = flagPlace(geometry, time);
    const bool shown = isShown(geometry, x);
    if (shown) {
        QPen pen(look.line, 1.2);
        pen.setDashPattern({kDash, kDash});
        painter.setPen(pen);
        painter.drawLine(QPointF(x, flag.bottom()), QPointF(x, area.bottom()));
    } else {
        letter = x < area.left() ? QStringLiteral("‹") + letter : letter + QStringLiteral("›");
        painter.setOpacity(0.6);
    }
    painter.setPen(isCurrent ? QPen(look.text.lighter(130), 1.5) : QPen(Qt::NoPen));
    painter.setBrush(look.flag);
    painter.drawRoundedRect(flag, 2, 2);
    painter.setPen(look.letter);
    painter.setFont(fontIn(geometry.graph));
    painter.drawText(flag, Qt::AlignCenter, letter);
    painter.setOpacity(1);
}

/// The room for the heading: between the flags where it is wide enough, else the widest beside them.
QRectF headingRoom(const plotkit::GraphGeometry& geometry, const MarkTimes& marks, double wanted)
{
    const QRectF one = flagPlace(geometry, marks.span().from);
    const QRectF other = flagPlace(geometry, marks.span().to);
    const auto room = [&one](double left, double right) {
        return QRectF(left + kFromFlag, one.top(), std::max(0.0, right - left - 2 * kFromFlag), one.height());
    };
    const QRectF between = room(one.right(), other.left());
    if (between.width() >= wanted)
        return between;
    const QRectF before = room(geometry.plotArea.left(), one.left());
    const QRectF after = room(other.right(), geometry.plotArea.right());  // a legend may stand beyond
    const QRectF& beside = after.width() >= before.width() ? after : before;
    return beside.width() > between.width() ? beside : between;
}

}  // namespace

double heightOfFlags(const CPTXYGraph& graph)
{
    return kAbovePlots + kFlag.height() * textScale(graph);
}

QRectF flagPlace(const plotkit::GraphGeometry& geometry, double time)
{
    const QRectF& area = geometry.plotArea;
    const double x = std::clamp(xOf(geometry, time), area.left(), area.right());
    const QSizeF flag = kFlag * textScale(geometry.graph);
    const double top = std::max(geometry.rectangle.top(), area.top() - heightOfFlags(geometry.graph));
    return {QPointF(x - flag.width() / 2, top), flag};
}

std::optional<Mark> flagAt(const plotkit::GraphGeometry& geometry, const MarkTimes& marks, Mark current,
                           const QPointF& point)
{
    const auto isAt = [&](const std::optional<double>& time) {
        return time && flagPlace(geometry, *time).adjusted(-kGrab, -kGrab, kGrab, kGrab).contains(point);
    };
    const bool atA = isAt(marks.a);
    const bool atB = isAt(marks.b);
    if (atA && atB)
        return current;
    return atA ? std::optional(Mark::A) : atB ? std::optional(Mark::B) : std::nullopt;
}

QString fittingHeading(const QStringList& items, double width, const std::function<double(const QString&)>& widthOf)
{
    const QString between = QStringLiteral("    ");
    for (qsizetype count = items.size(); count > 0; --count) {
        QString text = items.mid(0, count).join(between);
        if (count < items.size())
            text += QStringLiteral(" …");
        if (widthOf(text) <= width)
            return text;
    }
    return {};
}

void MarksLayer::show(const MarkTimes& marks, Mark current)
{
    if (m_marks == marks && m_current == current && !marks.areBoth())
        return;
    m_marks = marks;
    m_current = current;
    setNeedsDisplay();
}

void MarksLayer::drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry)
{
    const QRectF& area = geometry.plotArea;
    if (area.isEmpty() || (!m_marks.a && !m_marks.b))
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const MarkLook look = lookFor(geometry.graph);
    if (m_marks.areBoth()) {
        const double left = std::clamp(xOf(geometry, m_marks.span().from), area.left(), area.right());
        const double right = std::clamp(xOf(geometry, m_marks.span().to), area.left(), area.right());
        painter.fillRect(QRectF(left, area.top(), right - left, area.height()), look.shade);
    }
    // Which mark the keys move is of no interest in a picture.
    const bool onScreen = isOnScreen(painter);
    if (m_marks.a)
        drawMark(painter, geometry, *m_marks.a, QStringLiteral("A"), onScreen && m_current == Mark::A);
    if (m_marks.b)
        drawMark(painter, geometry, *m_marks.b, QStringLiteral("B"), onScreen && m_current == Mark::B);
    if (!m_marks.areBoth() || !m_heading)
        return;
    painter.setFont(fontIn(geometry.graph));
    const QFontMetricsF metrics(painter.font());
    const auto widthOf = [&metrics](const QString& text) { return metrics.horizontalAdvance(text); };
    const QStringList items = m_heading(m_marks);
    const QRectF room = headingRoom(geometry, m_marks, widthOf(items.join(QStringLiteral("    "))));
    painter.setPen(look.text);
    painter.drawText(room, Qt::AlignCenter | Qt::TextSingleLine, fittingHeading(items, room.width(), widthOf));
}

}  // namespace plotix
