#include "plugins/PlotixPlugIn/reading/marks/MarksPart.h"

#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/reading/trend/ChosenNumber.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <cmath>

namespace plotix {

namespace {

const QString kA = QStringLiteral("a");  // stored: never change
const QString kB = QStringLiteral("b");  // stored: never change

constexpr double kRoomBeside = 0.05;  // of the stretch between the marks, when it is fitted
constexpr double kBelowTitle = 3;     // points between a title and the flags

std::optional<double> timeFrom(const QVariant& value)
{
    const std::optional<double> time = chosenNumber(value);
    return time && std::isfinite(*time) ? time : std::nullopt;
}

}  // namespace

MarksPart::MarksPart(ReadTrend& trend) : ReadingPart(trend), m_lines(trend)
{
    makeActions();
    updateActions();
}

MarksPart::~MarksPart()
{
    m_layer.remove();
    delete m_window;
}

QVariantMap MarksPart::chosen() const
{
    QVariantMap choices;
    if (m_marks.a)
        choices.insert(kA, *m_marks.a);
    if (m_marks.b)
        choices.insert(kB, *m_marks.b);
    return choices;
}

void MarksPart::choose(const QVariantMap& choices)
{
    const MarkTimes wanted{timeFrom(choices.value(kA)), timeFrom(choices.value(kB))};
    if (wanted == m_marks)
        return;
    m_marks = wanted;
    takeMarks();
}

void MarksPart::takeMarks()
{
    attach();
    show();
    updateActions();
    trend().setMarkedSpan(m_marks.areBoth() ? std::optional(m_marks.span()) : std::nullopt);
    emit marksMoved();
    emit chosenChanged();
}

double MarksPart::heightAbovePlots() const
{
    const CPTXYGraphPtr graph = trend().graph();
    return graph && (m_marks.a || m_marks.b) ? heightOfFlags(*graph) + kBelowTitle : 0;
}

void MarksPart::viewLoaded()
{
    updateActions();
}

void MarksPart::graphBuilt()
{
    attach();
    updateActions();
    trend().setMarkedSpan(m_marks.areBoth() ? std::optional(m_marks.span()) : std::nullopt);
}

void MarksPart::graphReleased()
{
    m_layer.remove();
}

// The layer is there only while a mark is: a graph without layers is painted straight to the screen.
void MarksPart::attach()
{
    const CPTXYGraphPtr graph = trend().graph();
    if (!graph || (!m_marks.a && !m_marks.b))
        return;
    const auto heading = [this](const MarkTimes& marks) {
        return markHeading(markedLines(m_lines.shown(), marks), marks, m_texts);
    };
    // The readout of the value line must stay readable over the stretch.
    if (m_layer.put(graph, PartLayer<MarksLayer>::Place::Beneath,
                    [&heading] { return std::make_shared<MarksLayer>(heading); }))
        show();
}

void MarksPart::show()
{
    if (!m_layer)
        return;
    if (m_marks.a || m_marks.b)
        m_layer->show(m_marks, m_current);
    else
        m_layer.remove();
}

void MarksPart::plotsReplaced()
{
    linesChanged();
}

void MarksPart::linesChanged()
{
    m_lines.forget();
    show();
    emit marksMoved();
}

void MarksPart::setMark(Mark mark, const std::optional<double>& time)
{
    std::optional<double>& stored = mark == Mark::A ? m_marks.a : m_marks.b;
    if (stored == time && m_current == mark)
        return;
    stored = time;
    m_current = mark;
    takeMarks();
    speak();
}

void MarksPart::setMarkHere(Mark mark)
{
    const CPTXYGraphPtr graph = trend().graph();
    if (!graph)
        return;
    const ReadingPart* line = trend().part(QStringLiteral("valueLine"));
    QVariant standing = line ? line->property("time") : QVariant();
    // The line is still held where the other mark was set: nobody wants both marks there.
    const std::optional<double>& other = mark == Mark::A ? m_marks.b : m_marks.a;
    if (const QVariant pointed = line ? line->property("pointed") : QVariant();
        other && pointed.isValid() && standing == QVariant(*other))
        standing = pointed;
    const CPTPlotRange& range = graph->plotSpace().xRange();
    constexpr double kFromEdge = 0.25;
    const double part = mark == Mark::A ? kFromEdge : 1 - kFromEdge;
    setMark(mark, standing.isValid() ? standing.toDouble() : range.location + part * range.length);
}

// What stands above the graph is also its accessible description, until something else is read.
void MarksPart::speak()
{
    CPTGraphHostingView* view = trend().graphView();
    if (!view || !m_marks.areBoth())
        return;
    const QStringList heading = markHeading(markedLines(m_lines.shown(), m_marks), m_marks, m_texts);
    view->setAccessibleDescription(heading.join(QStringLiteral(". ")).replace(QChar(QChar::Nbsp), QLatin1Char(' ')));
}

void MarksPart::removeMarks()
{
    m_marks = {};
    m_dragged.reset();
    takeMarks();
}

void MarksPart::moveMark(Move move, int direction)
{
    const Mark mark = (m_current == Mark::A && m_marks.a) || !m_marks.b ? Mark::A : Mark::B;
    const std::optional<double> from = mark == Mark::A ? m_marks.a : m_marks.b;
    const auto where = shownGeometry(trend());
    if (!from || !where)
        return;
    if (move == Move::Pixel) {
        setMark(mark, *from + direction * plotkit::valuePerUnit(where->xMappingOf(where->graph.plotSpace())));
        return;
    }
    std::optional<double> nearest;
    for (const TrendLine& each : m_lines.shown()) {
        const auto record = direction > 0 ? recordAfter(each.records, *from) : recordBefore(each.records, *from);
        if (record && (!nearest || (direction > 0 ? record->time < *nearest : record->time > *nearest)))
            nearest = record->time;
    }
    if (nearest)
        setMark(mark, nearest);
}

void MarksPart::fitToMarks()
{
    if (!m_marks.areBoth() || m_marks.distance() == 0)
        return;
    const double beside = kRoomBeside * std::abs(m_marks.distance());
    trend().showTimes({m_marks.span().from - beside, m_marks.span().to + beside});
}

void MarksPart::datesFromMarks()
{
    if (m_marks.areBoth() && m_marks.distance() != 0)
        trend().readDates(m_marks.span());
}

void MarksPart::copyRange()
{
    if (m_marks.areBoth())
        QGuiApplication::clipboard()->setText(rangeText(m_marks.span(), trend().clock()));
}

}  // namespace plotix
