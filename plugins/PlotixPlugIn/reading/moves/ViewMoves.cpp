#include "plugins/PlotixPlugIn/reading/moves/ViewMoves.h"

#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/reading/moves/ShownValues.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QScopedValueRollback>

namespace plotix {

namespace {

constexpr auto kGestures = "gestures";  // stored: never change
constexpr auto kBounded = "bounded";
constexpr int kRest = 500;  // milliseconds without a move: the view is looked at
const QString kTimes = QStringLiteral("times");
const QString kSpaces = QStringLiteral("values");

QVariantList listFrom(const CPTPlotRange& range)
{
    return {range.location, range.length};
}

std::optional<CPTPlotRange> rangeFrom(const QVariant& list)
{
    const QVariantList parts = list.toList();
    return parts.size() == 2 ? std::optional(CPTPlotRange{parts[0].toDouble(), parts[1].toDouble()}) : std::nullopt;
}

}  // namespace

ViewMoves::ViewMoves(ReadTrend& trend) : ReadingPart(trend), m_gestures(trend), m_bounds(trend)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(kRest);
    connect(&m_rest, &QTimer::timeout, this, &ViewMoves::settle);
    connect(&m_gestures, &GraphGestures::moved, this, [this] { m_rest.start(); });
    m_back = addAction(QT_TRANSLATE_NOOP("Plotix", "&Back"), QKeySequence(Qt::ALT | Qt::Key_Left), &ViewMoves::goBack);
    m_forward = addAction(QT_TRANSLATE_NOOP("Plotix", "For&ward"), QKeySequence(Qt::ALT | Qt::Key_Right),
                          &ViewMoves::goForward);
    addAction(QT_TRANSLATE_NOOP("Plotix", "Fit &Values to Shown Times"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_0),
              &ViewMoves::fitValues);
    addAction(QT_TRANSLATE_NOOP("Plotix", "Fit &Everything"), {}, &ViewMoves::fitAll);
    addAction(QT_TRANSLATE_NOOP("Plotix", "&Zoom to a Box"), QKeySequence(Qt::CTRL | Qt::Key_B), &ViewMoves::zoomToBox)
        ->setToolTip(localizedText(QT_TRANSLATE_NOOP(
            "Plotix",
            "Draw a box with the next drag, or at any time with Ctrl held; a low one zooms the times alone.")));
    m_bounded = addAction(QT_TRANSLATE_NOOP("Plotix", "&Stay Where Records Are"), {}, &ViewMoves::toggleBounds);
    m_bounded->setCheckable(true);
    updateActions();
}

void ViewMoves::toggleBounds()
{
    m_bounds.setOn(!m_bounds.isOn());
    emit chosenChanged();
}

QAction* ViewMoves::addAction(const char* text, const QKeySequence& keys, void (ViewMoves::*act)())
{
    auto* action = new QAction(localizedText(text), this);
    action->setShortcut(keys);
    setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "&Move")));
    connect(action, &QAction::triggered, this, act);
    m_actions.push_back(action);
    return action;
}

QVariantMap ViewMoves::chosen() const
{
    QVariantMap choices;
    if (m_gestures.isOn())
        choices.insert(QLatin1String(kGestures), true);
    if (m_bounds.isOn())
        choices.insert(QLatin1String(kBounded), true);
    return choices;
}

void ViewMoves::choose(const QVariantMap& choices)
{
    m_gestures.setOn(choices.value(QLatin1String(kGestures)).toBool());
    m_bounds.setOn(choices.value(QLatin1String(kBounded)).toBool());
    m_bounded->setChecked(m_bounds.isOn());
    emit chosenChanged();
}

bool ViewMoves::pointerActed(QEvent& event)
{
    return m_gestures.pointerActed(event);
}

void ViewMoves::fitted()
{
    m_bounds.watchSpaces();
    rangeSet(CPTCoordinate::X);
}

void ViewMoves::rangeSet(CPTCoordinate /*coordinate*/)
{
    if (!m_isGoing && !trend().movesByItself() && trend().graphView())
        m_rest.start();
}

void ViewMoves::settle()
{
    m_rest.stop();
    if (trend().graph())
        m_history.add(presentView());
    updateActions();
}

QVariantMap ViewMoves::presentView() const
{
    const CPTXYGraphPtr graph = trend().graph();
    QVariantList spaces;
    for (const CPTXYPlotSpacePtr& space : graph->allPlotSpaces())
        spaces << QVariant(listFrom(space->yRange()));
    return {{kTimes, listFrom(graph->plotSpace().xRange())}, {kSpaces, spaces}};
}

void ViewMoves::goBack()
{
    if (m_rest.isActive())
        settle();
    show(m_history.back());
}

void ViewMoves::goForward()
{
    if (m_rest.isActive())
        settle();
    show(m_history.forward());
}

/// Lanes that were made or left since then keep their values.
void ViewMoves::show(const std::optional<QVariantMap>& view)
{
    updateActions();
    const CPTXYGraphPtr graph = trend().graph();
    const std::optional<CPTPlotRange> times = view ? rangeFrom(view->value(kTimes)) : std::nullopt;
    if (!graph || !times)
        return;
    const QScopedValueRollback going(m_isGoing, true);
    trend().showTimes({times->minLimit(), times->maxLimit()});
    const QVariantList values = view->value(kSpaces).toList();
    const std::vector<CPTXYPlotSpacePtr> spaces = graph->allPlotSpaces();
    if (static_cast<std::size_t>(values.size()) != spaces.size())
        return;
    for (std::size_t index = 0; index < spaces.size(); ++index)
        if (const auto range = rangeFrom(values[static_cast<qsizetype>(index)]))
            trend().showValues(*spaces[index], *range);
}

void ViewMoves::fitValues()
{
    if (trend().graph())
        fitValuesToShownTimes(*trend().graph());
    m_rest.start();
}

void ViewMoves::updateActions()
{
    m_back->setEnabled(m_history.canGoBack());
    m_forward->setEnabled(m_history.canGoForward());
}

}  // namespace plotix
