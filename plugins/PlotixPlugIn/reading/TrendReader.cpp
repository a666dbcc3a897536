#include "plugins/PlotixPlugIn/reading/TrendReader.h"

#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/reading/clock/ClockPart.h"
#include "plugins/PlotixPlugIn/reading/comparing/ComparingPart.h"
#include "plugins/PlotixPlugIn/reading/lanes/Arrangement.h"
#include "plugins/PlotixPlugIn/reading/legend/LegendPart.h"
#include "plugins/PlotixPlugIn/reading/limits/LimitsPart.h"
#include "plugins/PlotixPlugIn/reading/line/LinePart.h"
#include "plugins/PlotixPlugIn/reading/looks/TrendLooks.h"
#include "plugins/PlotixPlugIn/reading/marks/MarksPart.h"
#include "plugins/PlotixPlugIn/reading/missing/MissingPart.h"
#include "plugins/PlotixPlugIn/reading/moves/ViewMoves.h"
#include "plugins/PlotixPlugIn/reading/notes/NotesPart.h"
#include "plugins/PlotixPlugIn/reading/overview/Overview.h"
#include "plugins/PlotixPlugIn/reading/statistics/StatisticsPart.h"

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>

#include <algorithm>

namespace plotix {

namespace {

bool isOfPointer(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ToolTip:
    case QEvent::Leave: return true;
    default: return false;
    }
}

}  // namespace

// The order is that of their menus. A part that needs another one's work stands after it.
TrendReader::TrendReader(ReadTrend& trend) : m_trend(trend)
{
    add(std::make_unique<Arrangement>(trend));
    add(std::make_unique<ViewMoves>(trend));
    add(std::make_unique<Overview>(trend));
    add(std::make_unique<LinePart>(trend));
    add(std::make_unique<MissingPart>(trend));
    add(std::make_unique<MarksPart>(trend));
    add(std::make_unique<LimitsPart>(trend));
    add(std::make_unique<NotesPart>(trend));
    add(std::make_unique<StatisticsPart>(trend));
    add(std::make_unique<LegendPart>(trend));
    add(std::make_unique<ClockPart>(trend));
    add(std::make_unique<TrendLooks>(trend));     // it dresses what others put into the graph
    add(std::make_unique<ComparingPart>(trend));  // last: its lines look as those they are compared with
}

TrendReader::~TrendReader() = default;

void TrendReader::add(std::unique_ptr<ReadingPart> part)
{
    connect(part.get(), &ReadingPart::chosenChanged, this, &TrendReader::chosenChanged);
    m_parts.push_back(std::move(part));
}

QVariantMap TrendReader::chosen() const
{
    QVariantMap choices;
    for (const auto& part : m_parts)
        if (const QVariantMap own = part->chosen(); !own.isEmpty())
            choices.insert(part->key(), own);
    return choices;
}

void TrendReader::choose(const QVariantMap& choices)
{
    for (const auto& part : m_parts)
        if (choices.contains(part->key()) && part->chosen() != choices.value(part->key()).toMap())
            part->choose(choices.value(part->key()).toMap());
}

void TrendReader::chooseOnly(const QVariantMap& choices)
{
    for (const auto& part : m_parts)
        if (part->chosen() != choices.value(part->key()).toMap())
            part->choose(choices.value(part->key()).toMap());
}

QVariantMap TrendReader::ranges() const
{
    QVariantMap ranges;
    for (const auto& part : m_parts)
        if (const QVariantMap own = part->ranges(); !own.isEmpty())
            ranges.insert(part->key(), own);
    return ranges;
}

void TrendReader::setRanges(const QVariantMap& ranges)
{
    for (const auto& part : m_parts)
        part->setRanges(ranges.value(part->key()).toMap());
}

ReadingPart* TrendReader::part(const QString& key) const
{
    const auto found =
        std::find_if(m_parts.begin(), m_parts.end(), [&key](const auto& part) { return part->key() == key; });
    return found == m_parts.end() ? nullptr : found->get();
}

std::vector<QAction*> TrendReader::actions() const
{
    std::vector<QAction*> all;
    for (const auto& part : m_parts) {
        const std::vector<QAction*> own = part->actions();
        all.insert(all.end(), own.begin(), own.end());
    }
    return all;
}

const QList<QAction*>& TrendReader::menuActions()
{
    if (!m_menuActions.isEmpty())
        return m_menuActions;
    for (QAction* action : actions()) {
        const QString title = menuOf(*action);
        if (title.isEmpty()) {
            m_menuActions << action;
            continue;
        }
        auto menu =
            std::find_if(m_menus.begin(), m_menus.end(), [&](const auto& each) { return each->title() == title; });
        if (menu == m_menus.end()) {
            menu = m_menus.insert(m_menus.end(), std::make_unique<QMenu>(title));
            (*menu)->setToolTipsVisible(true);
            m_menuActions << (*menu)->menuAction();
        }
        const QList<QAction*> before = (*menu)->actions();
        if (!before.isEmpty() && before.back()->actionGroup() != action->actionGroup())
            (*menu)->addSeparator();  // choices of which one is on stand by themselves
        (*menu)->addAction(action);
    }
    return m_menuActions;
}

double TrendReader::heightAbovePlots() const
{
    double height = 0;
    for (const auto& part : m_parts)
        height = std::max(height, part->heightAbovePlots());
    return height;
}

TableFigures* TrendReader::tableFigures() const
{
    for (const auto& part : m_parts)
        if (TableFigures* figures = part->tableFigures())
            return figures;
    return nullptr;
}

void TrendReader::readBeside(const SpanRecords& present, std::function<void()> show) const
{
    for (const auto& part : m_parts)
        show = [part = QPointer<ReadingPart>(part.get()), present, show = std::move(show)] {
            if (part)
                part->readBeside(present, show);
        };
    show();
}

QVariantList TrendReader::spansBeside(double from, double to) const
{
    QVariantList spans;
    for (const auto& part : m_parts)
        for (const TimeSpan& span : part->spansBeside({from, to}))
            spans.append(QVariant(QVariantList{span.from, span.to}));
    return spans;
}

void TrendReader::viewLoaded()
{
    if (CPTGraphHostingView* view = m_trend.graphView()) {
        view->installEventFilter(this);
        view->setMouseTracking(true);
    }
    tell(&ReadingPart::viewLoaded);
}

// The kind of the event comes first: a view that is being deleted sends others, and is no view of a graph by then.
bool TrendReader::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        return std::any_of(m_parts.begin(), m_parts.end(), [&key](const auto& part) { return part->keyPressed(key); });
    }
    if (!isOfPointer(event->type()))
        return QObject::eventFilter(watched, event);
    const CPTGraphHostingView* view = m_trend.graphView();
    if (watched != view || !m_trend.graph() || view->hostedGraph() != m_trend.graph())
        return QObject::eventFilter(watched, event);
    return std::any_of(m_parts.rbegin(), m_parts.rend(),
                       [event](const auto& part) { return part->pointerActed(*event); });
}

}  // namespace plotix
