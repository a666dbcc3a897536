// What people can do about comparisons: menus of the trend and of its lines, a key, and a dialog.

#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/reading/comparing/ComparingPart.h"
#include "plugins/PlotixPlugIn/reading/comparing/DistancesDialog.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeDialog.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolTip>

#include <algorithm>

namespace plotix {

namespace {

struct UsualRow {
    const char* text;
    const char* comparison;
};
constexpr UsualRow kUsual[] = {{QT_TRANSLATE_NOOP("Plotix", "A &Day Earlier"), "1d"},
                               {QT_TRANSLATE_NOOP("Plotix", "A &Week Earlier"), "7d"},
                               {QT_TRANSLATE_NOOP("Plotix", "A &Month Earlier"), "1mo"},
                               {QT_TRANSLATE_NOOP("Plotix", "A &Year Earlier"), "1y"}};

bool isDistance(const QString& comparison)
{
    return timeDistanceFrom(comparison).has_value();
}

}  // namespace

void ComparingPart::makeActions()
{
    const auto add = [this](const char* text, std::function<void()> act) {
        auto* action = new QAction(localizedText(text), this);
        setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "&Compare")));
        connect(action, &QAction::triggered, this, std::move(act));
        m_actions.push_back(action);
        return action;
    };
    for (const UsualRow& row : kUsual) {
        const QString comparison = QString::fromLatin1(row.comparison);
        QAction* action = add(row.text, [this, comparison] {
            ComparisonChoices choices = m_choices;
            if (choices.all.removeAll(comparison) == 0)
                choices.all << comparison;
            change(choices);
        });
        action->setCheckable(true);
        action->setData(comparison);
        m_usual.push_back(action);
    }
    QAction* other = add(QT_TRANSLATE_NOOP("Plotix", "&Other Distances…"), [this] { askForDistances(); });
    other->setShortcut(Qt::Key_E);
    other->setShortcutContext(Qt::WidgetShortcut);  // the key counts in the focused graph, where keyPressed() gets it
    QAction* here = add(QT_TRANSLATE_NOOP("Plotix", "Lay A–B Over the &Value Line"), [this] {
        if (const auto at = standing())
            layMarkedSpan(*at);
    });
    here->setShortcut(Qt::Key_E | Qt::SHIFT);
    here->setShortcutContext(Qt::WidgetShortcut);
    m_onMarks = {here, add(QT_TRANSLATE_NOOP("Plotix", "Lay A–B Over a &Time…"), [this] { askWhereToLay(); })};
    m_nothing = add(QT_TRANSLATE_NOOP("Plotix", "Compare with &Nothing"), [this] { change({}); });
}

std::optional<TimeSpan> ComparingPart::spanShown() const
{
    // While records are being shown the trend still tells what those before were asked for.
    if (const KTVRecordDictionaryPtr asked = m_asked.records.lock(); asked && asked == trend().records())
        return m_asked.span;
    if (const auto asked = trend().readSpan())
        return asked;
    const KTVRecordDictionaryPtr records = trend().records();
    if (!records || !records->time() || records->time()->isEmpty())
        return std::nullopt;
    const RecordTimes& times = *records->time();
    if (times.runs())
        return TimeSpan{times.front(), times.back()};
    const PagedMemory::Hold held = times.holdAll();
    const auto [first, last] = std::minmax_element(times.span().begin(), times.span().end());
    return TimeSpan{*first, *last};
}

/// What was read of all lines that are compared so has no value.
bool ComparingPart::isWithoutValues(const QString& comparison) const
{
    bool isRead = false;
    for (const ReadLine& line : trend().lines()) {
        if (!line.isCompared() || line.comparison != comparison)
            continue;
        if (line.hasValues)
            return false;
        isRead = true;
    }
    return isRead;
}

/// Known without reading: all of it lies before the first record that is stored, or after the last.
bool ComparingPart::isBeyondRecords(const QString& comparison) const
{
    const auto recorded = trend().recordedSpan();
    const auto shown = recorded && trend().graph() ? spanShown() : std::nullopt;
    if (!shown)
        return false;
    const auto stretches = stretchesOf(*comparisonFrom(comparison), *shown, trend().zone());
    if (stretches.empty())
        return false;
    const TimeSpan then = hullOf(stretches);
    return then.to < recorded->from || then.from > recorded->to;
}

/// As menus have it: with a word about what was looked for in vain, so that nobody waits for a line.
QString ComparingPart::itemText(const QString& comparison) const
{
    const auto usual = std::find_if(std::begin(kUsual), std::end(kUsual),
                                    [&](const UsualRow& row) { return comparison == QLatin1String(row.comparison); });
    const QString text =
        usual != std::end(kUsual) ? localizedText(usual->text) : nameOf(*comparisonFrom(comparison), trend().clock());
    if (!isWithoutValues(comparison) && !isBeyondRecords(comparison))
        return text;
    //: An item of a menu: "A Week Earlier (nothing recorded)".
    return localizedText(QT_TRANSLATE_NOOP("Plotix", "%1 (nothing recorded)")).arg(text);
}

