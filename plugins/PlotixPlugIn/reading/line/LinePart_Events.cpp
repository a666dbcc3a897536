// Pointer, keys and actions of the value line.
//
// Rules of this file:
//  1. No event is taken from the graph: its drags and zooms go on as ever, and a drag is no click.
//  2. Every key has an action, so that nobody needs to know the keys. The shortcuts of the actions are shown in menus
//     only: the keys count in the focused graph, where keyPressed() gets them.

#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/reading/line/LinePart.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>

#include <array>

namespace plotix {

namespace {

constexpr double kClickSlack = 4;  // points a hand may move between press and release

struct StepKey {
    Qt::Key key;
    bool withShift;
    Step step;
    Towards towards;
};

/// Keys that also a German keyboard has without AltGr, and brackets for those that have them. Shift turns a comma into
/// a semicolon or a less-than sign, by the keyboard.
constexpr std::array<StepKey, 20> kStepKeys{{
    {Qt::Key_Period, false, Step::Record, Towards::Later},
    {Qt::Key_Comma, false, Step::Record, Towards::Earlier},
    {Qt::Key_Period, true, Step::Pixel, Towards::Later},
    {Qt::Key_Colon, true, Step::Pixel, Towards::Later},
    {Qt::Key_Greater, true, Step::Pixel, Towards::Later},
    {Qt::Key_Comma, true, Step::Pixel, Towards::Earlier},
    {Qt::Key_Semicolon, true, Step::Pixel, Towards::Earlier},
    {Qt::Key_Less, true, Step::Pixel, Towards::Earlier},
    {Qt::Key_BracketRight, false, Step::Extreme, Towards::Later},
    {Qt::Key_BracketLeft, false, Step::Extreme, Towards::Earlier},
    {Qt::Key_M, false, Step::Maximum, Towards::Later},
    {Qt::Key_M, true, Step::Maximum, Towards::Earlier},
    {Qt::Key_N, false, Step::Minimum, Towards::Later},
    {Qt::Key_N, true, Step::Minimum, Towards::Earlier},
    {Qt::Key_G, false, Step::Gap, Towards::Later},
    {Qt::Key_G, true, Step::Gap, Towards::Earlier},
    {Qt::Key_C, false, Step::Limit, Towards::Later},
    {Qt::Key_C, true, Step::Limit, Towards::Earlier},
    {Qt::Key_V, false, Step::SameValue, Towards::Later},
    {Qt::Key_V, true, Step::SameValue, Towards::Earlier},
}};

}  // namespace

QAction* LinePart::addAction(const char* text, const QKeySequence& keys, std::function<void()> act)
{
    auto* action = new QAction(localizedText(text), this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "&Values")));
    connect(action, &QAction::triggered, this, std::move(act));
    m_actions.push_back(action);
    return action;
}

void LinePart::makeActions()
{
    m_showAction = addAction(QT_TRANSLATE_NOOP("Plotix", "Value &Line at the Pointer"), Qt::Key_L | Qt::SHIFT,
                             [this] { setShown(!isShown()); });
    m_showAction->setCheckable(true);
    m_holdAction = addAction(QT_TRANSLATE_NOOP("Plotix", "&Hold the Value Line"), Qt::Key_Space, [this] {
        const auto where = shownGeometry(trend());
        if (!where)
            return;
        const CPTPlotRange& range = where->graph.plotSpace().xRange();
        hold(m_held ? std::nullopt : std::optional(standing().value_or(range.location + range.length / 2)));
    });
    m_holdAction->setCheckable(true);
    m_reading.push_back(m_holdAction);
    m_reading.push_back(addAction(QT_TRANSLATE_NOOP("Plotix", "Go to &Time…"), Qt::Key_T, [this] { askForTime(); }));
    addSteps();
    m_reading.push_back(addAction(QT_TRANSLATE_NOOP("Plotix", "Keys Follow Next L&ine"), Qt::Key_L,
                                  [this] { followNextLine(Towards::Later); }));
    m_reading.push_back(
        addAction(QT_TRANSLATE_NOOP("Plotix", "Cop&y Values at the Line"), {}, [this] { copyValues(); }));
}

