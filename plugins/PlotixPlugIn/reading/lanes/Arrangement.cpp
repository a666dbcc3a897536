#include "plugins/PlotixPlugIn/reading/lanes/Arrangement.h"

#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/reading/lanes/LaneDialog.h"
#include "plugins/PlotixPlugIn/reading/lanes/LaneDividers.h"
#include "plugins/PlotixPlugIn/reading/lanes/OffScaleMarks.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QActionGroup>

#include <algorithm>
#include <array>

namespace plotix {

namespace {

constexpr auto kKind = "kind";  // stored, these and those below: never change
constexpr auto kLanes = "lanes";
constexpr auto kFit = "fit";
constexpr auto kScale = "scale";
constexpr auto kLogarithmic = "logarithmic";
constexpr auto kLowest = "lowest";
constexpr auto kHighest = "highest";
constexpr auto kHeight = "height";
constexpr double kLeastHeight = 0.05, kMostHeight = 50;

struct KindText {
    ArrangementKind kind;
    const char* text;
};
constexpr std::array<KindText, 4> kKindTexts{
    KindText{ArrangementKind::Automatic, QT_TRANSLATE_NOOP("Plotix", "&Automatic")},
    KindText{ArrangementKind::OneScale, QT_TRANSLATE_NOOP("Plotix", "&One Scale")},
    KindText{ArrangementKind::LanePerUnit, QT_TRANSLATE_NOOP("Plotix", "Lane per &Unit")},
    KindText{ArrangementKind::LanePerProperty, QT_TRANSLATE_NOOP("Plotix", "Lane per &Property")}};

QVariantMap mapFrom(const LaneSettings& settings)
{
    const LaneSettings none;
    QVariantMap map;
    if (settings.fit != none.fit)
        map.insert(QLatin1String(kFit), textOf(settings.fit));
    if (settings.isLogarithmic)
        map.insert(QLatin1String(kScale), QLatin1String(kLogarithmic));
    if (settings.fit == LaneFit::Fixed) {
        map.insert(QLatin1String(kLowest), settings.lowest);
        map.insert(QLatin1String(kHighest), settings.highest);
    }
    if (settings.height != none.height)
        map.insert(QLatin1String(kHeight), settings.height);
    return map;
}

LaneSettings settingsFrom(const QVariantMap& map)
{
    LaneSettings settings;
    settings.fit = laneFitNamed(map.value(QLatin1String(kFit)).toString()).value_or(LaneFit::AllValues);
    settings.isLogarithmic = map.value(QLatin1String(kScale)).toString() == QLatin1String(kLogarithmic);
    settings.lowest = map.value(QLatin1String(kLowest), settings.lowest).toDouble();
    settings.highest = map.value(QLatin1String(kHighest), settings.highest).toDouble();
    const double height = map.value(QLatin1String(kHeight), settings.height).toDouble();
    settings.height = height > 0 ? std::clamp(height, kLeastHeight, kMostHeight) : 1;
    if (settings.fit == LaneFit::Fixed && !(settings.lowest < settings.highest))
        settings.fit = LaneFit::AllValues;
    return settings;
}

}  // namespace

Arrangement::Arrangement(ReadTrend& trend)
    : ReadingPart(trend),
      m_marks(std::make_shared<OffScaleMarks>()),
      m_dividers(std::make_unique<LaneDividers>(trend, *this))
{
    makeActions();
}

Arrangement::~Arrangement() = default;

QVariantMap Arrangement::chosen() const
{
    QVariantMap choices;
    if (m_kind != ArrangementKind::OneScale)
        choices.insert(QLatin1String(kKind), textOf(m_kind));
    QVariantMap lanes;
    for (const auto& [key, settings] : m_settings)
        if (const QVariantMap own = mapFrom(settings); !own.isEmpty())
            lanes.insert(key, own);
    if (!lanes.isEmpty())
        choices.insert(QLatin1String(kLanes), lanes);
    return choices;
}

void Arrangement::choose(const QVariantMap& choices)
{
    m_kind = arrangementNamed(choices.value(QLatin1String(kKind)).toString()).value_or(ArrangementKind::OneScale);
    m_settings.clear();
    const QVariantMap lanes = choices.value(QLatin1String(kLanes)).toMap();
    for (auto lane = lanes.begin(); lane != lanes.end(); ++lane)
        m_settings[lane.key()] = settingsFrom(lane.value().toMap());
    arrange();
    emit chosenChanged();
}

QVariantMap Arrangement::ranges() const
{
    QVariantMap ranges;
    for (const auto& lane : m_lanes)
        ranges.insert(lane->key(), QVariantList{lane->space()->yRange().location, lane->space()->yRange().length});
    return ranges;
}

void Arrangement::setRanges(const QVariantMap& ranges)
{
    for (const auto& lane : m_lanes) {
        const QVariantList range = ranges.value(lane->key()).toList();
        if (range.size() == 2)
            lane->space()->setYRange({range[0].toDouble(), range[1].toDouble()});
    }
}

void Arrangement::setKind(ArrangementKind kind)
{
    if (kind == m_kind)
        return;
    m_kind = kind;
    arrange();
    emit chosenChanged();
}

LaneSettings Arrangement::settingsOf(const QString& laneKey) const
{
    const auto found = m_settings.find(laneKey);
    return found == m_settings.end() ? LaneSettings() : found->second;
}

void Arrangement::setSettingsOf(const QString& laneKey, const LaneSettings& settings)
{
    if (settingsOf(laneKey) == settings)
        return;
    m_settings[laneKey] = settings;
    arrange();
    emit chosenChanged();
}

void Arrangement::moveUpperEdgeOf(std::size_t lane, double share)
{
    if (lane == 0 || lane >= m_lanes.size())
        return;
    const CPTStrip& above = m_lanes[lane - 1]->space()->strip();
    const CPTStrip& below = m_lanes[lane]->space()->strip();
    const double least = kLeastHeight * 2 * (below.bottom - above.top);
    const double edge = std::clamp(share, above.top + least, below.bottom - least);
    LaneSettings upper = m_lanes[lane - 1]->settings();
    LaneSettings lower = m_lanes[lane]->settings();
    const double both = upper.height + lower.height;
    upper.height = both * (edge - above.top) / (below.bottom - above.top);
    lower.height = both - upper.height;
    m_settings[m_lanes[lane - 1]->key()] = upper;
    m_settings[m_lanes[lane]->key()] = lower;
    m_lanes[lane - 1]->setSettings(upper);
    m_lanes[lane]->setSettings(lower);
    placeStrips();
    trend().tellRestyled();
    emit chosenChanged();
}

bool Arrangement::pointerActed(QEvent& event)
{
    return m_dividers->pointerActed(event);
}

void Arrangement::graphBuilt()
{
    m_lanes.clear();
}

void Arrangement::graphReleased()
{
    leaveLanes();
}

void Arrangement::plotsReplaced()
{
    arrange();
}

void Arrangement::fitted()
{
    fitLanes();
}

void Arrangement::linesChanged()
{
    if (m_lanes.empty())
        return;
    m_marks->show(m_lanes);
}

void Arrangement::restyled()
{
    for (const auto& lane : m_lanes) {
        lane->setNaming(naming());
        lane->restyle();
    }
    if (!trend().graph())
        return;
    nameTime();
    if (m_lanes.empty())
        nameScale(arrangedLines());
}

std::vector<ArrangedLine> Arrangement::arrangedLines() const
{
    std::vector<ArrangedLine> arranged;
    const CPTXYGraphPtr graph = trend().graph();
    for (const ReadLine& line : trend().lines()) {
        const CPTScatterPlotPtr plot = graph->plotWithIdentifier(line.key);
        const CPTPointSeriesPtr series = plot->valueSeries();
        const auto extent = series ? series->extent() : std::nullopt;
        const double lowest = extent ? static_cast<double>(extent->minY) : 1;
        const double highest = extent ? static_cast<double>(extent->maxY) : 0;
        const QString name = line.hasValues ? line.name : plot->title();  // which says that there is nothing
        arranged.push_back({line.key, name, line.unitSymbol, lowest, highest, line.comparedKey});
    }
    return arranged;
}

/// Lanes that go on keep their ranges, so that a choice moves no more than it must.
void Arrangement::arrange()
{
    updateActions();
    const CPTXYGraphPtr graph = trend().graph();
    if (!graph)
        return;
    const std::vector<ArrangedLine> lines = arrangedLines();
    const std::vector<LaneGroup> groups = laneGroups(lines, m_kind);
    if (groups.empty()) {
        leaveLanes();
        nameScale(lines);
        return trend().tellRestyled();
    }
    if (m_lanes.empty()) {
        CPTXYAxis& axis = *graph->axisSet()->yAxis();
        m_wasAxisHidden = axis.isHidden();
        axis.setHidden(true);
        m_roomBefore = graph->labelRoom();
        graph->setLabelRoom(CPTLabelRoom::Grows);
        graph->defaultPlotSpace()->setMovableRanges(CPTMovableRanges::OnlyX);
        graph->addLayer(m_marks);
    }
    for (const auto& lane : m_lanes)
        lane->leaveScale();
    std::vector<std::unique_ptr<Lane>> lanes;
    for (const LaneGroup& group : groups) {
        const auto found = std::find_if(m_lanes.begin(), m_lanes.end(),
                                        [&](const auto& lane) { return lane && lane->key() == group.key; });
        const bool isNew = found == m_lanes.end();
        lanes.push_back(isNew ? std::make_unique<Lane>(*graph, group.key, [this] { return trend().heedsKeys(); })
                              : std::move(*found));
        Lane& lane = *lanes.back();
        const bool isSetAnew = !(lane.settings() == settingsOf(group.key));
        lane.setSettings(settingsOf(group.key));
        QStringList names;
        std::vector<CPTScatterPlotPtr> plots;
        for (const std::size_t index : group.lines) {
            if (lines[index].besideKey.isEmpty())
                names << lines[index].name;
            plots.push_back(graph->plotWithIdentifier(lines[index].key));
            plots.back()->setTitle(group.lines.size() > 1 ? lines[index].name : QString());
        }
        lane.setPlots(plots, commonName(names), lines[group.lines.front()].unitSymbol);
        if (isNew || isSetAnew)
            lane.fit();
    }
    m_lanes = std::move(lanes);
    placeStrips();
    m_marks->show(m_lanes);
    trend().tellRestyled();
}

void Arrangement::leaveLanes()
{
    const CPTXYGraphPtr graph = trend().graph();
    if (m_lanes.empty() || !graph)
        return;
    graph->removeLayer(m_marks);
    m_lanes.clear();
    graph->axisSet()->yAxis()->setHidden(m_wasAxisHidden);
    graph->setLabelRoom(m_roomBefore);
    graph->defaultPlotSpace()->setMovableRanges(CPTMovableRanges::Both);
}

void Arrangement::placeStrips()
{
    double sum = 0;
    for (const auto& lane : m_lanes)
        sum += lane->settings().height;
    double top = 0;
    for (const auto& lane : m_lanes) {
        const double bottom = lane == m_lanes.back() ? 1 : top + lane->settings().height / sum;
        lane->setStrip(top, bottom);
        top = bottom;
    }
}

void Arrangement::fitLanes()
{
    for (const auto& lane : m_lanes)
        lane->fit();
    if (!m_lanes.empty())
        m_marks->show(m_lanes);
}

void Arrangement::makeActions()
{
    const QString menu = localizedText(QT_TRANSLATE_NOOP("Plotix", "Arran&gement"));
    m_kinds = new QActionGroup(this);
    for (const KindText& each : kKindTexts) {
        auto* action = new QAction(localizedText(each.text), m_kinds);
        action->setCheckable(true);
        action->setData(int(each.kind));
        connect(action, &QAction::triggered, this, [this, kind = each.kind] { setKind(kind); });
        m_actions.push_back(action);
    }
    m_edit = new QAction(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Lanes…")), this);
    connect(m_edit, &QAction::triggered, this, &Arrangement::editLanes);
    m_evenOut = new QAction(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Equal Heights")), this);
    connect(m_evenOut, &QAction::triggered, this, [this] {
        for (auto& [key, settings] : m_settings)
            settings.height = 1;
        arrange();
        emit chosenChanged();
    });
    m_outliers = new QAction(localizedText(QT_TRANSLATE_NOOP("Plotix", "Leave Out Ou&tliers")), this);
    m_outliers->setCheckable(true);
    m_outliers->setToolTip(localizedText(QT_TRANSLATE_NOOP(
        "Plotix", "Values far off the others become marks with their number at the edge of a lane.")));
    connect(m_outliers, &QAction::triggered, this, &Arrangement::leaveOutOutliers);
    m_actions.push_back(m_outliers);
    m_actions.push_back(m_edit);
    m_actions.push_back(m_evenOut);
    for (QAction* action : m_actions)
        setMenuOf(*action, menu);
    updateActions();
}

void Arrangement::updateActions()
{
    for (QAction* action : m_kinds->actions())
        action->setChecked(action->data().toInt() == int(m_kind));
    m_outliers->setEnabled(m_kind != ArrangementKind::OneScale);
    m_outliers->setChecked(std::any_of(m_settings.begin(), m_settings.end(),
                                       [](const auto& lane) { return lane.second.fit == LaneFit::Robust; }));
    m_edit->setEnabled(m_kind != ArrangementKind::OneScale);
    m_evenOut->setEnabled(m_kind != ArrangementKind::OneScale);
}

void Arrangement::leaveOutOutliers(bool leaveOut)
{
    for (const auto& lane : m_lanes) {
        LaneSettings settings = settingsOf(lane->key());
        if (settings.fit == (leaveOut ? LaneFit::AllValues : LaneFit::Robust))
            settings.fit = leaveOut ? LaneFit::Robust : LaneFit::AllValues;
        m_settings[lane->key()] = settings;
    }
    arrange();
    emit chosenChanged();
}

void Arrangement::editLanes()
{
    if (m_lanes.empty())
        return;
    auto* dialog = new LaneDialog(*this, trend().rootView());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

}  // namespace plotix
