#include "plugins/PlotixPlugIn/reading/line/LinePart.h"

#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/reading/line/ReadExtremes.h"
#include "plugins/PlotixPlugIn/reading/trend/ChosenNumber.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeDialog.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

const QString kShown = QStringLiteral("shown");  // stored: never change
const QString kHeld = QStringLiteral("held");    // stored: never change

}  // namespace

LinePart::LinePart(ReadTrend& trend) : ReadingPart(trend), m_lines(trend, TrendLines::Amended::Told)
{
    makeActions();
    updateActions();
}

LinePart::~LinePart() = default;

QVariantMap LinePart::chosen() const
{
    QVariantMap choices;
    if (m_shown)
        choices.insert(kShown, *m_shown);
    if (m_held)
        choices.insert(kHeld, *m_held);
    return choices;
}

void LinePart::choose(const QVariantMap& choices)
{
    const std::optional<double> held = chosenNumber(choices.value(kHeld));
    m_held = held && std::isfinite(*held) ? held : std::nullopt;
    m_sameValue.reset();
    const QVariant shown = choices.value(kShown);
    setShown(shown.metaType() == QMetaType::fromType<bool>() ? std::optional(shown.toBool()) : std::nullopt);
    place();
    updateActions();
    speak();
    emit chosenChanged();
}

void LinePart::setShown(const std::optional<bool>& shown)
{
    if (m_shown == shown)
        return;
    m_shown = shown;
    if (!isShown())
        pointerLeft();
    place();
    updateActions();
    emit chosenChanged();
}

void LinePart::viewLoaded()
{
    CPTGraphHostingView* view = trend().graphView();
    if (!view)
        return;
    m_spokenBefore = view->accessibleDescription();
    m_spoken.clear();
    if (const ReadingPart* missing = trend().part(QStringLiteral("missing")))  // which says what counts as late
        connect(missing, &ReadingPart::chosenChanged, this, &LinePart::linesChanged, Qt::UniqueConnection);
    place();
    updateActions();
}

void LinePart::graphBuilt()
{
    place();
    updateActions();
}

void LinePart::clockSet()
{
    m_texts.setClock(trend().clock());
    if (m_layer)
        m_layer->setNeedsDisplay();
    speak();
}

void LinePart::graphReleased()
{
    m_layer.remove();
}

// The layer is there only while it is wanted: a graph without layers is painted straight to the screen.
void LinePart::attach()
{
    const CPTXYGraphPtr graph = trend().graph();
    if (!graph || (!isShown() && !m_held))
        return;
    m_layer.put(graph, PartLayer<ValueLine>::Place::Above, [this] {
        return std::make_shared<ValueLine>(
            [this](double time, const plotkit::GraphGeometry& geometry) { return readAtLine(time, geometry); });
    });
}

void LinePart::plotsReplaced()
{
    linesChanged();
}

void LinePart::linesChanged()
{
    m_lines.forget();
    place();
    speak();
}

void LinePart::rangeSet(CPTCoordinate coordinate)
{
    if (coordinate == CPTCoordinate::X && m_pointer)
        pointerMoved(*m_pointer);
}

std::optional<double> LinePart::standing() const
{
    return m_held ? m_held : m_pointed;
}

QVariant LinePart::timeRead() const
{
    const std::optional<double> time = standing();
    return time ? QVariant(*time) : QVariant();
}

void LinePart::place()
{
    attach();
    if (!isShown() && !m_held)
        m_layer.remove();
    if (!m_layer)
        return;
    const std::optional<double> time = standing();
    m_layer->show(time ? std::optional(ValueLine::Place{*time, m_held.has_value(), m_pointer}) : std::nullopt);
}

void LinePart::hold(const std::optional<double>& time)
{
    if (m_held == time)
        return;
    m_held = time;
    m_sameValue.reset();
    place();
    updateActions();
    speak();
    emit chosenChanged();
}