void LinePart::addSteps()
{
    struct Row {
        const char* text;
        QKeySequence keys;
        Step step;
        Towards towards;
    };
    const std::array<Row, 12> rows{{
        {QT_TRANSLATE_NOOP("Plotix", "Next &Record"), Qt::Key_Period, Step::Record, Towards::Later},
        {QT_TRANSLATE_NOOP("Plotix", "Previous R&ecord"), Qt::Key_Comma, Step::Record, Towards::Earlier},
        {QT_TRANSLATE_NOOP("Plotix", "Next &Maximum"), Qt::Key_M, Step::Maximum, Towards::Later},
        {QT_TRANSLATE_NOOP("Plotix", "Previous M&aximum"), Qt::Key_M | Qt::SHIFT, Step::Maximum, Towards::Earlier},
        {QT_TRANSLATE_NOOP("Plotix", "Next Mi&nimum"), Qt::Key_N, Step::Minimum, Towards::Later},
        {QT_TRANSLATE_NOOP("Plotix", "Pre&vious Minimum"), Qt::Key_N | Qt::SHIFT, Step::Minimum, Towards::Earlier},
        {QT_TRANSLATE_NOOP("Plotix", "Next &Gap"), Qt::Key_G, Step::Gap, Towards::Later},
        {QT_TRANSLATE_NOOP("Plotix", "&Previous Gap"), Qt::Key_G | Qt::SHIFT, Step::Gap, Towards::Earlier},
        {QT_TRANSLATE_NOOP("Plotix", "Next Limit &Crossing"), Qt::Key_C, Step::Limit, Towards::Later},
        {QT_TRANSLATE_NOOP("Plotix", "Previous Limit Cr&ossing"), Qt::Key_C | Qt::SHIFT, Step::Limit, Towards::Earlier},
        {QT_TRANSLATE_NOOP("Plotix", "Next Time at This Val&ue"), Qt::Key_V, Step::SameValue, Towards::Later},
        {QT_TRANSLATE_NOOP("Plotix", "Previou&s Time at This Value"), Qt::Key_V | Qt::SHIFT, Step::SameValue,
         Towards::Earlier},
    }};
    for (const Row& row : rows)
        m_reading.push_back(
            addAction(row.text, row.keys, [this, kind = row.step, towards = row.towards] { step(kind, towards); }));
}

void LinePart::updateActions()
{
    const bool canRead = trend().graph() && trend().graphView();
    for (QAction* action : m_reading)
        action->setEnabled(canRead);
    m_showAction->setChecked(isShown());
    m_holdAction->setChecked(m_held.has_value());
}

bool LinePart::keyPressed(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const bool withShift = modifiers == Qt::ShiftModifier;
    if ((!isShown() && !m_held) || (modifiers != Qt::NoModifier && !withShift) || !shownGeometry(trend()))
        return false;
    for (const StepKey& each : kStepKeys)
        if (event.key() == each.key && withShift == each.withShift) {
            step(each.step, each.towards);
            return true;
        }
    switch (event.key()) {
    case Qt::Key_Escape:
        if (!m_held)
            return false;
        hold(std::nullopt);
        return true;
    case Qt::Key_Space: m_holdAction->trigger(); return true;
    case Qt::Key_T: askForTime(); return true;
    case Qt::Key_L:
        if (withShift)
            setShown(!isShown());
        else
            followNextLine(Towards::Later);
        return true;
    default: return false;
    }
}

bool LinePart::pointerActed(QEvent& event)
{
    if (!isShown())
        return false;
    const auto mouse = [&event]() -> const QMouseEvent& { return static_cast<const QMouseEvent&>(event); };
    switch (event.type()) {
    case QEvent::MouseMove: pointerMoved(mouse().position()); break;
    case QEvent::Leave: pointerLeft(); break;
    case QEvent::MouseButtonPress: {
        const bool isPlain = mouse().button() == Qt::LeftButton && mouse().modifiers() == Qt::NoModifier;
        m_pressed = isPlain ? std::optional(mouse().position()) : std::nullopt;
        m_heldBeforeClick = m_held;
        break;
    }
    case QEvent::MouseButtonRelease: clicked(mouse().position()); break;
    case QEvent::MouseButtonDblClick:  // whose first click is taken back
        m_pressed.reset();
        hold(m_heldBeforeClick);
        break;
    default: break;
    }
    return false;  // it looks on
}

void LinePart::pointerMoved(const QPointF& point)
{
    const auto where = shownGeometry(trend());
    if (!isShown() || !where)
        return;
    m_pointer = point;
    const bool isInside = where->plotArea.contains(point);
    m_pointed = isInside ? std::optional(timeNear(m_lines.shown(), point.x(), *where)) : std::nullopt;
    place();
}

void LinePart::pointerLeft()
{
    m_pointer.reset();
    m_pointed.reset();
    place();
}

void LinePart::clicked(const QPointF& point)
{
    const auto where = shownGeometry(trend());
    if (!m_pressed || !where)
        return;
    const QPointF moved = point - *m_pressed;
    m_pressed.reset();
    if (moved.manhattanLength() > kClickSlack || !where->plotArea.contains(point))
        return;
    hold(m_held ? std::nullopt : std::optional(timeNear(m_lines.shown(), point.x(), *where)));
}

}  // namespace plotix
