// What people can choose about the table: actions for menus, and the heading.
//
// Rules of this file:
//  1. The menu "Table", the table's own menu on its header, and the heading choose the same; whoever chooses, the
//  others
//     follow.
//  2. What is done with one line is done with the line selected in the table, else with the first that is shown.

#include "plugins/PlotixPlugIn/reading/statistics/StatisticsPart.h"

#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <QtGui/QActionGroup>

#include <algorithm>

namespace plotix {

void StatisticsPart::makeActions()
{
    const QString menu = localizedText(QT_TRANSLATE_NOOP("Plotix", "Table"));
    const auto make = [&](const char* text, std::vector<QAction*>& list) {
        auto* action = new QAction(localizedText(text), this);
        setMenuOf(*action, menu);
        list.push_back(action);
        return action;
    };
    auto* group = new QActionGroup(this);
    const std::pair<StatisticsOver, const char*> spans[] = {
        {StatisticsOver::Fetched, QT_TRANSLATE_NOOP("Plotix", "Statistics of Everything Fetched")},
        {StatisticsOver::Visible, QT_TRANSLATE_NOOP("Plotix", "Statistics of What Is Visible")},
        {StatisticsOver::Marked, QT_TRANSLATE_NOOP("Plotix", "Statistics from A to B")}};
    for (const auto& [over, text] : spans) {
        QAction* action = make(text, m_overActions);
        action->setCheckable(true);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, each = over] { setOver(each); });
    }
    for (const FigureColumn& column : figureColumns()) {
        QAction* action = make(column.title, m_columnActions);
        action->setCheckable(true);
        connect(action, &QAction::triggered, this,
                [this, id = QString::fromLatin1(column.identifier)](bool isOn) { setColumn(id, isOn); });
    }
    const auto goes = [&](const char* text, Figure figure) {
        connect(make(text, m_lineActions), &QAction::triggered, this, [this, figure] { goToExtreme(figure); });
    };
    goes(QT_TRANSLATE_NOOP("Plotix", "Go to Minimum"), Figure::MinimumTime);
    goes(QT_TRANSLATE_NOOP("Plotix", "Go to Maximum"), Figure::MaximumTime);
    const auto limits = [&](const char* text, Figure figure) {
        connect(make(text, m_lineActions), &QAction::triggered, this,
                [this, figure] { askForLimit(currentKey(), figure); });
    };
    limits(QT_TRANSLATE_NOOP("Plotix", "Time Above a Limit…"), Figure::AboveHigh);
    limits(QT_TRANSLATE_NOOP("Plotix", "Time Below a Limit…"), Figure::BelowLow);
    connect(make(QT_TRANSLATE_NOOP("Plotix", "Remove All Limits"), m_lineActions), &QAction::triggered, this,
            &StatisticsPart::removeLimits);
    checkActions();
}

void StatisticsPart::checkActions()
{
    m_overActions[static_cast<std::size_t>(m_choices.over)]->setChecked(true);
    for (std::size_t index = 0; index < m_columnActions.size(); ++index)
        m_columnActions[index]->setChecked(
            m_choices.columns.contains(QLatin1String(figureColumns()[index].identifier)));
    m_lineActions.back()->setEnabled(!m_choices.highLimits.empty() || !m_choices.lowLimits.empty());
}

std::vector<QAction*> StatisticsPart::actions() const
{
    std::vector<QAction*> all = m_overActions;
    all.insert(all.end(), m_lineActions.begin(), m_lineActions.end());
    all.insert(all.end(), m_columnActions.begin(), m_columnActions.end());
    return all;
}

StatisticsHeading* StatisticsPart::makeHeading(QWidget* parent)
{
    m_heading = new StatisticsHeading(parent);
    connect(m_heading, &StatisticsHeading::chosen, this, &StatisticsPart::setOver);
    connect(m_heading, &StatisticsHeading::stopped, this, [this] { m_keeper.cancel(); });
    tellHeading();
    return m_heading;
}

void StatisticsPart::tellHeading()
{
    m_overActions[static_cast<std::size_t>(StatisticsOver::Marked)]->setEnabled(trend().markedSpan().has_value());
    if (!m_heading)
        return;
    m_heading->setVisible(m_choices.isOffered || m_choices.over != StatisticsOver::Fetched);
    m_heading->show({m_choices.over, trend().markedSpan().has_value(), spanText(), m_keeper.isWorking()});
}

QString StatisticsPart::spanText() const
{
    if (m_keeper.isWorking())
        return localizedText(QT_TRANSLATE_NOOP("Plotix", "working… %1 %"))
            .arg(static_cast<int>(m_keeper.progress() * 100));
    const auto span = m_table.span(m_choices.over);
    return span ? durationText(span->to - span->from) : QString();
}

}  // namespace plotix