/// At once, where the eyes are that wait for a line.
void ComparingPart::tellNothingFound(const QStringList& comparisons) const
{
    QStringList told;
    for (const QString& comparison : comparisons)
        if (isWithoutValues(comparison))
            told << localizedText(QT_TRANSLATE_NOOP("Plotix", "Nothing was recorded %1."))
                        .arg(nameOf(*comparisonFrom(comparison), trend().clock()));
    CPTGraphHostingView* view = trend().graphView();
    if (told.isEmpty() || !view || !view->isVisible())
        return;
    constexpr int kLongEnough = 8'000;  // milliseconds
    const QPoint place(view->width() / 3, view->height() / 3);
    QToolTip::showText(view->mapToGlobal(place), told.join(u'\n'), view, {}, kLongEnough);
}

void ComparingPart::updateActions()
{
    for (QAction* action : m_usual) {
        action->setChecked(m_choices.all.contains(action->data().toString()));
        action->setText(itemText(action->data().toString()));
    }
    for (QAction* action : m_onMarks)
        action->setEnabled(trend().markedSpan().has_value());
    m_nothing->setEnabled(!m_choices.isEmpty());
}

bool ComparingPart::keyPressed(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_E || !trend().graph())
        return false;
    if (event.modifiers() == Qt::NoModifier)
        askForDistances();
    else if (event.modifiers() == Qt::ShiftModifier && trend().markedSpan())
        m_onMarks.front()->trigger();
    else
        return false;
    return true;
}

/// Where the value line stands, else where the picture begins.
std::optional<double> ComparingPart::standing() const
{
    const ReadingPart* line = trend().part(QStringLiteral("valueLine"));
    const QVariant time = line ? line->property("time") : QVariant();
    if (time.isValid())
        return time.toDouble();
    const CPTXYGraphPtr graph = trend().graph();
    return graph ? std::optional(graph->plotSpace().xRange().minLimit()) : std::nullopt;
}

void ComparingPart::layMarkedSpan(double at)
{
    const auto span = trend().markedSpan();
    const auto laid = span ? comparisonFrom(textOf(Comparison{{}, span, at})) : std::nullopt;
    if (!laid)
        return;
    ComparisonChoices choices = m_choices;
    choices.all << textOf(*laid);
    choices.all.removeDuplicates();
    change(choices);
}

void ComparingPart::askWhereToLay()
{
    QWidget* root = trend().rootView();
    const auto at = standing();
    if (!root || !at || !trend().markedSpan())
        return;
    auto* dialog = new TimeDialog(localizedText(QT_TRANSLATE_NOOP("Plotix", "Lay A–B Over the Time From")), *at,
                                  trend().clock(), root);
    connect(dialog, &TimeDialog::timeGiven, this, &ComparingPart::layMarkedSpan);
    dialog->open();
}

void ComparingPart::askForDistances()
{
    QWidget* root = trend().rootView();
    if (!root)
        return;
    QStringList distances;
    std::copy_if(m_choices.all.begin(), m_choices.all.end(), std::back_inserter(distances), isDistance);
    auto* dialog = new DistancesDialog(distances, root);
    connect(dialog, &DistancesDialog::distancesGiven, this, [this](const QStringList& given) {
        ComparisonChoices choices = m_choices;
        choices.all.erase(std::remove_if(choices.all.begin(), choices.all.end(), isDistance), choices.all.end());
        choices.all << given;
        change(choices);
    });
    dialog->open();
}

// For these lines alone; a comparison that all lines have is taken from them and left to the others.
void ComparingPart::addLineItems(QMenu& menu, const QStringList& keys)
{
    QMenu& compare = *menu.addMenu(localizedText(QT_TRANSLATE_NOOP("Plotix", "Compare")));
    QStringList offered;
    for (const UsualRow& row : kUsual)
        offered << QString::fromLatin1(row.comparison);
    offered << m_choices.together();
    offered.removeDuplicates();
    for (const QString& comparison : offered) {
        QAction* item = compare.addAction(itemText(comparison));
        item->setCheckable(true);
        item->setChecked(std::all_of(keys.begin(), keys.end(),
                                     [&](const QString& key) { return m_choices.of(key).contains(comparison); }));
        connect(item, &QAction::triggered, this, [this, comparison, keys](bool isWanted) {
            ComparisonChoices choices = m_choices;
            QStringList others;
            for (const ReadLine& line : trend().lines())
                if (!line.isCompared() && !keys.contains(line.key))
                    others << line.key;
            if (isWanted)
                choices.add(comparison, keys);
            else
                choices.remove(comparison, keys, others);
            change(choices);
        });
    }
}

}  // namespace plotix
