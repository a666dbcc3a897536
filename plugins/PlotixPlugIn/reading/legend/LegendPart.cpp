#include "plugins/PlotixPlugIn/reading/legend/LegendPart.h"

#include <QtGui/QActionGroup>

#include <algorithm>
#include <array>
#include <optional>

namespace plotix {

namespace {

// Stored: never change.
const QString kPlace = QStringLiteral("place");
const QString kAxisTitles = QStringLiteral("axisTitles");

// By the numbers of their enumerations; the first of each is no choice and never stored.
constexpr std::array kPlaceNames{"none", "below", "right"};
constexpr std::array kTitleNames{"usual", "none", "values", "all"};

constexpr std::array kPlaceTexts{QT_TRANSLATE_NOOP("Plotix", "No Le&gend"),
                                 QT_TRANSLATE_NOOP("Plotix", "Legend &Below the Graph"),
                                 QT_TRANSLATE_NOOP("Plotix", "Legend at the &Right")};
constexpr std::array kTitleTexts{
    QT_TRANSLATE_NOOP("Plotix", "&Usual Axis Titles"), QT_TRANSLATE_NOOP("Plotix", "&No Axis Titles"),
    QT_TRANSLATE_NOOP("Plotix", "Titles of &Value Axes"), QT_TRANSLATE_NOOP("Plotix", "Titles of &All Axes")};

template <class Choice, class Names>
Choice choiceNamed(const QVariant& name, const Names& names)
{
    const auto found = std::find(names.begin(), names.end(), name.toString());
    return found == names.end() ? Choice() : static_cast<Choice>(found - names.begin());
}

/// A line without values has no unit worth telling: its plot's title says that there is nothing.
QString entryText(const ReadLine& line, const CPTScatterPlot& plot)
{
    if (!line.hasValues)
        return plot.title();
    return line.unitSymbol.isEmpty() ? line.name : QStringLiteral("%1 (%2)").arg(line.name, line.unitSymbol);
}

}  // namespace

LegendPart::LegendPart(ReadTrend& trend) : ReadingPart(trend)
{
    m_places = addChoices(kPlaceTexts.data(), kPlaceTexts.size());
    m_titles = addChoices(kTitleTexts.data(), kTitleTexts.size());
    connect(m_places, &QActionGroup::triggered, this,
            [this](const QAction* action) { setPlace(static_cast<CPTLegendPlace>(action->data().toInt())); });
    connect(m_titles, &QActionGroup::triggered, this,
            [this](const QAction* action) { setAxisTitles(static_cast<AxisTitleChoice>(action->data().toInt())); });
    updateActions();
}

QActionGroup* LegendPart::addChoices(const char* const* texts, int count)
{
    auto* group = new QActionGroup(this);
    for (int number = 0; number < count; ++number) {
        auto* action = new QAction(localizedText(texts[number]), group);
        action->setCheckable(true);
        action->setData(number);
        setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "L&egend and Titles")));
        m_actions.push_back(action);
    }
    return group;
}

void LegendPart::updateActions()
{
    m_places->actions().at(static_cast<int>(m_place))->setChecked(true);
    m_titles->actions().at(static_cast<int>(m_axisTitles))->setChecked(true);
}

QVariantMap LegendPart::chosen() const
{
    QVariantMap choices;
    if (m_place != CPTLegendPlace::None)
        choices.insert(kPlace, QString::fromLatin1(kPlaceNames[static_cast<std::size_t>(m_place)]));
    if (m_axisTitles != AxisTitleChoice::Usual)
        choices.insert(kAxisTitles, QString::fromLatin1(kTitleNames[static_cast<std::size_t>(m_axisTitles)]));
    return choices;
}

void LegendPart::choose(const QVariantMap& choices)
{
    m_place = choiceNamed<CPTLegendPlace>(choices.value(kPlace), kPlaceNames);
    m_axisTitles = choiceNamed<AxisTitleChoice>(choices.value(kAxisTitles), kTitleNames);
    changed();
}

void LegendPart::setPlace(CPTLegendPlace place)
{
    m_place = place;
    changed();
}

void LegendPart::setAxisTitles(AxisTitleChoice titles)
{
    m_axisTitles = titles;
    changed();
}

/// Axes and lanes are named anew by their owners, and the legend is dressed by the looks.
void LegendPart::changed()
{
    updateActions();
    if (trend().graph())
        trend().tellRestyled();
    emit chosenChanged();
}

/// The text is like the labels of the axes.
void LegendPart::apply()
{
    const CPTXYGraphPtr graph = trend().graph();
    if (!graph || (m_place == CPTLegendPlace::None && graph->legend().place == CPTLegendPlace::None))
        return;
    CPTLegend legend = graph->legend();
    legend.textStyle = graph->axes().xAxis().labelTextStyle();
    legend.place = m_place;
    legend.entries = entries();
    graph->setLegend(legend);
}

std::vector<CPTLegend::Entry> LegendPart::entries() const
{
    const std::vector<ReadLine> lines = trend().lines();
    std::vector<CPTLegend::Entry> entries;
    for (const CPTScatterPlotPtr& plot : trend().graph()->allPlots()) {
        const auto line = std::find_if(lines.begin(), lines.end(),
                                       [&plot](const ReadLine& each) { return each.key == plot->identifier(); });
        const QString text = line == lines.end() ? plot->title() : entryText(*line, *plot);
        if (!text.isEmpty())
            entries.push_back({plot, text});
    }
    return entries;
}

}  // namespace plotix
