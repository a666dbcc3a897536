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
    const QString menu = localizedText(QT_TRANSLATE_NOOP("Plotix", "&Table"));
    const auto make = [&](const char* text, std::vector<QAction*>& list) {
        auto* action = new QAction(localizedText(text), this);
        setMenuOf(*action, menu);
        list.push_back(action);
        return action;
    };
    auto* group = new QActionGroup(this);
    const std::pair<StatisticsOver, const char*> spans[] = {
        {StatisticsOver::Fetched, QT_TRANSLATE_NOOP("Plotix", "Statistics of &Everything Fetched")},
        {StatisticsOver::Visible, QT_TRANSLATE_NOOP("Plotix", "Statistics of What Is &Visible")},
        {StatisticsOver::Marked, QT_TRANSLATE_NOOP("Plotix", "Statistics from A to &B")}};
    for (const auto& [over, text] : spans) {
        QAction* action = make(text, m_overActions);
        action->setCheckable(true);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, each = over] { setOver(each); });
    }
    const auto goes = [&](const char* text, Figure figure) {
        connect(make(text, m_lineActions), &QAction::triggered, this, [this, figure] { goToExtreme(figure); });
    };
    goes(QT_TRANSLATE_NOOP("Plotix", "Go to Mi&nimum"), Figure::MinimumTime);
    goes(QT_TRANSLATE_NOOP("Plotix", "Go to Ma&ximum"), Figure::MaximumTime);
    const auto limits = [&](const char* text, Figure figure) {
        connect(make(text, m_lineActions), &QAction::triggered, this,
                [this, figure] { askForLimit(currentKey(), figure); });
    };
    m_extremeActions = {addExtremesMenu(QT_TRANSLATE_NOOP("Plotix", "Go to Ma&ximum of"), Figure::MaximumTime),
                        addExtremesMenu(QT_TRANSLATE_NOOP("Plotix", "Go to Minimum o&f"), Figure::MinimumTime)};
    m_lineActions.push_back(addColumnsMenu());
    limits(QT_TRANSLATE_NOOP("Plotix", "Time &Above a Limit…"), Figure::AboveHigh);
    limits(QT_TRANSLATE_NOOP("Plotix", "Time Be&low a Limit…"), Figure::BelowLow);
    connect(make(QT_TRANSLATE_NOOP("Plotix", "&Remove All Limits"), m_lineActions), &QAction::triggered, this,
            &StatisticsPart::removeLimits);
    checkActions();
}

/// More columns than a menu of other things bears.
QAction* StatisticsPart::addColumnsMenu()
{
    m_columnsMenu = std::make_unique<QMenu>();
    auto* columns = new QAction(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Columns")), this);
    setMenuOf(*columns, localizedText(QT_TRANSLATE_NOOP("Plotix", "&Table")));
    columns->setMenu(m_columnsMenu.get());
    for (const FigureColumn& column : figureColumns()) {
        auto* action = new QAction(localizedText(column.item), this);
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, &column](bool isOn) { toggleColumn(column, isOn); });
        m_columnActions.push_back(action);
        m_columnsMenu->addAction(action);
    }
    return columns;
}

/// The lines there are, to go to an extreme of one of them; in the menu of the value line, which goes there.
QAction* StatisticsPart::addExtremesMenu(const char* title, Figure figure)
{
    auto menu = std::make_unique<QMenu>();
    auto* action = new QAction(localizedText(title), this);
    setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "&Values")));
    action->setMenu(menu.get());
    connect(menu.get(), &QMenu::aboutToShow, this, [this, shown = menu.get(), figure] {
        shown->clear();
        for (const ReadLine& line : trend().lines()) {
            if (line.isCompared() || !line.isShown)
                continue;
            QAction* item = shown->addAction(QString(line.name).replace(u'&', QStringLiteral("&&")));
            connect(item, &QAction::triggered, this, [this, key = line.key, figure] { goToTime(key, figure); });
        }
    });
    m_extremeMenus.push_back(std::move(menu));
    return action;
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
    std::vector<QAction*> all = m_extremeActions;
    all.insert(all.end(), m_overActions.begin(), m_overActions.end());
    all.insert(all.end(), m_lineActions.begin(), m_lineActions.end());
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
    if (m_resting.isActive())
        return FigureTexts::pending();
    const auto span = m_table.span(m_choices.over);
    return span ? durationText(span->to - span->from) : QString();
}

}  // namespace plotix
