#include "plugins/PlotixPlugIn/reading/SpanMarks.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kSameMoment = 0.01;  // seconds
constexpr QColor kShade(255, 255, 255, 26);
constexpr QColor kHatch(255, 255, 255, 38);
constexpr QColor kPlate(0, 0, 0, 150);
constexpr QColor kWord(255, 214, 102);
constexpr double kWordSize = 12;  // points
constexpr double kInset = 6;      // points between plate, word and plot area

/// Both: a plain shade is hard to see on paper, a hatch alone on a fine screen.
void shade(QPainter& painter, const QRectF& area)
{
    if (!(area.width() > 0))
        return;
    painter.fillRect(area, kShade);
    painter.fillRect(area, QBrush(kHatch, Qt::BDiagPattern));
}

void write(QPainter& painter, const QRectF& plotArea, const QString& word)
{
    QFont font(QStringLiteral("Helvetica"));
    font.setPixelSize(int(kWordSize));
    painter.setFont(font);
    const QRectF measured = painter.boundingRect(QRectF(QPointF(), plotArea.size()), Qt::AlignLeft, word);
    QRectF plate(QPointF(), measured.size() + QSizeF(2 * kInset, kInset));
    plate.moveTopLeft(plotArea.topLeft() + QPointF(kInset, kInset));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kPlate);
    painter.drawRoundedRect(plate, kInset / 2, kInset / 2);
    painter.setPen(kWord);
    painter.drawText(plate, Qt::AlignCenter, word);
}

}  // namespace

void SpanMarks::show(const std::optional<TimeSpan>& read, const std::optional<TimeSpan>& chosen)
{
    if (read == m_read && chosen == m_chosen)
        return;
    m_read = read;
    m_chosen = chosen;
    setNeedsDisplay();
}

void SpanMarks::drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry)
{
    const CPTXYPlotSpace& space = geometry.graph.plotSpace();
    const CPTPlotRange& range = space.xRange();
    const TimeSpan drawn{range.minLimit(), range.maxLimit()};
    const QRectF& area = geometry.plotArea;
    if (area.isEmpty())
        return;
    const auto placeOf = [&](double moment) {
        const double place = geometry.pointForValue(space, {moment, 0}).x();
        return std::clamp(place, area.left(), area.right());
    };
    if (m_read && range.length > 0) {
        const double from = m_read->from > drawn.from + kSameMoment ? placeOf(m_read->from) : area.left();
        const double to = m_read->to < drawn.to - kSameMoment ? placeOf(m_read->to) : area.right();
        shade(painter, {area.left(), area.top(), from - area.left(), area.height()});
        shade(painter, {to, area.top(), area.right() - to, area.height()});
    }
    if (m_chosen && !isSameSpan(*m_chosen, drawn))
        write(painter, area,
              KTVBundle::mainBundle()->localizedString(
                  QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Not yet the chosen dates"))));
}

}  // namespace plotix
