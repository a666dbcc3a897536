#include "hostapp/window/TrendHistory.h"

#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/SourceListModel.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtGui/QUndoStack>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QWidget>

namespace plotix {

namespace {

constexpr int kRest = 400;         // milliseconds without input; what it caused is then done
constexpr int kOneGesture = 1500;  // milliseconds; steps of a zoom that follow sooner are one

class TrendHistoryText {
    Q_DECLARE_TR_FUNCTIONS(TrendHistoryText)
};

bool isInput(QEvent::Type type)
{
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick || type == QEvent::Wheel ||
           type == QEvent::KeyPress || type == QEvent::ShortcutOverride || type == QEvent::Drop ||
           type == QEvent::NativeGesture;
}

/// A menu that nobody owns was opened in the window in front, and acts there.
const QWidget* placeOf(const QWidget* widget)
{
    const QWidget* top = widget;
    while (top->parentWidget())
        top = top->parentWidget();
    return qobject_cast<const QMenu*>(top) ? QApplication::activeWindow() : widget;
}

bool isEnd(QEvent::Type type)
{
    return type == QEvent::MouseButtonRelease;
}

/// The parts of a state that only say what is seen of it.
QVariantMap withoutRange(QVariantMap state)
{
    state.remove(QStringLiteral("dates"));
    state.remove(QStringLiteral("times"));
    state.remove(QStringLiteral("values"));
    state.remove(QStringLiteral("ranges"));
    return state;
}

/// Parts of a trend's reading that are changed often, by the names their choices have, and what changing one is called.
struct MovedPart {
    const char* key;
    const char* text;
    bool isOneWalk;  // however long it takes: whoever undoes it wants to be back where it began
};

constexpr MovedPart kMovedParts[] = {
    {"valueLine", QT_TRANSLATE_NOOP("TrendHistoryText", "Move Value Line"), true},
    {"marks", QT_TRANSLATE_NOOP("TrendHistoryText", "Move Marks"), false},
    {"looks", QT_TRANSLATE_NOOP("TrendHistoryText", "Change Look"), false},
    {"comparing", QT_TRANSLATE_NOOP("TrendHistoryText", "Compare"), false},
};

QVariantMap withoutPart(QVariantMap state, const char* key)
{
    const QString reading = QStringLiteral("reading");
    QVariantMap parts = state.take(reading).toMap();
    parts.remove(QLatin1String(key));
    if (!parts.isEmpty())
        state.insert(reading, parts);
    return withoutRange(state);
}

/// The one of them that changed, if nothing else did but what is seen of the trend; else null.
const MovedPart* movedPart(const QVariantMap& before, const QVariantMap& after)
{
    if (withoutRange(before) == withoutRange(after))
        return nullptr;
    for (const MovedPart& part : kMovedParts)
        if (withoutPart(before, part.key) == withoutPart(after, part.key))
            return &part;
    return nullptr;
}

QString textOf(const QVariantMap& before, const QVariantMap& after)
{
    if (const MovedPart* moved = movedPart(before, after))
        return TrendHistoryText::tr(moved->text);
    const QString properties = QStringLiteral("properties");
    const auto count = [&](const QVariantMap& state) { return state.value(properties).toStringList().size(); };
    if (before.value(properties) != after.value(properties))
        return count(after) < count(before) ? TrendHistoryText::tr("Remove Properties")
                                            : TrendHistoryText::tr("Add Properties");
    if (before.value(QStringLiteral("hidden")) != after.value(QStringLiteral("hidden")))
        return TrendHistoryText::tr("Hide or Show Lines");
    if (before.value(QStringLiteral("reading")) != after.value(QStringLiteral("reading")))
        return TrendHistoryText::tr("Change View");
    return TrendHistoryText::tr("Change Range");
}

}  // namespace

TrendHistory::TrendHistory(QUndoStack& stack, Trends trends, IsFollowed isFollowed, IsOurs isOurs)
    : m_stack(stack), m_trends(std::move(trends)), m_isFollowed(std::move(isFollowed)), m_isOurs(std::move(isOurs))
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(kRest);
    connect(&m_rest, &QTimer::timeout, this, &TrendHistory::settle);
    QCoreApplication::instance()->installEventFilter(this);
}

bool TrendHistory::eventFilter(QObject* watched, QEvent* event)
{
    const bool begins = isInput(event->type());
    const bool counts = (begins || isEnd(event->type())) && watched->isWidgetType();
    const QWidget* place = counts ? placeOf(static_cast<QWidget*>(watched)) : nullptr;
    if (place && m_isOurs(place)) {
        if (begins && m_rest.isActive())
            settle();
        else if (begins)
            adopt();
        m_rest.start();
    }
    return QObject::eventFilter(watched, event);
}

void TrendHistory::adopt()
{
    m_rest.stop();
    m_seen.clear();
    for (const KTVPlugInPtr& trend : m_trends())
        m_seen.insert(trend.get(), changeableState(trend.get()));
}

void TrendHistory::settle()
{
    for (const KTVPlugInPtr& trend : m_trends())
        compare(trend);
    adopt();
}

void TrendHistory::compare(const KTVPlugInPtr& trend)
{
    const auto seen = m_seen.constFind(trend.get());
    if (seen == m_seen.constEnd())
        return;
    const QVariantMap before = *seen;
    const QVariantMap after = changeableState(trend.get());
    const bool hadRange = before.contains(QStringLiteral("times")) == after.contains(QStringLiteral("times"));
    const bool rangeCounts = hadRange && !m_isFollowed(trend.get());
    if (rangeCounts ? before == after : withoutRange(before) == withoutRange(after))
        return;
    m_stack.push(new TrendChangeCommand(*this, trend, before, after));
}

TrendChangeCommand::TrendChangeCommand(TrendHistory& history, KTVPlugInPtr trend, QVariantMap before, QVariantMap after)
    : QUndoCommand(textOf(before, after)),
      m_history(history),
      m_trend(std::move(trend)),
      m_before(std::move(before)),
      m_after(std::move(after))
{
    m_age.start();
}

void TrendChangeCommand::redo()
{
    if (!std::exchange(m_done, false))
        apply(m_after);
}

void TrendChangeCommand::apply(const QVariantMap& state)
{
    // Posted: the keys of Undo and Redo would count as held over the graph, where they keep an axis as it is.
    QTimer::singleShot(0, &m_history, [history = &m_history, trend = m_trend, state] {
        changeTo(trend.get(), state);
        history->adopt();
    });
}

bool TrendChangeCommand::isRangeOnly() const
{
    return withoutRange(m_before) == withoutRange(m_after);
}

bool TrendChangeCommand::mergeWith(const QUndoCommand* other)
{
    const auto& later = static_cast<const TrendChangeCommand&>(*other);
    const MovedPart* moved = movedPart(m_before, m_after);
    const bool isSameMove = moved && moved == movedPart(later.m_before, later.m_after);
    const bool isSameKind = isSameMove || (isRangeOnly() && later.isRangeOnly());
    const bool isInTime = m_age.elapsed() <= kOneGesture || (isSameMove && moved->isOneWalk);
    if (later.m_trend != m_trend || !isSameKind || !isInTime)
        return false;
    m_after = later.m_after;
    m_age.restart();
    setObsolete(m_before == m_after);
    return true;
}

}  // namespace plotix
