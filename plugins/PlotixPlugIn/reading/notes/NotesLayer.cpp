#include "plugins/PlotixPlugIn/reading/notes/NotesLayer.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>

namespace plotix {

namespace {

constexpr double kDepth = 22;       // points: the room above the plots
constexpr double kFromEdge = 8;     // of the room, above its flags
constexpr double kFlagHeight = 15;  // of a flag in it, in a graph of the usual text size
constexpr double kLeastWidth = 16;
constexpr double kInset = 4;    // beside a flag's number
constexpr double kBetween = 1;  // flags nearer than this share one
constexpr double kTextSize = 10.5;
constexpr double kTick = 5;  // of a bracket's ends

struct NoteLook {
    QColor flag, text, line;
};

NoteLook noteLookFor(const CPTXYGraph& graph)
{
    if (isDark(graph))
        return {QColor(255, 208, 92), QColor(40, 30, 0), QColor(255, 208, 92, 150)};
    return {QColor(158, 104, 0), QColor(255, 255, 255), QColor(158, 104, 0, 150)};
}

QFont numberFont(const CPTXYGraph& graph)
{
    return textFont(graph, TextWeight::Bold, kTextSize);
}

double flagHeight(const CPTXYGraph& graph)
{
    return std::min(kFlagHeight * textScale(graph), kDepth - 2);
}

/// Where the flags of a room stand.
double footOf(const QRectF& room)
{
    return room.top() + kFromEdge + kFlagHeight;
}

double xOfTime(const plotkit::GraphGeometry& geometry, double time)
{
    return geometry.pointForValue(geometry.graph.plotSpace(), {time, 0}).x();
}

bool isWithin(const plotkit::GraphGeometry& geometry, double x)
{
    return x >= geometry.plotArea.left() - 0.5 && x <= geometry.plotArea.right() + 0.5;
}

/// A span that began before what is shown has its flag at the edge.
std::optional<double> flagX(const NumberedNote& note, const plotkit::GraphGeometry& geometry)
{
    const double from = xOfTime(geometry, note.note.from), to = xOfTime(geometry, note.note.to);
    if (std::max(from, to) < geometry.plotArea.left() - 0.5 || std::min(from, to) > geometry.plotArea.right() + 0.5)
        return std::nullopt;
    return std::max(std::min(from, to), geometry.plotArea.left());
}

QRectF widened(const QRectF& place, const QString& text, const CPTXYGraph& graph)
{
    const double advance = QFontMetricsF(numberFont(graph)).horizontalAdvance(text);
    const double width = std::max(kLeastWidth * textScale(graph), advance + 2 * kInset * textScale(graph));
    return {place.topLeft(), QSizeF(width, place.height())};
}

void drawBracket(QPainter& painter, const NumberedNote& note, const plotkit::GraphGeometry& geometry, double y)
{
    const QRectF& area = geometry.plotArea;
    const double from = xOfTime(geometry, note.note.from), to = xOfTime(geometry, note.note.to);
    const double left = std::clamp(std::min(from, to), area.left(), area.right());
    const double right = std::clamp(std::max(from, to), area.left(), area.right());
    painter.drawLine(QPointF(left, y), QPointF(right, y));
    for (const double end : {from, to})
        if (isWithin(geometry, end))
            painter.drawLine(QPointF(end, y), QPointF(end, y + kTick));
}

void drawFlag(QPainter& painter, const NoteFlag& flag, const NoteLook& look, const QFont& font, bool isCurrent)
{
    painter.setPen(isCurrent ? QPen(look.text, 2) : QPen(Qt::NoPen));
    painter.setBrush(look.flag);
    painter.drawRoundedRect(flag.place, 2, 2);
    painter.setPen(look.text);
    painter.setFont(font);
    painter.drawText(flag.place, Qt::AlignCenter | Qt::TextSingleLine, flag.text());
}

}  // namespace

QString NoteFlag::text() const
{
    const int first = notes.front().number, last = notes.back().number;
    return first == last ? QString::number(first) : QStringLiteral("%1–%2").arg(first).arg(last);
}

std::vector<NoteFlag> noteFlags(const std::vector<NumberedNote>& notes, const plotkit::GraphGeometry& geometry,
                                const QRectF& room)
{
    const double height = flagHeight(geometry.graph);
    std::vector<NoteFlag> flags;
    for (const NumberedNote& note : notes) {
        const std::optional<double> x = flagX(note, geometry);
        if (!x)
            continue;
        NoteFlag flag{QRectF(*x, footOf(room) - height, 0, height), {note}};
        flag.place = widened(flag.place, flag.text(), geometry.graph);
        // A flag flies to the right of its time; at the right edge to the left.
        if (flag.place.right() > room.right())
            flag.place.moveRight(*x);
        if (flags.empty() || flag.place.left() > flags.back().place.right() + kBetween) {
            flags.push_back(std::move(flag));
            continue;
        }
        flags.back().notes.push_back(note);
        flags.back().place = widened(flags.back().place, flags.back().text(), geometry.graph);
    }
    return flags;
}

void NotesLayer::show(std::vector<NumberedNote> notes, qint64 current)
{
    m_notes = std::move(notes);
    m_current = current;
    setNeedsDisplay();
}

std::optional<CPTLayerRoom> NotesLayer::room(const QSizeF&) const
{
    if (m_notes.empty())
        return std::nullopt;
    return CPTLayerRoom{CPTLayerRoom::Edge::Top, kDepth};
}

std::vector<NoteFlag> NotesLayer::flags(const plotkit::GraphGeometry& geometry) const
{
    QRectF room = geometry.roomOf(*this);
    room.setLeft(geometry.plotArea.left());
    room.setRight(geometry.plotArea.right());
    return noteFlags(m_notes, geometry, room);
}

void NotesLayer::drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry)
{
    if (m_notes.empty() || geometry.plotArea.isEmpty())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const NoteLook look = noteLookFor(geometry.graph);
    const double foot = footOf(geometry.roomOf(*this));
    const double height = flagHeight(geometry.graph);
    painter.setPen(QPen(look.line, 1));
    for (const NumberedNote& note : m_notes) {
        const double x = xOfTime(geometry, note.note.from);
        if (note.isSpan() && flagX(note, geometry))
            drawBracket(painter, note, geometry, foot);
        if (isWithin(geometry, x))
            painter.drawLine(QPointF(x, foot - height), QPointF(x, geometry.plotArea.bottom()));
    }
    const bool onScreen = isOnScreen(painter);
    const QFont font = numberFont(geometry.graph);
    for (const NoteFlag& flag : flags(geometry)) {
        const bool isCurrent =
            onScreen && std::any_of(flag.notes.begin(), flag.notes.end(),
                                    [this](const NumberedNote& note) { return note.note.identifier == m_current; });
        drawFlag(painter, flag, look, font, isCurrent);
    }
}

}  // namespace plotix
