#include "plugins/PlotixPlugIn/reading/limits/LimitsPart.h"

#include "plugins/PlotixPlugIn/reading/trend/FittedValues.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace plotix {

namespace {

const QString kShown = QStringLiteral("shown");  // stored: never change

}  // namespace

LimitsPart::LimitsPart(ReadTrend& trend) : ReadingPart(trend), m_lines(trend)
{
    makeActions();
    updateActions();
}

LimitsPart::~LimitsPart() = default;

QVariantMap LimitsPart::chosen() const
{
    return m_isShown ? QVariantMap() : QVariantMap{{kShown, false}};
}

void LimitsPart::choose(const QVariantMap& choices)
{
    const QVariant shown = choices.value(kShown);
    setShown(shown.metaType() != QMetaType::fromType<bool>() || shown.toBool());
}

void LimitsPart::setShown(bool isShown)
{
    if (m_isShown == isShown)
        return;
    m_isShown = isShown;
    refresh();
    emit chosenChanged();
}

// A trend off the screen has no view, but a graph.
void LimitsPart::listen()
{
    KTVAnnotations* annotations = trend().annotations();
    if (annotations == m_annotations)
        return;
    m_annotations = annotations;
    connect(annotations, &KTVAnnotations::changed, this, &LimitsPart::refresh);
    updateActions();
}

void LimitsPart::graphBuilt()
{
    listen();
    refresh();
}

void LimitsPart::plotsReplaced()
{
    linesChanged();
}

void LimitsPart::linesChanged()
{
    m_lines.forget();
    refresh();
}

bool LimitsPart::hasLimits()
{
    const std::vector<TrendLine>& lines = m_lines.shown();
    return std::any_of(lines.begin(), lines.end(), [](const TrendLine& line) { return !line.limits.empty(); });
}

void LimitsPart::refresh()
{
    updateActions();
    if (!m_isShown || !hasLimits())
        return m_layer.remove();
    attach();
    if (m_layer)
        m_layer->setNeedsDisplay();
}

// The layer is there only while it is wanted: a graph without layers is painted straight to the screen.
void LimitsPart::attach()
{
    const auto make = [this] {
        return std::make_shared<LimitsLayer>([this]() -> const std::vector<TrendLine>& { return m_lines.shown(); });
    };
    // What is read and marked must stay readable over the bands.
    if (const CPTXYGraphPtr graph = trend().graph())
        m_layer.put(graph, PartLayer<LimitsLayer>::Place::Beneath, make);
}

void LimitsPart::widenToLimits()
{
    const CPTXYGraphPtr graph = trend().graph();
    if (!graph)
        return;
    std::map<CPTXYPlotSpacePtr, std::pair<double, double>> wanted;
    for (const TrendLine& line : m_lines.shown())
        for (const CPTXYPlotSpacePtr& space : graph->allPlotSpaces()) {
            if (space.get() != &graph->plotSpaceOf(*line.plot))
                continue;
            const auto known = wanted.try_emplace(space, space->yRange().minLimit(), space->yRange().maxLimit()).first;
            auto& [lowest, highest] = known->second;
            for (const KTVLimit& limit : line.limits)
                if (const double drawn = space->yOfValue(limit.value); std::isfinite(drawn)) {
                    lowest = std::min(lowest, drawn);
                    highest = std::max(highest, drawn);
                }
        }
    for (const auto& [space, range] : wanted) {
        const bool isLower = range.first < space->yRange().minLimit();
        const bool isHigher = range.second > space->yRange().maxLimit();
        if (!isLower && !isHigher)
            continue;
        const double margin = (range.second - range.first) * kFitMargin;
        const double lowest = isLower ? range.first - margin : range.first;
        const double highest = isHigher ? range.second + margin : range.second;
        trend().showValues(*space, {lowest, highest - lowest});
    }
}

QAction* LimitsPart::addAction(const char* text)
{
    auto* action = new QAction(localizedText(text), this);
    setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "L&imits and Notes")));
    m_actions.push_back(action);
    return action;
}

void LimitsPart::makeActions()
{
    m_showAction = addAction(QT_TRANSLATE_NOOP("Plotix", "Show &Limits"));
    m_showAction->setCheckable(true);
    connect(m_showAction, &QAction::triggered, this, &LimitsPart::setShown);
    m_widenAction = addAction(QT_TRANSLATE_NOOP("Plotix", "&Widen Values to the Limits"));
    connect(m_widenAction, &QAction::triggered, this, &LimitsPart::widenToLimits);
    m_editAction = addAction(QT_TRANSLATE_NOOP("Plotix", "Set Limits &of"));
    m_linesMenu = std::make_unique<QMenu>();
    m_editAction->setMenu(m_linesMenu.get());
    connect(m_linesMenu.get(), &QMenu::aboutToShow, this, [this] {
        m_linesMenu->clear();
        for (const ReadLine& line : trend().lines())
            if (!line.isCompared())
                connect(m_linesMenu->addAction(QString(line.name).replace(u'&', QStringLiteral("&&")) + u'…'),
                        &QAction::triggered, this, [this, key = line.key] { edit(key); });
    });
}

void LimitsPart::updateActions()
{
    m_showAction->setChecked(m_isShown);
    m_showAction->setEnabled(m_annotations);
    m_widenAction->setEnabled(hasLimits());
    m_editAction->setEnabled(m_annotations && m_annotations->canEdit() && trend().graph());
}

void LimitsPart::addRowItems(QMenu& menu, const QStringList& keys)
{
    if (keys.size() != 1 || !m_annotations || !m_annotations->canEdit())
        return;
    connect(menu.addAction(localizedText(QT_TRANSLATE_NOOP("Plotix", "Limits…"))), &QAction::triggered, this,
            [this, key = keys.front()] { edit(key); });
}

void LimitsPart::edit(const QString& key)
{
    const std::optional<ReadLine> line = lineWithKey(trend(), key);
    if (m_annotations)
        m_annotations->editLimits(line && line->isCompared() ? line->comparedKey : key);
}

}  // namespace plotix