void LinePart::step(Step step, Towards towards)
{
    const auto where = shownGeometry(trend());
    if (!where)
        return;
    const CPTPlotRange& range = where->graph.plotSpace().xRange();
    const double from = standing().value_or(range.location + range.length / 2);
    const std::vector<TrendLine>& lines = m_lines.shown();
    StepFrom start{from, m_followed, m_sameValue};
    if (step == Step::SameValue) {
        if (start.chosen.isEmpty() && !lines.empty())
            start.chosen = lines.front().line.key;
        const auto line = std::find_if(lines.begin(), lines.end(),
                                       [&](const TrendLine& each) { return each.line.key == start.chosen; });
        const auto record = line == lines.end() ? std::nullopt : recordAtOrBefore(line->records, from);
        if (!start.value && record)
            start.value = record->value;
    }
    const std::optional<double> time = timeOfStep(lines, start, step, towards, *where);
    if (!time)
        return;
    hold(time);
    m_sameValue = step == Step::SameValue ? start.value : std::nullopt;
    bringIntoView(trend(), *time);
}

void LinePart::followNextLine(Towards towards)
{
    const std::vector<TrendLine>& lines = m_lines.shown();
    const auto here =
        std::find_if(lines.begin(), lines.end(), [this](const TrendLine& each) { return each.line.key == m_followed; });
    // All lines stand after the last one and before the first.
    const std::size_t count = lines.size() + 1;
    const std::size_t now = static_cast<std::size_t>(here - lines.begin());
    const std::size_t next = (now + (towards == Towards::Later ? 1 : count - 1)) % count;
    m_followed = next < lines.size() ? lines[next].line.key : QString();
    m_sameValue.reset();
    place();
    speak();
}

void LinePart::askForTime()
{
    const auto where = shownGeometry(trend());
    if (!where)
        return;
    const CPTPlotRange& range = where->graph.plotSpace().xRange();
    auto* dialog =
        new TimeDialog(localizedText(QT_TRANSLATE_NOOP("Plotix", "Go to Time")),
                       standing().value_or(range.location + range.length / 2), trend().clock(), trend().rootView());
    if (const auto recorded = trend().recordedSpan())
        dialog->setRecorded(*recorded);
    connect(dialog, &TimeDialog::timeGiven, this, &LinePart::goTo);
    dialog->open();
}

// What is recorded but was not read yet is read, for as long a time as is read now.
void LinePart::goTo(double time)
{
    hold(time);
    const auto read = trend().readSpan();
    const auto recorded = trend().recordedSpan();
    const auto isWithin = [time](const TimeSpan& span) { return time >= span.from && time <= span.to; };
    if (read && recorded && isWithin(*recorded) && !isWithin(*read)) {
        const double half = (read->to - read->from) / 2;
        trend().readDates({time - half, time + half});
        return;
    }
    bringIntoView(trend(), time);
}

std::optional<ReadAt> LinePart::readStanding()
{
    const std::optional<double> time = standing();
    const auto where = shownGeometry(trend());
    if (!time || !where)
        return std::nullopt;
    return readAtLine(*time, *where);
}

// Of what the pointer merely passes nobody wants to know whether it is the greatest.
ReadAt LinePart::readAtLine(double time, const plotkit::GraphGeometry& geometry)
{
    ReadAt read = readAt(m_lines.shown(), time, geometry, m_texts, m_followed);
    if (m_held)
        noteExtremes(read.readout, m_lines.shown(), time, geometry);
    return read;
}

void LinePart::copyValues()
{
    if (const auto read = readStanding())
        QGuiApplication::clipboard()->setText(readoutAsTable(read->readout));
}

// What the pointer passes over is not spoken: whoever listens moves the line by keys.
void LinePart::speak()
{
    CPTGraphHostingView* view = trend().graphView();
    if (!view)
        return;
    const auto read = m_held ? readStanding() : std::nullopt;
    const QString text = read ? readoutAsSentences(read->readout) : QString();
    if (text == m_spoken)
        return;  // others speak as well
    m_spoken = text;
    view->setAccessibleDescription(text.isEmpty() ? m_spokenBefore : text);
}

}  // namespace plotix
