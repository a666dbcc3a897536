#include "hostapp/window/TrendKeys.h"

#include "hostapp/site/PlugInOperations.h"

#include <QtGui/QAction>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTextEdit>

namespace plotix {

namespace {

template <class... Kinds>
bool isOneOf(const QWidget& widget)
{
    return (... || (qobject_cast<const Kinds*>(&widget) != nullptr));
}

/// Letters typed there are text, or choose among its entries.
bool takesText(const QWidget& widget)
{
    return isOneOf<QLineEdit, QAbstractSpinBox, QTextEdit, QPlainTextEdit, QComboBox>(widget);
}

/// The space bar presses what is focused, and ticks the row of a list.
bool isOfFocus(const QWidget& focus, const QKeyEvent& key)
{
    return key.key() == Qt::Key_Space && isOneOf<QAbstractButton, QAbstractItemView>(focus);
}

bool isGraph(const QWidget& widget)
{
    return widget.inherits("CPTGraphHostingView");
}

/// Keys with a context of their own alone: all others reach their action anyway.
QAction* actionOf(const QKeySequence& keys, const QList<QAction*>& actions)
{
    for (QAction* action : actions) {
        if (action->menu())
            if (QAction* within = actionOf(keys, action->menu()->actions()))
                return within;
        if (action->shortcutContext() == Qt::WidgetShortcut && action->shortcut() == keys)
            return action;
    }
    return nullptr;
}

}  // namespace

TrendKeys::TrendKeys(std::function<KTVPlugInPtr()> inFront) : m_inFront(std::move(inFront))
{
    qApp->installEventFilter(this);
}

bool TrendKeys::isMeantForTrend(const QWidget& focus, KTVPlugIn& trend) const
{
    return trend.isViewLoaded() && trend.view() && trend.view()->isVisible() &&
           trend.view()->window() == focus.window() && !takesText(focus) && !isGraph(focus);
}

bool TrendKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || watched != QApplication::focusWidget())
        return false;
    const auto& focus = static_cast<const QWidget&>(*watched);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const KTVPlugInPtr trend = m_inFront();
    if (!trend || isOfFocus(focus, key) || !isMeantForTrend(focus, *trend))
        return false;
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    QAction* action =
        actionOf(QKeySequence(QKeyCombination(modifiers, Qt::Key(key.key()))), readingActions(trend.get()));
    if (!action || !action->isEnabled())
        return false;
    action->trigger();
    return true;
}

}  // namespace plotix
