#include "plugins/PlotixPlugIn/reading/clock/ClockPart.h"

#include "plugins/PlotixPlugIn/reading/clock/ZoneDialog.h"
#include "plugins/PlotixPlugIn/reading/trend/ClockTexts.h"

#include <QtGui/QActionGroup>

#include <algorithm>

namespace plotix {

namespace {

const QString kUtc = QStringLiteral("UTC");

TimeSpan shownBy(const CPTXYGraph& graph)
{
    const CPTPlotRange& range = graph.plotSpace().xRange();
    return {range.minLimit(), range.maxLimit()};
}

}  // namespace

ClockPart::ClockPart(ReadTrend& trend) : ReadingPart(trend)
{
    makeActions();
    updateActions();
}

void ClockPart::change(const ClockChoices& choices)
{
    if (choices == m_choices)
        return;
    m_choices = choices;
    takeClock();
    emit chosenChanged();
}

void ClockPart::graphBuilt()
{
    listen();
    apply();
}

void ClockPart::rangeSet(CPTCoordinate coordinate)
{
    if (coordinate == CPTCoordinate::X)
        apply();
}

// A trend off the screen has no view, but a graph.
void ClockPart::listen()
{
    KTVSiteClock* clock = trend().siteClock();
    if (clock == m_siteClock)
        return;
    if (m_siteClock)
        disconnect(m_siteClock, nullptr, this, nullptr);
    m_siteClock = clock;
    if (clock)
        connect(clock, &KTVSiteClock::changed, this, &ClockPart::takeClock);
    takeClock();
}

QTimeZone ClockPart::siteZone() const
{
    const KTVSiteClock* clock = trend().siteClock();
    return clock ? clock->zone() : QTimeZone();
}

QTimeZone ClockPart::zone() const
{
    if (m_choices.zone.isEmpty())
        return {};
    return m_choices.isSite() ? siteZone() : QTimeZone(m_choices.zone.toUtf8());
}

void ClockPart::takeClock()
{
    updateActions();
    trend().setClock({zone(), m_choices.hours});
    apply();
}

void ClockPart::apply()
{
    const CPTXYGraphPtr graph = trend().graph();
    if (!graph)
        return;
    describe(*graph);
    markChanges(graph);
}

void ClockPart::describe(CPTXYGraph& graph)
{
    CPTXYAxis& axis = *graph.axisSet()->firstAxis();
    const QTimeZone chosen = trend().clock().zone;
    const QString remark =
        chosen.isValid() ? zoneDescription(chosen, m_changes.offsets(chosen, shownBy(graph))) : QString();
    if (axis.titleRemark() != remark)
        axis.setTitleRemark(remark);
}

// The layer is there only while there is a change to be seen: a graph without layers is painted straight to the screen.
void ClockPart::markChanges(const CPTXYGraphPtr& graph)
{
    std::vector<ClockChange> changes;
    if (m_choices.doesMarkChanges())
        changes = m_changes.within(trend().zone(), shownBy(*graph));
    if (changes.empty())
        return m_layer.remove();
    m_layer.put(graph, PartLayer<ClockChangesLayer>::Place::Beneath,
                [] { return std::make_shared<ClockChangesLayer>(); });
    m_layer->show(std::move(changes));
}

QAction* ClockPart::addAction(const QString& text, QActionGroup* group)
{
    auto* action = new QAction(text, this);
    setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "Time &Zone")));
    action->setActionGroup(group);
    action->setCheckable(group);
    m_actions.push_back(action);
    return action;
}

void ClockPart::addZone(QActionGroup* group, const char* text, const QString& zone)
{
    QAction* action = addAction(localizedText(text), group);
    action->setData(zone);
    m_zoneActions.push_back(action);
    connect(action, &QAction::triggered, this, [this, action] {
        ClockChoices choices = m_choices;
        choices.zone = action->data().toString();
        change(choices);
    });
}

void ClockPart::addForm(QActionGroup* group, const char* text, CPTHourForm form)
{
    QAction* action = addAction(localizedText(text), group);
    action->setData(static_cast<int>(form));
    m_formActions.push_back(action);
    connect(action, &QAction::triggered, this, [this, form] {
        ClockChoices choices = m_choices;
        choices.hours = form;
        change(choices);
    });
}

void ClockPart::makeActions()
{
    auto* zones = new QActionGroup(this);
    addZone(zones, QT_TRANSLATE_NOOP("Plotix", "&My Time Zone (%1)"), {});
    addZone(zones, QT_TRANSLATE_NOOP("Plotix", "That of the &Site (%1)"), QLatin1String(ClockChoices::kSite));
    addZone(zones, QT_TRANSLATE_NOOP("Plotix", "&UTC"), kUtc);
    addZone(zones, "%1", QStringLiteral("%1"));
    m_namedAction = m_zoneActions.back();
    connect(addAction(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Other Time Zone…"))), &QAction::triggered, this,
            &ClockPart::askForZone);
    auto* forms = new QActionGroup(this);
    addForm(forms, QT_TRANSLATE_NOOP("Plotix", "Usual &Form of Times"), CPTHourForm::Usual);
    addForm(forms, QT_TRANSLATE_NOOP("Plotix", "&24 Hours"), CPTHourForm::TwentyFour);
    addForm(forms, QT_TRANSLATE_NOOP("Plotix", "As in My &Language"), CPTHourForm::Locale);
    m_changesAction = addAction(localizedText(QT_TRANSLATE_NOOP("Plotix", "Mark Where Clocks Are &Changed")));
    m_changesAction->setCheckable(true);
    connect(m_changesAction, &QAction::triggered, this, [this](bool isWanted) {
        ClockChoices choices = m_choices;
        choices.marksChanges = isWanted;
        change(choices);
    });
}

void ClockPart::updateActions()
{
    const QString mine = QString::fromUtf8(QTimeZone::systemTimeZoneId());
    const QTimeZone site = siteZone();
    const bool isNamed = !m_choices.zone.isEmpty() && !m_choices.isSite() && m_choices.zone != kUtc;
    m_zoneActions[0]->setText(localizedText(QT_TRANSLATE_NOOP("Plotix", "&My Time Zone (%1)")).arg(mine));
    m_zoneActions[1]->setText(localizedText(QT_TRANSLATE_NOOP("Plotix", "That of the &Site (%1)"))
                                  .arg(site.isValid() ? QString::fromUtf8(site.id())
                                                      : localizedText(QT_TRANSLATE_NOOP("Plotix", "not set"))));
    m_zoneActions[1]->setEnabled(site.isValid() || m_choices.isSite());
    m_namedAction->setVisible(isNamed);
    if (isNamed) {
        m_namedAction->setText(m_choices.zone);
        m_namedAction->setData(m_choices.zone);
    }
    for (QAction* action : m_zoneActions)
        action->setChecked(action->data().toString() == m_choices.zone);
    for (QAction* action : m_formActions)
        action->setChecked(action->data().toInt() == static_cast<int>(m_choices.hours));
    m_changesAction->setChecked(m_choices.doesMarkChanges());
}

void ClockPart::askForZone()
{
    QWidget* root = trend().rootView();
    if (!root)
        return;
    auto* dialog = new ZoneDialog(trend().zone(), root);
    connect(dialog, &ZoneDialog::zoneGiven, this, [this](const QString& zone) {
        ClockChoices choices = m_choices;
        choices.zone = zone;
        change(choices);
    });
    dialog->open();
}

}  // namespace plotix
